#!/bin/bash
# Checks the rules of the house: who may include what, headers that compile alone, sizes, no address of a machine.
# Each rule is one check and prints "ok RULE" or "FAILED RULE" with what breaks it. Exit status 1 if any failed.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# What is tracked or about to be; without git, what stands here.
{
    git ls-files --cached --others --exclude-standard 2>/dev/null ||
        find . -type f -not -path './.git/*' -not -path './build/*' -not -path './dist/*' -not -path './.cache/*' \
            -not -path './out/*' -printf '%P\n'
} | sort -u | while read -r file; do [ ! -f "$file" ] || echo "$file"; done >"$work/files"
grep -E '\.(cpp|h)$' "$work/files" >"$work/code" || true

# Each include of the code: FILE<tab>INCLUDED, with its quotes or angle brackets.
xargs -r -d '\n' grep -HoE '^[[:space:]]*#[[:space:]]*include[[:space:]]*["<][^">]+[">]' <"$work/code" |
    sed -E 's/:[[:space:]]*#[[:space:]]*include[[:space:]]*/\t/' >"$work/includes" || true

# rule NAME: standard input names what breaks it; nothing there means that it is kept.
rule() {
    local broken
    broken=$(cat)
    if [ -z "$broken" ]; then
        echo "ok $1"
    else
        echo "FAILED $1"
        sed 's/^/    /' <<<"$broken"
        : >"$work/failed"
    fi
}

# Folders that may know Windows.
windowsRooms='^(src/win32|src/com|sandbox/host|tests/windows|benchmarks/windows|endurance/windows)/'

# A header of Windows is one that the cross-compiler has and the machine's own compiler has not.
windowsHeaders() {
    local native
    native="$(g++ -print-file-name=include) /usr/include /usr/include/x86_64-linux-gnu"
    cut -f2 "$work/includes" | grep '^<' | tr -d '<>' | sort -u | while read -r header; do
        local name=${header,,} folder known=""
        [ -f "/usr/share/mingw-w64/include/$name" ] || continue
        for folder in $native; do
            [ ! -f "$folder/$header" ] || known=1
        done
        [ -n "$known" ] || printf '<%s>\n' "$header"
    done
}

windowsHeaders >"$work/windows"
{
    grep -vE "$windowsRooms" "$work/includes" | grep -Ff "$work/windows" || true
} | rule "only the Windows rooms include a Windows header"

{
    grep -vE '^(sandbox/database|benchmarks)/' "$work/includes" | grep -E '[/<"]sqlite3(ext)?\.h[">]$' || true
} | rule "only sandbox/database and benchmarks include sqlite3.h"

# Rooms by floor. A file may include its own floor and those below; nothing here knows the sandbox or Windows.
floorsKept() {
    local file included room target
    declare -A floor=([automation]=1 [basic]=1 [forms]=2 [common]=3 [slip]=4 [screens]=5 [component]=6)
    while IFS=$'\t' read -r file included; do
        room=${file#src/}
        room=${room%%/*}
        [ -n "${floor[$room]:-}" ] || continue
        included=${included//[\"<>]/}
        while [[ $included == ../* || $included == src/* ]]; do included=${included#*/}; done
        [[ $included == */* ]] || continue
        target=${included%%/*}
        case $target in
        win32 | com | sandbox | database | suite | host | tests | benchmarks) echo "$file includes $included" ;;
        *)
            if [ -n "${floor[$target]:-}" ] && [ "${floor[$target]}" -gt "${floor[$room]}" ]; then
                echo "$file includes $included"
            fi
            ;;
        esac
    done < <(grep '^src/' "$work/includes")
}

floorsKept >"$work/floors"
rooms='^src/(screens|slip|common)/'
above='includes (win32|com|sandbox|database|suite|host|tests|benchmarks)/'
{ grep -E "$rooms" "$work/floors" | grep -E "$above" || true; } |
    rule "the module's rooms never include Windows rooms, sandbox or tests"
{ grep -vE "$rooms" "$work/floors" || true; grep -E "$rooms" "$work/floors" | grep -vE "$above" || true; } |
    rule "lower floors never include upper ones"

# An apostrophe that a literal opens and a value goes on from: such a value does not pass quoted().
{
    grep -nE "[=(,% ]'\"|\+ *\"'" -r src/common src/slip src/screens --include='*.cpp' | grep -v 'std::string quoted(' || true
} | rule "texts go into statements through quoted()"

# The entry file: includes, the module handle and the exported functions, each handing on in a line or two.
entryFile() {
    local file=src/com/Exports.cpp
    [ -f "$file" ] || return 0
    [ "$(wc -l <"$file")" -le 60 ] || echo "$file has more than 60 lines"
    grep -nE '^(class|struct|namespace|static|template) ?' "$file" | sed "s|^|$file: |" || true
}
entryFile | rule "the library's entry file holds exports only"

{
    grep -E '(\.(cpp|h|c|sh|cmake|vbs|js|py|idl|rc)|^run|^test|CMakeLists\.txt)$' "$work/files" |
        while read -r file; do
            lines=$(wc -l <"$file")
            [ "$lines" -le 700 ] || echo "$file has $lines lines"
        done
} | rule "no file passes 700 lines"

{
    xargs -r -d '\n' grep -nIE '(^|[^A-Za-z0-9_.})/])/(tmp|home|root|work|Users)/|[A-Za-z]:\\{1,2}Users\\' <"$work/files" || true
} | rule "no path of one machine in a file"

{
    xargs -r -d '\n' grep -nIEo '(https?|ftp)://[A-Za-z0-9.-]+' <"$work/files" | grep -v '://schemas\.microsoft\.com$' || true
} | rule "no address of a registry or server in a file"

# A name in the folder of all users that can be guessed can be taken by somebody else first.
{
    grep -E '^(tests|tools|endurance|benchmarks|run|test|bench|stress|package)(/|$)' "$work/files" |
        grep -vxE 'tests/support/TestFolder\.h|tools/check-house\.sh' |
        xargs -r -d '\n' grep -nIE 'temp_directory_path|TempDir\(|tmpnam|tempnam|\$\{?TMPDIR' |
        grep -v 'GetTempFileName' || true
} | rule "only TestFolder, mkdtemp and mktemp make files for a while"

{
    xargs -r -d '\n' clang-format --dry-run -Werror <"$work/code" 2>&1 | grep -oE '^[^ :]+:[0-9]+' | head -n 20 || true
} | rule "clang-format changes nothing"

# The files that a header reads, by content: the key under which its check is remembered.
headerKey() {
    local stamp=$1
    [ -f "$stamp.d" ] || return 1
    sed -e 's/^[^:]*://' -e 's/\\$//' "$stamp.d" | tr ' ' '\n' | grep . | xargs -d '\n' cat 2>/dev/null | sha256sum
}

# Headers that no source file includes before all else; for the others the build itself is the check.
headersToCompile() {
    local header source first
    grep '\.h$' "$work/code" | while read -r header; do
        source=${header%.h}.cpp
        if [ -f "$source" ]; then
            first=$(grep -m 1 -oE '^#include ["<][^">]+' "$source" | sed 's/^#include ["<]//') || true
            case /$header in
            */"$first") continue ;;
            esac
        fi
        echo "$header"
    done
}

# Compiles one header alone, unless it and all that it includes are as they were at the last good check.
checkHeader() {
    local header=$1 stamp=.cache/headers/$1 compiler
    mkdir -p "$(dirname "$stamp")"
    if [ -f "$stamp.ok" ] && [ "$(headerKey "$stamp")" = "$(<"$stamp.ok")" ]; then
        return 0
    fi
    rm -f "$stamp.ok"
    compiler=(g++)
    if [[ $header =~ $windowsRooms ]]; then
        compiler=(x86_64-w64-mingw32-g++-posix -DUNICODE -D_UNICODE)
    fi
    # Read before an empty file, as any other file would include it.
    if "${compiler[@]}" -std=c++20 -fsyntax-only -w -Isrc -I. -isystem .cache/sqlite -x c++ \
        -DPROJECT_DIR='"."' -include "$header" -MMD -MF "$stamp.d" -MT header /dev/null \
        2>"$stamp.log"; then
        headerKey "$stamp" >"$stamp.ok"
    else
        echo "$header:"
        head -n 4 "$stamp.log" | sed 's/^/    /'
    fi
}
export -f checkHeader headerKey
export windowsRooms
headersToCompile | xargs -r -d '\n' -P "${JOBS:-$(nproc)}" -n 1 bash -c 'checkHeader "$0"' |
    rule "every header compiles alone"

[ ! -f "$work/failed" ]
