# A counter under German settings: a comma parts the decimals, on the keypad too, and of thirty scans at a scanner's
# speed every third is of an item that the other shop does not carry. The other twenty are stored, each once.
germanSettings
folder=$OUT shotFolder=$OUT
makeCompany
readarray -t carried < <(items "min(p.packingbarcode || '')" true | sed -n 1,22p)
readarray -t refused < <(notCarried | sed -n 1,10p)
[ "${#carried[@]} ${#refused[@]}" = "22 10" ]

openRegister
step ctrl+Return "active frmRequest" german-request
chooseShop
step Return "focus frmRequest.lvwrequest"
step Return "active frmRequestDetail"
# "2,5" by the letters' comma and by the keypad's.
comma() {
    enter "${carried[$1]#*|}" "focus frmRequestDetail.txtQuantity"
    type_keys 2
    press "$2"
    type_keys 5
    step Return "focus frmRequestDetail.txtBadQuantity" "german-$2"
    step "Return Return" "focus frmRequestDetail.txtBarcode"
}
comma 0 comma
comma 1 KP_Decimal

keys=()
scan() {
    local key
    for key in $(fold -w 1 <<<"$1") Return; do keys+=("$key"); done
}
for ((i = 0; i < 20; i++)); do
    scan "${carried[i + 2]#*|}"
    scan $((i + 1))
    keys+=(Return Return)
    [ $((i % 2)) -eq 0 ] || scan "${refused[i / 2]}"
done
timeout 120 xdotool key --delay 0 "${keys[@]}"
await_log "focus frmRequestDetail.cmdbarcode"
step Escape "unloaded frmRequestDetail" german-lines
step alt+o "unloaded frmRequest" german-register
closeRegister

expected=$(printf "%s|2.5|0.0|$supplying\n" "${carried[0]%%|*}" "${carried[1]%%|*}"
    for ((i = 0; i < 20; i++)); do echo "${carried[i + 2]%%|*}|$((i + 1)).0|0.0|$supplying"; done)
expect "lines" "$(linesOf "$(lastRequest)")" "$(sort -n <<<"$expected")"
expectNoMessage
