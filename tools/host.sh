# Functions that run the sandbox's host and read what it left in the database. Sourced, never run; needs tools/wine.sh and
# tools/screen.sh, and a folder in $folder.
#
# makeCompany           makes the sample company in $folder/company.db
# startHost NAME OPTION...  starts the host beside us; its statements go to NAME.sql, its windows' log is awaited
# toLineEntry CAPTION   from its start to line entry for a new request; CAPTION is the register's
# awaitHost             waits until it has ended by itself; its exit status is ours
# stored QUERY          rows of the database, columns parted by "|"
# items COLUMN...       items that shops $requesting and $supplying both carry, with one packing row, so that each prints once: id and
#                       columns, a line each
requesting=1
supplying=5

startHost() {
    local name=$1
    shift
    screenLog=$folder/host.log
    rm -f "$screenLog"
    logSeen=0
    timeout --foreground -k 5 900 "$loader" "${hostFolder:-$DIST}/goodsreq-host.exe" --database "$(wine_path "$folder/company.db")" \
        --trace "$(wine_path "$folder/$name.sql")" --log "$(wine_path "$screenLog")" "$@" \
        >"$folder/host.out" 2>&1 </dev/null &
    programPid=$!
}

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
    local IFS=,
    stored "select a.itemid, $* from aitem a, ashopitemdetail s, aitempackingdetail p where a.itemid = s.itemid
        and p.itemid = a.itemid and a.active = 1 and hex(a.itemtype) <> '42' and p.active = 1 and s.shopid = $requesting
        and a.itemid in (select itemid from ashopitemdetail where shopid = $supplying)
        and a.itemcategoryid in (select itemcategoryid from ashopitemcategory where shopid = $requesting)
        and a.itemcategoryid in (select itemcategoryid from ashopitemcategory where shopid = $supplying)
        and s.shortcutno is not null group by a.itemid having count(*) = 1 order by a.itemid"
}

# The shop box's list is sorted by name, and the supplying shop is its first.
toLineEntry() {
    await_log "active frmMaster"
    focus_window "$1"
    press ctrl+Return
    await_log "active frmRequest"
    chooseShop
    press Return
    await_log "focus frmRequest.lvwrequest"
    press Return
    await_log "active frmRequestDetail"
}

# In a new request, which begins in the list of shops.
chooseShop() {
    press Down Return
    await_log "focus frmRequest.txtRemarks"
}
