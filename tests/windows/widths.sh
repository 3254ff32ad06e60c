# Both widths registered: when one is taken back, the other one's class is still made by its name, and its interface still crosses
# apartments. When both are, the registry has nothing of them.
trap wine_stop EXIT
wine_start

in_width() (
    export WIDTH=$1
    shift
    . "$root/tools/wine.sh"
    "$@"
)
regsvr() {
    wine_run regsvr32 /s "$@" "$(wine_path "$DIST/goodsreq.dll")"
}
# Without a manifest beside it, the program finds the class in the registry.
callsAcross() {
    wine_run "$OUT/$WIDTH.exe" --gtest_filter=Component.AMultithreadedCallerHasTheInterface >"$OUT/calls.log"
}
expectRegistered() {
    local width status
    for width in x64 x86; do
        status=gone
        ! in_width "$width" callsAcross || status=there
        [ "$status" = "${2%%,*}" ] || {
            echo "$1: $width is $status"
            tail -n 20 "$OUT/calls.log"
            exit 1
        }
        set -- "$1" "${2#*,}"
    done
}

for width in x64 x86; do in_width "$width" eval 'cp "$BUILD/component_test.exe" "$OUT/$WIDTH.exe"'; done
for first in x64 x86; do
    second=x86 left=gone,there
    [ "$first" = x64 ] || second=x64 left=there,gone
    in_width "$first" regsvr
    in_width "$second" regsvr
    expectRegistered "both registered" there,there
    in_width "$first" regsvr /u
    expectRegistered "$first taken back" "$left"
    in_width "$second" regsvr /u
    wine_run reg export 'HKLM\Software\Classes' 'C:\classes.reg' /y /reg:64 >/dev/null
    if iconv -f UTF-16 -t UTF-8 "$WINEPREFIX/drive_c/classes.reg" |
        grep -iE 'goodsreq|A12212E2-7B8A-4BB4-82B8-38B8AF86F343|43C993A4-2E06-4565-8D37-6AC551703A18|A03A611A-30CC-4A88-A190-BF0CE916030A'; then
        echo "both are taken back and have left something"
        exit 1
    fi
done
