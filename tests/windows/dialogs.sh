# The two dialogs over line entry by real keys: a code scanned into the one, an item searched for and chosen in the other. The
# stored line tells which item it was.
. "$root/tools/screen.sh"
. "$root/tools/host.sh"
folder=$OUT
hostFolder=$BUILD/tryout
makeCompany
IFS='|' read -r scanned barcode < <(items "min(p.packingbarcode || '')" | sed -n 5p)
IFS='|' read -r fetched code < <(items a.itemcode | sed -n 9p)

toDialog() {
    GOODSREQ_OPEN=$1 startHost statements
    toLineEntry "Goods Request To Shop"
    press F11
}

# The dialog has handed its item over: quantity 7, OK, and the request is saved.
saveLine() {
    await_log "focus frmRequestDetail.txtQuantity"
    await_log "unloaded $1"
    type_keys "7"
    press Return
    await_log "focus frmRequestDetail.txtBadQuantity"
    press Return
    await_log "focus frmRequestDetail.cmdOk"
    press Return
    await_log "focus frmRequestDetail.txtBarcode"
    press Escape
    await_log "unloaded frmRequestDetail"
    press alt+o
    await_log "unloaded frmRequest"
    press alt+c
    awaitHost
    local line
    line=$(stored "select srditemid, cast(srdgoodqty as real) from mesRequesttoShopDetail where srdshopid = $requesting
        and srdrequestid = (select max(srhrequestid) from mesRequesttoShopHeader where srhshopid = $requesting)")
    if [ "$line" != "$2|7.0" ]; then
        echo "$1: the stored line is $line, not item $2"
        exit 1
    fi
}

toDialog scan
await_log "active frmscanBc"
type_keys "$barcode"
press Return
saveLine frmscanBc "$scanned"

toDialog fetch
await_log "active FrmFetch"
# Back over OK's row to the column: item codes.
press alt+s
await_log "focus FrmFetch.cboFetch"
press Home Return
await_log "focus FrmFetch.txtFetch"
type_keys "${code,,}"
press Return
press Tab Tab Tab
await_log "focus FrmFetch.flexMaster"
press Return
saveLine FrmFetch "$fetched"
