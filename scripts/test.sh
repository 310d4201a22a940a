#!/usr/bin/env bash
# The whole test suite: installs, checks formatting, builds with warnings as errors and runs every
# test; then builds again with AddressSanitizer and UndefinedBehaviorSanitizer (clang, with the
# fuzzers) and runs them again, and each fuzzer for a few seconds. Between the two, the Windows
# libraries are cross-built and their tests run under wine.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/install-deps.sh"

echo "== Formatting"
cd "$root"
git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run -Werror

echo "== Reference page"
node --test "$root/web/tests"

export QT_QPA_PLATFORM=offscreen
# Builds keep line tables only (-g1): enough for every report and stack trace, far less to
# compile and link. The sanitizer and fuzzing builds optimise less (-O1), as those tools advise.
optimised=(-DCMAKE_C_FLAGS_RELWITHDEBINFO="-O2 -g1 -DNDEBUG"
  -DCMAKE_CXX_FLAGS_RELWITHDEBINFO="-O2 -g1 -DNDEBUG")
instrumented=(-DCMAKE_C_FLAGS_RELWITHDEBINFO="-O1 -g1 -DNDEBUG"
  -DCMAKE_CXX_FLAGS_RELWITHDEBINFO="-O1 -g1 -DNDEBUG")
echo "== Build and test"
"$root/scripts/build.sh" "$root/build" -DBREVAN_WERROR=ON "${optimised[@]}"
ctest --test-dir "$root/build" --output-on-failure -j"$(nproc)"

echo "== Windows: both libraries and their tests under wine"
"$root/scripts/test-windows.sh"

echo "== Build and test under AddressSanitizer and UndefinedBehaviorSanitizer"
# One clang build serves the sanitized tests and the fuzzers (coverage instrumented throughout).
CC=clang CXX=clang++ "$root/scripts/build.sh" "$root/build-asan" -DBREVAN_WERROR=ON \
  -DBREVAN_FUZZ=ON -DBREVAN_BUILD_BENCH=OFF "${instrumented[@]}"
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export LSAN_OPTIONS=suppressions=$root/tests/lsan.supp
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
ctest --test-dir "$root/build-asan" --output-on-failure -j"$(nproc)"

echo "== Fuzzing, every target for a bounded time (long runs: fuzz/README.md)"
bash "$root/fuzz/run.sh" "$root/build-asan" "${FUZZ_SECONDS:-10}"
