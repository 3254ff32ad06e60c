#!/bin/bash
# Runs the Windows tests of one width under Wine in a virtual screen: test-windows.sh [--x86] [TEST...], 64 bits when nothing is
# said, and when no test is named, all of them that this width needs.
# A test is a GoogleTest program for Windows (each of its tests counts) or a script tests/windows/*.sh (counts as one).
# Prints "ok WIDTH NAME" or "FAILED WIDTH NAME" for each; what a test printed is in out/test/windows-WIDTH. Exit status 1 if any
# failed.
#
# A script finds: root, OUT (an empty folder of its own), a ready Wine prefix and screen (WINEPREFIX, DISPLAY), and all of
# tools/wine.sh and tools/screen.sh.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export root WIDTH=x64
if [ "${1:-}" = --x86 ]; then
    WIDTH=x86
    shift
fi
. "$root/tools/wine.sh"
out=$root/out/test/windows-$WIDTH
scriptLimit=${SCRIPT_LIMIT:-300}

if [ $# -gt 0 ]; then
    tests=("$@")
else
    readarray -t tests < <(
        find "$BUILD" -maxdepth 1 -type f \( -name 'test_*.exe' -o -name '*_test.exe' \) 2>/dev/null | sort
        find "$root/tests/windows" -maxdepth 1 -name '*.sh' 2>/dev/null | sort
    )
    # What says the same in both widths is run in one.
    elsewhere=widths.sh
    [ "$WIDTH" = x64 ] || elsewhere="looks_test.exe|measures_test.exe|check-kit.sh|connect.sh|dialogs.sh|looks.sh|register.sh"
    readarray -t tests < <(printf '%s\n' "${tests[@]}" | grep -vE "/($elsewhere)\$")
fi
[ ${#tests[@]} -gt 0 ] || exit 0

rm -rf "$out"
mkdir -p "$out"
trap wine_stop EXIT
trap 'exit 130' INT TERM HUP
wine_start || {
    echo "FAILED $WIDTH Wine and the virtual screen"
    exit 1
}

failed=0
# Every test of a program that did not end well has failed, also those that a crash kept from running.
runProgram() {
    local program=$1 name log listed test status=0 before=$failed
    name=$(basename "$program" .exe)
    log=$out/$name.log
    listed=$(wine_run "$program" --gtest_list_tests | tr -d '\r' |
        sed -E 's/ +# (TypeParam|GetParam\(\)) .*//' |
        awk '/^[^ ].*\.$/ { suite = $1; next } /^  [^ ]/ { print suite $1 }' | grep -v 'DISABLED_') || true
    if [ -z "$listed" ]; then
        echo "FAILED $WIDTH $name lists no tests"
        failed=1
        return
    fi
    (cd "$(dirname "$program")" && wine_run -t 600 "$program" --gtest_color=no --gtest_brief=0) 2>&1 |
        tr -d '\r' >"$log" || status=$?
    failed=0
    while read -r test; do
        if grep -qE "\[       OK \] ${test//./\\.}(,| \()" "$log"; then
            echo "ok $WIDTH $test"
        else
            echo "FAILED $WIDTH $test"
            failed=1
            testOutput "$test" "$log"
        fi
    done <<<"$listed"
    if [ "$status" -ne 0 ] && [ "$failed" -eq 0 ]; then
        echo "FAILED $WIDTH $name ended with status $status after its tests"
        failed=1
    fi
    [ "$before" -eq 0 ] || failed=1
}

# What a test of a GoogleTest program printed; where it never ran, the end of the log.
testOutput() {
    if grep -qF "[ RUN      ] $1" "$2"; then
        sed -n "/\[ RUN      \] ${1//\//\\/}\$/,/\[  FAILED  \]/p" "$2" | sed 1d | head -n 30 | sed 's/^/    /'
    else
        echo "    it never ran; the last lines of ${2#"$root"/}:"
        tail -n 3 "$2" | sed 's/^/    /'
    fi
}

runScript() {
    local script=$1 name log status=0
    name=$(basename "$script" .sh)
    log=$out/$name.log
    mkdir -p "$out/$name"
    OUT=$out/$name timeout --foreground -k 10 "$scriptLimit" bash -c '
        set -Eeuo pipefail
        trap '"'"'echo "lines $LINENO ${BASH_LINENO[*]} ended with $?: $BASH_COMMAND" >&2'"'"' ERR
        . "$root/tools/wine.sh"
        . "$root/tools/screen.sh"
        shotFolder=$OUT
        . "$1"' "$script" "$script" >"$log" 2>&1 </dev/null || status=$?
    if [ "$status" -eq 0 ]; then
        echo "ok $WIDTH $name"
    else
        failed=1
        echo "FAILED $WIDTH $name"
        [ "$status" -ne 124 ] || echo "    ended after $scriptLimit seconds"
        tail -n 20 "$log" | sed 's/^/    /'
        # Its programs may still run, with windows over those of the next test.
        timeout 20 wineserver -k >/dev/null 2>&1 || true
        timeout 10 wineserver -w >/dev/null 2>&1 || true
        wineServe || echo "Wine does not start again" >&2
    fi
}

for test in "${tests[@]}"; do
    case $test in
    *.sh) runScript "$(realpath "$test")" ;;
    *) runProgram "$(realpath "$test")" ;;
    esac
done
exit "$failed"
