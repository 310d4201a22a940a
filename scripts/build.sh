#!/usr/bin/env bash
# Configures and builds into the folder given (default: build), with extra CMake options after it.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
dir=${1:-"$root/build"}
shift || true
cmake -S "$root" -B "$dir" -DCMAKE_BUILD_TYPE=RelWithDebInfo "$@" > "$dir.configure.log" 2>&1 ||
  { cat "$dir.configure.log"; exit 1; }
cmake --build "$dir" -j"$(nproc)"
