#!/bin/bash
# Runs a proof, natively and then under Wine: proof.sh bench|stress [--native|--windows] [--json FILE] [OPTION...]
# The other options go to the programs. Status 1 where a limit is missed, more where a part did not run.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
name=$1
shift
case $name in
bench) native=build/bench/benchmarks/benchmarks windows=(build/x64/bench-windows.exe) ;;
*) native=build/bench/endurance/stress
    windows=("build/x64/stress-windows.exe rounds" build/x64/tryout/stress-windows.exe\ {scan,fetch}) ;;
esac
parts=("$native" "${windows[@]}") presets=(bench x64) json="" options=()
while [ $# -gt 0 ]; do
    case $1 in
    --native) parts=("$native") presets=(bench) ;;
    --windows) parts=("${windows[@]}") presets=(x64) ;;
    --json) json=$(realpath -m -- "$2") && shift ;;
    *) options+=("$1") ;;
    esac
    shift
done

tools/setup.sh
tools/build.sh "${presets[@]}"
mkdir -p out
status=0 rows=()
for part in "${parts[@]}"; do
    rows+=("out/$name-${#rows[@]}.json")
    [[ $part != *.exe* ]] || part="env LIMIT=3600 tools/windows.sh x64 $part"
    # shellcheck disable=SC2086 # a program and its part
    $part "${options[@]}" --json "${rows[-1]}" || status=$(($? > status ? $? : status))
done
[ -z "$json" ] || jq -s add "${rows[@]}" >"$json"
exit "$status"
