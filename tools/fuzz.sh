#!/bin/bash
# Fuzzes what reads text and calls from outside: fuzz.sh [settings|dialect|conversion|bridge|all] [SECONDS|--quick]
#
# settings    the print settings and the slip's layout
# dialect     statements for the sandbox's database, run on a small company
# conversion  numbers, dates and text by the language's rules
# bridge      late-bound calls of every wrong kind to the component and the sandbox's objects, under Wine
#
# Each runs 600 seconds when nothing is said, 5 with --quick, and prints one line; SEED=N repeats a run. A finding is left in
# build/fuzz, and the exit status is 1. What is up to date is not built again.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
folder=build/fuzz
native=" settings dialect conversion "
seed=${SEED:-$((RANDOM * 32768 + RANDOM + 1))}

usage() {
    sed -n '2,/^set/s/^# \?//p' "${BASH_SOURCE[0]}" >&2
    exit 2
}

chosen=${1:-all}
[ "$chosen" != --quick ] || { chosen=all && set -- all --quick; }
case $chosen in
settings | dialect | conversion | bridge) fuzzers=("$chosen") ;;
all) fuzzers=(settings dialect conversion bridge) ;;
*) usage ;;
esac
seconds=${2:-600}
[ "$seconds" != --quick ] || seconds=5
[[ $seconds =~ ^[0-9]+$ ]] || usage

# configured PRESET: its build folder, ready for ninja.
configured() {
    if [ ! -f "build/$1/build.ninja" ] || [ CMakePresets.json -nt "build/$1/CMakeCache.txt" ]; then
        cmake --preset "$1" && touch "build/$1/CMakeCache.txt"
    fi
}

build() {
    local preset=fuzz goals=("$1_fuzz")
    [ "$1" != bridge ] || { preset=x64 && goals=(bridge_fuzz goodsreq_dll sandbox_dll); }
    { configured "$preset" && nice ninja -C "build/$preset" "${goals[@]}"; } >"$folder/$1-build.log" 2>&1 </dev/null
}

# The fuzzer's corpus, grown by each run; the seeds come in anew.
corpusOf() {
    local corpus=$folder/corpus/$1
    mkdir -p "$corpus"
    case $1 in
    dialect) split -l 1 -a 3 tests/fuzz/seeds/statements.sql "$corpus/seed-" ;;
    *) cp "tests/fuzz/seeds/$1"/* "$corpus/" ;;
    esac
    echo "$corpus"
}

runNative() {
    nice "$folder/tests/fuzz/$1_fuzz" -max_total_time="$seconds" -seed="$seed" -timeout=10 -rss_limit_mb=1024 -max_len=1000 \
        -print_final_stats=1 -artifact_prefix="$folder/$1-" "$(corpusOf "$1")"
}

runBridge() (
    . tools/wine.sh
    trap wine_stop EXIT
    wine_start >&2 || exit 1
    cd build/x64
    wine_run -t $((seconds + 120)) bridge_fuzz.exe --seconds "$seconds" --seed "$seed" | tr -d '\r'
)

failed=0
mkdir -p "$folder"
if [ "${fuzzers[*]}" = bridge ]; then tools/setup.sh; else tools/setup.sh clang libclang-rt-14-dev; fi
for fuzzer in "${fuzzers[@]}"; do
    log=$folder/$fuzzer.log
    if ! build "$fuzzer"; then
        echo "FAILED $fuzzer: it cannot be built (see $folder/$fuzzer-build.log)"
        failed=1
        continue
    fi
    started=$SECONDS
    status=0
    if [[ $native == *" $fuzzer "* ]]; then runNative "$fuzzer"; else runBridge; fi >"$log" 2>&1 </dev/null || status=$?
    runs=$(sed -nE 's/^stat::number_of_executed_units: *([0-9]+).*/\1/p; s/^([0-9]+) calls.*/\1/p' "$log" | tail -n 1)
    if [ "$status" -eq 0 ]; then
        echo "ok $fuzzer: ${runs:-0} runs in $((SECONDS - started)) s, seed $seed, nothing found"
    else
        failed=1
        echo "FAILED $fuzzer: ${runs:-0} runs in $((SECONDS - started)) s, seed $seed (see $log)"
        grep -aE '^(SUMMARY|broken|finding|not the|==[0-9]+== ?ERROR|Test unit|.*Test unit written)' "$log" | head -n 5 | sed 's/^/    /' || true
    fi
done
exit "$failed"
