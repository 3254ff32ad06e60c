# What lies in dist, for both widths: the DLLs' bits, their undecorated exports, nothing imported but the system's own, and the
# guards of tools/check-delivered.sh.
# The 32-bit files are only looked at: not every build machine can run them.
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

# Import libraries that Windows does not have itself.
foreign() {
    x86_64-w64-mingw32-objdump -p "$1" | sed -nE 's/^\tDLL Name: //p' | tr '[:upper:]' '[:lower:]' |
        grep -vxE '(kernel32|user32|gdi32|advapi32|ole32|oleaut32|comctl32|comdlg32|shell32|uxtheme|msvcrt|ntdll|winspool)\.(dll|drv)' || true
}

format() {
    x86_64-w64-mingw32-objdump -f "$1" | sed -n 's/.*file format //p'
}

version=$(sed -nE 's/^project\(goodsreq VERSION ([0-9.]+).*/\1/p' "$root/CMakeLists.txt")
entries=$'DllCanUnloadNow\nDllGetClassObject\nDllInstall\nDllRegisterServer\nDllUnregisterServer'
for folder in "$DIST_X64:pei-x86-64" "$DIST_X86:pei-i386"; do
    kind=${folder##*:}
    folder=${folder%:*}
    for file in goodsreq.dll sandbox.dll goodsreq-host.exe; do
        [ -f "$folder/$file" ] || {
            echo "$folder has no $file"
            wrong=1
            continue
        }
        name=${folder##*/}/$file
        expectText "$name, format" "$kind" "$(format "$folder/$file")"
        expectText "$name, imports of others" "" "$(foreign "$folder/$file")"
        # The version stands in the file's properties as text of 16-bit letters.
        expectText "$name, version" "$version" "$(strings -el -n 3 "$folder/$file" | grep -A 1 -x ProductVersion | tail -n 1)"
        [[ $file == *.exe ]] || expectText "$name, exports" "$entries" "$(exported "$folder/$file")"
    done
    "$root/tools/check-delivered.sh" "$folder"/*.dll "$folder"/*.exe || wrong=1
    # The type library is resource 1 of the component; its file format starts with MSFT.
    grep -qaF MSFT "$folder/goodsreq.dll" || {
        echo "${folder##*/}/goodsreq.dll carries no type library"
        wrong=1
    }
done
[ "$wrong" -eq 0 ]
