# What ./package makes, in a prefix that has never seen the build, in every width that runs here: its host without
# registration, then the component registered for the machine and driven by the scripting host. When one width is taken
# back, the other one's class is still made by its name, and its interface still crosses apartments. When both are, the
# registry is as it was; so it is after a registration for one user.
orders=(x64)
[ ! -x /usr/lib/wine/wine ] || orders=("x64 x86" "x86 x64")
folder=$WINEPREFIX/drive_c/retail
unpack goodsreq "$folder"
# No document leads to what the package leaves out.
(cd "$folder"/goodsreq-*/docs && grep -ohE '\]\([^):#]+' ./*.md | cut -c3- | sort -u | xargs -d '\n' ls -d) >/dev/null

useWidth() {
    WIDTH=$1
    . "$root/tools/wine.sh"
    hostFolder=$(echo "$folder"/goodsreq-*/"$1")
}
regsvr() {
    wine_run regsvr32 /s "$@" "$(wine_path "$hostFolder/goodsreq.dll")"
}
# expectClass WIDTHS: those have the class, each behind a blank, and no others of $order. Without a manifest beside it,
# the program finds the class in the registry.
expectClass() {
    local found="" width
    for width in $order; do
        useWidth "$width"
        cp "$BUILD/component_test.exe" "$OUT/$width.exe"
        ! wine_run "$OUT/$width.exe" --gtest_filter=Component.AMultithreadedCallerHasTheInterface >"$OUT/calls.log" ||
            found+=" $width"
    done
    expect "whose class is there" "$found" "$1"
}

for width in ${orders[0]}; do
    useWidth "$width"
    openRegister
    closeRegister
    # The folders that all classes share belong to nobody; every user's profile on Windows has them.
    for key in CLSID TypeLib Interface; do wine_run reg add "HKCU\\Software\\Classes\\$key" /f >/dev/null; done
    # The scripting host registers classes of its own when it first runs.
    echo 'WScript.Quit 0' >"$folder/nothing.vbs"
    wine_run cscript.exe //nologo 'C:\retail\nothing.vbs' >/dev/null
done
registry >"$OUT/before.txt"

for order in "${orders[@]}"; do
    for width in $order; do useWidth "$width" && regsvr; done
    expectClass " $order"
    # The scripting host finds the sandbox by its manifest, as this prefix has an ADO of its own.
    cp "$WINEPREFIX/drive_c/windows/$SYSTEM/cscript.exe" "$BUILD/cscript.exe.manifest" "$hostFolder/"
    startProgram "$hostFolder/cscript.exe" //nologo "$(wine_path "$root/tests/windows/host.vbs")" 'C:\retail\company.db'
    await_log "active frmMaster"
    focus_window "$register"
    step "ctrl+d Delete" "message "
    step alt+n "answered no"
    expect "texts of messages, which are nobody's business" "$(grep '^message .' "$folder/host.log" || true)" ""
    closeRegister 42
    left=" $order"
    for width in $order; do
        left=${left#" $width"}
        useWidth "$width"
        regsvr /u
        regsvr /u # twice is no error
        expectClass "$left"
    done
    expectRegistry "the machine's registration"
done

for width in ${orders[0]}; do
    useWidth "$width"
    regsvr /n /i:User
    # Wine looks for classes among the machine's only.
    for key in goodsreq.clsGRtoShop 'CLSID\{A12212E2-7B8A-4BB4-82B8-38B8AF86F343}'; do
        wine_run reg query "HKCU\\Software\\Classes\\$key" /s
    done | tr -d '\r' >"$OUT/user.txt"
    grep -qF "$WIDTH\goodsreq.dll" "$OUT/user.txt"
    sed -E 's/^HKEY_CURRENT_USER\\Software\\Classes\\//; s/ +$//; /^$/d; s/[A-Z]:\\.*\\goodsreq/FOLDER\\goodsreq/' "$OUT/user.txt" |
        diff "$root/tests/windows/registered.txt" -
    regsvr /u /n /i:user
done
expectRegistry "the user's registration"
