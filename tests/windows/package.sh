# What ./package makes, in a prefix that has never seen the build: its host without registration, then the component
# registered for the machine and driven by the scripting host, then for one user. Taking it back leaves the registry as
# it was.
folder=$WINEPREFIX/drive_c/retail
unpack goodsreq "$folder"
hostFolder=$(echo "$folder"/goodsreq-*/"$WIDTH")
# No document leads to what the package leaves out.
(cd "$folder"/goodsreq-*/docs && grep -ohE '\]\([^):#]+' ./*.md | cut -c3- | sort -u | xargs -d '\n' ls -d) >/dev/null

makeCompany
openRegister
closeRegister

register() {
    wine_run regsvr32 /s "$@" "$(wine_path "$hostFolder/goodsreq.dll")"
}
# The folders that all classes share belong to nobody; every user's profile on Windows has them.
for key in CLSID TypeLib Interface; do wine_run reg add "HKCU\\Software\\Classes\\$key" /f >/dev/null; done
# The scripting host registers classes of its own when it first runs.
echo 'WScript.Quit 0' >"$folder/nothing.vbs"
wine_run cscript.exe //nologo 'C:\retail\nothing.vbs' >/dev/null
registry >"$OUT/before.txt"

register
# The scripting host finds the sandbox by its manifest, as this prefix has an ADO of its own, and the component by the
# registry. With a wrong key Show returns at once and nothing is shown.
cp "$WINEPREFIX/drive_c/windows/$SYSTEM/cscript.exe" "$BUILD/cscript.exe.manifest" "$hostFolder/"
startScript() {
    screenLog=$OUT/windows.log logSeen=0
    GOODSREQ_WINDOW_LOG=$(wine_path "$screenLog") wine_run "$hostFolder/cscript.exe" //nologo \
        "$(wine_path "$root/tests/windows/host.vbs")" "$(wine_path "$folder/company.db")" "$1" &
    programPid=$!
}
startScript "kova/xb/tram/842" # in the wrong letter case
awaitHost 42
[ ! -e "$screenLog" ]
startScript "KOVA/XB/TRAM/842"
await_log "active frmMaster"
focus_window "$register"
step "ctrl+d Delete" "message "
step alt+n "answered no"
expect "texts of messages, which are nobody's business" "$(grep '^message .' "$screenLog" || true)" ""
closeRegister 42
register /u
register /u # twice is no error
expectRegistry "the machine's registration"

register /n /i:User
# Wine looks for classes among the machine's only.
for key in goodsreq.clsGRtoShop 'CLSID\{A12212E2-7B8A-4BB4-82B8-38B8AF86F343}'; do
    wine_run reg query "HKCU\\Software\\Classes\\$key" /s
done | tr -d '\r' >"$OUT/user.txt"
grep -qF "$WIDTH\goodsreq.dll" "$OUT/user.txt"
sed -E 's/^HKEY_CURRENT_USER\\Software\\Classes\\//; s/ +$//; /^$/d; s/[A-Z]:\\.*\\goodsreq/FOLDER\\goodsreq/' "$OUT/user.txt" |
    diff "$root/tests/windows/registered.txt" -
register /u /n /i:user
expectRegistry "the user's registration"
