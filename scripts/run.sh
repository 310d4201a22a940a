#!/usr/bin/env bash
# The main job: installs, builds, and runs pdfhost headless with the plug-in on the bundled sample.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/install-deps.sh"
"$root/scripts/build.sh" "$root/build" -DBREVAN_BUILD_TESTS=OFF -DBREVAN_BUILD_BENCH=OFF
python3 "$root/scripts/main_job.py" --pdfhost "$root/build/out/bin/pdfhost" \
  --plugins "$root/build/out/plugins" "${@:-$root/res/samples/sample.pdf}"
