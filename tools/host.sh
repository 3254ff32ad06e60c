# Functions that run the sandbox's host and read what it left in the database. Sourced, never run; needs tools/wine.sh
# and tools/screen.sh. The company lies in $folder ($OUT); the host is that of $hostFolder ($DIST).
#
# makeCompany           makes the sample company in $folder/company.db
# beginHost OPTION...   starts the host beside us, which reads what we read; its windows' log is awaited
# startHost NAME OPTION...  the same on the company; its statements go to NAME.sql
# openRegister OPTION...    the same, until the register is there and has the keyboard; its title is $register
# toLineEntry TITLE     from the host's start to line entry for a new request; TITLE is the register's ($register)
# awaitHost [STATUS]    waits until it has ended by itself, with that exit status (0)
# closeRegister [STATUS]  closes the register $register by its button, and awaits the host
# expect WHAT FOUND EXPECTED    ends the script where both differ
# stored QUERY          rows of the database, columns parted by "|"
# items COLUMN [WHERE]  items that shops $requesting and $supplying both carry, with one packing row, so that each
#                       prints once: id and columns, a line each
# notCarried            barcodes of items that shop $supplying does not carry
# lastRequest           the id of the newest request of shop $requesting
# linesOf REQUEST       its lines: item, good and bad quantity, supplying shop
requesting=1
supplying=5
folder=$OUT
register="Goods Request To Shop"

beginHost() {
    screenLog=$folder/host.log logSeen=0
    rm -f "$screenLog"
    timeout --foreground -k 5 900 "$loader" "${hostFolder:-$DIST}/goodsreq-host.exe" \
        --log "$(wine_path "$screenLog")" "$@" >"$folder/host.out" 2>&1 <&0 &
    programPid=$!
}

startHost() {
    beginHost --database "$(wine_path "$folder/company.db")" --trace "$(wine_path "$folder/$1.sql")" "${@:2}" </dev/null
}

openRegister() {
    startHost statements "$@"
    await_log "active frmMaster" 120
    focus_window "$register"
}

hostEnded() {
    ! kill -0 "$programPid" 2>/dev/null
}

awaitHost() {
    local process=$programPid status=0
    awaitThat 30 "the host's end" hostEnded || return 1
    programPid=""
    wait "$process" || status=$?
    expect "the host's exit status" "$status" "${1:-0}"
}

closeRegister() {
    focus_window "$register"
    press alt+c
    awaitHost "$@"
}

# With a wrong key the host makes the company, shows nothing and ends.
makeCompany() {
    startHost making --key none
    awaitHost
}

# The database is read by its own shell, past everything that the module runs on. Only numbers are compared: text would
# need the company's collation.
stored() {
    sqlite3 -batch -noheader -separator '|' "$folder/company.db" "$1"
}

items() {
    stored "select a.itemid, $1 from aitem a, ashopitemdetail s, aitempackingdetail p where a.itemid = s.itemid
        and p.itemid = a.itemid and a.active = 1 and hex(a.itemtype) <> '42' and p.active = 1 and s.shopid = $requesting
        and a.itemid in (select itemid from ashopitemdetail where shopid = $supplying)
        and a.itemcategoryid in (select itemcategoryid from ashopitemcategory where shopid = $requesting)
        and a.itemcategoryid in (select itemcategoryid from ashopitemcategory where shopid = $supplying)
        and ${2:-s.shortcutno is not null} group by a.itemid having count(*) = 1 order by a.itemid"
}

notCarried() {
    stored "select min(p.packingbarcode || '') from aitempackingdetail p, aitem a where a.itemid = p.itemid
        and a.active = 1 and p.active = 1 and hex(a.itemtype) <> '42'
        and p.itemid not in (select itemid from ashopitemdetail where shopid = $supplying) group by a.itemid"
}

lastRequest() {
    stored "select max(srhrequestid) from mesRequesttoShopHeader where srhshopid = $requesting"
}

linesOf() {
    stored "select srditemid, cast(srdgoodqty as real), cast(srdbadqty as real), srdtoshopid from mesRequesttoShopDetail
        where srdshopid = $requesting and srdrequestid = $1 order by srditemid"
}

toLineEntry() {
    await_log "active frmMaster"
    focus_window "${1:-$register}"
    step ctrl+Return "active frmRequest"
    chooseShop
    step Return "focus frmRequest.lvwrequest"
    step Return "active frmRequestDetail"
}

# In a new request, which begins in the list of shops. That is sorted by name, and the supplying shop is its first.
chooseShop() {
    step "Down Return" "focus frmRequest.txtRemarks"
}

fail() {
    echo "$@"
    exit 1
}

expect() {
    [ "$2" = "$3" ] || fail "$1: expected"$'\n'"$3"$'\nfound\n'"$2"
}

expectNoMessage() {
    expect messages "$(grep '^message' "$screenLog" || true)" ""
}

germanSettings() {
    local setting
    for setting in 'sDecimal=,' 'sThousand=.' 'sDate=.' 'sShortDate=dd.MM.yyyy'; do
        wine_run reg add 'HKCU\Control Panel\International' /v "${setting%%=*}" /d "${setting#*=}" /f >/dev/null
    done
}

# The rest serves the packages, and ADO where there is none.

# unpack NAME FOLDER: makes the packages, and unpacks the one of that name there.
unpack() (
    flock 9 # the other width's test may be at it too
    "$root/package" >"$OUT/package.log" 2>&1 </dev/null 9>&- || fail "$(tail -n 5 "$OUT/package.log")"
    mkdir "$2"
    cd "$2"
    sha256sum --quiet -c <(sed "s|  |  $root/dist/|;q" "$root/dist/$1"-[0-9]*.SHA256SUMS)
    cmake -E tar xf "$root/dist/$1"-[0-9]*.zip
    sha256sum --quiet -c <(sed 1d "$root/dist/$1"-[0-9]*.SHA256SUMS)
    cd "$1"-[0-9]*
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
