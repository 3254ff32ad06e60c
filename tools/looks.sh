#!/bin/bash
# Takes pictures of the screens at 100, 150 and 200 % of the usual resolution and in light on dark: looks.sh DIR
set -euo pipefail
if [ -z "${LOOK:-}" ]; then
    for LOOK in 96 144 192 dark; do
        export LOOK DPI=${LOOK/dark/96} SCREEN=2560x1600 # room for the register at the double size
        "$(dirname "${BASH_SOURCE[0]}")/windows.sh" x64 "${BASH_SOURCE[0]}" "$(realpath -m "$1")"
    done
    exit
fi

shotFolder=$1
mkdir -p "$shotFolder"
look=$((DPI * 100 / 96))
if [ "$LOOK" = dark ]; then
    look=dark
    # No visual styles, which would draw in colours of their own. A running session keeps what it began with.
    wine_run reg add 'HKCU\Software\Microsoft\Windows\CurrentVersion\ThemeManager' /v ThemeActive /d 0 /f >/dev/null
    for colour in "Window=0 0 0" "WindowText=255 255 0" "ButtonFace=40 40 40" "ButtonText=255 255 255" \
        "GrayText=140 140 140" "Hilight=0 90 160" "HilightText=255 255 255" "ButtonShadow=90 90 90" \
        "ButtonHilight=120 120 120" "ButtonLight=60 60 60"; do
        wine_run reg add 'HKCU\Control Panel\Colors' /v "${colour%%=*}" /d "${colour#*=}" /f >/dev/null
    done
    wineserver -k && wineserver -w && wineServe
fi
makeCompany
openRegister
shot "$look-register"
step ctrl+Return "active frmRequest"
chooseShop
shot "$look-editor"
step Return "focus frmRequest.lvwrequest"
step Return "active frmRequestDetail" "$look-line-entry"
step Escape "unloaded frmRequestDetail"
step Escape "message Save Changes?" "$look-question"
step alt+n "unloaded frmRequest"
step alt+p "active frmPrint" "$look-print"
step Escape "unloaded frmPrint"
press alt+c
awaitHost
