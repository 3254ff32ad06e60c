# What ./package makes, in a prefix that has never seen the build: its host without registration, then the component registered
# for the machine and driven by the scripting host, then for one user. Taking it back leaves the registry as it was.
trap wine_stop EXIT
wine_start
. "$root/tools/host.sh"

# The other width's test may be at it too.
exec 9>"$root/out/package.lock"
flock 9
"$root/package" >"$OUT/package.log" 2>&1 </dev/null 9>&- || {
    tail -n 5 "$OUT/package.log"
    exit 1
}
folder=$WINEPREFIX/drive_c/retail
mkdir "$folder"
cp "$root"/dist/goodsreq-[0-9]*.zip "$root"/dist/goodsreq-[0-9]*.SHA256SUMS "$folder/"
exec 9>&-
(cd "$folder" && cmake -E tar xf goodsreq-[0-9]*.zip && sha256sum --quiet -c goodsreq-[0-9]*.SHA256SUMS && cd goodsreq-[0-9]*/ && sha256sum --quiet -c SHA256SUMS)
rm "$folder"/goodsreq-[0-9]*.zip "$folder"/goodsreq-[0-9]*.SHA256SUMS
hostFolder=$(echo "$folder"/goodsreq-[0-9]*/"$WIDTH")
# No document leads to what the package leaves out.
(cd "$folder"/goodsreq-[0-9]*/docs && grep -ohE '\]\([^):#]+' ./*.md | cut -c3- | sort -u | xargs -d '\n' ls -d) >/dev/null

makeCompany
startHost statements
await_log "active frmMaster"
focus_window "Goods Request To Shop"
press alt+c
awaitHost

# All classes, of the machine and of the user, for both widths.
listing() {
    local part
    for part in HKLM HKCU; do
        wine_run reg export "$part\\Software\\Classes" "C:\\$part.reg" /y /reg:64 >/dev/null
        iconv -f UTF-16 -t UTF-8 "$WINEPREFIX/drive_c/$part.reg"
    done
}
expectListing() {
    listing >"$OUT/after.txt"
    if ! diff "$OUT/before.txt" "$OUT/after.txt" >"$OUT/left.txt"; then
        echo "$1 has left something in the registry:"
        head -n 10 "$OUT/left.txt"
        exit 1
    fi
}
register() {
    wine_run regsvr32 /s "$@" "$(wine_path "$hostFolder/goodsreq.dll")"
}
# The folders that all classes share belong to nobody; every user's profile on Windows has them.
for key in CLSID TypeLib Interface; do wine_run reg add "HKCU\\Software\\Classes\\$key" /f >/dev/null; done
# The scripting host registers classes of its own when it first runs.
echo 'WScript.Quit 0' >"$folder/nothing.vbs"
wine_run cscript.exe //nologo 'C:\retail\nothing.vbs' >/dev/null
listing >"$OUT/before.txt"

register
# The scripting host finds the sandbox by its manifest, as this prefix has an ADO of its own, and the component by the registry.
cp "$WINEPREFIX/drive_c/windows/$SYSTEM/cscript.exe" "$BUILD/cscript.exe.manifest" "$hostFolder/"
sed -i '0,/<\/dependency>/{/<dependency>/,/<\/dependency>/d}' "$hostFolder/cscript.exe.manifest"
if grep -q goodsreq.component "$hostFolder/cscript.exe.manifest"; then
    echo "the scripting host would find the component without the registry"
    exit 1
fi
screenLog=$OUT/windows.log
logSeen=0
GOODSREQ_WINDOW_LOG=$(wine_path "$screenLog") wine_run -t 60 "$hostFolder/cscript.exe" //nologo \
    "$(wine_path "$root/tests/windows/host.vbs")" "$(wine_path "$folder/company.db")" "KOVA/XB/TRAM/842" &
programPid=$!
await_log "active frmMaster"
focus_window "Goods Request To Shop"
press alt+c
await_log "unloaded frmMaster"
status=0
wait "$programPid" || status=$?
programPid=""
if [ "$status" -ne 42 ]; then
    echo "the script ended with $status"
    exit 1
fi
register /u
register /u # twice is no error
expectListing "the machine's registration"

register /n /i:User
for key in 'goodsreq.clsGRtoShop\CLSID' 'CLSID\{A12212E2-7B8A-4BB4-82B8-38B8AF86F343}\InprocServer32'; do
    wine_run reg query "HKCU\\Software\\Classes\\$key" >>"$OUT/user.txt"
done
grep -qiF '{A12212E2-7B8A-4BB4-82B8-38B8AF86F343}' "$OUT/user.txt"
grep -qF "$WIDTH\goodsreq.dll" "$OUT/user.txt"
grep -q 'ThreadingModel .*Apartment' "$OUT/user.txt"
register /u /n /i:user
expectListing "the user's registration"
