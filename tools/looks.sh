#!/bin/bash
# Plays the tour and what clerks get wrong at 100 and 150 % of the usual resolution, in light on dark and under German
# settings, each into a folder of its own with its pictures: looks.sh DIR
set -euo pipefail
if [ -z "${LOOK:-}" ]; then
    for LOOK in 100 150 dark german; do
        export LOOK DPI=96 SCREEN=1920x1440 # room for the register at 150 %
        [ "$LOOK" != 150 ] || DPI=144
        "$(dirname "${BASH_SOURCE[0]}")/windows.sh" x64 "${BASH_SOURCE[0]}" "$(realpath -m "$1")/$LOOK"
    done
    exit
fi

case $LOOK in
dark)
    # No visual styles, which would draw in colours of their own.
    wine_run reg add 'HKCU\Software\Microsoft\Windows\CurrentVersion\ThemeManager' /v ThemeActive /d 0 /f >/dev/null
    for colour in "Window=0 0 0" "WindowText=255 255 0" "ButtonFace=40 40 40" "ButtonText=255 255 255" \
        "GrayText=140 140 140" "Hilight=0 90 160" "HilightText=255 255 255" "ButtonShadow=90 90 90" \
        "ButtonHilight=120 120 120" "ButtonLight=60 60 60"; do
        wine_run reg add 'HKCU\Control Panel\Colors' /v "${colour%%=*}" /d "${colour#*=}" /f >/dev/null
    done
    wineserver -k && wineserver -w && wineServe # a running session keeps what it began with
    ;;
german) germanSettings ;;
esac
for walk in tour missteps; do . "$root/tests/windows/$walk.sh" "$1"; done
