#!/bin/bash
# Takes over the printed slips that differ from the golden ones: all of them, or those named.
# Look at them first: git diff --no-index tests/printing/golden/NAME.txt tests/printing/golden/NAME.txt.new
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../tests/printing/golden"
shopt -s nullglob
if [ $# -eq 0 ]; then
    files=(*.txt.new)
else
    files=("${@/%/.txt.new}")
fi
for file in "${files[@]}"; do
    mv -v "$file" "${file%.new}"
done
