# A register with one text of 100 MB opens and paints it within a bound of memory, and closes again.
. "$root/tools/screen.sh"
. "$root/tools/host.sh"
folder=$OUT
makeCompany
mostMemory=1000000 # KiB: the text goes through the database, the record set, the bridge and the grid, at times in 16-bit letters

last="select max(srhrequestid) from mesRequesttoShopHeader where srhshopid = $requesting and hex(srhtype) = '72'"
stored "update mesRequesttoShopHeader set SRHremarks = replace(hex(zeroblob(10000000)), '0', 'heavy') where srhshopid = $requesting
    and srhrequestid = ($last)"

# The host's process among those of this prefix.
hostProcess() {
    local process
    for process in /proc/[0-9]*; do
        if grep -qz "^WINEPREFIX=$WINEPREFIX\$" "$process/environ" && grep -qx 'goodsreq-host.e.*' "$process/comm"; then
            echo "${process#/proc/}"
        fi
    done 2>/dev/null | tail -n 1
}

startHost statements
await_log "active frmMaster" 120
focus_window "Goods Request To Shop"
press ctrl+End
press shift+Tab
shot large-text
memory=$(sed -nE 's/^VmHWM:\s*([0-9]+) kB/\1/p' "/proc/$(hostProcess)/status")
echo "it took $memory KiB"
press alt+c
awaitHost
if grep '^message' "$screenLog"; then
    exit 1
fi
[ "$memory" -lt "$mostMemory" ]
