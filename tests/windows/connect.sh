# The host with --connect, on the machine's own ADO. No server can be reached here, so a substitute stands under ADO's
# names in the registry. The connection string comes in by standard input, by the environment or on the command line: no
# log, no message and, while it runs, no process's command line shows it. A component of the suite whose name alone is
# there, as where the other width is installed, is stood in for. A server that does not answer is one line and status 1.
hostFolder=$OUT/host
cp -r "$DIST" "$hostFolder"
makeCompany
registerAdo "$hostFolder/sandbox.dll" 64
wine_run reg add "HKLM\\Software\\Classes\\Fetch.clsFetch\\CLSID" /ve /d "{00000000-0000-0000-0000-00000000FE7C}" /f >/dev/null

# connectTo DATABASE SOURCE
connectTo() {
    local text="Data Source=$1;Password=mellow"
    SHOP_CONNECTION=$text startHost --connect "${2:-$text}" <<<"$text"
}
# In no command line, as a process list shows them, but what the host was started with.
expectHidden() {
    { wine_processes | sed 's/$/\/cmdline/' | xargs cat | tr '\0' ' ' | sed 's/--connect Data Source=[^ ]*//g' || true; } \
        >"$OUT/commands.txt" 2>/dev/null
    ! grep -asq mellow "$OUT/commands.txt" "$folder/host.log" "$folder/host.out" || fail "the connection string is shown"
}
expectSaid() {
    grep -qF "$1" "$folder/host.out" || fail "the host did not say: $1"
}

for source in - env:SHOP_CONNECTION ""; do
    connectTo "$(wine_path "$folder/company.db")" "$source"
    await_log "active frmMaster"
    expectHidden
    grep -q goodsreq-host "$OUT/commands.txt" || fail "no process list has the host"
    expectSaid "Stood in for, since this machine lacks them: CommonModule.clsCommonDB, CommonModule.clsCommonGen"
    expectSaid "Fetch.clsFetch"
    ! grep -q ADODB "$folder/host.out" "$hostFolder/goodsreq.suite.manifest" || fail "ADO is stood in for"
    focus_window "$register"
    step ctrl+Return "active frmRequest"
    step "Down Return Return" "focus frmRequest.lvwrequest"
    step Return "active frmRequestDetail"
    enter 2901000000190 "focus frmRequestDetail.txtQuantity"
    step "Escape Escape" "message Save Changes?"
    step alt+n "unloaded frmRequest"
    closeRegister

    connectTo 'C:\nowhere.db' "$source"
    awaitHost 1
    expectSaid "goodsreq-host: error "
    expectHidden
done
