# The slip to a printer port, to a shared printer and to a port that is not there. Plain files stand in for the
# printers, where Wine looks for its devices and shares. Then one text of 100 MB comes into the register, which paints it
# within a bound of memory.
hostFolder=$OUT/host
cp -r "$DIST" "$hostFolder"
devices=$WINEPREFIX/dosdevices
mkdir -p "$devices/unc/till"

setPort() {
    sed -i -E "s/^(port|printtoscreen|windowsprint) :=.*\r/\1 :=0\r/; s/^port :=0/port :=$1/" "$hostFolder/ShopSetting.txt"
}
# Wine clears away the ports that the machine lacks whenever its device manager starts.
plugPrinter() {
    ln -sf "$OUT/lpt1.out" "$devices/lpt1"
    : >"$OUT/lpt1.out"
}
# print EVENT: from the list to the dialog's OK
print() {
    step alt+p "active frmPrint"
    step alt+o "$1"
}

openRegister
plugPrinter
setPort LPT1
print "unloaded frmPrint"
setPort '\\\\till\\slips'
print "unloaded frmPrint"
for slip in "$OUT/lpt1.out" "$devices/unc/till/SLIPS"; do
    grep -q $'^To : .*\r$' "$slip"
    grep -q $'^ *Margaret Ellis - .*:[0-9][0-9]\r$' "$slip"
done

# One message, and after it the dialog is there for another try.
setPort LPT9
print "message "
step Return "answered "
plugPrinter
setPort LPT1
step alt+o "unloaded frmPrint"
grep -q $'^To : .*\r$' "$OUT/lpt1.out"
expect messages "$(grep -c '^message' "$folder/host.log")" 1
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
