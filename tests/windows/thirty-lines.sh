# A request of thirty lines by keys alone, for both kinds: each line's code, quantity and OK are typed without a pause, as
# a scanner and quick fingers do; what is stored is what was typed.
. "$root/tools/screen.sh"
. "$root/tools/host.sh"
folder=$OUT
makeCompany

enterRequest() {
    local caption=$1 price=$2 quantity=0 item barcode
    shift 2
    startHost statements "$@"
    toLineEntry "$caption"
    expected=""
    while IFS='|' read -r item barcode; do
        quantity=$((quantity + 1))
        # Enter goes on from the code to both quantities, to the price where there is one, and presses OK.
        press $(grep -o . <<<"$barcode") Return $(grep -o . <<<"$quantity") Return Return $price Return
        await_log "focus frmRequestDetail.cmdOk"
        await_log "focus frmRequestDetail.txtBarcode"
        expected+="$item|$quantity"$'\n'
    done < <(items "min(p.packingbarcode || '')" | awk 'NR % 3 == 1' | head -n 30)
    press Escape
    await_log "unloaded frmRequestDetail"
    press alt+o
    await_log "unloaded frmRequest"
    press alt+c
    awaitHost
    found=$(stored "select srditemid, cast(srdgoodqty as integer) from mesRequesttoShopDetail where srdshopid = $requesting
        and srdrequestid = (select max(srhrequestid) from mesRequesttoShopHeader where srhshopid = $requesting)
        order by srditemid")
    if [ "$found" != "${expected%$'\n'}" ] || [ "$quantity" -ne 30 ]; then
        printf '%s: stored\n%s\ntyped\n%s\n' "$caption" "$found" "$expected"
        exit 1
    fi
}

enterRequest "Goods Request To Shop" "" --interface 1507
enterRequest "Inter Division Sales Request" Return --interface 1611
