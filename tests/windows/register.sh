# The register by real keys: sorting, searching and rights. Which row is the current one shows in what the editor then
# asks the database for.
makeCompany

# Opens the current row from the list's buttons, and leaves the editor again.
expectCurrent() {
    step alt+e "active frmRequest"
    step Escape "unloaded frmRequest"
    local id
    id=$(sed -nE 's/.* a\.srdrequestid = ([0-9]+) .*/\1/p' "$folder/statements.sql" | tail -n 1)
    expect "$1: the current row" "$(stored "select srhrequestno from mesRequesttoShopHeader
        where srhshopid = $requesting and srhrequestid = $id")" "$2"
}

# Sorted downwards by number, which is text: GR/99 comes first. The selection stays on the request that it was on.
openRegister
step alt+s "focus frmMaster.optDescend"
step "space alt+o" "focus frmMaster.cboColNames"
press Down
expectCurrent "sorted downwards by number" GR/1
step "alt+o shift+Tab" "focus frmMaster.flexMaster"
press Home
expectCurrent "the first row" GR/99

# Searched by number: one that is open, and that begins no other number.
sought=$(stored "select srhrequestno from mesRequesttoShopHeader where srhshopid = $requesting and hex(srhtype) = '72'
    and SRHcancelled = 0 and srhTransfinished = 0 and length(srhrequestno) = 5 and srhrequestid > 80 limit 1")
step alt+h "focus frmMaster.cboSearch"
step "Down Return" "focus frmMaster.txtsearch"
type_keys "${sought,,}"
expectCurrent "searched by number" "$sought"
closeRegister

# User 2 may not delete, user 3 may do nothing: neither key nor button gets through.
for user in 2 3; do
    openRegister --user "$user"
    press Delete
    [ "$user" -eq 2 ] || press ctrl+Return Return alt+n alt+e
    press alt+d alt+c
    awaitHost
    expect "user $user" "$(grep -E "message|active frmRequest" "$screenLog" || true)" ""
done
