#!/usr/bin/env python3
"""The recall benchmark: writes the labelled corpus, reads every document's text as pdfhost gives
it to the reference page (getFileTexts over the plug-in's channel, in pdfhost's scripted mode),
and scores the page's detectors on that text with score.js: per kind recall and precision, per
file what was missed. The detectors run in Node on pdfhost's text rather than in the embedded
browser page, so that many files take seconds; they are the same modules the page loads.

Usage: run.py --build BUILD [--out DIR] [--peer] [--min-confidence X]
       run.py --pdftotext ...   (the text from poppler's pdftotext instead, without a build)"""
import argparse
import json
import pathlib
import shutil
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent
REAL = ROOT / "tests" / "data" / "real"


def python_with_reportlab():
    """This interpreter when it has ReportLab, else the system's (Debian's python3-reportlab)."""
    for python in (sys.executable, "/usr/bin/python3"):
        if subprocess.run([python, "-c", "import reportlab"], capture_output=True).returncode == 0:
            return python
    raise SystemExit("ReportLab is missing: apt-get install python3-reportlab")


def make_corpus(out):
    """Generated documents and their labels, then the hand-labelled public files. The generated
    labels must equal those kept in the repository (labels/): the same seed plants the same
    values."""
    corpus = out / "corpus"
    shutil.rmtree(corpus, ignore_errors=True)
    subprocess.run([python_with_reportlab(), str(HERE / "make_corpus.py"), str(corpus)], check=True)
    for kept in sorted((HERE / "labels").glob("*.json")):
        made = corpus / kept.name
        if not made.exists() or json.loads(made.read_text("utf-8")) != json.loads(kept.read_text("utf-8")):
            print("warning: %s differs from the generated labels; the generator changed?" % kept.name,
                  file=sys.stderr)
    for labels in sorted((HERE / "real").glob("*.json")):
        source = REAL / json.loads(labels.read_text("utf-8"))["file"]
        shutil.copy(source, corpus / source.name)
        shutil.copy(labels, corpus / (source.stem + ".json"))
    return sorted(corpus.glob("*.pdf"))


class ScriptedHost:
    """pdfhost in scripted mode; the lines it prints are read one by one."""

    def __init__(self, pdfhost, plugins, profile):
        self.proc = subprocess.Popen(
            [str(pdfhost), "--headless", "--script", "--plugins", str(plugins), "--profile", profile],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True, encoding="utf-8")

    def send(self, line):
        self.proc.stdin.write(json.dumps(line) + "\n")
        self.proc.stdin.flush()

    def read(self, key):
        while True:
            text = self.proc.stdout.readline()
            if not text:
                raise RuntimeError("pdfhost ended early")
            line = json.loads(text)
            if "error" in line:
                raise RuntimeError("pdfhost: " + line["error"])
            if key in line:
                return line[key]

    def quit(self):
        self.send({"host": "quit"})
        self.proc.stdin.close()
        return self.proc.wait(timeout=60)


def texts_from_pdfhost(files, build):
    pdfhost = build / "out" / "bin" / "pdfhost"
    with tempfile.TemporaryDirectory(prefix="recall-profile-") as profile:
        host = ScriptedHost(pdfhost, build / "out" / "plugins", profile)
        try:
            for index, file in enumerate(files):
                host.send({"host": "open", "path": str(file)})
                host.read("opened")
                uuid = "texts-%d" % index
                host.send({"post": json.dumps(["base", "getFileTexts", {"pageIndex": -1}, uuid])})
                reply = json.loads(host.read("reply"))
                if reply.get("ret") != 0:
                    raise RuntimeError("getFileTexts of %s: %s" % (file.name, reply))
                data = reply["data"]
                yield file, json.loads(data) if isinstance(data, str) else data
        finally:
            host.quit()


def texts_from_pdftotext(files):
    for file in files:
        text = subprocess.run(["pdftotext", "-enc", "UTF-8", str(file), "-"], check=True,
                              capture_output=True, text=True).stdout
        yield file, text.split("\f")[:-1] or [text]


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--build", type=pathlib.Path, help="a build folder with pdfhost")
    parser.add_argument("--pdftotext", action="store_true", help="read the text with pdftotext")
    parser.add_argument("--out", type=pathlib.Path, default=ROOT / "build" / "recall")
    parser.add_argument("--peer", action="store_true", help="also score the open PII detector")
    parser.add_argument("--min-confidence", help="the detectors' threshold (default: the page's)")
    args = parser.parse_args()
    if not args.build and not args.pdftotext:
        parser.error("--build or --pdftotext")
    args.out.mkdir(parents=True, exist_ok=True)
    files = make_corpus(args.out)
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
    return subprocess.run(command).returncode


if __name__ == "__main__":
    sys.exit(main())
