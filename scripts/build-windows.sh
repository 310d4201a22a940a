#!/usr/bin/env bash
# Builds the plug-in for 32- and 64-bit Windows with Debian's MinGW-w64 cross compilers: installs
# what it needs (run as root), builds jsoncpp and GoogleTest for each target once into a cache
# (scripts/windows-deps.sh), then configures and builds build-win32/ and build-win64/. Leaves
# out/plugins/TarvoSablemark.tpi and the test programs (out/bin/*.exe) in each.
#
#   scripts/build-windows.sh [i686|x86_64]...   (default: both)
#
# Environment: BREVAN_WIN_DEPS_ROOT (the dependency cache, default build-win-deps/),
# BREVAN_WIN_BUILD_PREFIX (folder of build-win32/ and build-win64/, default the repository),
# BREVAN_JOBS (parallel jobs, default 2), BREVAN_WIN_NO_INSTALL=1 (skip the package step). ccache
# is used when it is installed.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=(i686 x86_64)
jobs=${BREVAN_JOBS:-2}
prefix=${BREVAN_WIN_BUILD_PREFIX:-"$root"}
export BREVAN_WIN_DEPS_ROOT=${BREVAN_WIN_DEPS_ROOT:-"$root/build-win-deps"}

step_start=$SECONDS
step() {
  echo "[build-windows] $1: $((SECONDS - step_start)) s"
  step_start=$SECONDS
}

# ---- Packages -----------------------------------------------------------------------------------
installed() { dpkg-query -W -f='${Status}' "$1" 2>/dev/null | grep -q "install ok installed"; }
packages=(cmake ninja-build dpkg-dev ccache googletest binutils-mingw-w64-i686
  binutils-mingw-w64-x86-64 g++-mingw-w64-i686-posix g++-mingw-w64-x86-64-posix wine wine64)
missing=()
[ "${BREVAN_WIN_NO_INSTALL:-0}" = 1 ] && packages=()
for p in "${packages[@]}"; do installed "$p" || missing+=("$p"); done
export DEBIAN_FRONTEND=noninteractive
if [ ${#missing[@]} -gt 0 ]; then
  # One broken index (the i386 lists the Windows tests try to add, a mirror mid-sync) must not
  # stop the others: a package that is really missing still fails the install below.
  apt-get update -q || echo "apt-get update reported errors; installing from the lists it has"
  apt-get install -y -q --no-install-recommends "${missing[@]}"
fi
# 32-bit programs need wine32 from the i386 architecture; without it they are built but not run.
if [ "${BREVAN_WIN_NO_INSTALL:-0}" != 1 ] && ! installed wine32:i386; then
  if { dpkg --print-foreign-architectures | grep -qx i386 || dpkg --add-architecture i386; } &&
    apt-get update -q && apt-get install -y -q --no-install-recommends wine32:i386; then
    echo "[build-windows] wine32 installed"
  else
    echo "[build-windows] wine32:i386 could not be installed: 32-bit tests will not run"
  fi
fi
step packages

# ---- Dependencies -------------------------------------------------------------------------------
"$root/scripts/windows-deps.sh" "${targets[@]}"
step dependencies

# ---- Both targets -------------------------------------------------------------------------------
launcher=()
if command -v ccache >/dev/null 2>&1 && [ "${CCACHE_DISABLE:-0}" != 1 ]; then
  launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
for target in "${targets[@]}"; do
  case "$target" in
    i686) dir="$prefix/build-win32" ;;
    x86_64) dir="$prefix/build-win64" ;;
    *) echo "unknown target: $target (i686 or x86_64)" >&2; exit 2 ;;
  esac
  deps=$(cd "$BREVAN_WIN_DEPS_ROOT/$target" && pwd)
  mkdir -p "$dir"
  cmake -S "$root" -B "$dir" -G Ninja \
    -DCMAKE_TOOLCHAIN_FILE="$root/cmake/toolchain-mingw-$target.cmake" -DBREVAN_WIN_DEPS="$deps" \
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_C_FLAGS_RELEASE="-O1 -DNDEBUG" \
    -DCMAKE_CXX_FLAGS_RELEASE="-O1 -DNDEBUG" -DBREVAN_UNITY=ON -DBREVAN_WERROR=ON \
    "${launcher[@]}" > "$dir/configure.log" 2>&1 || { cat "$dir/configure.log"; exit 1; }
  cmake --build "$dir" -j"$jobs"
  step "build $target"
done
