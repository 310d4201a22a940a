#!/usr/bin/env bash
# Starts a one-node Slurm cluster of its own in a temporary folder (its own munge key and socket,
# slurm.conf, ports and state), checks that it runs a trivial 4-task array, then runs
# deploy/slurm/redact-array.sbatch as a 4-task array over 40 generated files and checks that each
# file has exactly one output, that the term and a detected e-mail address are gone from every
# output while the other text stays, and that the merged
# reports list every file. Exits 77 (skipped, with the reason) when the cluster cannot start.
# usage: check_slurm_array.sh PDFHOST PLUGIN_DIR MAKE_SAMPLE_PDF REPO_ROOT
set -uo pipefail
readonly SKIP=77 FILES=40 TASKS=4 TERM_TEXT="Elena Varga-Holm" FOUND_TEXT="elena.vargaholm@example.com"
pdfhost=$1 plugins=$2 make_sample=$3 root=$4

work=$(mktemp -d "${TMPDIR:-/tmp}/slurm-test.XXXXXX")
daemons=()
show_logs() {
  for log in "$work"/*.log "$work"/task-*.txt; do
    [ -f "$log" ] && { echo "--- $log"; tail -n 25 "$log"; }
  done
}
skip() { echo "SKIPPED: $*"; show_logs; exit $SKIP; }
fail() { echo "FAILED: $*"; show_logs; exit 1; }
cleanup() {
  # Jobs first, so that no job step outlives its daemon; then the daemons this script started.
  [ -n "${job:-}" ] && scancel "$job" 2> /dev/null
  for pid in "${daemons[@]}"; do kill "$pid" 2> /dev/null; done
  for pid in "${daemons[@]}"; do wait "$pid" 2> /dev/null; done
  rm -rf "$work"
}
trap cleanup EXIT

for tool in munged slurmctld slurmd sbatch squeue sinfo scancel pdftotext python3; do
  command -v "$tool" > /dev/null ||
    skip "$tool is not installed (scripts/install-deps.sh installs slurm-wlm and munge)"
done

free_port() { python3 -c 'import socket; s=socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])'; }
user=$(id -un)
node=$(hostname -s)
mkdir -p "$work/state" "$work/spool" "$work/in" "$work/out"
chmod 700 "$work"

# munge: a key and a socket of this test's own, so that nothing of the machine's is used.
dd if=/dev/urandom of="$work/munge.key" bs=1024 count=1 status=none
chmod 400 "$work/munge.key"
munged --force --socket="$work/munge.sock" --key-file="$work/munge.key" \
  --pid-file="$work/munged.pid" --log-file="$work/munged.log" --seed-file="$work/munged.seed" ||
  skip "munged does not start"
daemons+=("$(cat "$work/munged.pid")")

: > "$work/plugstack.conf"
export SLURM_CONF=$work/slurm.conf
cat > "$SLURM_CONF" << CONF
ClusterName=redactiontest
SlurmctldHost=$node(127.0.0.1)
SlurmUser=$user
SlurmdUser=$user
SlurmctldPort=$(free_port)
SlurmdPort=$(free_port)
AuthType=auth/munge
AuthInfo=socket=$work/munge.sock
CredType=cred/munge
StateSaveLocation=$work/state
SlurmdSpoolDir=$work/spool
SlurmctldPidFile=$work/slurmctld.pid
SlurmdPidFile=$work/slurmd.pid
SlurmctldLogFile=$work/slurmctld.log
SlurmdLogFile=$work/slurmd.log
PlugStackConfig=$work/plugstack.conf
ProctrackType=proctrack/pgid
TaskPlugin=task/none
MpiDefault=none
SchedulerType=sched/builtin
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
JobAcctGatherType=jobacct_gather/none
AccountingStorageType=accounting_storage/none
JobCompType=jobcomp/none
SlurmdParameters=config_overrides
ReturnToService=2
MinJobAge=600
KillWait=5
NodeName=$node NodeAddr=127.0.0.1 CPUs=$(nproc) State=UNKNOWN
PartitionName=test Nodes=$node Default=YES MaxTime=10 State=UP
CONF

slurmctld -D -i > "$work/slurmctld.out" 2>&1 &
daemons+=($!)
slurmd -D -N "$node" > "$work/slurmd.out" 2>&1 &
daemons+=($!)

# Up when the node is idle; a few seconds normally.
for _ in $(seq 60); do
  state=$(sinfo -h -N -o %T 2> /dev/null | head -n 1)
  [ "$state" = idle ] && break
  sleep 0.5
done
[ "${state:-}" = idle ] || skip "the one-node Slurm cluster did not come up (node state: '${state:-none}')"
echo "cluster up: node $node idle"

# Waits for a job to leave the queue; fails after $2 seconds.
wait_job() {
  local deadline=$((SECONDS + $2))
  while [ -n "$(squeue -h -j "$1" -o %i 2> /dev/null)" ]; do
    [ $SECONDS -lt $deadline ] || fail "job $1 still queued or running after $2 s"
    sleep 1
  done
}

job=$(sbatch --parsable --array=0-$((TASKS - 1)) --chdir="$work" --output="$work/task-trivial-%a.txt" \
  --wrap 'echo "$SLURM_ARRAY_TASK_ID/$SLURM_ARRAY_TASK_COUNT" > trivial-$SLURM_ARRAY_TASK_ID') ||
  fail "sbatch refused the trivial array"
wait_job "$job" 60
for i in $(seq 0 $((TASKS - 1))); do
  [ "$(cat "$work/trivial-$i" 2> /dev/null)" = "$i/$TASKS" ] || fail "task $i of the trivial array did not run"
done
echo "trivial array: $TASKS tasks ran"

usage=$("$pdfhost" --help 2>&1 || true)
grep -q -- '--batch' <<< "$usage" ||
  skip "the cluster runs arrays, but this pdfhost has no --batch"

"$make_sample" letter "$work/letter.pdf" > /dev/null || fail "make_sample_pdf failed"
pdftotext "$work/letter.pdf" - | grep -qF "$TERM_TEXT" || fail "the sample does not hold '$TERM_TEXT'"
for i in $(seq -w 1 $FILES); do cp "$work/letter.pdf" "$work/in/letter-$i.pdf"; done

job=$(OUT=$work/out PDFHOST=$pdfhost TERMS=$TERM_TEXT EXTRA="--plugins $plugins" \
  sbatch --parsable --array=0-$((TASKS - 1)) --chdir="$work" --output="$work/task-%a.txt" \
  "$root/deploy/slurm/redact-array.sbatch" "$work"/in/*.pdf) || fail "sbatch refused the redaction array"
wait_job "$job" 150

for input in "$work"/in/*.pdf; do
  output=$work/out/$(basename "$input" .pdf)_redacted.pdf
  [ -f "$output" ] || fail "no output for $input"
  text=$(pdftotext "$output" -) || fail "pdftotext cannot read $output"
  ! grep -qF -e "$TERM_TEXT" -e "$FOUND_TEXT" <<< "$text" || fail "the term or the e-mail address is still in $output"
  grep -qF "Northgate Logistics" <<< "$text" || fail "the text around the findings is gone from $output"
done
outputs=$(find "$work/out" -name '*.pdf' | wc -l)
[ "$outputs" -eq $FILES ] || fail "$outputs outputs for $FILES files"

python3 "$root/deploy/slurm/merge-reports.py" --expect $TASKS -o "$work/merged.json" "$work/out" ||
  fail "the reports do not merge"
python3 - "$work/merged.json" "$work"/in/*.pdf << 'PY' || fail "the merged report does not list every file"
import json, sys
merged = json.load(open(sys.argv[1]))
listed = sorted(next(e[k] for k in ("path", "file", "input") if k in e) for e in merged["files"])
expected = sorted(sys.argv[2:])
assert listed == expected, f"listed {len(listed)}, expected {len(expected)}"
assert merged["redacted"] == len(expected), merged["redacted"]
PY
echo "redaction array: $FILES files, one output each, '$TERM_TEXT' gone, $TASKS reports merged"
