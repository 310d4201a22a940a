#!/usr/bin/env python3
"""The recall benchmark: writes the labelled corpus, reads every document's text as pdfhost gives
it to the reference page (getFileTexts over the plug-in's channel, in pdfhost's scripted mode),
and scores the page's detectors on that text with score.js: per kind recall and precision, per
file what was missed. The detectors run in Node on pdfhost's text rather than in the embedded
browser page, so that many files take seconds; they are the same modules the page loads.

With --job it runs the main job itself (scripts/main_job.py: pdfhost headless, the page in the
embedded browser, every finding redacted and the copy saved) and scores what left the documents:
a labelled value is redacted when the copy's text (pdftotext) no longer holds it; a word that left
the text is right when it is part of a labelled value.

Usage: run.py --build BUILD [--out DIR] [--peer] [--min-confidence X] [--job] [--seed N]
       run.py --pdftotext ...   (the text from poppler's pdftotext instead, without a build)"""
import argparse
import collections
import json
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unicodedata

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "redaction"))
from compare import ScriptedHost  # noqa: E402  the scripted-mode client the benchmarks share

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent
REAL = ROOT / "tests" / "data" / "real"


def python_with_reportlab():
    """This interpreter when it has ReportLab, else the system's (Debian's python3-reportlab)."""
    for python in (sys.executable, "/usr/bin/python3"):
        if subprocess.run([python, "-c", "import reportlab"], capture_output=True).returncode == 0:
            return python
    raise SystemExit("ReportLab is missing: apt-get install python3-reportlab")


def make_corpus(out, seed=None):
    """Generated documents and their labels, then the hand-labelled public files. The generated
    labels of the default seed must equal those kept in the repository (labels/): the same seed
    plants the same values. Another seed writes another corpus, to check that the detectors
    are not tuned to this one."""
    corpus = out / "corpus"
    shutil.rmtree(corpus, ignore_errors=True)
    subprocess.run([python_with_reportlab(), str(HERE / "make_corpus.py"), str(corpus)] +
                   (["--seed", str(seed)] if seed is not None else []), check=True)
    for kept in sorted((HERE / "labels").glob("*.json")) if seed is None else []:
        made = corpus / kept.name
        if not made.exists() or json.loads(made.read_text("utf-8")) != json.loads(kept.read_text("utf-8")):
            print("warning: %s differs from the generated labels; the generator changed?" % kept.name,
                  file=sys.stderr)
    for labels in sorted((HERE / "real").glob("*.json")):
        source = REAL / json.loads(labels.read_text("utf-8"))["file"]
        shutil.copy(source, corpus / source.name)
        shutil.copy(labels, corpus / (source.stem + ".json"))
    return sorted(corpus.glob("*.pdf"))


def texts_from_pdfhost(files, build):
    pdfhost = build / "out" / "bin" / "pdfhost"
    with tempfile.TemporaryDirectory(prefix="recall-profile-") as profile:
        host = ScriptedHost(str(pdfhost), str(build / "out" / "plugins"), profile)
        try:
            for index, file in enumerate(files):
                host.send([{"host": "open", "path": str(file)}])
                host.read("opened")
                uuid = "texts-%d" % index
                host.send([{"post": json.dumps(["base", "getFileTexts", {"pageIndex": -1}, uuid])}])
                reply = json.loads(host.read("reply")[0])
                if reply.get("ret") != 0:
                    raise RuntimeError("getFileTexts of %s: %s" % (file.name, reply))
                data = reply["data"]
                yield file, json.loads(data) if isinstance(data, str) else data
        finally:
            host.send([{"host": "quit"}])
            host.writer.join()
            host.proc.stdin.close()
            host.proc.wait(timeout=60)


def texts_from_pdftotext(files):
    for file in files:
        text = subprocess.run(["pdftotext", "-enc", "UTF-8", str(file), "-"], check=True,
                              capture_output=True, text=True).stdout
        yield file, text.split("\f")[:-1] or [text]


def compact(text):
    return re.sub(r"[\s,;]+", "", unicodedata.normalize("NFKC", text).lower())


def pdftotext(path):
    return subprocess.run(["pdftotext", "-enc", "UTF-8", str(path), "-"], check=True,
                          capture_output=True, text=True).stdout


def score_job(files, build, out):
    """Runs the main job over the files and prints, per kind, how many labelled values the
    redacted copies no longer hold, and how many of the words that left the text were personal."""
    copies = out / "job"
    shutil.rmtree(copies, ignore_errors=True)
    job = subprocess.run([sys.executable, str(ROOT / "scripts" / "main_job.py"),
                          "--pdfhost", str(build / "out" / "bin" / "pdfhost"),
                          "--plugins", str(build / "out" / "plugins"), "--web", str(ROOT / "web"),
                          "--out", str(copies)] + [str(f) for f in files],
                         capture_output=True, text=True)
    (out / "job.log").write_text(job.stdout + job.stderr, encoding="utf-8")
    per_kind = collections.defaultdict(lambda: [0, 0])
    removed_words = right_words = 0
    misses = []
    for file in files:
        copy = copies / (file.stem + "_redacted.pdf")
        if not copy.exists():
            misses.append("%s: no redacted copy" % file.name)
            continue
        before = pdftotext(file)
        try:
            after = pdftotext(copy)
        except subprocess.CalledProcessError:
            misses.append("%s: the redacted copy cannot be read" % file.name)
            after = before
        labels = json.loads(file.with_suffix(".json").read_text("utf-8"))["values"]
        values = {(v["kind"], compact(v["value"])) for v in labels}
        for kind, value in sorted(values):
            if value not in compact(before):
                continue
            per_kind[kind][0] += 1
            if value not in compact(after):
                per_kind[kind][1] += 1
            else:
                misses.append("%s: kept %s %s" % (file.name, kind, value))
        gone = collections.Counter(before.split()) - collections.Counter(after.split())
        for word, count in gone.items():
            removed_words += count
            if any(compact(word).strip(".:") in value for _, value in values):
                right_words += count
    print("\nthe main job (%s): values the redacted copies no longer hold" % (
        "exit %d" % job.returncode))
    for kind, (present, redacted) in sorted(per_kind.items()):
        print("  %-14s %4d of %4d  %.3f" % (kind, redacted, present, redacted / present))
    total = [sum(v[i] for v in per_kind.values()) for i in (0, 1)]
    print("  %-14s %4d of %4d  %.3f" % ("all", total[1], total[0], total[1] / max(1, total[0])))
    print("  words removed: %d, of them in a labelled value: %d (%.3f)" % (
        removed_words, right_words, right_words / max(1, removed_words)))
    for miss in misses:
        print("  " + miss)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--build", type=pathlib.Path, help="a build folder with pdfhost")
    parser.add_argument("--pdftotext", action="store_true", help="read the text with pdftotext")
    parser.add_argument("--out", type=pathlib.Path, default=ROOT / "build" / "recall")
    parser.add_argument("--peer", action="store_true", help="also score the open PII detector")
    parser.add_argument("--min-confidence", help="the detectors' threshold (default: the page's)")
    parser.add_argument("--job", action="store_true", help="also run the main job and score its copies")
    parser.add_argument("--seed", type=int, help="generate the corpus with another seed")
    args = parser.parse_args()
    if not args.build and not args.pdftotext:
        parser.error("--build or --pdftotext")
    args.out.mkdir(parents=True, exist_ok=True)
    files = make_corpus(args.out, args.seed)
    source = texts_from_pdftotext(files) if args.pdftotext else texts_from_pdfhost(files, args.build)
    documents = []
    for file, pages in source:
        labels = json.loads(file.with_suffix(".json").read_text("utf-8"))
        documents.append({"file": file.name, "labels": labels, "pages": pages})
    texts = args.out / "texts.json"
    texts.write_text(json.dumps(documents, ensure_ascii=False), encoding="utf-8")
    print("text from %s" % ("pdftotext" if args.pdftotext else "pdfhost's getFileTexts"))
    command = ["node", str(HERE / "score.js"), str(texts), "--json", str(args.out / "scores.json")]
    if args.peer:
        command.append("--peer")
    if args.min_confidence:
        command += ["--min-confidence", args.min_confidence]
    status = subprocess.run(command).returncode
    if args.job and args.build:
        score_job(files, args.build, args.out)
    return status


if __name__ == "__main__":
    sys.exit(main())
