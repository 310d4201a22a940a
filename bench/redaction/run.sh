#!/usr/bin/env bash
# Builds in Release, installs the peer's npm package, and runs the redaction comparison.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
"$root/scripts/install-deps.sh"
command -v npm > /dev/null || apt-get install -y -q nodejs npm
"$root/scripts/build.sh" "$root/build-release" -DCMAKE_BUILD_TYPE=Release -DBREVAN_BUILD_TESTS=OFF
(cd "$here" && npm install --no-audit --no-fund --silent)
python3 "$here/compare.py" --build "$root/build-release" --node-modules "$here/node_modules" "$@"
