# A register with one text of 100 MB opens and paints it within a bound of memory, and closes again.
makeCompany
mostMemory=1000000 # KiB: the text passes database, record set, bridge and grid, at times in 16-bit letters
stored "update mesRequesttoShopHeader set SRHremarks = replace(hex(zeroblob(10000000)), '0', 'heavy')
    where srhshopid = $requesting and srhrequestid = (select max(srhrequestid) from mesRequesttoShopHeader
        where srhshopid = $requesting and hex(srhtype) = '72')"

openRegister
press ctrl+End shift+Tab
shot large-text
for process in $(wine_processes); do
    ! grep -qsx 'goodsreq-host.e.*' "$process/comm" || memory=$(sed -nE 's/^VmHWM:\s*([0-9]+) kB/\1/p' "$process/status")
done
echo "it took $memory KiB"
closeRegister
expectNoMessage
[ "$memory" -lt "$mostMemory" ]
