# Functions for one who sits at the virtual screen: types, waits, clicks, takes pictures. Sourced, never run.
#
# step KEYS EVENT [PICTURE]    presses keys, each by its name (Return, F2, alt+n, ctrl+End), waits for a line of the log
#                              that holds EVENT, and takes the picture; "" leaves one of them out
# enter TEXT EVENT [PICTURE]   the same after TEXT and Return
# await_log EVENT              waits until a line of the log, after the last one waited for, holds EVENT
# at_window TITLE COMMAND...   waits for the window whose title holds TITLE, for commands of xdotool that act on it
# focus_window TITLE           gives it the keyboard
# type_keys TEXT, press KEY...
# shot NAME                    NAME.png in $folder, when the screen has come to rest
#
# The log comes line by line from file 5. Every waiting ends with a failure after two minutes, and that for a line of
# the log when the program has ended.
await_log() {
    local line
    while IFS= read -r -t 120 -u 5 line; do
        [[ $line != *"$1"* ]] || return 0
    done
    echo "waited in vain for the event '$1', or the program has ended; the last lines of the log:" >&2
    tail -n 5 "$folder/host.log" >&2
    return 1
}

at_window() {
    timeout 120 xdotool search --sync --onlyvisible --name -- "$@"
}

focus_window() {
    at_window "$1" windowfocus --sync
}

type_keys() {
    timeout 60 xdotool type --delay 20 -- "$1"
}

press() {
    timeout 30 xdotool key --delay 30 -- "$@"
}

step() {
    # shellcheck disable=SC2086 # several keys
    [ -z "$1" ] || press $1
    [ -z "$2" ] || await_log "$2"
    [[ $2 != message* ]] || focus_window "Retail Back Office" # said before the box is there
    [ -z "${3:-}" ] || shot "$3"
}

enter() {
    type_keys "$1"
    step Return "$2" "${3:-}"
}

# Two pictures that are alike, one after the other, show a screen at rest. At most ten tries: a caret may blink.
shot() {
    local before="" now="" try
    for try in {1..10}; do
        now=$(timeout 20 import -window root -depth 8 rgb:- | sha256sum)
        [ "$now" != "$before" ] || break
        before=$now
    done
    timeout 20 import -window root -strip "$folder/$1.png"
}
