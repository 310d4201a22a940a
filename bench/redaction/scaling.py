#!/usr/bin/env python3
"""The redaction job at growing sizes: generated documents of 200, 1,000, 3,000 and 10,000 pages
(45 lines a page), twenty terms. For each size the job of compare.py is timed phase by phase —
findTextList, every addAnnot, the named redactApply, the save — in pdfhost with the plug-in, and
the plain MuPDF loop (floor_redact) is run on the same file in the same run. Each process's peak
resident memory is read from the kernel when it ends (wait4).

The table says, per size: the matches, ours and the floor (whole job), ours per phase, time per
match, and both peaks; then the ratios the targets are given as. With --main-job, the main job
through the reference page (scripts/main_job.py) is timed on 200 and 1,000 pages as well.

  python3 bench/redaction/scaling.py --build build-release [--pages 200 1000] [--main-job]"""
import argparse
import os
import shutil
import subprocess
import sys
import tempfile
import time

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, HERE)

from compare import leftovers, run_job, terms_of, wait_peak  # noqa: E402


def run_floor(args, corpus, out):
    start = time.perf_counter()
    proc = subprocess.Popen([args.floor, corpus, out], stdout=subprocess.PIPE,
                            stderr=subprocess.PIPE, text=True)
    text, errors = proc.stdout.read(), proc.stderr.read()  # a line each: no pipe fills up
    status, peak = wait_peak(proc)
    if status != 0:
        raise RuntimeError("floor_redact exited with %d: %s" % (status, errors))
    words = errors.split("phases:", 1)[1].split()
    phases = {words[i]: float(words[i + 1]) for i in range(0, len(words) - 1, 2)}
    return {"whole": time.perf_counter() - start, "matches": int(text.split()[-1]), "peak": peak,
            "phases": phases}


def run_main_job(args, corpus, work):
    """The main job through the reference page on one document; its wall time in seconds."""
    out = os.path.join(work, "main-out")
    os.makedirs(out, exist_ok=True)
    env = dict(os.environ, QT_QPA_PLATFORM=os.environ.get("QT_QPA_PLATFORM", "offscreen"))
    start = time.perf_counter()
    subprocess.run([sys.executable, os.path.join(args.root, "scripts/main_job.py"),
                    "--pdfhost", args.pdfhost, "--plugins", args.plugins,
                    "--web", os.path.join(args.root, "web"), "--out", out,
                    "--terms", ", ".join(args.main_terms), "--timeout", "900", corpus],
                   check=True, env=env, stdout=subprocess.DEVNULL)
    return time.perf_counter() - start


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build", required=True, help="a Release build folder")
    parser.add_argument("--pages", type=int, nargs="+", default=[200, 1000, 3000, 10000])
    parser.add_argument("--main-job", action="store_true",
                        help="also time the main job through the reference page")
    parser.add_argument("--main-pages", type=int, nargs="+", default=[200, 1000])
    args = parser.parse_args()
    args.root = os.path.dirname(os.path.dirname(HERE))
    args.build = os.path.abspath(args.build)
    args.pdfhost = os.path.join(args.build, "out/bin/pdfhost")
    args.plugins = os.path.join(args.build, "out/plugins")
    args.floor = os.path.join(args.build, "out/bin/floor_redact")
    terms = terms_of(os.path.join(HERE, "redaction_corpus.cpp"))
    args.main_terms = terms[:3]

    work = tempfile.mkdtemp(prefix="redaction-scaling-")
    rows, ok = [], True
    print("%6s %7s | %8s %8s %5s | %6s %6s %6s %6s %6s | %7s | %7s %7s"
          % ("pages", "matches", "ours s", "floor s", "ratio", "open", "find", "annot", "apply",
             "save", "us/match", "ours MB", "floor MB"))
    for pages in args.pages:
        corpus = os.path.join(work, "corpus-%d.pdf" % pages)
        subprocess.run([os.path.join(args.build, "out/bin/make_redaction_corpus"), corpus,
                        str(pages)], check=True)
        ours = run_job(args, corpus, terms, os.path.join(work, "ours.pdf"))
        left, _ = leftovers(os.path.join(work, "ours.pdf"), terms)
        floor = run_floor(args, corpus, os.path.join(work, "floor.pdf"))
        ok = ok and not left and ours["matches"] == floor["matches"]
        p = ours["phases"]
        per_match = 1e6 * ours["whole"] / max(ours["matches"], 1)
        rows.append((pages, ours, floor, per_match))
        print("%6d %7d | %8.2f %8.2f %5.2f | %6.2f %6.2f %6.2f %6.2f %6.2f | %7.1f | %7.0f %7.0f%s"
              % (pages, ours["matches"], ours["whole"], floor["whole"],
                 ours["whole"] / floor["whole"], p["open"], p["find"], p["addAnnot"], p["apply"],
                 p["save"], per_match, ours["peak"], floor["peak"],
                 "  LEFT: %s" % left if left else ""), flush=True)
        f = floor["phases"]
        print("%6s %7s | %8s %8s %5s | %6s %6.2f %6.2f %6.2f %6.2f   (the floor's phases)"
              % ("", "", "", "", "", "", f["find"], f["annotate"], f["apply"], f["save"]),
              flush=True)
        os.remove(corpus)
    first, last = rows[0], rows[-1]
    worst = max(ours["whole"] / floor["whole"] for _, ours, floor, _ in rows)
    print("ours / floor, worst size:            %.2f  (target at most 1.20)" % worst)
    print("time per match, %d vs %d pages:   %.2f  (target at most 1.30)"
          % (last[0], first[0], last[3] / first[3]))
    print("pdfhost peak, %d vs %d pages:     %.2f  (target at most 2.00)"
          % (last[0], first[0], last[1]["peak"] / first[1]["peak"]))
    if args.main_job:
        times = []
        for pages in args.main_pages:
            corpus = os.path.join(work, "main-%d.pdf" % pages)
            subprocess.run([os.path.join(args.build, "out/bin/make_redaction_corpus"), corpus,
                            str(pages)], check=True)
            times.append(run_main_job(args, corpus, work))
            print("main job, %6d pages: %7.2f s" % (pages, times[-1]), flush=True)
        print("main job, %d vs %d pages:         %.2f  (target at most 3.00)"
              % (args.main_pages[-1], args.main_pages[0], times[-1] / times[0]))
    shutil.rmtree(work)
    return 0 if ok else 1


if __name__ == "__main__":
    sys.exit(main())
