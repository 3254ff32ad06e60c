# Both widths registered: when one is taken back, the other one's class is still made by its name, and its interface
# still crosses apartments. When both are, the registry has nothing of them.
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
    cp "$BUILD/component_test.exe" "$OUT/$WIDTH.exe"
    wine_run "$OUT/$WIDTH.exe" --gtest_filter=Component.AMultithreadedCallerHasTheInterface >"$OUT/calls.log"
}
# expectRegistered WHEN WIDTH...
expectRegistered() {
    local width found=""
    for width in x64 x86; do ! in_width "$width" callsAcross || found+=" $width"; done
    expect "$1: whose class is there" "$found" "$2"
}

registry >"$OUT/before.txt"
for order in "x64 x86" "x86 x64"; do
    read -r first second <<<"$order"
    in_width "$first" regsvr
    in_width "$second" regsvr
    expectRegistered "both registered" " x64 x86"
    in_width "$first" regsvr /u
    expectRegistered "$first taken back" " $second"
    in_width "$second" regsvr /u
    expectRegistry "the registration of both"
done
