#!/bin/bash
# Builds one target: build.sh native|bench|x64|x86. The Windows ones end in dist/x64 and dist/x86. What is up to date is not built.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"

target=${1:-}
case $target in
native) goals=(all) ;;
bench) goals=(benchmarks stress) ;;
x64 | x86) goals=(all dist) ;;
*)
    echo "usage: tools/build.sh native|bench|x64|x86" >&2
    exit 2
    ;;
esac

if [ ! -f "build/$target/build.ninja" ] || [ CMakePresets.json -nt "build/$target/CMakeCache.txt" ]; then
    cmake --preset "$target"
    touch "build/$target/CMakeCache.txt"
fi
# One fault does not hide the others: what can be built is built.
exec cmake --build "build/$target" --parallel "${JOBS:-$(nproc)}" --target "${goals[@]}" -- -k 0
