#!/usr/bin/env bash
# The main job: installs, builds, and runs Auto Redaction headless — pdfhost with the plug-in and
# the reference page in its embedded browser — on the bundled sample PDFs, or on the PDFs given.
# The redacted copies go to $SABLEMARK_OUT (default: build/redacted); extra terms to redact (such
# as people's names) can be given comma-separated in $SABLEMARK_TERMS.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/install-deps.sh"
"$root/scripts/build.sh" "$root/build" -DBREVAN_BUILD_TESTS=OFF -DBREVAN_BUILD_BENCH=OFF
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}
if [ $# -eq 0 ]; then
  set -- "$root/res/samples/sample.pdf" "$root/res/samples/letter.pdf"
  # The names and the home address in the samples: no pattern finds those, the user names them.
  terms=${SABLEMARK_TERMS-"$(cat "$root/res/samples/terms.txt")"}
else
  terms=${SABLEMARK_TERMS-}
fi
python3 "$root/scripts/main_job.py" --pdfhost "$root/build/out/bin/pdfhost" \
  --plugins "$root/build/out/plugins" --web "$root/web" \
  --out "${SABLEMARK_OUT:-$root/build/redacted}" --terms "$terms" "$@"
