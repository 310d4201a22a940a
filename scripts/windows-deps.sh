#!/usr/bin/env bash
# Builds jsoncpp and GoogleTest/GoogleMock as static libraries for the Windows targets, from
# Debian's sources, into a cache folder: DIR/<target>/ (default DIR: build-win-deps/ in the
# repository, or $BREVAN_WIN_DEPS_ROOT). A target whose folder already holds the same versions
# built with the same compiler is kept as it is.
#
#   scripts/windows-deps.sh [i686|x86_64]...   (default: both)
#
# Needs the MinGW-w64 compilers, cmake, dpkg-dev and the googletest package (the build script
# installs them).
set -euo pipefail
shopt -s inherit_errexit
root=$(cd "$(dirname "$0")/.." && pwd)
cache=${BREVAN_WIN_DEPS_ROOT:-"$root/build-win-deps"}
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=(i686 x86_64)
jobs=${BREVAN_JOBS:-2}
mkdir -p "$cache"
cache=$(cd "$cache" && pwd)

launcher=()
if command -v ccache >/dev/null 2>&1 && [ "${CCACHE_DISABLE:-0}" != 1 ]; then
  launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi

gtest_src=/usr/src/googletest
gtest_version=$(dpkg-query -W -f='${Version}' googletest)

# jsoncpp's Debian source, unpacked with its patches once into the cache. apt reads a deb-src
# list of this script's own, with its lists and caches inside the cache folder, so the machine's
# own package lists are neither changed nor locked.
jsoncpp_source() {
  local found apt_opts
  found=$(find "$cache/src" -maxdepth 1 -type d -name 'libjsoncpp-*' 2>/dev/null | sort | tail -n 1)
  if [ -n "$found" ] && [ -f "$found/CMakeLists.txt" ]; then
    echo "$found"
    return
  fi
  mkdir -p "$cache/apt/lists/partial" "$cache/apt/cache/archives/partial" "$cache/src"
  cat > "$cache/apt/deb-src.sources" <<'EOF'
Types: deb-src
URIs: http://deb.debian.org/debian
Suites: bookworm
Components: main
Signed-By: /usr/share/keyrings/debian-archive-keyring.gpg
EOF
  apt_opts=(-o Dir::Etc::sourcelist="$cache/apt/deb-src.sources" -o Dir::Etc::sourceparts=-
    -o Dir::State::Lists="$cache/apt/lists" -o Dir::Cache="$cache/apt/cache")
  apt-get update -q "${apt_opts[@]}" >&2
  (cd "$cache/src" && apt-get source -q "${apt_opts[@]}" libjsoncpp >&2)
  found=$(find "$cache/src" -maxdepth 1 -type d -name 'libjsoncpp-*' | sort | tail -n 1)
  [ -n "$found" ] || { echo "jsoncpp's source did not unpack" >&2; exit 1; }
  echo "$found"
}

jsoncpp_dir=$(jsoncpp_source)
jsoncpp_version=$(cd "$jsoncpp_dir" && dpkg-parsechangelog -S Version)

for target in "${targets[@]}"; do
  case "$target" in
    i686 | x86_64) ;;
    *) echo "unknown target: $target (i686 or x86_64)" >&2; exit 2 ;;
  esac
  toolchain="$root/cmake/toolchain-mingw-$target.cmake"
  compiler=$("$target-w64-mingw32-g++-posix" -dumpfullversion)
  key="jsoncpp $jsoncpp_version, googletest $gtest_version, g++ $compiler"
  prefix="$cache/$target"
  if [ "$(cat "$prefix/versions.txt" 2>/dev/null)" = "$key" ]; then
    echo "windows deps ($target): cached in $prefix ($key)"
    continue
  fi
  echo "windows deps ($target): building $key"
  rm -rf "$prefix" "$cache/work-$target"
  mkdir -p "$cache/work-$target"
  common=(-G Ninja -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_BUILD_TYPE=Release
    -DCMAKE_INSTALL_PREFIX="$prefix" -DBUILD_SHARED_LIBS=OFF "${launcher[@]}")

  cmake -S "$jsoncpp_dir" -B "$cache/work-$target/jsoncpp" "${common[@]}" \
    -DBUILD_STATIC_LIBS=ON -DBUILD_OBJECT_LIBS=OFF -DJSONCPP_WITH_TESTS=OFF \
    -DJSONCPP_WITH_POST_BUILD_UNITTEST=OFF -DJSONCPP_WITH_PKGCONFIG_SUPPORT=OFF \
    -DJSONCPP_WITH_CMAKE_PACKAGE=ON > "$cache/work-$target/jsoncpp.log" 2>&1 ||
    { cat "$cache/work-$target/jsoncpp.log"; exit 1; }
  cmake --build "$cache/work-$target/jsoncpp" -j"$jobs" --target install >> "$cache/work-$target/jsoncpp.log" 2>&1 ||
    { cat "$cache/work-$target/jsoncpp.log"; exit 1; }

  cmake -S "$gtest_src" -B "$cache/work-$target/googletest" "${common[@]}" \
    -DBUILD_GMOCK=ON -DINSTALL_GTEST=ON > "$cache/work-$target/googletest.log" 2>&1 ||
    { cat "$cache/work-$target/googletest.log"; exit 1; }
  cmake --build "$cache/work-$target/googletest" -j"$jobs" --target install >> "$cache/work-$target/googletest.log" 2>&1 ||
    { cat "$cache/work-$target/googletest.log"; exit 1; }

  rm -rf "$cache/work-$target"
  echo "$key" > "$prefix/versions.txt"
done
