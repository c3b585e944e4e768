#!/usr/bin/env bash
# Installs what is missing, builds the solver and passes all tests: layout, release build, and the same tests
# under AddressSanitizer and UndefinedBehaviorSanitizer.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cd "$root"
jobs=$(nproc)

tools/install_packages.sh g++ cmake ninja-build git libsundials-dev libsuitesparse-dev libgtest-dev libgmock-dev libbenchmark-dev \
  clang-format-14 python3 python3-matplotlib valgrind strace

echo "== Layout"
git ls-files -z 'src/*.h' 'src/*.cpp' 'tests/*.h' 'tests/*.cpp' 'bench/*.h' 'bench/*.cpp' 'fuzz/*.h' 'fuzz/*.cpp' |
  xargs -0 -r clang-format-14 --dry-run --Werror

for preset in release asan-ubsan; do
  echo "== Build and test: $preset"
  bench=$([ "$preset" = release ] && echo ON || echo OFF)
  cmake --preset "$preset" -DVELMORA_UNITY=ON -DVELMORA_BENCH="$bench" >/dev/null
  ninja -C "build/$preset" --quiet
  results="build/$preset/ctest.txt"
  if ctest --test-dir "build/$preset" --output-on-failure --no-tests=error --parallel "$jobs" --progress >"$results"; then
    tail -n 25 "$results"
  else
    # The summary first, since a test that fails may print much; what it printed is whole in the file.
    tail -n 40 "$results"
    echo "== What failed (all of it in $results)"
    grep -aE -A 8 '^\[  FAILED|: Failure$|ERROR: AddressSanitizer|runtime error: |Traceback|Assertion' "$results" |
      cut -c 1-300 | tail -n 150
    exit 1
  fi
done
