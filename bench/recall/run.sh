#!/usr/bin/env bash
# Installs what the recall benchmark needs (ReportLab for the corpus, the open detector it is
# compared with), builds pdfhost and runs the benchmark: bench/recall/run.sh [run.py's options].
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
"$root/scripts/install-deps.sh"
/usr/bin/python3 -c "import reportlab" 2>/dev/null || apt-get install -y -q --no-install-recommends python3-reportlab
npm ci --prefix "$here" --no-audit --no-fund --loglevel=error
build=${BUILD:-"$root/build"}
[ -f "$build/CMakeCache.txt" ] || cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo > /dev/null
cmake --build "$build" -j2 --target pdfhost TarvoSablemark
python3 "$here/run.py" --build "$build" --peer "$@"
