#!/usr/bin/env bash
# pdfhost's desktop window with the plug-in, its task pane showing the reference page: installs,
# builds, and opens the PDFs given (or the bundled sample). The profile is kept in
# build/desktop-profile.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/install-deps.sh"
"$root/scripts/build.sh" "$root/build" -DBREVAN_BUILD_TESTS=OFF -DBREVAN_BUILD_BENCH=OFF
python3 "$root/scripts/desktop.py" --pdfhost "$root/build/out/bin/pdfhost" \
  --plugins "$root/build/out/plugins" --web "$root/web" --profile "$root/build/desktop-profile" \
  "${@:-$root/res/samples/sample.pdf}"
