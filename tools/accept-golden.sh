#!/bin/bash
# Takes over what differs from the golden files: everything, or the printed slips that are named.
# Look at it first: git diff --no-index tests/printing/golden/NAME.txt tests/printing/golden/NAME.txt.new
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../tests"
shopt -s nullglob
if [ $# -eq 0 ]; then
    files=(printing/golden/*.txt.new road/*.txt.new)
else
    files=("${@/#/printing/golden/}")
    files=("${files[@]/%/.txt.new}")
fi
for file in "${files[@]}"; do
    mv -v "$file" "${file%.new}"
done
