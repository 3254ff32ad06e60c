# The check kit of ./package as a person uses it: unpacked into a folder with a blank and an umlaut, on a machine without a screen
# that has never seen the build, in every width that runs here. A substitute stands under ADO's names.
unset DISPLAY
wine_run reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f >/dev/null
timeout 10 wineserver -k || true
wineServe
unpack goodsreq-check "$OUT/für alle"
kit=$(echo "$OUT/für alle"/goodsreq-check-*)
[ -x /usr/lib/wine/wine ] || rm -r "$kit/x86"
! grep -rlF "$root" "$kit" || fail "these tell where they were built"

hostFolder=$kit/x64
makeCompany
registerAdo "$kit/x64/sandbox.dll" 64
registerAdo "$kit/x86/sandbox.dll" 32

# check STATUS ARGUMENT...
check() {
    local expected=$1 status=0
    shift
    (cd "$kit" && LIMIT=200 wine_run cmd /c check.cmd "$@") >"$OUT/check.out" || status=$?
    tr -d '\r' <"$kit/report.txt" >"$OUT/report.txt"
    if [ "$status" -ne "$expected" ] || [ "$(tr -d '\r' <"$OUT/check.out" | tail -n 1)" != "$(tail -n 1 "$OUT/report.txt")" ]; then
        grep -A 5 '^FAILED' "$OUT/report.txt" || tail -n 5 "$OUT/check.out"
        fail "check.cmd ended with $status"
    fi
    ! grep -rl mellow "$OUT/check.out" "$kit" || fail "the password is shown"
}
expectLine() {
    grep -qE "$1" "$OUT/report.txt" || fail "report.txt has no line $1"
}

database=$(wine_path "$OUT/company.db")
sha256sum "$OUT/company.db" >"$OUT/company.sum"
registry >"$OUT/before.txt"
check 0 "Data Source=$database;Password=mellow"
sha256sum --quiet -c "$OUT/company.sum"
expectRegistry "the check"
for heading in Windows Bits Elevated 'Remote session' 'Dots per inch' Locale 'Short date' 'Decimal sign' 'Code pages' \
    'Controls without styles' ADO 'Provider MSOLEDBSQL' 'Component Fetch.clsFetch' 'C:.ShopReq.txt may be written' \
    'Rows that a keyset counts' 'A transaction begun while a result is read' 'An unknown column'; do
    expectLine "^$heading: ."
done
expectLine '^ok x64 Looks\.'
expectLine '^ok x64 a host that was started hidden'
expectLine '^ok select .*mesRequesttoShopHeader'
[ ! -d "$kit/x86" ] || expectLine '^ok x86 stress-windows'
expectLine '^[0-9]{2,} passed, 0 failed$'
[ -z "$(ls -A "$WINEPREFIX"/drive_c/users/*/Temp)" ]

# Without the component, and with leave to write.
rm -rf "$kit/x86" "$kit"/x64/{goodsreq.dll,slip_test.exe,stress-windows.exe,looks_test.exe,context_test.exe,bridge_test.exe}
GOODSREQ_CHECK_CONNECTION="Data Source=$database;Password=mellow" check 1 /write
expectLine '^FAILED x64 Component\.'
expectLine '^FAILED x64 looks_test$'
expectLine '^ok a request is added, a second one of its number refused: error -'
expectLine '^ok nothing of it stands'
expectLine '^[0-9]+ passed, [1-9][0-9]* failed$'
