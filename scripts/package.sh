#!/usr/bin/env bash
# Builds the Debian packages into out/: the window, the command line, the manual.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/install_dependencies.sh build
[ -f build/package/build.ninja ] || cmake --preset package
cmake --build --preset package
cpack --preset deb
