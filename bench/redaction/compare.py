#!/usr/bin/env python3
"""The redaction benchmark: one generated 200-page text document, twenty sensitive terms, a few
thousand matches. The same job — find every term, put a Redact annotation on every match, apply,
save — is run three ways and timed as whole processes (best of --runs):

  ours   pdfhost in its scripted mode with the plug-in, driven as the page drives it:
         findTextList, addAnnot per match, redactApply with the names, the scripted save;
  floor  a plain C++ loop over MuPDF's own API (floor_redact);
  peer   the same job in MuPDF.js under Node (npm package mupdf).

Each output must hold the same number of matches and none of the terms in pdftotext's text."""
import argparse
import json
import os
import shutil
import subprocess
import sys
import tempfile
import threading
import time

HERE = os.path.dirname(os.path.abspath(__file__))


def terms_of(source):
    text = open(source, encoding="utf-8").read()
    body = text.split("terms = {", 1)[1].split("};", 1)[0]
    return [part.split('"')[1] for part in body.split(",") if '"' in part]


def timed(run):
    start = time.perf_counter()
    matches = run()
    return time.perf_counter() - start, matches


class ScriptedHost:
    def __init__(self, pdfhost, plugins, profile):
        self.proc = subprocess.Popen(
            [pdfhost, "--headless", "--script", "--plugins", plugins, "--profile", profile],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True, encoding="utf-8",
            bufsize=1 << 20)
        self.writer = None

    def send(self, lines):
        """Writes the lines from a thread of their own, so that a long batch cannot block on a
        full pipe while pdfhost waits for its answers to be read."""
        text = "".join(json.dumps(line) + "\n" for line in lines)

        def write():
            self.proc.stdin.write(text)
            self.proc.stdin.flush()

        if self.writer is not None:
            self.writer.join()
        self.writer = threading.Thread(target=write)
        self.writer.start()

    def read(self, key, count=1):
        found = []
        while len(found) < count:
            text = self.proc.stdout.readline()
            if not text:
                raise RuntimeError("pdfhost ended early")
            line = json.loads(text)
            if "error" in line:
                raise RuntimeError("pdfhost: " + line["error"])
            if key in line:
                found.append(line[key])
        return found


def post(command, params, uuid):
    return {"post": json.dumps(["base", command, params, uuid])}


def wait_peak(proc):
    """Waits for the process and returns (exit status, peak resident memory in MB)."""
    _, status, usage = os.wait4(proc.pid, 0)
    proc.returncode = os.waitstatus_to_exitcode(status)
    return proc.returncode, usage.ru_maxrss / 1024.0


def run_job(args, corpus, terms, out):
    """The job in pdfhost: its whole time, the time of each phase, the matches and the process's
    peak resident memory."""
    shutil.copyfile(corpus, out)
    phases = {}
    with tempfile.TemporaryDirectory() as profile:
        start = time.perf_counter()
        host = ScriptedHost(args.pdfhost, args.plugins, profile)
        host.send([{"host": "open", "path": out}])
        host.read("opened")
        host.send([post("getCurrentDoc", {}, "doc")])
        file_id = json.loads(host.read("reply")[0])["data"][0]["id"]
        phases["open"] = time.perf_counter() - start

        mark = time.perf_counter()
        params = {"file": {"id": file_id}, "textList": [[term, 0] for term in terms]}
        host.send([post("findTextList", params, "find")])
        found = json.loads(host.read("reply")[0])
        if found["ret"] != 0:
            raise RuntimeError("findTextList answered %s" % found["ret"])
        phases["find"] = time.perf_counter() - mark

        mark = time.perf_counter()
        names, lines = [], []
        for k, entry in enumerate(found["data"]):
            for i in range(entry["count"]):
                name = "ai_plugin_%d_%d" % (k, i)
                names.append(name)
                lines.append(post("addAnnot", {"searchKey": entry["searchKey"], "index": i,
                                               "type": "redact", "uniqueIDName": name}, name))
        host.send(lines)
        for reply in host.read("reply", len(lines)):
            if json.loads(reply)["ret"] != 0:
                raise RuntimeError("addAnnot answered " + reply)
        phases["addAnnot"] = time.perf_counter() - mark

        mark = time.perf_counter()
        host.send([{"host": "answer", "dialog": "messageBox", "value": 1},
                   post("redactApply", {"uniqueIDNames": names}, "apply")])
        applied = json.loads(host.read("reply")[0])
        if applied["ret"] != 0 or applied["data"]:
            raise RuntimeError("redactApply answered %s" % applied)
        phases["apply"] = time.perf_counter() - mark

        mark = time.perf_counter()
        host.send([{"host": "save", "doc": 1}, {"host": "state"}])
        host.read("state")
        phases["save"] = time.perf_counter() - mark
        host.send([{"host": "quit"}])
        host.writer.join()
        host.proc.stdin.close()
        status, peak = wait_peak(host.proc)
        if status != 0:
            raise RuntimeError("pdfhost exited with %d" % status)
        whole = time.perf_counter() - start
    return {"whole": whole, "phases": phases, "matches": len(names), "peak": peak}


def run_ours(args, corpus, terms, out):
    return run_job(args, corpus, terms, out)["matches"]


def run_floor(args, corpus, terms, out):
    done = subprocess.run([args.floor, corpus, out], check=True, capture_output=True, text=True)
    return int(done.stdout.split()[-1])


def run_peer(args, corpus, terms, out):
    terms_file = out + ".terms.json"
    with open(terms_file, "w", encoding="utf-8") as f:
        json.dump(terms, f)
    done = subprocess.run(["node", os.path.join(HERE, "peer_redact.mjs"), corpus, out, terms_file],
                          check=True, capture_output=True, text=True,
                          env=dict(os.environ, NODE_PATH=args.node_modules))
    return int(done.stdout.split()[-1])


def leftovers(path, terms):
    text = subprocess.run(["pdftotext", path, "-"], check=True, capture_output=True,
                          text=True).stdout
    kept = text.count("quarterly review")
    return [t for t in terms if t in text], kept


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--build", required=True, help="a Release build folder")
    parser.add_argument("--node-modules", required=True, help="where npm installed mupdf")
    parser.add_argument("--runs", type=int, default=3)
    parser.add_argument("--pages", type=int, default=200)
    args = parser.parse_args()
    args.pdfhost = os.path.join(args.build, "out/bin/pdfhost")
    args.plugins = os.path.join(args.build, "out/plugins")
    args.floor = os.path.join(args.build, "out/bin/floor_redact")
    terms = terms_of(os.path.join(HERE, "redaction_corpus.cpp"))

    work = tempfile.mkdtemp(prefix="redaction-bench-")
    corpus = os.path.join(work, "corpus.pdf")
    subprocess.run([os.path.join(args.build, "out/bin/make_redaction_corpus"), corpus,
                    str(args.pages)], check=True)
    jobs = {"ours": run_ours, "floor": run_floor, "peer": run_peer}
    best, matches, ok = {}, {}, True
    for name, job in jobs.items():
        out = os.path.join(work, name + ".pdf")
        times = []
        for _ in range(args.runs):
            seconds, matches[name] = timed(lambda: job(args, corpus, terms, out))
            times.append(seconds)
        best[name] = min(times)
        left, kept = leftovers(out, terms)
        print("%-5s %7.3f s  %5d matches  terms left: %s  filler lines kept: %d"
              % (name, best[name], matches[name], left or "none", kept))
        ok = ok and not left
    print("ours / floor = %.2f   (target at most 1.30)" % (best["ours"] / best["floor"]))
    print("peer / ours  = %.2f   (target at least 2.00)" % (best["peer"] / best["ours"]))
    ok = ok and len(set(matches.values())) == 1
    shutil.rmtree(work)
    return 0 if ok else 1


if __name__ == "__main__":
    sys.exit(main())
