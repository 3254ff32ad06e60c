# Functions that run the sandbox's host and read what it left in the database. Sourced, never run; needs tools/wine.sh
# and tools/screen.sh. The company lies in $folder ($OUT); the host is that of $hostFolder ($DIST).
#
# makeCompany           makes the sample company in $folder/company.db
# startHost NAME OPTION...  starts the host beside us; its statements go to NAME.sql, its windows' log is awaited
# openRegister OPTION...    the same, until the register is there and has the keyboard; its title is $register
# germanSettings        a comma parts decimals, points part dates
# toLineEntry TITLE     from the host's start to line entry for a new request; TITLE is the register's
# awaitHost             waits until it has ended by itself; its exit status is ours
# expect WHAT FOUND EXPECTED    ends the script where both differ
# stored QUERY          rows of the database, columns parted by "|"
# items COLUMN [WHERE]  items that shops $requesting and $supplying both carry, with one packing row, so that each
#                       prints once: id and columns, a line each
requesting=1
supplying=5
folder=${OUT:-.}
register="Goods Request To Shop"

startHost() {
    local name=$1
    shift
    screenLog=$folder/host.log
    rm -f "$screenLog"
    logSeen=0
    timeout --foreground -k 5 900 "$loader" "${hostFolder:-$DIST}/goodsreq-host.exe" \
        --database "$(wine_path "$folder/company.db")" --trace "$(wine_path "$folder/$name.sql")" \
        --log "$(wine_path "$screenLog")" "$@" >"$folder/host.out" 2>&1 </dev/null &
    programPid=$!
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
    local process=$programPid
    awaitThat 30 "the host's end" hostEnded || return 1
    programPid=""
    wait "$process"
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

toLineEntry() {
    await_log "active frmMaster"
    focus_window "$1"
    step ctrl+Return "active frmRequest"
    chooseShop
    step Return "focus frmRequest.lvwrequest"
    step Return "active frmRequestDetail"
}

# In a new request, which begins in the list of shops. That is sorted by name, and the supplying shop is its first.
chooseShop() {
    step "Down Return" "focus frmRequest.txtRemarks"
}

expect() {
    [ "$2" = "$3" ] || {
        printf '%s: expected\n%s\nfound\n%s\n' "$1" "$3" "$2"
        exit 1
    }
}

germanSettings() {
    local setting
    for setting in 'sDecimal=,' 'sThousand=.' 'sDate=.' 'sShortDate=dd.MM.yyyy'; do
        wine_run reg add 'HKCU\Control Panel\International' /v "${setting%%=*}" /d "${setting#*=}" /f >/dev/null
    done
}
