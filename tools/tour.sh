#!/bin/bash
# Plays one request with real keys and mouse in a virtual screen: tour.sh DIR. DIR receives a picture of each screen
# on the way, statements.sql (what the database was sent, one statement a line) and request.txt (the stored rows).
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
. "$root/tools/wine.sh"
. "$root/tools/screen.sh"

[ $# -eq 1 ] || {
    echo "usage: tools/tour.sh DIR" >&2
    exit 2
}
mkdir -p "$1"
folder=$(cd "$1" && pwd)
shotFolder=$folder
rm -f "$folder"/*.png "$folder"/{statements.sql,request.txt,host.log,host.out}

trap wine_stop EXIT
trap 'exit 130' INT TERM HUP
wine_start

# The host runs beside us; its own log says what happens in its windows.
startHost() {
    screenLog=$folder/host.log
    timeout --foreground -k 5 900 wine "$root/dist/x64/goodsreq-host.exe" --company "$(wine_path "$folder/company.db")" \
        --trace "$(wine_path "$folder/statements.sql")" --log "$(wine_path "$screenLog")" "$@" \
        >"$folder/host.out" 2>&1 </dev/null &
    programPid=$!
}

# Waits until the host has ended by itself, at most 30 seconds; its exit status is ours.
awaitHost() {
    local status=0 waited=0
    while kill -0 "$programPid" 2>/dev/null; do
        waited=$((waited + 1))
        if [ "$waited" -gt 300 ]; then
            echo "the host does not end" >&2
            return 1
        fi
        sleep 0.1
    done
    wait "$programPid" || status=$?
    programPid=""
    return "$status"
}

startHost
await_log "active frmMaster"
shot 01-register
press Escape
awaitHost
