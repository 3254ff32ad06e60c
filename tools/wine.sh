# Functions that run Windows programs in the prefix and the screen of tools/windows.sh. Sourced, never run.
#
# wine_run PROGRAM ARGUMENT...   runs one program, at most LIMIT seconds (60), prints what it prints
# wine_path FILE        the Windows path of a Linux path
# wine_processes        the folders under /proc of the programs that run in the prefix
# wineServe             starts what all programs of a run share; again after "wineserver -k"
#
# WIDTH says which programs are run, x64 or x86: DIST and BUILD are their folders, SYSTEM is the Windows folder with the
# system's own programs of that width, and those are the ones that start by their names.
export DIST=$root/dist/$WIDTH BUILD=$root/build/$WIDTH
# Debian's "wine" is the 32-bit loader where that is installed, and shows the 32-bit system folder only.
SYSTEM=system32 loader=/usr/lib/wine/wine64
[ "$WIDTH" = x64 ] || SYSTEM=syswow64 loader=/usr/lib/wine/wine
[ -x "$loader" ] || loader=wine

export WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all}
# No offers to install run-times, and no debugger's dialog that waits for ever after a crash.
export WINEDLLOVERRIDES="mscoree=;mshtml=;winedbg.exe=d"
# Typing beyond ASCII needs a UTF-8 locale, which every Debian has under this name.
export LC_ALL=C.UTF-8

wine_path() {
    local path
    path=$(realpath -m -- "$1")
    echo "Z:${path//\//\\}"
}

wine_processes() {
    local process
    for process in /proc/[0-9]*; do
        ! grep -qzxF "WINEPREFIX=$WINEPREFIX" "$process/environ" || echo "$process"
    done 2>/dev/null
}

# The output goes through a file: processes that Wine leaves in the background would keep a pipe open. Where a thread
# ends just before its program, Wine itself dies now and then of a segmentation fault, 139 here, and the program is run
# once more. A fault of the program's own is an exception to Wine, and its status 5.
wine_run() {
    local output status try
    output=$(mktemp)
    for try in 1 2; do
        status=0
        timeout --foreground -k 5 "${LIMIT:-60}" "$loader" "$@" >"$output" 2>&1 </dev/null || status=$?
        [ "$status" -eq 139 ] || break
        echo "Wine died at try $try: $*" >&2
    done
    cat "$output"
    rm -f "$output"
    [ "$status" -ne 124 ] || echo "ended after ${LIMIT:-60} seconds: $*" >&2
    return "$status"
}

# One server and one desktop for the whole run, started here so that no test's pipe is held open by them.
wineServe() {
    timeout 30 wineserver -p >/dev/null 2>&1 </dev/null
    timeout -k 5 60 "$loader" start /wait /b rundll32.exe >/dev/null 2>&1 </dev/null || true
    timeout -k 5 60 "$loader" cmd /c exit >/dev/null 2>&1 </dev/null || {
        echo "Wine does not start a program in $WINEPREFIX" >&2
        return 1
    }
}
