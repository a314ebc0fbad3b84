#!/usr/bin/env bash
# Builds the coverage-guided fuzzer of the model reader (clang++) and runs it.
# Usage: fuzz.sh [seconds, default 1800]   Leaves its findings in build/fuzz/findings.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
seconds=${1:-1800}

scripts/install_dependencies.sh develop

[ -f build/fuzz/build.ninja ] || cmake --preset fuzz
cmake --build --preset fuzz
mkdir -p build/fuzz/corpus build/fuzz/findings
build/fuzz/fuzz/quillane-fuzz build/fuzz/corpus fuzz/seeds -max_len=4096 -timeout=60 \
  -rss_limit_mb=1024 -max_total_time="$seconds" -artifact_prefix=build/fuzz/findings/ \
  -print_final_stats=1
