# What a clerk gets wrong, by keys, and one who may do nothing: missteps.sh [DIR]. Each is met where it happens, and
# nothing is lost. DIR, $OUT when none is named, receives the pictures.
mkdir -p "${1:-$OUT}"
shotFolder=${1:-$OUT}
makeCompany
IFS='|' read -r item barcode < <(items "min(p.packingbarcode || '')" | sed -n 1p)
# From the list of lines to a line of that quantity, and back. A digit too many is asked about.
addLine() {
    step Return "active frmRequestDetail"
    enter "$barcode" "focus frmRequestDetail.txtQuantity"
    enter "$1" "focus frmRequestDetail.txtBadQuantity"
    step Return "focus frmRequestDetail.cmdOk"
}

# The arrows in the open list choose nothing.
openRegister
step ctrl+Return "active frmRequest"
step "alt+Down Down Down" "" 30-open-list
press Escape
chooseShop

# A date that is none, then one that the register does not show.
step shift+Tab "focus frmRequest.cboShop"
step shift+Tab "focus frmRequest.txtrequestDate"
type_keys "tomorrow"
step Tab "message \"tomorrow\" is no date" 31-no-date
step Return "focus frmRequest.txtrequestDate"
type_keys "1/2/2020"
step Tab "focus frmRequest.cboShop"
step Tab "focus frmRequest.txtRemarks"
type_keys "$(printf 'far too long %.0s' {1..30})"
step Tab "focus frmRequest.lvwrequest"

# A barcode in the box of the quantity.
addLine 2901000003375
step Return "message Is the quantity 2901000003375 right" 32-barcode-as-quantity
step alt+n "focus frmRequestDetail.txtQuantity"
enter 5 "focus frmRequestDetail.txtBadQuantity"
step Return "focus frmRequestDetail.cmdOk"
step Return "focus frmRequestDetail.txtBarcode"
step Escape "unloaded frmRequestDetail"

step alt+o "message The remarks have" 33-remarks-too-long
step Return "focus frmRequest.txtRemarks"
press ctrl+shift+Home
type_keys "Milk"
press ctrl+Return
type_keys "and bread"
step alt+o "Its date lies before" 34-not-in-the-register
step Return "active frmMaster"
request=$(lastRequest)
expect "the remarks" "$(stored "select SRHremarks from mesRequesttoShopHeader where srhshopid = $requesting
    and srhrequestid = $request")" $'Milk\r\nand bread'
expect "the line" "$(linesOf "$request")" "$item|5.0|0.0|$supplying"

# The same remarks in the register, and the request after somebody else has confirmed it.
step ctrl+Return "active frmRequest"
chooseShop
type_keys "Milk"
press ctrl+Return
type_keys "and bread"
step Tab "focus frmRequest.lvwrequest"
addLine 3
step Return "focus frmRequestDetail.txtBarcode"
step Escape "unloaded frmRequestDetail"
step alt+o "unloaded frmRequest" 35-broken-line
request=$(lastRequest)
expect "the other's line" "$(linesOf "$request")" "$item|3.0|0.0|$supplying"
# Sorted downwards, as text, and found by its number from another row.
step alt+s "focus frmMaster.optDescend"
step "space alt+o" "focus frmMaster.cboColNames"
step "Down alt+o shift+Tab" "focus frmMaster.flexMaster"
press Home
step alt+h "focus frmMaster.cboSearch"
step "Down Return" "focus frmMaster.txtsearch"
type_keys "$(stored "select lower(srhrequestno) from mesRequesttoShopHeader where srhshopid = $requesting
    and srhrequestid = $request")"
stored "update mesRequesttoShopHeader set srhTransfinished = 1
    where srhshopid = $requesting and srhrequestid = $request"
step alt+e "active frmRequest" 36-read-only
step Escape "unloaded frmRequest"
closeRegister
expect "the opened request" "$(sed -nE 's/.* a\.srdrequestid = ([0-9]+) .*/\1/p' "$folder/statements.sql" | tail -n 1)" \
    "$request"

# A user without rights: neither key nor button gets through.
openRegister --user 3
press Delete ctrl+Return Return alt+n alt+e alt+d alt+c
awaitHost
expect "without rights" "$(grep -E "message|active frmRequest" "$screenLog" || true)" ""
