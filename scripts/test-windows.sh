#!/usr/bin/env bash
# Builds the Windows targets (scripts/build-windows.sh) and runs their tests under wine: each test
# program once, whole, writing its results as XML. A program fails when its XML is missing, names
# fewer tests than the program lists, or reports a failure or an error; the test host runs the
# library and reports its checks the same way. The 64-bit programs run under wine64; the 32-bit
# ones under wine32 when it is installed, else they are skipped, saying so. The 32-bit and 64-bit
# libraries must export PlugInMain and no other name.
#
#   scripts/test-windows.sh            (as root, like the build script)
#
# Environment: as for scripts/build-windows.sh; BREVAN_WIN_TEST_OUT (the XML reports, default
# build-win-test/), WINEPREFIX (default: a prefix of this script's own under the reports).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
prefix=${BREVAN_WIN_BUILD_PREFIX:-"$root"}
out=${BREVAN_WIN_TEST_OUT:-"$root/build-win-test"}
started=$SECONDS
step_start=$SECONDS
step() {
  echo "[test-windows] $1: $((SECONDS - step_start)) s"
  step_start=$SECONDS
}
failures=()
fail() {
  echo "[test-windows] FAILED: $1" >&2
  failures+=("$1")
}

"$root/scripts/build-windows.sh"
step "build (whole)"

mkdir -p "$out"
out=$(cd "$out" && pwd)
export WINEDEBUG=-all WINEPREFIX=${WINEPREFIX:-"$out/wine-prefix"}
# No windows: wine must not try to show its own dialogs (crash or prefix update) headless.
export DISPLAY=
wine32_installed() { dpkg-query -W -f='${Status}' wine32:i386 2>/dev/null | grep -q "install ok installed"; }
if [ ! -f "$WINEPREFIX/system.reg" ]; then
  wineboot -i > "$out/wineboot.log" 2>&1 || { cat "$out/wineboot.log"; exit 1; }
  wineserver -w
fi
# Windows without a display: the null graphics driver lets the tests make windows headless.
wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f > /dev/null 2>&1 || true
wineserver -w
step "wine prefix"

# Runs one test program under wine and checks its XML report against the program's own list.
run_gtest() {
  local exe=$1 name=$2 xml listed ran failed errors begun=$SECONDS
  xml="$out/$name.xml"
  rm -f "$xml"
  if [ ! -f "$exe" ]; then
    fail "$name: $exe was not built"
    return
  fi
  # The program's own list: "Suite." lines, then indented test names.
  listed=$(wine "$exe" --gtest_list_tests 2> "$out/$name.list.err" | tr -d '\r' | grep -c '^  ' || true)
  # A relative report path: the program takes a Unix absolute path for a relative one.
  (cd "$out" && wine "$exe" --gtest_output="xml:$name.xml" > "$name.log" 2>&1) || true
  if [ ! -s "$xml" ]; then
    tail -n 30 "$out/$name.log" >&2
    fail "$name: no XML report ($out/$name.log)"
    return
  fi
  ran=$(grep -c '<testcase ' "$xml" || true)
  failed=$(sed -n 's/^<testsuites.*[[:space:]]failures="\([0-9]*\)".*/\1/p' "$xml" | head -n 1)
  errors=$(sed -n 's/^<testsuites.*[[:space:]]errors="\([0-9]*\)".*/\1/p' "$xml" | head -n 1)
  echo "[test-windows] $name: $ran of $listed tests ran, ${failed:-?} failed, ${errors:-?} errors" \
    "($((SECONDS - begun)) s)"
  if [ "$listed" -eq 0 ] || [ "$ran" -lt "$listed" ]; then
    fail "$name: the report names $ran tests, the program lists $listed"
  fi
  if [ "${failed:-1}" != 0 ] || [ "${errors:-1}" != 0 ]; then
    grep -B1 -A3 '<failure' "$xml" | head -n 60 >&2 || true
    fail "$name: ${failed:-?} failed, ${errors:-?} errors"
  fi
}

# Runs the test host (tests/test_host) on the build's plug-in library; its XML report has
# GoogleTest's layout, one case per check, and must hold checks and no failure.
run_test_host() {
  local exe=$1 tpi=$2 name=$3 xml ran failed begun=$SECONDS
  xml="$out/$name.xml"
  rm -f "$xml"
  (cd "$out" && wine "$exe" "$(winepath -w "$tpi")" --xml "$name.xml" > "$name.log" 2>&1) || true
  if [ ! -s "$xml" ]; then
    tail -n 30 "$out/$name.log" >&2
    fail "$name: no XML report ($out/$name.log)"
    return
  fi
  ran=$(sed -n 's/^<testsuites.*[[:space:]]tests="\([0-9]*\)".*/\1/p' "$xml" | head -n 1)
  failed=$(sed -n 's/^<testsuites.*[[:space:]]failures="\([0-9]*\)".*/\1/p' "$xml" | head -n 1)
  echo "[test-windows] $name: ${ran:-?} checks, ${failed:-?} failed ($((SECONDS - begun)) s)"
  if [ "${ran:-0}" -eq 0 ] || [ "${failed:-1}" != 0 ] || ! grep -q '^PASSED ' "$out/$name.log"; then
    grep -i 'fail' "$out/$name.log" | head -n 20 >&2 || true
    fail "$name: ${failed:-?} of ${ran:-?} checks failed"
  fi
}

# The test programs of a build folder (GoogleTest programs are named *_tests): the unit tests and
# those of tests/win and tests/test_host.
test_programs() {
  local bin=$1/out/bin
  [ -d "$bin" ] || return 0
  find "$bin" -maxdepth 1 -name '*_tests.exe' -printf '%f\n' | sort
}

for bits in 64 32; do
  dir="$prefix/build-win$bits"
  triplet=$([ $bits = 64 ] && echo x86_64-w64-mingw32 || echo i686-w64-mingw32)
  tpi="$dir/out/plugins/TarvoSablemark.tpi"
  if [ -f "$tpi" ]; then
    "$root/scripts/check-windows-exports.sh" "$tpi" "$triplet-objdump" PlugInMain ||
      fail "win$bits: TarvoSablemark.tpi exports more or other names than PlugInMain"
  else
    fail "win$bits: TarvoSablemark.tpi was not built"
  fi
  if [ $bits = 32 ] && ! wine32_installed; then
    echo "[test-windows] win32: wine32 is not installed, the 32-bit tests were skipped"
    continue
  fi
  for program in $(test_programs "$dir"); do
    run_gtest "$dir/out/bin/$program" "win$bits-${program%.exe}"
  done
  if [ -f "$dir/out/bin/test_host.exe" ] && [ -f "$tpi" ]; then
    run_test_host "$dir/out/bin/test_host.exe" "$tpi" "win$bits-test_host"
  fi
  step "tests win$bits"
done
wineserver -k 2> /dev/null || true

echo "[test-windows] whole script: $((SECONDS - started)) s"
if [ ${#failures[@]} -gt 0 ]; then
  printf '[test-windows] failed: %s\n' "${failures[@]}" >&2
  exit 1
fi
echo "[test-windows] all Windows checks passed"
