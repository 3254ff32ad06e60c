# A register with one text of 100 MB opens and paints it within a bound of memory, and closes again.
makeCompany
mostMemory=1000000 # KiB: the text passes database, record set, bridge and grid, at times in 16-bit letters
stored "update mesRequesttoShopHeader set SRHremarks = replace(hex(zeroblob(10000000)), '0', 'heavy')
    where srhshopid = $requesting and srhrequestid = (select max(srhrequestid) from mesRequesttoShopHeader
        where srhshopid = $requesting and hex(srhtype) = '72')"

openRegister
press ctrl+End shift+Tab
shot large-text
# The host's process among those of this prefix.
for process in /proc/[0-9]*; do
    ! grep -qzx "WINEPREFIX=$WINEPREFIX" "$process/environ" || ! grep -qx 'goodsreq-host.e.*' "$process/comm" ||
        memory=$(sed -nE 's/^VmHWM:\s*([0-9]+) kB/\1/p' "$process/status")
done 2>/dev/null
echo "it took $memory KiB"
press alt+c
awaitHost
expect "messages" "$(grep '^message' "$screenLog" || true)" ""
[ "$memory" -lt "$mostMemory" ]
