#!/usr/bin/env bash
# Measures which lines of src/ the tests run; the core must reach 95 %. Lists the lines that no test runs.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/install_dependencies.sh develop

[ -f build/coverage/build.ninja ] || cmake --preset coverage
cmake --build --preset coverage
find build/coverage -name '*.gcda' -delete
ctest --preset coverage

report() { gcovr --root . --object-directory build/coverage --exclude-throw-branches "$@"; }
report --filter src/ --html-details build/coverage/index.html \
  --txt build/coverage/lines.txt --print-summary
cat build/coverage/lines.txt
echo "Line by line: build/coverage/index.html"
echo "The core (all rooms but batch and ui):"
report --filter 'src/(model|fem|optimize|edit|display|image|export)/' --fail-under-line 95 --print-summary |
  grep '^lines'
