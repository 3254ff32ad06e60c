# The component in the system's scripting host: with a wrong key Show returns at once and nothing is shown; with the
# right one the register opens, and Show returns when it is closed. The log of its windows holds events and no texts.
# The host's manifest lies beside it, so it works on a copy with all that it names.
cp -r "$DIST"/. "$OUT/"
cp "$WINEPREFIX/drive_c/windows/$SYSTEM/cscript.exe" "$BUILD/cscript.exe.manifest" "$OUT/"
makeCompany
screenLog=$OUT/windows.log
logSeen=0
host() {
    local status=0
    GOODSREQ_WINDOW_LOG=$(wine_path "$screenLog") wine_run -t 60 "$OUT/cscript.exe" //nologo \
        "$(wine_path "$root/tests/windows/host.vbs")" "$(wine_path "$OUT/company.db")" "$1" || status=$?
    expect "$1: the script's end" "$status" 42
}

host "kova/xb/tram/842" # in the wrong letter case
[ ! -e "$screenLog" ]

host "KOVA/XB/TRAM/842" &
programPid=$!
await_log "active frmMaster"
focus_window "$register"
# What the message says is nobody's business who only waits for it.
step "ctrl+d Delete" "message "
step alt+n "answered no"
expect "texts of messages" "$(grep '^message .' "$screenLog" || true)" ""
step alt+c "unloaded frmMaster"
awaitHost
