#!/usr/bin/env bash
# Reads the export table of a Windows library and fails unless it exports exactly the names given
# after the objdump program (default: PlugInMain).
#
#   scripts/check-windows-exports.sh LIBRARY [OBJDUMP] [NAME...]
set -euo pipefail
library=$1
objdump=${2:-objdump}
shift 2 || shift $#
expected=("$@")
[ ${#expected[@]} -gt 0 ] || expected=(PlugInMain)

[ -f "$library" ] || { echo "no such library: $library" >&2; exit 1; }
table=$("$objdump" -p "$library") || { echo "$objdump cannot read $library" >&2; exit 1; }
# The name pointer table lists "[ordinal] name" rows under its heading, up to a blank line.
names=$(awk '/^\[Ordinal\/Name Pointer\] Table/ {rows = 1; next}
             rows && NF == 0 {rows = 0}
             rows {sub(/^[ \t]*\[[ 0-9]+\][ \t]*/, ""); print}' <<< "$table" | sort)
want=$(printf '%s\n' "${expected[@]}" | sort)
if [ "$names" != "$want" ]; then
  echo "$library exports $(grep -c . <<< "$names") name(s), expected: ${expected[*]}" >&2
  head -n 20 <<< "$names" >&2
  exit 1
fi
echo "$library exports exactly: ${expected[*]}"
