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
rm -f "$folder"/*.png "$folder"/{company.db*,statements.sql,request.txt,host.log,host.out}

trap wine_stop EXIT
trap 'exit 130' INT TERM HUP
wine_start

# The host runs beside us; its own log says what happens in its windows.
startHost() {
    screenLog=$folder/host.log
    rm -f "$screenLog"
    logSeen=0
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

# The database is read by its own shell, past everything that the module runs on. Only numbers are compared: text would
# need the company's collation.
stored() {
    sqlite3 -batch -noheader -separator '|' "$folder/company.db" "$1"
}

# What is typed: three items that shops 1 and 5 both carry, each named in another way.
requesting=1
supplying=5
both="a.active = 1 and hex(a.itemtype) <> '42' and p.active = 1 and s.shopid = $requesting
    and a.itemid in (select itemid from ashopitemdetail where shopid = $supplying)
    and a.itemcategoryid in (select itemcategoryid from ashopitemcategory where shopid = $requesting)
    and a.itemcategoryid in (select itemcategoryid from ashopitemcategory where shopid = $supplying)"
itemAt() {
    stored "select a.itemid, $2 from aitem a, ashopitemdetail s, aitempackingdetail p where a.itemid = s.itemid
        and p.itemid = a.itemid and $both and s.shortcutno is not null group by a.itemid order by a.itemid limit 1 offset $1"
}

# One line: the code and Enter, the quantity and Enter, over the bad quantity to OK, which is pressed.
enterLine() {
    type_keys "$1"
    press Return
    await_log "focus frmRequestDetail.txtQuantity"
    type_keys "$2"
    press Return
    await_log "focus frmRequestDetail.txtBadQuantity"
    shot "$3"
    press Return
    await_log "focus frmRequestDetail.cmdOk"
    press Return
    await_log "focus frmRequestDetail.txtBarcode"
}

# With a wrong key the host makes the sample company, shows nothing and ends.
startHost --key none
awaitHost
IFS='|' read -r firstItem barcode < <(itemAt 0 "min(p.packingbarcode || '')")
IFS='|' read -r secondItem code < <(itemAt 40 a.itemcode)
IFS='|' read -r thirdItem shortcut < <(itemAt 80 s.shortcutno)
[ -n "$barcode" ] && [ -n "$code" ] && [ -n "$shortcut" ]

startHost
await_log "active frmMaster"
focus_window "Goods Request To Shop"
shot 01-register

press ctrl+Return
await_log "active frmRequest"
shot 02-new-request
press alt+s
await_log "focus frmRequest.cboShop"
press Down
press Return
await_log "focus frmRequest.txtRemarks"
type_keys "For the weekend"
press Return
await_log "focus frmRequest.lvwrequest"
shot 03-shop-chosen

press Return
await_log "active frmRequestDetail"
shot 04-line-entry
press F3
await_log "active FetchWindow"
shot 04-item-search
press Escape
await_log "unloaded FetchWindow"
enterLine "$barcode" 5 05-line-by-barcode
enterLine "$code" 2.5 06-line-by-item-code
enterLine "$shortcut" 12 07-line-by-shortcut
press Escape
await_log "unloaded frmRequestDetail"
shot 08-lines
press alt+o
await_log "unloaded frmRequest"
shot 09-register-with-request

# The same request again: its second line gets another quantity.
press Return
await_log "active frmRequest"
shot 10-edit-request
press Tab Tab
await_log "focus frmRequest.lvwrequest"
press Down Return
await_log "active frmRequestDetail"
shot 11-edit-line
type_keys "9"
press Return
await_log "focus frmRequestDetail.txtBadQuantity"
press Return
await_log "focus frmRequestDetail.cmdOk"
press Return
await_log "focus frmRequestDetail.txtQuantity"
press Escape
await_log "unloaded frmRequestDetail"
shot 12-changed-line
press alt+o
await_log "unloaded frmRequest"
shot 13-register-at-the-end

# It is printed: as a report in the preview, then as a slip on the screen.
press alt+p
await_log "active frmPrint"
shot 14-print
press alt+o
await_log "active ReportWindow"
shot 15-report
press Escape
await_log "unloaded ReportWindow"
press shift+Tab
await_log "focus frmPrint.OptWindowsPrint"
press Down
await_log "focus frmPrint.optScreen"
press alt+o
await_window "ShopReq"
shot 16-slip
focus_window "ShopReq"
press alt+F4
await_no_window "ShopReq"
focus_window "Goods Request To Shop"

# The request before it is deleted, with a reason. A click goes to the list, Ctrl+D to its end.
click_in "Goods Request To Shop" 200 200
await_log "focus frmMaster.flexMaster"
press ctrl+d
press Up Delete
await_log "message Are you sure you want to Delete"
shot 17-delete
press alt+y
await_log "active frmcancelreason"
type_keys "Ordered twice"
shot 18-reason
press Return
await_log "focus frmcancelreason.cmdOk"
press Return
await_log "unloaded frmcancelreason"
shot 19-deleted
click_in "Goods Request To Shop" 200 200 3
await_log "menu mnupopup"
shot 20-register-menu
press Escape
await_log "chosen"
press alt+c
awaitHost

# The other kind of request has a price on its lines.
startHost --interface 1611
await_log "active frmMaster"
focus_window "Inter Division Sales Request"
press ctrl+Return
await_log "active frmRequest"
press alt+s
await_log "focus frmRequest.cboShop"
press Down Return
await_log "focus frmRequest.txtRemarks"
press Return
await_log "focus frmRequest.lvwrequest"
press Return
await_log "active frmRequestDetail"
type_keys "$barcode"
press Return
await_log "focus frmRequestDetail.txtQuantity"
shot 21-line-with-price
press Escape
await_log "unloaded frmRequestDetail"
press Escape
await_log "message Save Changes?"
shot 22-save-changes
press alt+n
await_log "unloaded frmRequest"
press alt+c
awaitHost

request=$(stored "select max(srhrequestid) from mesRequesttoShopHeader where srhshopid = $requesting")
{
    echo "number|shop|supplying shop|remarks|lines|type"
    stored "select srhrequestno, srhshopid, srhtoshopid, SRHremarks, srhNoofDetails, srhtype from mesRequesttoShopHeader
        where srhshopid = $requesting and srhrequestid = $request"
    echo "item|good quantity|bad quantity|supplying shop"
    stored "select srditemid, cast(srdgoodqty as real), cast(srdbadqty as real), srdtoshopid from mesRequesttoShopDetail
        where srdshopid = $requesting and srdrequestid = $request order by srditemid"
} >"$folder/request.txt"

expected=$(printf '%s\n' "$requesting|$supplying|For the weekend|3|r" "$firstItem|5.0|0.0|$supplying" \
    "$secondItem|9.0|0.0|$supplying" "$thirdItem|12.0|0.0|$supplying")
found=$(sed -n '2s/^[^|]*|//p; 4,$p' "$folder/request.txt")
if [ "$found" != "$expected" ]; then
    printf 'the stored request is not the one typed\ntyped:\n%s\nstored:\n%s\n' "$expected" "$found" >&2
    exit 1
fi
echo "the stored request is the one typed: $(sed -n 2p "$folder/request.txt")"
