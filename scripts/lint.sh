#!/usr/bin/env bash
# Format (clang-format) and static analysis (clang-tidy, cppcheck) of all sources; silent when clean.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/install_dependencies.sh develop

mapfile -t sources < <(git ls-files 'src/*.cpp' 'src/*.h' 'tests/*.cpp' 'tests/*.h' \
  'bench/*.cpp' 'bench/*.h' 'examples/*.cpp' 'fuzz/*.cpp')
clang-format --dry-run --Werror "${sources[@]}"

# The analysers read the compile commands and the generated headers of a build.
[ -f build/dev/build.ninja ] || cmake --preset dev
cmake --build --preset dev
run-clang-tidy -quiet -p build/dev -j "$(nproc)" "$PWD/(src|examples)/" 2>/dev/null |
  grep -v '^clang-tidy' || true
test "${PIPESTATUS[0]}" -eq 0

cppcheck --quiet --error-exitcode=1 --inline-suppr --std=c++20 --language=c++ \
  --enable=warning,performance,portability --library=qt --suppress=missingIncludeSystem \
  -D Q_OBJECT= -D 'emit=' -I src src examples
