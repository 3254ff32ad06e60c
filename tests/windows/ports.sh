# The slip to a printer port and to a shared printer; plain files stand in for the printers, where Wine looks for its
# devices and shares. Then one text of 100 MB comes into the register, which paints it within a bound of memory.
hostFolder=$OUT/host
cp -r "$DIST" "$hostFolder"
devices=$WINEPREFIX/dosdevices
mkdir -p "$devices/unc/till"

openRegister
# Wine clears away the ports that the machine lacks whenever its device manager starts.
ln -sf "$OUT/lpt1.out" "$devices/lpt1"
: >"$OUT/lpt1.out"
for port in LPT1 '\\\\till\\slips'; do
    sed -i -E "s/^(port|printtoscreen|windowsprint) :=.*\r/\1 :=0\r/; s/^port :=0/port :=$port/" "$hostFolder/ShopSetting.txt"
    step alt+p "active frmPrint"
    step alt+o "unloaded frmPrint"
done
for slip in "$OUT/lpt1.out" "$devices/unc/till/SLIPS"; do
    grep -q $'^To : .*\r$' "$slip"
    grep -q $'^ *Margaret Ellis - .*:[0-9][0-9]\r$' "$slip"
done
closeRegister

sqlite3 "$folder/company.db" "update mesRequesttoShopHeader set srhremarks = replace(hex(zeroblob(10000000)), '0', 'heavy')
    where srhshopid = 1 and srhrequestid = 219"
openRegister
press ctrl+End shift+Tab
shot large-text
# KiB: the text passes database, record set, bridge and grid, at times in 16-bit letters.
for process in $(wine_processes); do
    ! grep -qsx 'goodsreq-host.e.*' "$process/comm" || memory=$(sed -nE 's/^VmHWM:\s*([0-9]+) kB/\1/p' "$process/status")
done
closeRegister
[ "$memory" -lt 1000000 ] || fail "it took $memory KiB"
expect messages "$(grep '^message' "$folder/host.log" || true)" ""
