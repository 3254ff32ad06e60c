# The check kit of ./package as a person uses it: unpacked into a folder with a blank and an umlaut, on a machine
# without a screen that has never seen the build, in every width that runs here. A substitute stands under ADO's names.
# The reports have a line for each pattern of the two files beside this one.
unset DISPLAY
wine_run reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f >/dev/null
timeout 10 wineserver -k || true
wineServe
unpack goodsreq-check "$OUT/für alle"
kit=$(echo "$OUT/für alle"/goodsreq-check-*)
[ -x /usr/lib/wine/wine ] || rm -r "$kit/x86"
! grep -rlF "$root" "$kit" || fail "these tell where they were built"
makeCompany
registerAdo "$kit/x64/sandbox.dll" 64
registerAdo "$kit/x86/sandbox.dll" 32
connection="Data Source=$(wine_path "$OUT/company.db");Password=mellow"

# check STATUS PATTERNS ARGUMENT...
check() {
    local status=0
    (cd "$kit" && LIMIT=200 wine_run cmd /c check.cmd "${@:3}") | tr -d '\r' >"$OUT/check.out" || status=$?
    tr -d '\r' <"$kit/report.txt" >"$OUT/report.txt"
    expect "the last line" "$(tail -n 1 "$OUT/check.out")" "$(tail -n 1 "$OUT/report.txt")"
    [ "$status" -eq "$1" ] || fail "check.cmd ended with $status: $(grep -A 5 '^FAILED' "$OUT/report.txt")"
    ! grep -rl mellow "$OUT/check.out" "$kit" || fail "the password is shown"
    while read -r pattern; do
        grep -qE "$pattern" "$OUT/report.txt" || fail "report.txt has no line $pattern"
    done <"$root/tests/windows/$2"
}

sha256sum "$OUT/company.db" >"$OUT/company.sum"
registry >"$OUT/before.txt"
check 0 check-kit.txt "$connection"
sha256sum --quiet -c "$OUT/company.sum"
expectRegistry "the check"
[ ! -d "$kit/x86" ] || grep -q '^ok x86 stress-windows' "$OUT/report.txt"
[ -z "$(ls -A "$WINEPREFIX"/drive_c/users/*/Temp)" ]

# Without the component, and with leave to write.
rm -rf "$kit/x86" "$kit"/x64/{goodsreq.dll,stress-windows.exe,{slip,looks,context,bridge}_test.exe}
GOODSREQ_CHECK_CONNECTION=$connection check 1 check-kit-lacking.txt /write
