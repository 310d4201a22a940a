#!/usr/bin/env bash
# Runs every fuzz target for SECONDS each (default 60), one after another, each from a copy of
# its seed corpus: fuzz/run.sh BUILD_DIR [SECONDS]. A finding stops the run with the target's
# exit status and leaves the input as crash-*/leak-*/timeout-* in the work folder it names.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=$(cd "${1:?usage: fuzz/run.sh BUILD_DIR [SECONDS]}" && pwd)
seconds=${2:-60}
work=$(mktemp -d /tmp/fuzz-run.XXXXXX)
declare -A dict=([bridge_message]=json [config]=json [script_line]=json [engine_open]=pdf
  [engine_redact]=pdf)
# The redaction target starts from the PDF seeds of the opening target.
declare -A seeds=([engine_redact]=engine_open)
for name in bridge_message config script_line engine_open engine_redact engine_annots; do
  mkdir -p "$work/$name"
  cp "$here/corpus/${seeds[$name]:-$name}/"* "$work/$name/"
  echo "== $name: ${seconds}s"
  words=()
  [ -n "${dict[$name]:-}" ] && words=(-dict="$here/dict/${dict[$name]}.dict")
  if ! (cd "$work" && "$build/out/bin/${name}_fuzzer" -max_total_time="$seconds" -timeout=20 \
      -rss_limit_mb=3072 "${words[@]}" -print_final_stats=1 \
      "$work/$name" > "$work/$name.log" 2>&1); then
    tail -n 60 "$work/$name.log"
    echo "fuzzing found a fault in $name (inputs in $work)"
    exit 1
  fi
  grep -E "^#[0-9]+ +DONE|stat::number_of_executed_units|stat::peak_rss_mb" "$work/$name.log" || true
done
rm -rf "$work"
