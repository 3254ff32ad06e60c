#!/bin/bash
# Checks the rules of the house: who may include what, sizes, no address of a machine. Each rule prints "ok RULE", or
# what breaks it and "FAILED RULE". Exit status 1 if any failed.
set -uo pipefail
shopt -s lastpipe # a rule, at the end of its pipe, tells us that it failed
cd "$(dirname "${BASH_SOURCE[0]}")/.."
failed=0

# What is or may be tracked.
readarray -t files < <(find . -type f -not -name '*.new' -not -regex '\./\(\.cache/\|build/\|dist/\|out/\|\.git\b\).*' \
    -printf '%P\n' | sort)
# those PATTERN: the files whose names match.
those() {
    printf '%s\n' "${files[@]}" | grep -E "$1"
}
readarray -t code < <(those '\.(cpp|h)$')
readarray -t scripts < <(those '\.(sh|cmake|awk)$|(^|/)(CMakeLists\.txt|run|test|bench|stress|package)$')
# Each include of the code: FILE<tab>INCLUDED, without the way to src.
includes=$(grep -HoE '^\s*#\s*include\s*["<][^">]+' "${code[@]}" | sed -E 's/:\s*#\s*include\s*["<]((\.\.|src)\/)*/\t/')
# Folders that may know Windows; all others are built natively too, where there are no headers of Windows.
windowsRooms='^(src/(win32|com)|sandbox/(host|check)|(tests|benchmarks|endurance)/windows)/'

# rule NAME: standard input names what breaks it; nothing there means that it is kept.
rule() {
    local broken
    broken=$(cat)
    if [ -z "$broken" ]; then
        echo "ok $1"
    else
        printf '%s\nFAILED %s\n' "$broken" "$1"
        failed=1
    fi
}

grep -nE '_WIN32|__MINGW|<windows\.h>' "${code[@]}" | grep -vE "$windowsRooms|^(sandbox/database/ServerTime\.cpp|tests/support/Scratch\.h):" |
    rule "only the Windows rooms ask for Windows"

grep -P '\tsqlite3(ext)?\.h$' <<<"$includes" | grep -vE '^(sandbox/database|benchmarks)/' |
    rule "only sandbox/database and benchmarks include sqlite3.h"

awk -F'\t' '
    BEGIN {
        above["automation"] = above["basic"] = 1; above["forms"] = 2; above["common"] = 3; above["slip"] = 4
        above["screens"] = 5; above["component"] = 6
        above["win32"] = above["com"] = above["sandbox"] = above["tests"] = above["benchmarks"] = above["endurance"] = 7
    }
    split($1, from, "/") && split($2, to, "/") > 1 && from[1] == "src" && above[to[1]] > above[from[2]] {
        print $1 " includes " $2
    }' <<<"$includes" | rule "rooms include their own floor and those below, never Windows, sandbox or tests"

# An apostrophe that a literal opens and a value goes on from: such a value does not pass quoted().
grep -rnE "[=(,% ]'\"|\+ *\"'" src/common src/slip src/screens --include='*.cpp' | grep -v 'std::string quoted(' |
    rule "texts go into statements through quoted()"
# What a control, a cell or a field holds may be anything, also where a number is meant.
grep -rnE '(=|by|like|in|\(|,) *" *\+ *[a-zA-Z_.()>-]*\b(text|cell|subItem|current|concatText)\(' src/common src/slip \
    src/screens --include='*.cpp' | grep -v 'idText(' | rule "ids go into statements as numbers"

grep -nE '^(class|struct|namespace|static|template) ?' src/com/Exports.cpp |
    rule "the library's entry file holds exports only"

wc -l "${code[@]}" "${scripts[@]}" | awk '$1 > 700 && $2 != "total"' | rule "no file passes 700 lines"

clang-format --dry-run -Werror "${code[@]}" 2>&1 | grep -oE '^[^ :]+:[0-9]+' | head -n 20 |
    rule "clang-format changes nothing"

grep -nIE '(^|[^A-Za-z0-9_.})/])/(tmp|home|root|work|Users)/|[A-Za-z]:\\{1,2}Users\\' "${files[@]}" |
    rule "no path of one machine in a file"

grep -nIEo '(https?|ftp)://[A-Za-z0-9.-]+' "${files[@]}" | grep -v '://schemas\.microsoft\.com$' |
    rule "no address of a registry or server in a file"

# A name in the folder of all users that can be guessed can be taken by somebody else first.
grep -nIE 'temp_directory_path|TempDir\(|tmpnam|tempnam|\$\{?TMPDIR' \
    $(those '^((tests|tools|endurance|benchmarks)/|(run|test|bench|stress|package)$)') |
    grep -vE '^(tests/support/Scratch\.h|tools/check-house\.sh):|GetTempFileName' |
    rule "only TestFolder, mkdtemp and mktemp make files for a while"

[ "$failed" -eq 0 ] && [ ${#code[@]} -gt 0 ]
