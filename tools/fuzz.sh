#!/bin/bash
# Fuzzes the print settings and the slip's layout: tools/fuzz.sh [SECONDS], 600 by default. Needs clang with its sanitizers
# (packages clang and libclang-rt-14-dev). Ends with status 0 when nothing was found; a finding is left in build/fuzz.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
seconds=${1:-600}
folder=build/fuzz
mkdir -p "$folder/corpus"
cp tests/fuzz/seeds/settings/* "$folder/corpus/"
clang++ -std=c++20 -g -O1 -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=undefined -Isrc -I. \
    tests/fuzz/settings_fuzz.cpp src/printing/{SettingsFile,SlipPages,SlipLayout}.cpp src/common/*.cpp src/forms/*.cpp \
    src/basic/*.cpp src/automation/*.cpp -o "$folder/settings_fuzz"
exec "$folder/settings_fuzz" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=1024 -max_len=2000 \
    -artifact_prefix="$folder/" "$folder/corpus"
