# The host with --connect, on the machine's own ADO. No server can be reached here, so a substitute stands under ADO's names
# in the registry of a prefix of its own. The connection string comes in by standard input, then by the environment, last on the
# command line: no log, no message and no process's command line shows it. A component of the suite whose name alone is there, as
# where the other width is installed, is stood in for.
trap wine_stop EXIT
wine_start
. "$root/tools/host.sh"
folder=$OUT
hostFolder=$OUT/host
cp -r "$DIST" "$hostFolder"
makeCompany

grep '|ADODB\.' "$root/sandbox/host/classes.txt" | while IFS='|' read -r id name _; do
    server="HKLM\\Software\\Classes\\CLSID\\{$id}\\InprocServer32"
    wine_run reg add "HKLM\\Software\\Classes\\$name\\CLSID" /ve /d "{$id}" /f
    wine_run reg add "$server" /ve /d "$(wine_path "$hostFolder/sandbox.dll")" /f
    wine_run reg add "$server" /v ThreadingModel /d Apartment /f
done >/dev/null

wine_run reg add "HKLM\\Software\\Classes\\Fetch.clsFetch\\CLSID" /ve /d "{00000000-0000-0000-0000-00000000FE7C}" /f >/dev/null

# connectTo DATABASE [SOURCE]
connectTo() {
    local text="Data Source=$1;Password=mellow"
    screenLog=$folder/host.log
    rm -f "$screenLog"
    logSeen=0
    SHOP_CONNECTION=$text timeout --foreground -k 5 100 "$loader" "$hostFolder/goodsreq-host.exe" --connect "${2:-$text}" \
        --log "$(wine_path "$screenLog")" >"$folder/host.out" 2>&1 <<<"$text" &
    programPid=$!
}
expectHidden() {
    # The children's command lines, as a process list shows them; the host's own is what it was started with.
    if cat /proc/[0-9]*/cmdline 2>/dev/null | tr '\0\n' ' \n' | sed 's/goodsreq-host.exe --connect Data Source=[^ ]*//g' |
        grep -aq 'Password=mello[w]' ||
        grep -q mellow "$screenLog" "$folder/host.out"; then
        echo "the connection string is shown"
        exit 1
    fi
}
expectSaid() {
    grep -qF "$1" "$folder/host.out" || {
        echo "the host did not say: $1"
        cat "$folder/host.out"
        exit 1
    }
}

connectTo "$(wine_path "$folder/company.db")" -
toLineEntry "Goods Request To Shop"
expectHidden
expectSaid "Stood in for, since this machine lacks them: CommonModule.clsCommonDB, CommonModule.clsCommonGen"
expectSaid "Fetch.clsFetch"
if grep -q 'ADODB' "$folder/host.out" "$hostFolder/goodsreq.suite.manifest"; then
    echo "ADO is stood in for"
    exit 1
fi
IFS='|' read -r _ barcode < <(items "min(p.packingbarcode || '')" | head -n 1)
type_keys "$barcode"
press Return
await_log "focus frmRequestDetail.txtQuantity"
press Escape
await_log "unloaded frmRequestDetail"
press Escape
await_log "message Save Changes?"
press alt+n
await_log "unloaded frmRequest"
press alt+c
awaitHost

# While it runs, also for what stood on the host's command line.
for source in env:SHOP_CONNECTION ""; do
    connectTo "$(wine_path "$folder/company.db")" "$source"
    await_log "active frmMaster"
    expectHidden
    focus_window "Goods Request To Shop"
    press alt+c
    awaitHost
done

# A server that does not answer is one line, and status 1.
for source in - env:SHOP_CONNECTION ""; do
    status=0
    connectTo 'C:\nowhere.db' "$source"
    awaitHost || status=$?
    [ "$status" -eq 1 ] || {
        echo "without a server the host ended with $status"
        exit 1
    }
    expectSaid "goodsreq-host: error "
    touch "$screenLog"
    expectHidden
done
