#!/usr/bin/env bash
# Builds benchmarks into build/release/bench: build_benchmarks.sh solver_bench ...
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/install_dependencies.sh bench
cmake --preset release -DQUILLANE_BENCH=ON >/dev/null
cmake --build --preset release --target "$@"
