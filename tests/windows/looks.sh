# The screens where they have much room and where they have little: size and dots an inch. Each has a prefix and a screen
# of its own.
looksAt() (
    screenSize=$1
    trap wine_stop EXIT
    wine_start
    wine_run reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$2" /f >/dev/null
    EXPECTED_DPI=$2 wine_run -t 120 "$BUILD/looks_test.exe" --gtest_color=no >"$OUT/$1-$2.log" 2>&1 || {
        grep -E 'Failure|\.cpp|Trace|Expected|actual|message' "$OUT/$1-$2.log" | head -n 40
        echo "the screens are not whole on $1 at $2 dots an inch"
        exit 1
    }
)
for dots in 144 192; do looksAt 2560x1600 "$dots"; done
looksAt 1366x768 144
looksAt 800x600 96
