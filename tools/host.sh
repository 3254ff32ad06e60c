# Functions that run a host of the component and read what it left in the database. Sourced, never run; needs
# tools/wine.sh and tools/screen.sh. The company lies in $folder ($OUT); the host is that of $hostFolder ($DIST).
#
# makeCompany           makes the sample company in $folder/company.db
# startProgram PROGRAM ARGUMENT...  starts it beside us, and reads what we read; its windows' log is awaited
# startHost OPTION...   the same with the sandbox's host, which logs the texts of messages too
# openRegister OPTION...    the same on the company, until the register has the keyboard; its title is $register
# awaitHost [STATUS]    waits until it has ended by itself, with that exit status (0)
# closeRegister [STATUS]    closes the register by its button, and awaits the host
# expect WHAT FOUND EXPECTED    ends the script where both differ
# expectStored          writes the rows of the newest requests to request.txt, and holds them to SCRIPT.txt beside the
#                       script
folder=$OUT
register="Goods Request To Shop"

makeCompany() {
    # With a wrong key the host makes the company, shows nothing and ends.
    wine_run "$DIST/goodsreq-host.exe" --database "$(wine_path "$folder/company.db")" --key none >"$folder/host.out"
}

startProgram() {
    rm -f "$folder/host.log"
    GOODSREQ_WINDOW_LOG=$(wine_path "$folder/host.log") timeout --foreground -k 5 900 "$loader" "$@" \
        >"$folder/host.out" 2>&1 <&0 &
    programPid=$!
    exec 5< <(exec tail -n +1 -s 0.1 -F --pid=$programPid "$folder/host.log" 2>/dev/null)
}

startHost() {
    startProgram "${hostFolder:-$DIST}/goodsreq-host.exe" --log "$(wine_path "$folder/host.log")" "$@"
}

openRegister() {
    startHost --database "$(wine_path "$folder/company.db")" --trace "$(wine_path "$folder/statements.sql")" "$@"
    await_log "active frmMaster"
    focus_window "$register"
}

awaitHost() {
    local status=0
    wait "$programPid" || status=$?
    expect "the host's exit status" "$status" "${1:-0}"
}

closeRegister() {
    focus_window "$register"
    press alt+c
    awaitHost "$@"
}

# The database is read by its own shell, past everything that the module runs on. Only numbers are compared: text would
# need the company's collation.
expectStored() {
    sqlite3 -header "$folder/company.db" "select srhrequestno, srhtype, srhtoshopid,
        replace(SRHremarks, char(13, 10), '\n') SRHremarks, SRHcancelled, srhcancelledRemarks, srhNoofDetails, srditemid,
        cast(srdgoodqty as real) srdgoodqty, cast(srdbadqty as real) srdbadqty, srdtoshopid
        from mesRequesttoShopHeader join mesRequesttoShopDetail on srdshopid = srhshopid and srdrequestid = srhrequestid
        where srhshopid = 1 and srhrequestid > 218 order by srhrequestid, srditemid" >"$folder/request.txt"
    diff "$root/tests/windows/$(basename "$0" .sh).txt" "$folder/request.txt"
}

fail() {
    echo "$@"
    exit 1
}

expect() {
    [ "$2" = "$3" ] || fail "$1: expected"$'\n'"$3"$'\nfound\n'"$2"
}

# The rest serves the packages, and ADO where there is none.

# unpack NAME FOLDER: makes the packages, and unpacks the one of that name there.
unpack() (
    flock 9 # another test may be at it too
    "$root/package" >"$OUT/package.log" 2>&1 </dev/null 9>&- || fail "$(tail -n 5 "$OUT/package.log")"
    mkdir "$2"
    cd "$2"
    cp "$root/dist/$1"-[0-9]*.zip .
    cmake -E tar xf ./*.zip
    sha256sum --quiet -c "$root/dist/$1"-[0-9]*.SHA256SUMS
    rm ./*.zip
    cd "$1"-*
    sha256sum --quiet -c SHA256SUMS
) 9>"$root/out/package.lock"

# What the registry keeps, without the times. It is written when the server ends.
registry() {
    timeout 20 wineserver -k || true
    timeout 20 wineserver -w
    sed -E -e 's/^(\[.*\]) [0-9]+$/\1/' -e '/^#time=|^"DriverDateData"/d' "$WINEPREFIX"/{system,user}.reg
    wineServe
}
# expectRegistry WHAT: nothing has changed in it since it was written to before.txt.
expectRegistry() {
    registry >"$OUT/after.txt"
    diff "$OUT/before.txt" "$OUT/after.txt" || fail "$1 has left something in the registry"
}

# registerAdo DLL BITS: has programs of 64 or 32 bits find the sandbox in that DLL under ADO's names.
registerAdo() {
    local id name server
    grep '|ADODB\.' "$root/sandbox/host/classes.txt" | while IFS='|' read -r id name _; do
        server="HKLM\\Software\\Classes\\CLSID\\{$id}\\InprocServer32"
        wine_run reg add "HKLM\\Software\\Classes\\$name\\CLSID" /ve /d "{$id}" /f
        wine_run reg add "$server" /ve /d "$(wine_path "$1")" /f "/reg:$2"
        wine_run reg add "$server" /v ThreadingModel /d Apartment /f "/reg:$2"
    done >/dev/null
}
