#!/bin/bash
# Looks at built programs and DLLs for what makes an error in them hard to use: check-delivered.sh FILE...
# Each file has to load anywhere (with the whole address space on 64 bits), to run no data, to guard its stack, to hold no section
# that is both written and run, and on 32 bits to register no handler that an overrun could exchange. Prints what a file lacks;
# exit status 1 then.
set -euo pipefail

dump() {
    x86_64-w64-mingw32-objdump "$@"
}

# What a file lacks, one a line.
lacking() {
    local file=$1 facts code guarded
    facts=$(dump -p "$file")
    code=$(dump -d --no-show-raw-insn "$file")
    has() {
        grep -qE "$2" <<<"$facts" || echo "$1"
    }
    has "a random place (DYNAMIC_BASE)" '^\s+DYNAMIC_BASE$'
    has "relocations, so it loads at one place only" '^Entry 5 0*[1-9a-f][0-9a-f]* 0*[1-9a-f][0-9a-f]* Base Relocation'
    [[ $file == *.dll ]] || has "the word that it knows Remote Desktop (TERMINAL_SERVICE_AWARE)" 'TERMINAL_SERVICE_AWARE'
    has "data that is not run (NX_COMPAT)" '^\s+NX_COMPAT$'
    case $(dump -f "$file") in
    *pei-x86-64*)
        has "the whole address space (HIGH_ENTROPY_VA)" '^\s+HIGH_ENTROPY_VA$'
        has "a place above 4 GB" '^ImageBase\s+0*[1-9a-f][0-9a-f]{8}'
        ;;
    *)
        has "the word that it has no handlers of its own (NO_SEH)" '^\s+NO_SEH$'
        ! grep -qE '%fs:0x0(,|$)' <<<"$code" || echo "NO_SEH in truth: it registers a handler"
        ;;
    esac
    # Two calls come with the run-time library; our own functions have hundreds.
    guarded=$(grep -c 'call.*<_*stack_chk_fail' <<<"$code" || true)
    [ "$guarded" -gt 50 ] || echo "a guarded stack (only $guarded functions check it)"
    dump -h "$file" | awk '/^ *[0-9]+ / { name = $2; next } /CODE/ && !/READONLY/ { print "read-only code: section " name }'
}

failed=0
for file in "$@"; do
    found=$(lacking "$file" | sed "s|^|$(basename "$(dirname "$file")")/$(basename "$file") lacks |")
    [ -z "$found" ] || {
        echo "$found"
        failed=1
    }
done
[ $# -gt 0 ] && [ "$failed" -eq 0 ]
