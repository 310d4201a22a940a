#!/usr/bin/env python3
"""The redaction job's commands on inputs far outside the usual, in pdfhost's scripted mode with
the plug-in: each case says how long it took, what the commands answered, and pdfhost's peak
resident memory, and fails when an answer is not the one the protocol gives.

  blank     a document of 10,000 pages without text, searched for the twenty terms: answered
            400005 (no find result)
  dense     one page that holds the word "ab" 100,000 times, searched for it: 100,000 matches
  crowded   that page with a Redact annotation on every match, 1,000 of them removed again
            (removeAnnots) and the other 99,000 applied by name: every answer 0, none failed
  terms     findTextList of 1,000 terms (the twenty and 980 that occur nowhere) on 200 pages:
            the twenty find what they find alone
  requests  200,000 addAnnot requests in a row on 1,000 pages, cycling over the matches: every
            one answers 0 (a match annotated before is answered as added)
  review    a mark put on and taken off again, 100 times, each waiting for its answers, beside
            200 and beside 60,000 marks on the same page: every answer 0, the same time a pair

  python3 bench/redaction/bad_input.py --build build [--cases blank dense crowded terms requests review]"""
import argparse
import json
import os
import subprocess
import sys
import tempfile
import time

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, HERE)

from compare import ScriptedHost, post, terms_of, wait_peak  # noqa: E402


class Session:
    """pdfhost with the plug-in and one document open."""

    def __init__(self, args, corpus, profile):
        self.host = ScriptedHost(args.pdfhost, args.plugins, profile)
        self.host.send([{"host": "open", "path": corpus}])
        self.host.read("opened")
        self.host.send([post("getCurrentDoc", {}, "doc")])
        self.file_id = json.loads(self.host.read("reply")[0])["data"][0]["id"]

    def find(self, terms, expected=0):
        params = {"file": {"id": self.file_id}, "textList": [[term, 0] for term in terms]}
        self.host.send([post("findTextList", params, "find")])
        found = json.loads(self.host.read("reply")[0])
        if found["ret"] != expected:
            raise RuntimeError("findTextList answered %s" % found["ret"])
        return found["data"]

    def close(self):
        self.host.send([{"host": "quit"}])
        self.host.writer.join()
        self.host.proc.stdin.close()
        status, peak = wait_peak(self.host.proc)
        if status != 0:
            raise RuntimeError("pdfhost exited with %d" % status)
        return peak


def corpus(args, work, pages, kind):
    path = os.path.join(work, "%s-%d.pdf" % (kind, pages))
    subprocess.run([os.path.join(args.build, "out/bin/make_redaction_corpus"), path, str(pages),
                    kind], check=True)
    return path


def blank(args, work, profile):
    session = Session(args, corpus(args, work, 10000, "blank"), profile)
    session.find(args.terms, expected=400005)
    return "10,000 pages, 20 terms: answered 400005", True, session


def dense(args, work, profile):
    session = Session(args, corpus(args, work, 1, "dense"), profile)
    matches = session.find(["ab"])[0]["count"]
    return "one page: %d matches of one term" % matches, matches == 100000, session


def crowded(args, work, profile):
    session = Session(args, corpus(args, work, 1, "dense"), profile)
    entry = session.find(["ab"])[0]
    key, count = entry["searchKey"], entry["count"]
    removed = 1000

    seconds = []

    def run(lines):
        start = time.perf_counter()
        session.host.send(lines)
        answers = {}
        for reply in session.host.read("reply", len(lines)):
            ret = json.loads(reply)["ret"]
            answers[ret] = answers.get(ret, 0) + 1
        seconds.append(time.perf_counter() - start)
        return answers

    marks = {"searchKey": key, "type": "redact"}
    added = run([post("addAnnot", dict(marks, index=i, uniqueIDName="ai_plugin_%d" % i), str(i))
                 for i in range(count)])
    gone = run([post("removeAnnots", dict(marks, index=i, uniqueIDPrefix="ai_plugin_"), str(i))
                for i in range(removed)])
    names = ["ai_plugin_%d" % i for i in range(removed, count)]
    session.host.send([{"host": "answer", "dialog": "messageBox", "value": 1},
                       post("redactApply", {"uniqueIDNames": names}, "apply")])
    applied = json.loads(session.host.read("reply")[0])
    ok = list(added) == [0] and list(gone) == [0] and applied["ret"] == 0 and not applied["data"]
    return ("%d marks on one page (%.1f s), %d removed (%.1f s), %d applied: answers %s / %s / %s"
            % (count, seconds[0], removed, seconds[1], len(names), added, gone, applied["ret"]),
            ok, session)


def terms(args, work, profile):
    session = Session(args, corpus(args, work, 200, "text"), profile)
    alone = [entry["count"] for entry in session.find(args.terms)]
    many = args.terms + ["absent%04d" % i for i in range(1000 - len(args.terms))]
    counts = [entry["count"] for entry in session.find(many)]
    ok = len(counts) == 1000 and counts[:len(alone)] == alone and not any(counts[len(alone):])
    return "1,000 terms: %d matches (the twenty alone: %d)" % (sum(counts), sum(alone)), ok, session


def requests(args, work, profile):
    session = Session(args, corpus(args, work, 1000, "text"), profile)
    found = [entry for entry in session.find(args.terms) if entry["count"] > 0]
    lines = []
    for n in range(200000):
        entry = found[n % len(found)]
        index = (n // len(found)) % entry["count"]
        name = "ai_plugin_%d_%d" % (n % len(found), index)
        lines.append(post("addAnnot", {"searchKey": entry["searchKey"], "index": index,
                                       "type": "redact", "uniqueIDName": name}, str(n)))
    session.host.send(lines)
    answers = {}
    for reply in session.host.read("reply", len(lines)):
        ret = json.loads(reply)["ret"]
        answers[ret] = answers.get(ret, 0) + 1
    fresh = sum(entry["count"] for entry in found)
    return ("200,000 addAnnot on %d matches: answers %s" % (fresh, answers),
            list(answers) == [0], session)


def review(args, work, profile):
    """Marks put on and taken off one at a time, each waiting for its answer, as a user reviewing
    findings does: on a page of 200 marks and on one of 60,000 the time per pair should match."""
    session = Session(args, corpus(args, work, 1, "dense"), profile)
    key = session.find(["ab"])[0]["searchKey"]
    marks = {"searchKey": key, "type": "redact"}
    answers, seconds, placed = set(), {}, 0
    for beside in (200, 60000):
        lines = [post("addAnnot", dict(marks, index=i, uniqueIDName="ai_plugin_%d" % i), str(i))
                 for i in range(placed, beside)]
        session.host.send(lines)
        answers.update(json.loads(r)["ret"] for r in session.host.read("reply", len(lines)))
        placed = beside
        start = time.perf_counter()
        for i in range(beside, beside + 100):
            session.host.send([
                post("addAnnot", dict(marks, index=i, uniqueIDName="ai_plugin_%d" % i), "a"),
                post("removeAnnots", dict(marks, index=i, uniqueIDPrefix="ai_plugin_"), "r")])
            answers.update(json.loads(r)["ret"] for r in session.host.read("reply", 2))
        seconds[beside] = (time.perf_counter() - start) / 100
    return ("100 marks on and off, one at a time: %.1f ms a pair beside 200 marks, %.1f ms beside "
            "60,000: answers %s" % (seconds[200] * 1e3, seconds[60000] * 1e3, sorted(answers)),
            answers == {0}, session)


CASES = {"blank": blank, "dense": dense, "crowded": crowded, "terms": terms, "requests": requests,
         "review": review}


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build", required=True)
    parser.add_argument("--cases", nargs="+", choices=sorted(CASES), default=list(CASES))
    args = parser.parse_args()
    args.build = os.path.abspath(args.build)
    args.pdfhost = os.path.join(args.build, "out/bin/pdfhost")
    args.plugins = os.path.join(args.build, "out/plugins")
    args.terms = terms_of(os.path.join(HERE, "redaction_corpus.cpp"))
    ok = True
    with tempfile.TemporaryDirectory(prefix="redaction-bad-input-") as work:
        for name in args.cases:
            with tempfile.TemporaryDirectory() as profile:
                start = time.perf_counter()
                what, good, session = CASES[name](args, work, profile)
                seconds = time.perf_counter() - start
                peak = session.close()
            ok = ok and good
            print("%-9s %7.2f s %6.0f MB  %s%s" % (name, seconds, peak, what,
                                                   "" if good else "  UNEXPECTED"), flush=True)
    return 0 if ok else 1


if __name__ == "__main__":
    sys.exit(main())
