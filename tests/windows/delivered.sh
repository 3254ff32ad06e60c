# What lies in dist, held to delivered-WIDTH.txt: the files' bits, the DLLs' undecorated exports, variables of the
# environment, and what an error is harder to use with. Each file has to load anywhere (with the whole address space on
# 64 bits), to run no data, to guard its stack, to hold no section that is both written and run, and on 32 bits to
# register no handler that an overrun could exchange. Nothing is imported but what the least Windows has.
dump() {
    x86_64-w64-mingw32-objdump "$@" "$DIST/$file"
}

version=$(sed -nE 's/^project\(goodsreq VERSION ([0-9.]+).*/\1/p' "$root/CMakeLists.txt")
# All there is in the least Windows, 7. What came after it would keep a file from being loaded there, and is looked up
# at run time where it is used at all.
known=$(awk '!/^#/ { for (i = 2; i <= NF; ++i) print $1, $i }' "$root/tests/windows/imports.txt")
facts() {
    for file in sandbox.dll goodsreq-host.exe goodsreq.dll; do
        headers=$(dump -p)
        code=$(dump -d --no-show-raw-insn)
        echo "$file"
        grep -oE 'file format .*|^\s+[A-Z_]{6,}$' <<<"$headers"
        sed -nE 's/^ImageBase\s+0*[1-9a-f][0-9a-f]{8,}$/a place above 4 GB/p
            s/^Entry 5 0*[1-9a-f][0-9a-f]* .*(Base Relocation).*/\1/p' <<<"$headers"
        sed '1,/Ordinal\/Name Pointer/d; /^$/,$d; s/.*\]/export/' <<<"$headers"
        awk '/DLL Name: / { library = tolower($3) }
            /^\t[0-9a-f]+\t +[0-9]+ +[^ ]+$/ { print library, $NF }' <<<"$headers" | { grep -vxF "$known" || true; } |
            sed 's/$/ may lack in the least Windows/'
        # Two calls come with the run-time library; our own functions have hundreds.
        [ "$(grep -c 'call.*<_*stack_chk_fail' <<<"$code" || true)" -le 50 ] || echo "a guarded stack"
        ! grep -qE '%fs:0x0(,|$)' <<<"$code" || echo "a handler is registered"
        dump -h | awk '/^ *[0-9]+ / { name = $2; next } /CODE/ && !/READONLY/ { print "written and run:", name }'
        # The version stands in the file's properties as text of 16-bit letters.
        strings -el -n 3 "$DIST/$file" | sed -n "/^ProductVersion\$/{n; s/^$version\$/the project's version/; p}"
    done
    { strings -el "$DIST/$file" && strings "$DIST/$file"; } | grep -o 'GOODSREQ_.*' | sort
    # The sizes of the icon that windows take, in octal digits; 0 says 256.
    x86_64-w64-mingw32-windres -J coff -O rc "$DIST/$file" |
        sed -n '/RT_GROUP_ICON/,/END/s/^ *"\\\([0-7]*\)\\.*/icon \1/p'
    # The type library is resource 1 of the component; its file format starts with MSFT.
    grep -oam 1 MSFT "$DIST/$file"
}
facts | diff "$root/tests/windows/delivered-$WIDTH.txt" -
