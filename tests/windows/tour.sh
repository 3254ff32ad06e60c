# Plays two requests with real keys and mouse: tour.sh [DIR]. DIR, $OUT when none is named, receives a picture of each
# screen on the way, statements.sql (what the database was sent, one statement a line), request.txt (the stored rows)
# and slip.txt.
folder=$(realpath -m "${1:-$OUT}")
mkdir -p "$folder"
rm -f "$folder"/company.db*
hostFolder=$BUILD/tryout # with a way to the two dialogs

GOODSREQ_OPEN=fetch openRegister
shot 01-register
step ctrl+Return "active frmRequest" 02-new-request
# The list of shops is sorted by name.
step "Down Return" "focus frmRequest.txtRemarks"
enter "For the weekend" "focus frmRequest.lvwrequest" 03-shop-chosen
step Return "active frmRequestDetail" 04-line-entry
step F3 "active FetchWindow"
type_keys "Rye Loaf"
shot 04-item-search
step "Down Return" "unloaded FetchWindow"
step "" "focus frmRequestDetail.txtQuantity" 04-item-found
step shift+Tab "focus frmRequestDetail.txtBarcode"

# By barcode: the quantity and Enter, over the bad quantity to OK, which is pressed.
enter 2901000000190 "focus frmRequestDetail.txtQuantity"
enter 5 "focus frmRequestDetail.txtBadQuantity" 05-line-by-barcode
step "Return Return" "focus frmRequestDetail.txtBarcode"
# In the dialog: item codes are the first column.
step F11 "focus FrmFetch.txtFetch"
step alt+s "focus FrmFetch.cboFetch"
step "Home Return" "focus FrmFetch.txtFetch"
type_keys dy1032
step "Return Tab Tab Tab" "focus FrmFetch.flexMaster" 24-fetch
step Return "focus frmRequestDetail.txtQuantity"
await_log "unloaded FrmFetch"
enter 2.5 "focus frmRequestDetail.txtBadQuantity" 06-line-by-fetch
step "Return Return" "focus frmRequestDetail.txtBarcode"
# An item that the other shop lacks; by shortcut, from the Search button on.
enter 2901000000039 "focus frmRequestDetail.cmdbarcode" 25-not-carried
enter 263 "focus frmRequestDetail.txtQuantity"
enter 12 "focus frmRequestDetail.txtBadQuantity" 07-line-by-shortcut
step "Return Return" "focus frmRequestDetail.txtBarcode"
step Escape "unloaded frmRequestDetail" 08-lines
step alt+o "unloaded frmRequest" 09-register-with-request

# The same request again: its second line gets another quantity.
step Return "active frmRequest" 10-edit-request
step Tab "focus frmRequest.lvwrequest"
step "Down Return" "active frmRequestDetail" 11-edit-line
enter 9 "focus frmRequestDetail.txtBadQuantity"
step "Return Return" "focus frmRequestDetail.txtQuantity"
step Escape "unloaded frmRequestDetail" 12-changed-line
step alt+o "unloaded frmRequest" 13-register-at-the-end

# It is printed: as a report in the preview, then as a slip on the screen.
step alt+p "active frmPrint" 14-print
step alt+o "active ReportWindow" 15-report
step Escape "unloaded ReportWindow"
step shift+Tab "focus frmPrint.OptWindowsPrint"
step Down "focus frmPrint.optScreen"
press alt+o
focus_window ShopReq
shot 16-slip
tr -d '\r' <"$WINEPREFIX/drive_c/ShopReq.txt" >"$folder/slip.txt"
grep -q "^Remarks      : For the weekend" "$folder/slip.txt"
press alt+F4
while xdotool search --onlyvisible --name ShopReq >/dev/null; do sleep 0.2; done
focus_window "$register"

# The request before it is deleted, with a reason. A click goes to the list, Ctrl+D to its end.
at_window "$register" mousemove --window %1 200 200 click 1
await_log "focus frmMaster.flexMaster"
press ctrl+d
step "Up Delete" "message Are you sure you want to Delete" 17-delete
step alt+y "active frmcancelreason"
type_keys "Ordered twice"
shot 18-reason
step Return "focus frmcancelreason.cmdOk"
step Return "unloaded frmcancelreason" 19-deleted
at_window "$register" mousemove --window %1 200 200 click 3
step "" "menu mnupopup" 20-register-menu
step Escape chosen
closeRegister

# The other kind of request has a price on its lines. A code is scanned into the dialog.
register="Inter Division Sales Request"
GOODSREQ_OPEN=scan openRegister --interface 1611 --trace "$(wine_path "$folder/statements-1611.sql")"
step ctrl+Return "active frmRequest"
step "Down Return Return" "focus frmRequest.lvwrequest"
step Return "active frmRequestDetail"
step F11 "active frmscanBc" 23-scan
enter 2901000000190 "focus frmRequestDetail.txtQuantity"
step "" "unloaded frmscanBc" 21-line-with-price
enter 7 "focus frmRequestDetail.txtBadQuantity"
step Return "focus frmRequestDetail.txtsellingprice"
step "Return Return" "focus frmRequestDetail.txtBarcode"
step Escape "unloaded frmRequestDetail"
step Escape "message Save Changes?" 22-save-changes
step alt+y "unloaded frmRequest"
closeRegister
expectStored
echo "the stored requests are those typed: $(tail -n 1 "$folder/request.txt")"
