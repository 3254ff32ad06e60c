# The register by real keys: sorting, searching, rights, and a deletion with its reason. Which row is the current one shows
# in what the editor then asks the database for.
. "$root/tools/screen.sh"
. "$root/tools/host.sh"
folder=$OUT
makeCompany

openRegister() {
    startHost statements "$@"
    await_log "active frmMaster"
    focus_window "Goods Request To Shop"
}

closeRegister() {
    press alt+c
    awaitHost
}

numberOf() {
    stored "select srhrequestno from mesRequesttoShopHeader where srhshopid = $requesting and srhrequestid = $1"
}

# Opens the current row from the list's buttons, and leaves the editor again.
expectCurrent() {
    press alt+e
    await_log "active frmRequest"
    press Escape
    await_log "unloaded frmRequest"
    local id
    id=$(sed -nE 's/.* a\.srdrequestid = ([0-9]+) .*/\1/p' "$folder/statements.sql" | tail -n 1)
    if [ "$(numberOf "$id")" != "$2" ]; then
        echo "$1: the current row is $(numberOf "$id"), not $2"
        exit 1
    fi
}

# Sorted downwards by number, which is text: GR/99 comes first. The selection stays on the request that it was on.
openRegister
press alt+s
await_log "focus frmMaster.optDescend"
press space alt+o
await_log "focus frmMaster.cboColNames"
press Down
expectCurrent "sorted downwards by number" "GR/1"
press alt+o shift+Tab
await_log "focus frmMaster.flexMaster"
press Home
expectCurrent "the first row" "GR/99"

# Searched by number: one that is open, and that begins no other number.
sought=$(stored "select srhrequestno from mesRequesttoShopHeader where srhshopid = $requesting and hex(srhtype) = '72'
    and SRHcancelled = 0 and srhTransfinished = 0 and length(srhrequestno) = 5 and srhrequestid > 80 limit 1")
press alt+h
await_log "focus frmMaster.cboSearch"
press Down Return
await_log "focus frmMaster.txtsearch"
type_keys "${sought,,}"
expectCurrent "searched by number" "$sought"
closeRegister

# A deletion with its reason: the last request of the list is open, not confirmed and not used.
openRegister
press ctrl+d Delete
await_log "message Are you sure you want to Delete"
press alt+y
await_log "active frmcancelreason"
type_keys "Ordered twice"
press Return
await_log "focus frmcancelreason.cmdOk"
press Return
await_log "unloaded frmcancelreason"
closeRegister
cancelled=$(stored "select SRHcancelled, srhcancelledRemarks from mesRequesttoShopHeader where srhshopid = $requesting
    and hex(srhtype) = '72' order by srhrequestid desc limit 1")
if [ "$cancelled" != "1|Margaret Ellis:Ordered twice" ]; then
    echo "the deleted request reads $cancelled"
    exit 1
fi

# User 2 may not delete, user 3 may do nothing: neither key nor button gets through.
for user in 2 3; do
    openRegister --user "$user"
    press Delete
    [ "$user" -eq 2 ] || press ctrl+Return Return alt+n alt+e
    press alt+d
    closeRegister
    if grep -qE "message|active frmRequest" "$screenLog"; then
        echo "user $user got through: $(grep -E "message|active frmRequest" "$screenLog")"
        exit 1
    fi
done
