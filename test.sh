#!/usr/bin/env bash
# Installs what is missing, builds, and runs all tests. Another preset with tests can
# be named: test.sh asan (or dev, coverage)
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
preset=${1:-release}

scripts/install_dependencies.sh test
[ -f "build/$preset/build.ninja" ] || cmake --preset "$preset"
cmake --build --preset "$preset"
ctest --preset "$preset"
