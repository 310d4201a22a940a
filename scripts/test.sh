#!/usr/bin/env bash
# The whole test suite: installs, checks formatting, builds with warnings as errors and runs every
# test; then builds again with AddressSanitizer and UndefinedBehaviorSanitizer and runs them again.
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

echo "== Build and test under AddressSanitizer and UndefinedBehaviorSanitizer"
"$root/scripts/build.sh" "$root/build-asan" -DBREVAN_WERROR=ON -DBREVAN_SANITIZE=ON \
  -DBREVAN_BUILD_BENCH=OFF "${instrumented[@]}"
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export LSAN_OPTIONS=suppressions=$root/tests/lsan.supp
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
ctest --test-dir "$root/build-asan" --output-on-failure -j"$(nproc)"

echo "== Fuzzing, every target for a bounded time"
CC=clang CXX=clang++ cmake -S "$root" -B "$root/build-fuzz" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DBREVAN_FUZZ=ON -DBREVAN_BUILD_TESTS=OFF -DBREVAN_BUILD_BENCH=OFF -DBREVAN_WERROR=ON \
  "${instrumented[@]}" \
  > "$root/build-fuzz.configure.log" 2>&1 || { cat "$root/build-fuzz.configure.log"; exit 1; }
cmake --build "$root/build-fuzz" -j"$(nproc)" \
  --target bridge_message_fuzzer config_fuzzer script_line_fuzzer engine_open_fuzzer \
  engine_redact_fuzzer
bash "$root/fuzz/run.sh" "$root/build-fuzz" "${FUZZ_SECONDS:-30}"
