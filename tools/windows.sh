#!/bin/bash
# Runs a Windows program, or a script that works with some, in a Wine prefix and a virtual screen of its own, and ends
# it after LIMIT seconds (300): windows.sh x64|x86 PROGRAM.exe|SCRIPT.sh [ARGUMENT...]
# SCREEN=1366x768 and DPI=144 say what the screen is like. Status 77 where this machine cannot run that width.
#
# A script finds root, OUT (an empty folder of its own), and all of tools/wine.sh, screen.sh and host.sh.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export root WIDTH=$1
shift
. "$root/tools/wine.sh"
[ "$WIDTH" = x64 ] || [ -x /usr/lib/wine/wine ] || { echo "there is no 32-bit Wine here" && exit 77; }

child=""
trap '[ -z "$child" ] || kill "$child" 2>/dev/null || true; wine_stop' EXIT
trap 'exit 130' INT TERM HUP
wine_start
case $1 in
*.sh)
    export OUT=${OUT:-$root/out/test/$WIDTH/$(basename "$1" .sh)}
    rm -rf "$OUT"
    mkdir -p "$OUT"
    timeout -k 10 "${LIMIT:-300}" bash -Eeuo pipefail -c '
        trap "echo \"lines \$LINENO \${BASH_LINENO[*]} ended with \$?: \$BASH_COMMAND\" >&2" ERR
        . "$root/tools/wine.sh"
        . "$root/tools/screen.sh"
        . "$root/tools/host.sh"
        . "$0" "$@"' "$@" </dev/null &
    child=$! # with all that it starts
    wait "$child" && exit
    status=$?
    echo "ended with status $status (124: after ${LIMIT:-300} seconds)"
    exit "$status"
    ;;
*) LIMIT=${LIMIT:-300} wine_run "$@" | tr -d '\r' ;;
esac
