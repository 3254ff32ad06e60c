# Functions that run Windows programs in a Wine prefix and a virtual screen of their own. Sourced, never run; $root is
# the project's folder.
#
# wine_start            makes both ready
# wine_stop             ends every program in the prefix and the screen, and removes the prefix
# wine_run PROGRAM ARGUMENT...   runs one program, at most LIMIT seconds (60), prints what it prints
# wine_path FILE        the Windows path of a Linux path
# wine_processes        the folders under /proc of the programs that run in the prefix
#
# WIDTH says which programs are run, x64 (when nothing is said) or x86: DIST and BUILD are their folders, SYSTEM is the
# Windows folder with the system's own programs of that width, and those are the ones that start by their names.
# SCREEN and DPI say what the virtual screen is like; with SCREEN=$DISPLAY the user's screen takes its place.
wineHome=$root/.cache/wine
wineOwned=""
screenPid=""

export WIDTH=${WIDTH:-x64}
export DIST=$root/dist/$WIDTH BUILD=$root/build/$WIDTH
# Debian's "wine" is the 32-bit loader where that is installed, and shows the 32-bit system folder only.
SYSTEM=system32 loader=/usr/lib/wine/wine64
[ "$WIDTH" = x64 ] || SYSTEM=syswow64 loader=/usr/lib/wine/wine
[ -x "$loader" ] || loader=wine
export SYSTEM

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

# The output goes through a file: processes that Wine leaves in the background would keep a pipe open.
wine_run() {
    local output status=0
    output=$(mktemp)
    timeout --foreground -k 5 "${LIMIT:-60}" "$loader" "$@" >"$output" 2>&1 </dev/null || status=$?
    cat "$output"
    rm -f "$output"
    [ "$status" -ne 124 ] || echo "ended after ${LIMIT:-60} seconds: $*" >&2
    return "$status"
}

# Prints the folder of a ready prefix that others are copied from, making it the first time.
wineTemplate() (
    set -e
    # A prefix made without 32-bit Wine starts nothing once that is there. The name ends with the number of what is done
    # below.
    recipe=$(dpkg-query -W -f='${Version}+' wine wine32 2>/dev/null || true)1
    template=$wineHome/template-$recipe
    mkdir -p "$wineHome"
    exec 8>"$wineHome/lock"
    flock 8
    if [ ! -d "$template" ]; then
        echo "Wine: making a prefix (once)" >&2
        rm -rf "$wineHome"/template-*
        export WINEPREFIX=$wineHome/new
        rm -rf "$WINEPREFIX"
        # No locks of ours for the processes that stay.
        {
            env -u DISPLAY timeout -k 5 240 wineboot -i
            env -u DISPLAY timeout -k 5 60 "$loader" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f
            # Wine does not look for its own fonts in Debian's folder.
            ln -sf /usr/share/wine/fonts/{tahoma,tahomabd,marlett}.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
            timeout 60 wineserver -w || timeout 10 wineserver -k || true
        } >"$wineHome/template.log" 2>&1 </dev/null 8>&-
        grep -q '^"Managed"="N"' "$WINEPREFIX/user.reg" || {
            echo "Wine: a prefix could not be made (see .cache/wine/template.log)" >&2
            exit 1
        }
        mv "$WINEPREFIX" "$template"
    fi
    echo "$template"
)

# A copy of the template; the system's many files are shared with it by hard links, the registry is not.
winePrefix() {
    local template old
    template=$(wineTemplate) || return 1
    # What a run left that was ended by force.
    for old in "$wineHome"/run.*; do
        [ -d "$old" ] && ! kill -0 "${old##*.}" 2>/dev/null || continue
        WINEPREFIX=$old timeout 10 wineserver -k >/dev/null 2>&1 || true
        rm -rf "$old"
    done
    export WINEPREFIX=$wineHome/run.$$
    cp -al "$template" "$WINEPREFIX"
    (cd "$template" && find . -maxdepth 1 -type f -o -path ./drive_c/windows/'*.ini' -type f) | while read -r file; do
        cp -a --remove-destination "$template/$file" "$WINEPREFIX/$file"
    done
    wineOwned=1
}

# A virtual screen under the first free number; no window manager, which is steady and quick.
screenStart() {
    local size=${SCREEN:-1280x1024} number
    exec 7< <(exec Xvfb -displayfd 1 -screen 0 "${size}x24" -nolisten tcp -noreset \
        2>"$WINEPREFIX/screen.log" </dev/null)
    screenPid=$!
    read -r -t 30 -u 7 number || {
        echo "the virtual screen does not start: $(tail -n 1 "$WINEPREFIX/screen.log")" >&2
        return 1
    }
    export DISPLAY=:$number
    unset XAUTHORITY WAYLAND_DISPLAY
    # A plain colour behind the windows; for the pictures only.
    timeout 10 display -window root -size "$size" xc:'#5a7fa3' >/dev/null 2>&1 || true
}

wine_start() {
    winePrefix || return 1
    if [ -n "${SCREEN:-}" ] && [ "$SCREEN" = "${DISPLAY:-}" ]; then
        sed -i 's/^"Managed"="N"/"Managed"="Y"/' "$WINEPREFIX/user.reg"
    else
        screenStart || return 1
    fi
    # Before the server reads it: a running session keeps what it began with.
    [ -z "${DPI:-}" ] ||
        printf '\n[Control Panel\\\\Desktop]\n"LogPixels"=dword:%08x\n' "$DPI" >>"$WINEPREFIX/user.reg"
    wineServe
}

wineServe() {
    # One server and one desktop for the whole run, started here so that no test's pipe is held open by them.
    timeout 30 wineserver -p >/dev/null 2>&1 </dev/null || return 1
    timeout -k 5 60 "$loader" start /wait /b rundll32.exe >/dev/null 2>&1 </dev/null || true
    timeout -k 5 60 "$loader" cmd /c exit >/dev/null 2>&1 </dev/null || {
        echo "Wine does not start a program in $WINEPREFIX" >&2
        return 1
    }
}

wine_stop() {
    if [ -n "$wineOwned" ]; then
        timeout 10 wineserver -k >/dev/null 2>&1 || true
        timeout 10 wineserver -w >/dev/null 2>&1 || true
    fi
    [ -z "$screenPid" ] || kill "$screenPid" 2>/dev/null || true
    [ -z "$wineOwned" ] || rm -rf "$WINEPREFIX"
    screenPid="" wineOwned=""
}
