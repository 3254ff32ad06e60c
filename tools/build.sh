#!/bin/bash
# Builds by presets: build.sh native|bench|x64|x86|... The Windows ones end in dist/x64 and dist/x86. What the tools say
# lies in build/PRESET.log.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
mkdir -p build
for preset in "$@"; do
    echo "building $preset"
    if ! { cmake --preset "$preset" && cmake --build --preset "$preset" --parallel "${JOBS:-$(nproc)}"; } 2>&1 </dev/null |
        tee "build/$preset.log" | sed -unE 's/^(\[[0-9]*[05]0\/[0-9]+\]).*/    \1/p'; then
        grep -E 'error|FAILED:|Error' "build/$preset.log" | head -n 20 >&2 || true
        echo "the build of $preset failed (see build/$preset.log)" >&2
        exit 1
    fi
done
