# The component in the system's scripting host: with a wrong key Show returns at once and nothing is shown; with the
# right one the register opens, and Show returns when it is closed. The log of its windows holds events and no texts.
# The host's manifest lies beside it, so it works on a copy with all that it names.
cp -r "$DIST"/. "$OUT/"
cp "$WINEPREFIX/drive_c/windows/$SYSTEM/cscript.exe" "$BUILD/cscript.exe.manifest" "$OUT/"
makeCompany
hostFolder=$OUT

startScript "kova/xb/tram/842" # in the wrong letter case
awaitHost 42
[ ! -e "$screenLog" ]

startScript "KOVA/XB/TRAM/842"
await_log "active frmMaster"
focus_window "$register"
# What the message says is nobody's business who only waits for it.
step "ctrl+d Delete" "message "
step alt+n "answered no"
expect "texts of messages" "$(grep '^message .' "$screenLog" || true)" ""
closeRegister 42
