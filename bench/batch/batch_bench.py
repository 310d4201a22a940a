#!/usr/bin/env python3
"""The batch benchmark, run by hand, outside CI: a headless batch of generated 10-page files.

  ours   pdfhost --batch over the files: the reference page runs its batch loop in the embedded
         browser (detectors and the sensitive terms), the plug-in opens, redacts and saves each;
  floor  a plain loop over MuPDF's own API that finds the same terms, redacts and saves the same
         files (floor_redact of bench/redaction, one process per file).

Reports files per minute of both and their ratio (target: ours within 1.5x of the floor), and
pdfhost's peak resident memory over a 10-file batch against a 100-file one (target: ratio within
1.2). Every output is checked with pdftotext: none of the terms is left.

usage: batch_bench.py [--build DIR] [--files 100] [--pages 10] [--keep DIR]"""
import argparse
import os
import shutil
import subprocess
import sys
import tempfile
import time

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "redaction"))
from compare import terms_of  # noqa: E402  (the corpus's terms, read from its source)

TERMS_SOURCE = os.path.join(HERE, "..", "redaction", "redaction_corpus.cpp")


def peak_rss_kib(pid):
    """The process's peak resident set so far (VmHWM), or None once it is gone."""
    try:
        with open(f"/proc/{pid}/status", encoding="ascii") as status:
            for line in status:
                if line.startswith("VmHWM:"):
                    return int(line.split()[1])
    except OSError:
        return None
    return None


def run_batch(args, files, out, report):
    """Runs pdfhost --batch; gives (seconds, peak RSS in KiB of the pdfhost process, exit code)."""
    os.makedirs(out, exist_ok=True)
    # An empty prefix and suffix keep the names, as the floor does.
    command = [args.pdfhost, "--batch", "--plugins", args.plugins, "--out", out, "--overwrite",
               "--prefix", "", "--suffix", "", "--terms", ", ".join(args.terms), "--report", report, *files]
    env = dict(os.environ, QT_QPA_PLATFORM="offscreen")
    start = time.perf_counter()
    proc = subprocess.Popen(command, env=env, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE,
                            text=True)
    peak = 0
    # VmHWM only grows, so the last reading before the exit is the peak (sampled every 50 ms).
    while proc.poll() is None:
        peak = max(peak, peak_rss_kib(proc.pid) or 0)
        time.sleep(0.05)
    seconds = time.perf_counter() - start
    errors = proc.stderr.read()
    if proc.returncode != 0:
        print(errors[-2000:], file=sys.stderr)
    return seconds, peak, proc.returncode


def run_floor(args, files, out):
    os.makedirs(out, exist_ok=True)
    start = time.perf_counter()
    for path in files:
        subprocess.run([args.floor, path, os.path.join(out, os.path.basename(path))], check=True,
                       stdout=subprocess.DEVNULL)
    return time.perf_counter() - start


def check_outputs(files, out, terms):
    for path in files:
        output = os.path.join(out, os.path.basename(path))
        if not os.path.exists(output):
            raise SystemExit(f"no output for {path} in {out}")
        text = " ".join(subprocess.run(["pdftotext", output, "-"], capture_output=True, text=True,
                                       check=True).stdout.split())
        left = [t for t in terms if t in text]
        if left:
            raise SystemExit(f"{output} still holds {left}")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--build", default=os.path.join(HERE, "..", "..", "build"))
    parser.add_argument("--files", type=int, default=100)
    parser.add_argument("--pages", type=int, default=10)
    parser.add_argument("--keep", help="work in this folder and keep it")
    args = parser.parse_args()
    bin_dir = os.path.join(args.build, "out", "bin")
    args.pdfhost = os.path.join(bin_dir, "pdfhost")
    args.plugins = os.path.join(args.build, "out", "plugins")
    args.floor = shutil.which("floor_redact", path=bin_dir)
    maker = shutil.which("make_redaction_corpus", path=bin_dir)
    if not (args.floor and maker and os.path.exists(args.pdfhost)):
        raise SystemExit(f"build pdfhost, TarvoSablemark, floor_redact and make_redaction_corpus in {args.build}")
    args.terms = terms_of(TERMS_SOURCE)

    work = args.keep or tempfile.mkdtemp(prefix="batch-bench-")
    try:
        source = os.path.join(work, "in")
        os.makedirs(source, exist_ok=True)
        first = os.path.join(source, "file-000.pdf")
        subprocess.run([maker, first, str(args.pages)], check=True, stdout=subprocess.DEVNULL)
        files = [first]
        for i in range(1, args.files):
            files.append(os.path.join(source, f"file-{i:03d}.pdf"))
            shutil.copyfile(first, files[-1])

        floor_seconds = run_floor(args, files, os.path.join(work, "floor"))
        check_outputs(files, os.path.join(work, "floor"), args.terms)
        small_seconds, small_peak, small_status = run_batch(
            args, files[:10], os.path.join(work, "ours-10"), os.path.join(work, "report-10.json"))
        big_seconds, big_peak, big_status = run_batch(
            args, files, os.path.join(work, "ours"), os.path.join(work, "report.json"))
        if small_status or big_status:
            raise SystemExit(f"pdfhost --batch exited {small_status} and {big_status}")
        check_outputs(files, os.path.join(work, "ours"), args.terms)

        per_minute = lambda seconds: 60 * len(files) / seconds  # noqa: E731
        speed_ratio = big_seconds / floor_seconds
        memory_ratio = big_peak / small_peak
        print(f"{len(files)} files of {args.pages} pages, {len(args.terms)} terms")
        print(f"floor (MuPDF loop)  {floor_seconds:7.1f} s  {per_minute(floor_seconds):7.1f} files/min")
        print(f"pdfhost --batch     {big_seconds:7.1f} s  {per_minute(big_seconds):7.1f} files/min"
              f"  ({speed_ratio:.2f}x the floor's time; target 1.5x)")
        print(f"pdfhost peak RSS    10 files {small_peak / 1024:.0f} MiB, {len(files)} files "
              f"{big_peak / 1024:.0f} MiB  (ratio {memory_ratio:.2f}; target 1.2)")
        return 0 if speed_ratio <= 1.5 and memory_ratio <= 1.2 else 1
    finally:
        if not args.keep:
            shutil.rmtree(work, ignore_errors=True)


if __name__ == "__main__":
    sys.exit(main())
