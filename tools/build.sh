#!/bin/bash
# Builds by presets: build.sh native|bench|x64|x86|... The Windows ones end in dist/x64 and dist/x86. What is up to date
# is not built again. What the tools say lies in build/PRESET.log.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

build() {
    if [ ! -f "build/$1/build.ninja" ] || [ CMakePresets.json -nt "build/$1/CMakeCache.txt" ]; then
        cmake --preset "$1"
        touch "build/$1/CMakeCache.txt"
    fi
    cmake --build --preset "$1" --parallel "${JOBS:-$(nproc)}"
}
export -f build

mkdir -p build
for preset in "$@"; do
    echo "building $preset"
    if ! bash -euo pipefail -c "build $preset" 2>&1 </dev/null | tee "build/$preset.log" |
        sed -unE 's/^(\[[0-9]*[05]0\/[0-9]+\]).*/    \1/p'; then
        grep -E 'error|FAILED:|Error' "build/$preset.log" | head -n 20 >&2 || true
        echo "the build of $preset failed (see build/$preset.log)" >&2
        exit 1
    fi
done
