#!/bin/bash
# Fuzzes what reads text and calls from outside: fuzz.sh [dialect|conversion|bridge|all] [SECONDS|--quick]
#
# dialect     statements for the sandbox's database, run on a small company
# conversion  numbers, dates and text by the language's rules
# bridge      late-bound calls of every wrong kind to the component and the sandbox's objects, under Wine
#
# Each runs 600 seconds when nothing is said, 5 with --quick, and prints one line; SEED=N repeats a run. A finding is
# left in build/fuzz, and the exit status is 1.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
[ "${1:-}" != --quick ] || set -- all --quick
fuzzers=${1:-all} seconds=${2:-600} seed=${SEED:-$((RANDOM * 32768 + RANDOM + 1))}
[ "$fuzzers" != all ] || fuzzers="dialect conversion bridge"
[ "$seconds" != --quick ] || seconds=5

tools/setup.sh clang libclang-rt-14-dev
[ "$fuzzers" = bridge ] || tools/build.sh fuzz
[[ $fuzzers != *bridge ]] || tools/build.sh x64

fuzz() {
    local corpus=build/fuzz/corpus/$1
    if [ "$1" = bridge ]; then
        LIMIT=$((seconds + 120)) tools/windows.sh x64 build/x64/bridge_fuzz.exe "$seconds" "$seed"
        return
    fi
    mkdir -p "$corpus"
    cp tests/fuzz/seeds/conversion/* "$corpus"
    split -l 1 -a 3 tests/fuzz/seeds/statements.sql "$corpus/seed-"
    # The seeds' words and signs, to be put between others.
    grep -ohE "[A-Za-z_@]+|[0-9.]+|'[A-Za-z0-9]*'|[<>=]+|[][(),*%+-]" "$corpus"/seed-* | sort -u |
        sed 's/.*/" & "/' >"$corpus.words"
    nice "build/fuzz/tests/fuzz/$1_fuzz" -max_total_time="$seconds" -seed="$seed" -timeout=10 -rss_limit_mb=1024 \
        -max_len=1000 -dict="$corpus.words" -artifact_prefix="build/fuzz/$1-" "$corpus"
}

failed=0
for fuzzer in $fuzzers; do
    log=build/fuzz/$fuzzer.log result="ok $fuzzer, seed $seed"
    fuzz "$fuzzer" >"$log" 2>&1 </dev/null || result="FAILED $fuzzer, seed $seed (see $log)" failed=1
    echo "$result: $(grep -aE '^(Done [0-9]|[0-9]+ calls|finding|SUMMARY|.*Test unit)' "$log")"
done
exit "$failed"
