# The component in the system's scripting host: with a wrong key Show returns at once and nothing is shown; with the right
# one the register opens, and Show returns when it is closed. The log of its windows holds events and no texts.
. "$root/tools/screen.sh"

# The host's manifest lies beside it, so it works on a copy with all that it names.
cp -r "$DIST"/. "$OUT/"
cp "$WINEPREFIX/drive_c/windows/$SYSTEM/cscript.exe" "$BUILD/cscript.exe.manifest" "$OUT/"
company=$(wine_path "$OUT/company.db")
script=$(wine_path "$root/tests/windows/host.vbs")
wine_run "$OUT/goodsreq-host.exe" --database "$company" --key none >/dev/null

screenLog=$OUT/windows.log
export GOODSREQ_WINDOW_LOG
GOODSREQ_WINDOW_LOG=$(wine_path "$screenLog")
host() {
    wine_run -t 60 "$OUT/cscript.exe" //nologo "$script" "$company" "$1"
}
expectEnd() {
    if [ "$2" -ne 42 ]; then
        echo "$1: the script ended with $2"
        exit 1
    fi
}

status=0
host "kova/xb/tram/842" || status=$?
expectEnd "a key in the wrong letter case" "$status"
if [ -e "$screenLog" ]; then
    echo "a wrong key has shown something: $(cat "$screenLog")"
    exit 1
fi

host "KOVA/XB/TRAM/842" &
programPid=$!
await_log "active frmMaster"
focus_window "Goods Request To Shop"
# What the message says is nobody's business who only waits for it.
press ctrl+d Delete
await_log "message "
press alt+n
await_log "answered no"
if grep '^message .' "$screenLog"; then
    exit 1
fi
press alt+c
await_log "unloaded frmMaster"
status=0
wait "$programPid" || status=$?
expectEnd "the right key" "$status"
