# Functions for one who sits at the virtual screen: types, waits, clicks, takes pictures. Sourced, never run.
#
# step KEYS EVENT [PICTURE]    presses keys, each by its name (Return, F2, alt+n, ctrl+End), waits for a line of the log
#                              that holds EVENT, and takes the picture; "" leaves one of them out
# enter TEXT EVENT [PICTURE]   the same after TEXT and Return
# await_log EVENT [S]          waits until a line of $screenLog, after the last one waited for, holds EVENT: S seconds, 30
# focus_window TITLE           gives the keyboard to the window whose title holds TITLE
# type_keys TEXT, press KEY..., click_in TITLE X Y [BUTTON]
# await_window TITLE
# shot NAME                    NAME.png in $shotFolder, when the screen has come to rest
#
# Every waiting ends with a failure when the time is over or when the program $programPid has ended.
screenLog="" programPid="" logSeen=0
shotFolder=$OUT

# awaitThat S WHAT COMMAND...: tries the command again and again, for S seconds.
awaitThat() {
    local end=$((SECONDS + $1)) what=$2
    shift 2
    until "$@"; do
        if [ "$SECONDS" -gt "$end" ] || { [ -n "$programPid" ] && ! kill -0 "$programPid" 2>/dev/null; }; then
            ! "$@" || return 0
            echo "waited in vain for $what, or the program has ended; the last lines of ${screenLog##*/}:" >&2
            tail -n 5 "$screenLog" >&2 || true
            return 1
        fi
        sleep 0.1
    done
}

logHolds() {
    local line
    line=$(tail -n "+$((logSeen + 1))" "$screenLog" 2>/dev/null | grep -nF -m 1 -- "$1" | cut -d: -f1) || true
    [ -n "$line" ] || return 1
    logSeen=$((logSeen + line))
}

await_log() {
    awaitThat "${2:-30}" "the event '$1'" logHolds "$1"
}

findWindow() {
    local found
    found=$(timeout 10 xdotool search --onlyvisible --name -- "$1" 2>/dev/null) || true
    [ -n "$found" ] && tail -n 1 <<<"$found"
}

await_window() {
    awaitThat 30 "the window '$1'" findWindow "$1" >/dev/null
}

focus_window() {
    await_window "$1" && timeout 10 xdotool windowfocus --sync "$(findWindow "$1")"
}

type_keys() {
    timeout 60 xdotool type --delay 20 -- "$1"
}

press() {
    timeout 30 xdotool key --delay 30 -- "$@"
}

click_in() {
    await_window "$1" && timeout 10 xdotool mousemove --window "$(findWindow "$1")" "$2" "$3" click "${4:-1}"
}

step() {
    # shellcheck disable=SC2086 # several keys
    [ -z "$1" ] || press $1
    [ -z "$2" ] || await_log "$2"
    [ -z "${3:-}" ] || shot "$3"
}

enter() {
    type_keys "$1"
    step Return "$2" "${3:-}"
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
