# What lies in dist: the DLLs' bits, their undecorated exports, nothing imported but what the least Windows has, the guards of
# tools/check-delivered.sh, and no variables of the environment but those that are told.
wrong=0

expectText() {
    if [ "$2" != "$3" ]; then
        printf '%s: expected\n%s\nfound\n%s\n' "$1" "$2" "$3"
        wrong=1
    fi
}

exported() {
    x86_64-w64-mingw32-objdump -p "$1" | sed -n '/Ordinal\/Name Pointer/,/^$/p' | sed -nE "s/^[[:space:]]*\[ *[0-9]+\] (.*)/\1/p" | sort
}

# What a file imports that tests/windows/imports.txt does not name. All there is in the least Windows, 7; what came after it would keep
# the file from being loaded there, and is looked up at run time where it is used at all.
unknownImports() {
    x86_64-w64-mingw32-objdump -p "$1" |
        awk '/DLL Name: / { library = tolower($3) } /^\t[0-9a-f]+\t +[0-9]+ +[^ ]+$/ { print library, $NF }' | sort -u |
        comm -23 - <(awk '!/^#/ { for (i = 2; i <= NF; ++i) print $1, $i }' "$root/tests/windows/imports.txt" | sort -u)
}

# The sizes of the icon that windows take.
iconSizes() {
    x86_64-w64-mingw32-windres -J coff -O rc "$1" | sed -n '/RT_GROUP_ICON/,/END/s/^ *"\\\([0-7]*\)\\.*/\1/p' |
        while read -r octal; do echo $((8#$octal)); done | xargs
}

format() {
    x86_64-w64-mingw32-objdump -f "$1" | sed -n 's/.*file format //p'
}

version=$(sed -nE 's/^project\(goodsreq VERSION ([0-9.]+).*/\1/p' "$root/CMakeLists.txt")
entries=$'DllCanUnloadNow\nDllGetClassObject\nDllInstall\nDllRegisterServer\nDllUnregisterServer'
kind=pei-x86-64
[ "$WIDTH" = x64 ] || kind=pei-i386
for file in goodsreq.dll sandbox.dll goodsreq-host.exe; do
    [ -f "$DIST/$file" ] || {
        echo "$DIST has no $file"
        wrong=1
        continue
    }
    name=$WIDTH/$file
    expectText "$name, format" "$kind" "$(format "$DIST/$file")"
    expectText "$name, imports that the least Windows may lack" "" "$(unknownImports "$DIST/$file")"
    # The version stands in the file's properties as text of 16-bit letters.
    expectText "$name, version" "$version" "$(strings -el -n 3 "$DIST/$file" | grep -A 1 -x ProductVersion | tail -n 1)"
    [[ $file == *.exe ]] || expectText "$name, exports" "$entries" "$(exported "$DIST/$file")"
done
expectText "$WIDTH/goodsreq.dll, variables of the environment" "GOODSREQ_WINDOW_LOG GOODSREQ_WINDOW_TEXTS" \
    "$({ strings -el "$DIST/goodsreq.dll" && strings "$DIST/goodsreq.dll"; } | grep -o 'GOODSREQ_.*' | sort | xargs)"
expectText "$WIDTH/goodsreq.dll, icon" "16 20 24 32 40 48 64 0" "$(iconSizes "$DIST/goodsreq.dll")" # 0 says 256
"$root/tools/check-delivered.sh" "$DIST"/*.dll "$DIST"/*.exe || wrong=1
# The type library is resource 1 of the component; its file format starts with MSFT.
grep -qaF MSFT "$DIST/goodsreq.dll" || {
    echo "$WIDTH/goodsreq.dll carries no type library"
    wrong=1
}
[ "$wrong" -eq 0 ]
