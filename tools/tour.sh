#!/bin/bash
# Plays one request with real keys and mouse in a virtual screen: tour.sh DIR. DIR receives a picture of each screen
# on the way, statements.sql (what the database was sent, one statement a line), request.txt (the stored rows) and slip.txt.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
. "$root/tools/wine.sh"
. "$root/tools/screen.sh"
. "$root/tools/host.sh"

[ $# -eq 1 ] || {
    echo "usage: tools/tour.sh DIR" >&2
    exit 2
}
mkdir -p "$1"
folder=$(cd "$1" && pwd)
shotFolder=$folder
rm -f "$folder"/*.png "$folder"/{company.db*,making.sql,statements*.sql,request.txt,slip.txt,host.log,host.out}

trap wine_stop EXIT
trap 'exit 130' INT TERM HUP
wine_start

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

# What is typed: three items, each named in another way.
makeCompany
IFS='|' read -r firstItem barcode < <(items "min(p.packingbarcode || '')" | sed -n 1p)
IFS='|' read -r secondItem code < <(items a.itemcode | sed -n 7p)
IFS='|' read -r thirdItem shortcut < <(items s.shortcutno | sed -n 13p)
notCarried=$(stored "select min(p.packingbarcode || '') from aitempackingdetail p, aitem a where a.itemid = p.itemid
    and a.active = 1 and p.active = 1 and hex(a.itemtype) <> '42'
    and p.itemid not in (select itemid from ashopitemdetail where shopid = $supplying)")
[ -n "$barcode" ] && [ -n "$code" ] && [ -n "$shortcut" ] && [ -n "$notCarried" ]

hostFolder=$BUILD/tryout # with a way to the two dialogs
GOODSREQ_OPEN=fetch startHost statements
await_log "active frmMaster"
focus_window "Goods Request To Shop"
shot 01-register

press ctrl+Return
await_log "active frmRequest"
shot 02-new-request
chooseShop
type_keys "For the weekend"
press Return
await_log "focus frmRequest.lvwrequest"
shot 03-shop-chosen

press Return
await_log "active frmRequestDetail"
shot 04-line-entry
press F11
await_log "focus FrmFetch.txtFetch"
type_keys "Loaf"
press Return Tab Tab Tab
await_log "focus FrmFetch.flexMaster"
shot 24-fetch
press Escape
await_log "unloaded FrmFetch"
press F3
await_log "active FetchWindow"
type_keys "Rye Loaf"
shot 04-item-search
press Down Return
await_log "unloaded FetchWindow"
await_log "focus frmRequestDetail.txtQuantity"
shot 04-item-found
press shift+Tab
await_log "focus frmRequestDetail.txtBarcode"
enterLine "$barcode" 5 05-line-by-barcode
type_keys "$notCarried"
press Return
await_log "focus frmRequestDetail.cmdbarcode"
shot 25-not-carried
enterLine "$code" 2.5 06-line-by-item-code # from the Search button on
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
press Tab
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
if ! grep -q "^Remarks      : For the weekend" "$WINEPREFIX/drive_c/ShopReq.txt"; then
    echo "C:\\ShopReq.txt does not hold the request" >&2
    exit 1
fi
tr -d '\r' <"$WINEPREFIX/drive_c/ShopReq.txt" >"$folder/slip.txt"
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
GOODSREQ_OPEN=scan startHost statements-1611 --interface 1611
toLineEntry "Inter Division Sales Request"
press F11
await_log "active frmscanBc"
shot 23-scan
type_keys "$barcode"
press Return
await_log "focus frmRequestDetail.txtQuantity"
await_log "unloaded frmscanBc"
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

rm -f "$folder/making.sql"
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
