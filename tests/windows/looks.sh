# The screens at 150 and 200 % of the usual resolution, in a prefix of their own on a screen with room for them.
trap wine_stop EXIT
screenSize=2560x1600
wine_start
for dots in 144 192; do
    wine_run reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$dots" /f >/dev/null
    EXPECTED_DPI=$dots wine_run -t 120 "$BUILD_X64/looks_test.exe" --gtest_color=no >"$OUT/$dots.log" 2>&1 || {
        grep -E 'Failure|\.cpp|Trace|Expected|actual|message' "$OUT/$dots.log" | head -n 40
        echo "the screens are not whole at $dots dots an inch"
        exit 1
    }
done
