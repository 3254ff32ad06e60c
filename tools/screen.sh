# Functions for one who sits at the virtual screen: waits for a window, types, clicks, takes pictures. Sourced, never run.
#
# await_log TEXT [S]    waits until a line of $screenLog, after the last one waited for, holds TEXT; at most S seconds (30)
# focus_window TITLE    gives the keyboard to the window whose title holds TITLE
# type_keys TEXT        types TEXT as a person does
# press KEY...          presses keys by name: Return, Tab, Escape, F2, alt+n, ctrl+End
# click X Y [BUTTON]    clicks at a point of the screen
# click_in TITLE X Y    clicks at a point of a window
# window_open TITLE     tells whether such a window is there
# await_window TITLE [S], await_no_window TITLE [S]
# shot NAME             NAME.png in $shotFolder, when the screen has come to rest
#
# Every waiting ends with a failure when the time is over or when the program $programPid has ended.
screenLog=${screenLog:-}
shotFolder=${shotFolder:-.}
programPid=${programPid:-}
logSeen=0

# Tries "$@" again and again, for at most $1 tenths of a second.
awaitThat() {
    local left=$1
    shift
    until "$@"; do
        left=$((left - 1))
        if [ "$left" -le 0 ]; then
            return 1
        fi
        if [ -n "$programPid" ] && ! kill -0 "$programPid" 2>/dev/null; then
            echo "the program has ended" >&2
            "$@" && return 0
            return 1
        fi
        sleep 0.1
    done
}

logHolds() {
    local line
    [ -f "$screenLog" ] || return 1
    line=$(tail -n "+$((logSeen + 1))" "$screenLog" | tr -d '\r' | grep -nF -m 1 -- "$1" | cut -d: -f1) || true
    [ -n "$line" ] || return 1
    logSeen=$((logSeen + line))
}

await_log() {
    awaitThat "$((${2:-30} * 10))" logHolds "$1" || {
        echo "no line '$1' in ${screenLog##*/}; its last lines:" >&2
        [ ! -f "$screenLog" ] || tail -n 5 "$screenLog" >&2
        return 1
    }
}

findWindow() {
    timeout 10 xdotool search --onlyvisible --name -- "$1" 2>/dev/null | tail -n 1
}

window_open() {
    [ -n "$(findWindow "$1")" ]
}

noWindow() {
    ! window_open "$1"
}

await_window() {
    awaitThat "$((${2:-30} * 10))" window_open "$1" || {
        echo "no window '$1' on the screen" >&2
        return 1
    }
}

await_no_window() {
    awaitThat "$((${2:-30} * 10))" noWindow "$1" || {
        echo "the window '$1' stays on the screen" >&2
        return 1
    }
}

focus_window() {
    await_window "$1" || return 1
    timeout 10 xdotool windowfocus --sync "$(findWindow "$1")"
}

type_keys() {
    timeout 60 xdotool type --delay 20 -- "$1"
}

press() {
    timeout 30 xdotool key --delay 30 -- "$@"
}

click() {
    timeout 10 xdotool mousemove --sync "$1" "$2" click "${3:-1}"
}

click_in() {
    local window
    await_window "$1" || return 1
    window=$(findWindow "$1")
    timeout 10 xdotool mousemove --window "$window" "$2" "$3" click "${4:-1}"
}

# Two pictures that are alike, one after the other, show a screen at rest. At most ten tries: a caret may blink.
shot() {
    local before="" now="" try
    for try in 1 2 3 4 5 6 7 8 9 10; do
        now=$(timeout 20 import -window root -depth 8 rgb:- | sha256sum)
        [ "$now" != "$before" ] || break
        before=$now
    done
    timeout 20 import -window root -strip "$shotFolder/$1.png"
}
