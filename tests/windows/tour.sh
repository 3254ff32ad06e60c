# Plays two requests with real keys and mouse: tour.sh [DIR]. DIR, $OUT when none is named, receives a picture of each
# screen on the way, statements.sql (what the database was sent, one statement a line), request.txt (the stored rows)
# and slip.txt.
mkdir -p "${1:-$OUT}"
folder=$(cd "${1:-$OUT}" && pwd)
shotFolder=$folder
rm -f "$folder"/*.png "$folder"/{company.db*,making.sql,statements*.sql,request.txt,slip.txt,host.log,host.out}
hostFolder=$BUILD/tryout # with a way to the two dialogs

# The quantity and Enter, over the bad quantity to OK, which is pressed.
enterQuantity() {
    enter "$1" "focus frmRequestDetail.txtBadQuantity" "${2:-}"
    step Return "focus frmRequestDetail.cmdOk"
}
enterLine() {
    enter "$1" "focus frmRequestDetail.txtQuantity"
    enterQuantity "$2" "$3"
    step Return "focus frmRequestDetail.txtBarcode"
}

# What is typed: items, each named in another way.
makeCompany
IFS='|' read -r firstItem barcode < <(items "min(p.packingbarcode || '')" | sed -n 1p)
IFS='|' read -r secondItem code < <(items a.itemcode | sed -n 7p)
IFS='|' read -r thirdItem shortcut < <(items s.shortcutno | sed -n 13p)

GOODSREQ_OPEN=fetch openRegister
shot 01-register
step ctrl+Return "active frmRequest" 02-new-request
chooseShop
enter "For the weekend" "focus frmRequest.lvwrequest" 03-shop-chosen
step Return "active frmRequestDetail" 04-line-entry
step F3 "active FetchWindow"
type_keys "Rye Loaf"
shot 04-item-search
step "Down Return" "unloaded FetchWindow"
step "" "focus frmRequestDetail.txtQuantity" 04-item-found
step shift+Tab "focus frmRequestDetail.txtBarcode"
enterLine "$barcode" 5 05-line-by-barcode
# In the dialog: item codes are the first column.
step F11 "focus FrmFetch.txtFetch"
step alt+s "focus FrmFetch.cboFetch"
step "Home Return" "focus FrmFetch.txtFetch"
type_keys "${code,,}"
step "Return Tab Tab Tab" "focus FrmFetch.flexMaster" 24-fetch
step Return "focus frmRequestDetail.txtQuantity"
await_log "unloaded FrmFetch"
enterQuantity 2.5 06-line-by-fetch
step Return "focus frmRequestDetail.txtBarcode"
enter "$(notCarried | sed -n 1p)" "focus frmRequestDetail.cmdbarcode" 25-not-carried
enterLine "$shortcut" 12 07-line-by-shortcut # from the Search button on
step Escape "unloaded frmRequestDetail" 08-lines
step alt+o "unloaded frmRequest" 09-register-with-request

# The same request again: its second line gets another quantity.
step Return "active frmRequest" 10-edit-request
step Tab "focus frmRequest.lvwrequest"
step "Down Return" "active frmRequestDetail" 11-edit-line
enterQuantity 9
step Return "focus frmRequestDetail.txtQuantity"
step Escape "unloaded frmRequestDetail" 12-changed-line
step alt+o "unloaded frmRequest" 13-register-at-the-end

# It is printed: as a report in the preview, then as a slip on the screen.
step alt+p "active frmPrint" 14-print
step alt+o "active ReportWindow" 15-report
step Escape "unloaded ReportWindow"
step shift+Tab "focus frmPrint.OptWindowsPrint"
step Down "focus frmPrint.optScreen"
press alt+o
await_window ShopReq
shot 16-slip
tr -d '\r' <"$WINEPREFIX/drive_c/ShopReq.txt" >"$folder/slip.txt"
grep -q "^Remarks      : For the weekend" "$folder/slip.txt"
focus_window ShopReq
press alt+F4
while findWindow ShopReq >/dev/null; do sleep 0.2; done
focus_window "$register"

# The request before it is deleted, with a reason. A click goes to the list, Ctrl+D to its end.
click_in "$register" 200 200
await_log "focus frmMaster.flexMaster"
press ctrl+d
step "Up Delete" "message Are you sure you want to Delete" 17-delete
step alt+y "active frmcancelreason"
type_keys "Ordered twice"
shot 18-reason
step Return "focus frmcancelreason.cmdOk"
step Return "unloaded frmcancelreason" 19-deleted
click_in "$register" 200 200 3
step "" "menu mnupopup" 20-register-menu
step Escape chosen
closeRegister

request=$(lastRequest)
expect "the deleted request" "$(stored "select SRHcancelled, srhcancelledRemarks from mesRequesttoShopHeader
    where srhshopid = $requesting and hex(srhtype) = '72' and srhrequestid < $request
    order by srhrequestid desc limit 1")" \
    "1|Margaret Ellis:Ordered twice"
{
    echo "number|shop|supplying shop|remarks|lines|type"
    stored "select srhrequestno, srhshopid, srhtoshopid, SRHremarks, srhNoofDetails, srhtype from mesRequesttoShopHeader
        where srhshopid = $requesting and srhrequestid = $request"
    echo "item|good quantity|bad quantity|supplying shop"
    linesOf "$request"
} >"$folder/request.txt"
expect "the stored request" "$(sed -n '2s/^[^|]*|//p; 4,$p' "$folder/request.txt")" \
    "$(printf '%s\n' "$requesting|$supplying|For the weekend|3|r" "$firstItem|5.0|0.0|$supplying" \
        "$secondItem|9.0|0.0|$supplying" "$thirdItem|12.0|0.0|$supplying")"

# The other kind of request has a price on its lines. A code is scanned into the dialog.
GOODSREQ_OPEN=scan startHost statements-1611 --interface 1611
toLineEntry "Inter Division Sales Request"
step F11 "active frmscanBc" 23-scan
enter "$barcode" "focus frmRequestDetail.txtQuantity"
step "" "unloaded frmscanBc" 21-line-with-price
enter 7 "focus frmRequestDetail.txtBadQuantity"
step Return "focus frmRequestDetail.txtsellingprice"
step Return "focus frmRequestDetail.cmdOk"
step Return "focus frmRequestDetail.txtBarcode"
step Escape "unloaded frmRequestDetail"
step Escape "message Save Changes?" 22-save-changes
step alt+y "unloaded frmRequest"
press alt+c
awaitHost
expect "the scanned line" "$(linesOf "$(lastRequest)")" "$firstItem|7.0|0.0|$supplying"
rm -f "$folder/making.sql"
echo "the stored request is the one typed: $(sed -n 2p "$folder/request.txt")"
