# The slip to a printer port, to a shared printer and to a port that is not there. Plain files stand in for the
# printers, where Wine looks for its devices and shares.
hostFolder=$OUT/host
cp -r "$DIST" "$hostFolder"
makeCompany
devices=$WINEPREFIX/dosdevices
mkdir -p "$devices/unc/till"

setPort() {
    sed -i -E "s/^(port|printtoscreen|windowsprint) :=.*\r/\1 :=0\r/; s/^port :=0/port :=$1/" \
        "$hostFolder/ShopSetting.txt"
}
# Wine clears away the ports that the machine lacks whenever its device manager starts.
plugPrinter() {
    ln -sf "$OUT/lpt1.out" "$devices/lpt1"
    : >"$OUT/lpt1.out"
    setPort LPT1
}
# One print, from the list to the dialog's OK.
print() {
    step alt+p "active frmPrint"
    step alt+o "$1"
}

openRegister
plugPrinter
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
step alt+o "unloaded frmPrint"
grep -q $'^To : .*\r$' "$OUT/lpt1.out"
expect "messages" "$(grep -c '^message' "$screenLog")" 1
closeRegister
