#!/bin/bash
# Runs one of the proofs, natively and then under Wine: proof.sh bench|stress [--native|--windows] [--quick] [--seed N]
# [--minutes N] [--json FILE]. Builds what it needs. Status 1 where a limit is missed, 2 where a part did not run.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
name=$1
shift
case $name in
bench) native=build/bench/benchmarks/benchmarks windows=(bench-windows.exe) ;;
stress) native=build/bench/endurance/stress windows=("stress-windows.exe rounds" "tryout/stress-windows.exe scan" "tryout/stress-windows.exe fetch") ;;
*) exit 2 ;;
esac

usage() {
    echo "usage: $name [--native|--windows] [--quick] [--seed N] [--minutes N] [--json FILE]" >&2
    exit 2
}

parts=(native windows)
arguments=()
json=""
while [ $# -gt 0 ]; do
    case $1 in
    --native | --windows) parts=("${1#--}") ;;
    --quick) arguments+=("$1") ;;
    --seed | --minutes)
        [[ ${2:-} =~ ^[0-9]+$ ]] || usage
        arguments+=("$1" "$2")
        shift
        ;;
    --json)
        [ -n "${2:-}" ] || usage
        json=$(realpath -m -- "$2")
        shift
        ;;
    *) usage ;;
    esac
    shift
done

cd "$root"
mkdir -p out
build() {
    local log=out/$name-build-$1.log
    tools/build.sh "$1" >"$log" 2>&1 && return
    grep -E 'error|FAILED:|Error' "$log" | head -n 20 >&2 || true
    echo "$name: the build of $1 failed (see $log)" >&2
    exit 2
}

status=0
rows=()
part() {
    local ended=0 json=$1
    rm -f "$json"
    "${@:2}" || ended=$?
    rows+=("$json")
    # A part that crashed or hung has not told.
    [ "$ended" -le 1 ] || ended=2
    [ "$ended" -le "$status" ] || status=$ended
}

runNative() {
    build bench
    part "out/$name-native.json" "$native" "${arguments[@]}" --json "out/$name-native.json"
}

runWindows() {
    build x64
    . tools/wine.sh
    trap wine_stop EXIT
    wine_start
    local program json i=0
    for program in "${windows[@]}"; do
        json=out/$name-windows-$((++i)).json
        part "$json" wine_run -t 3600 build/x64/$program "${arguments[@]}" --json "$(wine_path "$json")"
    done
}

tools/setup.sh
for one in "${parts[@]}"; do
    case $one in
    native) runNative ;;
    windows) runWindows ;;
    esac
done
if [ -n "$json" ]; then
    {
        echo "["
        cat "${rows[@]}" 2>/dev/null | tr -d '\r' | sed -nE 's/^  (\{.*\}),?$/  \1/p' | sed '$!s/$/,/'
        echo "]"
    } >"$json"
fi
exit "$status"
