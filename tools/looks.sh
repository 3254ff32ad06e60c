#!/bin/bash
# Takes pictures of the screens at 100, 150 and 200 % of the usual resolution and under other system colours:
# looks.sh DIR
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
. "$root/tools/wine.sh"
. "$root/tools/screen.sh"
. "$root/tools/host.sh"

[ $# -eq 1 ] || {
    echo "usage: tools/looks.sh DIR" >&2
    exit 2
}
mkdir -p "$1"
folder=$(cd "$1" && pwd)
shotFolder=$folder
rm -f "$folder"/*.png "$folder"/{company.db*,host.log,host.out} "$folder"/*.sql

trap wine_stop EXIT
trap 'exit 130' INT TERM HUP
# Room for the register at the double size.
screenSize=2560x1600
wine_start
makeCompany

setting() {
    wine_run reg add "HKCU\\$1" /v "$2" /t "$3" /d "$4" /f >/dev/null
}

# The screens from the register on, as pictures named after the look.
picture() {
    startHost statements
    await_log "active frmMaster"
    focus_window "Goods Request To Shop"
    shot "$1-register"
    press ctrl+Return
    await_log "active frmRequest"
    chooseShop
    shot "$1-editor"
    press Return
    await_log "focus frmRequest.lvwrequest"
    press Return
    await_log "active frmRequestDetail"
    shot "$1-line-entry"
    press Escape
    await_log "unloaded frmRequestDetail"
    press Escape
    await_log "message Save Changes?"
    shot "$1-question"
    press alt+n
    await_log "unloaded frmRequest"
    press alt+p
    await_log "active frmPrint"
    shot "$1-print"
    press Escape
    await_log "unloaded frmPrint"
    press alt+c
    awaitHost
}

for dots in 96 144 192; do
    setting "Control Panel\\Desktop" LogPixels REG_DWORD "$dots"
    picture "$((dots * 100 / 96))"
done

# Light on dark, as somebody with weak eyes has it: no visual styles, which would draw in colours of their own.
setting 'Software\Microsoft\Windows\CurrentVersion\ThemeManager' ThemeActive REG_SZ 0
setting "Control Panel\\Desktop" LogPixels REG_DWORD 96
for colour in "Window=0 0 0" "WindowText=255 255 0" "ButtonFace=40 40 40" "ButtonText=255 255 255" "GrayText=140 140 140" \
    "Hilight=0 90 160" "HilightText=255 255 255" "ButtonShadow=90 90 90" "ButtonHilight=120 120 120" "ButtonLight=60 60 60"; do
    setting "Control Panel\\Colors" "${colour%%=*}" REG_SZ "${colour#*=}"
done
picture dark
