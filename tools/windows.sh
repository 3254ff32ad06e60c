#!/bin/bash
# Runs a Windows program, or a script that works with some, in a Wine prefix and a virtual screen of its own, and ends
# it after LIMIT seconds (300): windows.sh x64|x86 PROGRAM.exe|SCRIPT.sh [ARGUMENT...]
# SCREEN=1366x768 and DPI=144 say what the screen is like; with SCREEN=$DISPLAY the user's screen takes its place.
# Status 77 where this machine cannot run that width.
#
# A script finds root, OUT (an empty folder of its own), and all of tools/wine.sh, screen.sh and host.sh.
set -euo pipefail
# Wine's loader has a fixed place and its heap a random one behind it, now and then where Wine needs a page: no program
# starts then.
[ -n "${fixedAddresses:-}" ] || ! setarch -R true 2>/dev/null || fixedAddresses=1 exec setarch -R "$0" "$@"
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export root WIDTH=$1
shift
. "$root/tools/wine.sh"
[ "$WIDTH" = x64 ] || [ -x /usr/lib/wine/wine ] || { echo "there is no 32-bit Wine here" && exit 77; }

# The prefix that others are copied from. One that was made without 32-bit Wine starts nothing once that is there. The
# name ends with the number of what is done here.
home=$root/.cache/wine
template=$home/template-$(dpkg-query -W -f='${Version}+' wine wine32 2>/dev/null || true)1
mkdir -p "$home"
exec 8>"$home/lock"
flock 8
if [ ! -d "$template" ]; then
    echo "Wine: making a prefix (once)" >&2
    export WINEPREFIX=$home/new
    rm -rf "$home"/template-* "$WINEPREFIX"
    # No locks of ours for the processes that stay.
    {
        env -u DISPLAY timeout -k 5 240 wineboot -i
        env -u DISPLAY timeout -k 5 60 "$loader" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f
        # Wine does not look for its own fonts in Debian's folder.
        ln -sf /usr/share/wine/fonts/{tahoma,tahomabd,marlett}.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
        timeout 60 wineserver -w || timeout 10 wineserver -k
    } >"$home/template.log" 2>&1 </dev/null 8>&- || true
    grep -qs '^"Managed"="N"' "$WINEPREFIX/user.reg" || {
        echo "Wine: a prefix could not be made (see .cache/wine/template.log)" >&2
        exit 1
    }
    mv "$WINEPREFIX" "$template"
fi

# What a run left that was ended by force.
for old in "$home"/run.*; do
    [ -d "$old" ] && ! kill -0 "${old##*.}" 2>/dev/null || continue
    WINEPREFIX=$old timeout 10 wineserver -k >/dev/null 2>&1 || true
    rm -rf "$old"
done

child="" screen=""
export WINEPREFIX=$home/run.$$
finish() {
    [ -z "$child" ] || kill "$child" 2>/dev/null || true
    timeout 10 wineserver -k >/dev/null 2>&1 || true
    timeout 10 wineserver -w >/dev/null 2>&1 || true
    [ -z "$screen" ] || kill "$screen" 2>/dev/null || true
    rm -rf "$WINEPREFIX"
}
trap finish EXIT
trap 'exit 130' INT TERM HUP
# The system's many files are shared with the template by hard links, the registry is not.
cp -al "$template" "$WINEPREFIX"
(cd "$template" && find . -maxdepth 1 -type f -o -path ./drive_c/windows/'*.ini' -type f) | while read -r file; do
    cp -a --remove-destination "$template/$file" "$WINEPREFIX/$file"
done
exec 8>&-

if [ -n "${SCREEN:-}" ] && [ "$SCREEN" = "${DISPLAY:-}" ]; then
    sed -i 's/^"Managed"="N"/"Managed"="Y"/' "$WINEPREFIX/user.reg"
else
    # Under the first free number; no window manager, which is steady and quick.
    size=${SCREEN:-1280x1024}
    exec 7< <(exec Xvfb -displayfd 1 -screen 0 "${size}x24" -nolisten tcp -noreset \
        2>"$WINEPREFIX/screen.log" </dev/null)
    screen=$!
    read -r -t 30 -u 7 number || {
        echo "the virtual screen does not start: $(tail -n 1 "$WINEPREFIX/screen.log")" >&2
        exit 1
    }
    export DISPLAY=:$number
    unset XAUTHORITY WAYLAND_DISPLAY
    # A plain colour behind the windows; for the pictures only.
    timeout 10 display -window root -size "$size" xc:'#5a7fa3' >/dev/null 2>&1 || true
fi
# Before the server reads it: a running session keeps what it began with.
[ -z "${DPI:-}" ] ||
    printf '\n[Control Panel\\\\Desktop]\n"LogPixels"=dword:%08x\n' "$DPI" >>"$WINEPREFIX/user.reg"
wineServe

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
