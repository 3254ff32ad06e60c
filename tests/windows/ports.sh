# The slip to a printer port, to a shared printer and to a port that is not there. Plain files stand in for the printers, where
# Wine looks for its devices and shares.
. "$root/tools/screen.sh"
. "$root/tools/host.sh"
folder=$OUT
hostFolder=$OUT/host
cp -r "$DIST" "$hostFolder"
makeCompany

devices=$WINEPREFIX/dosdevices
mkdir -p "$devices/unc/till"
ln -sf "$OUT/lpt1.out" "$devices/lpt1"
: >"$OUT/lpt1.out"

setPort() {
    sed -i -E "s/^(port|printtoscreen|windowsprint) :=.*\r/\1 :=0\r/; s/^port :=0/port :=$1/" "$hostFolder/ShopSetting.txt"
}

# One print, from the list to the dialog's OK.
print() {
    press alt+p
    await_log "active frmPrint"
    press alt+o
}

startHost statements
await_log "active frmMaster"
focus_window "Goods Request To Shop"

setPort 'LPT1'
# Once more: Wine clears away the ports that the machine lacks whenever its device manager starts.
ln -sf "$OUT/lpt1.out" "$devices/lpt1"
print
await_log "unloaded frmPrint"
setPort '\\\\till\\slips'
print
await_log "unloaded frmPrint"
for slip in "$OUT/lpt1.out" "$devices/unc/till/SLIPS"; do
    if ! grep -q $'^To : .*\r$' "$slip" || ! grep -q $'^ *Margaret Ellis - .*:[0-9][0-9]\r$' "$slip"; then
        echo "$slip holds no whole slip: $(head -c 300 "$slip")"
        exit 1
    fi
done

# One message, and after it the dialog is there for another try.
setPort 'LPT9'
print
await_log "message "
press Return
await_log "answered "
setPort 'LPT1'
: >"$OUT/lpt1.out"
press alt+o
await_log "unloaded frmPrint"
grep -q $'^To : .*\r$' "$OUT/lpt1.out"
if [ "$(grep -c '^message' "$screenLog")" -ne 1 ]; then
    grep '^message' "$screenLog"
    exit 1
fi

# To the screen, where another file's name or a folder stands in the slip's place: one message, and the other file keeps what it
# held. A symbolic link shows on Windows only; to a program under Wine it is the file that it leads to.
sed -i -E 's/^printtoscreen :=0\r/printtoscreen :=1\r/' "$hostFolder/ShopSetting.txt"
slip=$WINEPREFIX/drive_c/ShopReq.txt
echo "somebody else's" >"$OUT/foreign.txt"
for stands in "ln $OUT/foreign.txt" mkdir; do
    rm -rf "$slip"
    $stands "$slip"
    print
    await_log 'is no plain file with one name'
    press Return
    await_log "answered "
    press alt+c
    await_log "unloaded frmPrint"
done
grep -q "somebody else's" "$OUT/foreign.txt"
press alt+c
awaitHost
