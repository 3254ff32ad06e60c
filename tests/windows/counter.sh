# A clerk at a counter under German settings, by keys. What they get wrong is met where it happens, and nothing is lost.
# A comma parts the decimals, on the keypad too. Of thirty scans at a scanner's speed every third is of an item that the
# other shop does not carry; the other twenty are stored, each once.
for setting in 'sDecimal=,' 'sThousand=.' 'sDate=.' 'sShortDate=dd.MM.yyyy'; do
    wine_run reg add 'HKCU\Control Panel\International' /v "${setting%=*}" /d "${setting#*=}" /f >/dev/null
done

openRegister
step ctrl+Return "active frmRequest" german-request
# The arrows in the open list choose nothing.
step "alt+Down Down Down" "" 30-open-list
press Escape
step "Down Return" "focus frmRequest.txtRemarks"

# A date that is none, then one that the register does not show.
step "shift+Tab shift+Tab" "focus frmRequest.txtrequestDate"
type_keys tomorrow
step Tab "message \"tomorrow\" is no date" 31-no-date
step Return "focus frmRequest.txtrequestDate"
type_keys 1.2.2020
step "Tab Tab" "focus frmRequest.txtRemarks"
type_keys "$(printf 'far too long %.0s' {1..30})"
step Tab "focus frmRequest.lvwrequest"

# A barcode in the box of the quantity, which is then "2,5" by the letters' comma, and by the keypad's in the next line.
step Return "active frmRequestDetail"
enter 2901000000190 "focus frmRequestDetail.txtQuantity"
type_keys 2901000003375
step "Return Return Return" "message Is the quantity 2901000003375 right" 32-barcode-as-quantity
step alt+n "focus frmRequestDetail.txtQuantity"
step "2 comma 5 Return" "focus frmRequestDetail.txtBadQuantity" german-comma
step "Return Return" "focus frmRequestDetail.txtBarcode"
enter 2901000000206 "focus frmRequestDetail.txtQuantity"
step "2 KP_Decimal 5 Return" "focus frmRequestDetail.txtBadQuantity" german-KP_Decimal
step "Return Return" "focus frmRequestDetail.txtBarcode"
step Escape "unloaded frmRequestDetail"

step alt+o "message The remarks have" 33-remarks-too-long
step Return "focus frmRequest.txtRemarks"
press ctrl+shift+Home
type_keys Milk
step alt+o "message The request GR/128 is saved. Its date lies before" 34-not-in-the-register
step Return "active frmMaster"

# Two lines of remarks; as many scans as scans.txt has lines: a barcode, and the quantity where the item is carried.
step ctrl+Return "active frmRequest"
step "Down Return" "focus frmRequest.txtRemarks"
type_keys Milk
press ctrl+Return
enter "and bread" "focus frmRequest.lvwrequest"
step Return "active frmRequestDetail"
# shellcheck disable=SC2046 # a word for each key
timeout 120 xdotool key --delay 0 \
    $(sed -E 's/$/R/; s/ (.*)/R\1RR/; s/./& /g; s/R/Return/g' "$root/tests/windows/scans.txt")
await_log "focus frmRequestDetail.cmdbarcode"
step Escape "unloaded frmRequestDetail" german-lines
step alt+o "unloaded frmRequest" 35-broken-line

# It is opened after somebody else has confirmed it.
sqlite3 "$folder/company.db" "update mesRequesttoShopHeader set srhTransfinished = 1
    where srhshopid = 1 and srhrequestid = 222"
step alt+e "active frmRequest" 36-read-only
step Escape "unloaded frmRequest"
closeRegister
expectStored
