# What lies in dist: the files' bits, the DLLs' undecorated exports, nothing imported but what the least Windows has, no
# variables of the environment but those that are told, and what an error in them is harder to use with. Each file has
# to load anywhere (with the whole address space on 64 bits), to run no data, to guard its stack, to hold no section that
# is both written and run, and on 32 bits to register no handler that an overrun could exchange.
wrong=0
lacks() {
    echo "$WIDTH/$file lacks $1"
    wrong=1
}
# has WHAT PATTERN: a line of what is said of the file
has() {
    grep -qE "$2" <<<"$facts" || lacks "$1"
}
# expectText WHAT EXPECTED FOUND
expectText() {
    [ "$2" = "$3" ] || {
        printf '%s, %s: expected\n%s\nfound\n%s\n' "$WIDTH/$file" "$1" "$2" "$3"
        wrong=1
    }
}
dump() {
    x86_64-w64-mingw32-objdump "$@" "$DIST/$file"
}

version=$(sed -nE 's/^project\(goodsreq VERSION ([0-9.]+).*/\1/p' "$root/CMakeLists.txt")
# All there is in the least Windows, 7. What came after it would keep a file from being loaded there, and is looked up
# at run time where it is used at all.
known=$(awk '!/^#/ { for (i = 2; i <= NF; ++i) print $1, $i }' "$root/tests/windows/imports.txt")
for file in sandbox.dll goodsreq-host.exe goodsreq.dll; do
    facts=$(dump -p)
    code=$(dump -d --no-show-raw-insn)
    has "a random place (DYNAMIC_BASE)" '^\s+DYNAMIC_BASE$'
    has "relocations, so it loads at one place only" '^Entry 5 0*[1-9a-f][0-9a-f]* 0*[1-9a-f][0-9a-f]* Base Relocation'
    has "data that is not run (NX_COMPAT)" '^\s+NX_COMPAT$'
    if [ "$WIDTH" = x64 ]; then
        has "64 bits" 'file format pei-x86-64$'
        has "the whole address space (HIGH_ENTROPY_VA)" '^\s+HIGH_ENTROPY_VA$'
        has "a place above 4 GB" '^ImageBase\s+0*[1-9a-f][0-9a-f]{8}'
    else
        has "32 bits" 'file format pei-i386$'
        has "the word that it has no handlers of its own (NO_SEH)" '^\s+NO_SEH$'
        ! grep -qE '%fs:0x0(,|$)' <<<"$code" || lacks "NO_SEH in truth: it registers a handler"
    fi
    # Two calls come with the run-time library; our own functions have hundreds.
    guarded=$(grep -c 'call.*<_*stack_chk_fail' <<<"$code" || true)
    [ "$guarded" -gt 50 ] || lacks "a guarded stack (only $guarded functions check it)"
    expectText "code that is written" "" "$(dump -h |
        awk '/^ *[0-9]+ / { name = $2; next } /CODE/ && !/READONLY/ { print name }')"
    imports=$(awk '/DLL Name: / { library = tolower($3) }
        /^\t[0-9a-f]+\t +[0-9]+ +[^ ]+$/ { print library, $NF }' <<<"$facts")
    expectText "imports that the least Windows may lack" "" "$(grep -vxF "$known" <<<"$imports" || true)"
    # The version stands in the file's properties as text of 16-bit letters.
    expectText version "$version" "$(strings -el -n 3 "$DIST/$file" | grep -A 1 -x ProductVersion | tail -n 1)"
    if [[ $file == *.exe ]]; then
        has "the word that it knows Remote Desktop (TERMINAL_SERVICE_AWARE)" 'TERMINAL_SERVICE_AWARE'
    else
        expectText exports "DllCanUnloadNow DllGetClassObject DllInstall DllRegisterServer DllUnregisterServer" \
            "$(sed '1,/Ordinal\/Name Pointer/d; /^$/,$d; s/.*\] //' <<<"$facts" | sort | xargs)"
    fi
done
expectText "variables of the environment" "GOODSREQ_WINDOW_LOG GOODSREQ_WINDOW_TEXTS" \
    "$({ strings -el "$DIST/$file" && strings "$DIST/$file"; } | grep -o 'GOODSREQ_.*' | sort | xargs)"
# The sizes of the icon that windows take, in octal digits; 0 says 256.
expectText icon "020 024 030 040 050 060 100 000" "$(x86_64-w64-mingw32-windres -J coff -O rc "$DIST/$file" |
    sed -n '/RT_GROUP_ICON/,/END/s/^ *"\\\([0-7]*\)\\.*/\1/p' | xargs)"
# The type library is resource 1 of the component; its file format starts with MSFT.
grep -qaF MSFT "$DIST/$file" || lacks "a type library"
[ "$wrong" -eq 0 ]
