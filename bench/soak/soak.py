#!/usr/bin/env python3
"""Soak: sends mixed bridge requests (search, list search, annotate, mark, remove, page text,
file stream, queries) to one document in pdfhost's scripted mode with the plug-in loaded, and
samples pdfhost's resident memory as it goes. The last sample must stay within 1.1x of the one
taken after the first 10,000 requests; every request must be answered, none with an error that
the mix does not expect.

    soak.py --build BUILD [--requests 100000] [--pages 3]
"""
import argparse
import json
import os
import subprocess
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "redaction"))
from compare import ScriptedHost, post  # noqa: E402

TERMS = ["Marta Quillfeather", "Tobias Fennick", "Ingrid Solvay"]
SAMPLE_EVERY = 10_000
BATCH_CYCLES = 50


def resident_kib(pid):
    with open("/proc/%d/status" % pid) as status:
        for line in status:
            if line.startswith("VmRSS:"):
                return int(line.split()[1])
    return 0


def cycle(n, file_id, pages):
    """One round of the mix; the replies' expected codes come beside the requests."""
    term = TERMS[n % len(TERMS)]
    name = "ai_plugin_soak_%d" % n
    steps = [
        (post("findTexts", {"file": {"id": file_id}, "text": term}, "find"), {0}),
        (None, {0}),  # addAnnot on the key the search gives
        (None, {0}),  # markTexts
        (post("clearMarkTexts", {}, "clear"), {0}),
        (None, {0}),  # removeAnnots
        (post("getFileTexts", {"pageIndex": n % pages}, "texts"), {0}),
        (post("getFileStream", {"file": {"id": file_id, "filePath": "upload"}, "offset": 0,
                                "blockSize": 65536}, "stream"), {0}),
        (post("releaseFileStream", "", "release"), {0}),
        (post("findTextList", {"file": {"id": file_id},
                               "textList": [[t, 0] for t in TERMS]}, "list"), {0}),
        (post("isCurrentDocModified", "", "modified"), {0}),
    ]
    return term, name, steps


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", required=True)
    parser.add_argument("--requests", type=int, default=100_000)
    parser.add_argument("--pages", type=int, default=3)
    parser.add_argument("--leave-out", default="",
                        help="steps to leave out of the mix, by uuid (for finding what grows)")
    args = parser.parse_args()
    pdfhost = os.path.join(args.build, "out", "bin", "pdfhost")
    plugins = os.path.join(args.build, "out", "plugins")
    corpus_tool = os.path.join(args.build, "out", "bin", "make_redaction_corpus")

    with tempfile.TemporaryDirectory() as work:
        document = os.path.join(work, "soak.pdf")
        subprocess.run([corpus_tool, document, str(args.pages)], check=True, capture_output=True)
        host = ScriptedHost(pdfhost, plugins, os.path.join(work, "profile"))
        host.send([{"host": "open", "path": document}])
        host.read("opened")
        host.send([post("getCurrentDoc", {}, "doc")])
        file_id = json.loads(host.read("reply")[0])["data"][0]["id"]

        sent = 0
        samples = []
        failures = 0
        n = 0
        while sent < args.requests:
            # Search first: the annotation steps need its key.
            lines, expected = [], []
            for _ in range(BATCH_CYCLES):
                term, name, steps = cycle(n, file_id, args.pages)
                n += 1
                host.send([steps[0][0]])
                found = json.loads(host.read("reply")[0])
                key = found["data"]["searchKey"] if found["ret"] == 0 else ""
                failures += found["ret"] != 0
                steps[1] = (post("addAnnot", {"searchKey": key, "index": 0, "type": "highlight",
                                              "uniqueIDName": name, "contents": "soak"}, "add"), {0})
                steps[2] = (post("markTexts", {"searchKey": key, "index": 0}, "mark"), {0})
                steps[4] = (post("removeAnnots", {"searchKey": key, "index": 0,
                                                  "type": "highlight",
                                                  "uniqueIDPrefix": "ai_plugin_"}, "remove"), {0})
                for line, codes in steps[1:]:
                    if json.loads(line["post"])[3] in args.leave_out.split(","):
                        continue
                    lines.append(line)
                    expected.append(codes)
                sent += len(steps)
            host.send(lines)
            for reply, codes in zip(host.read("reply", len(lines)), expected):
                if json.loads(reply)["ret"] not in codes:
                    failures += 1
            if sent // SAMPLE_EVERY > len(samples):
                samples.append((sent, resident_kib(host.proc.pid)))
                print("%7d requests  %8.1f MiB resident" % (sent, samples[-1][1] / 1024),
                      flush=True)
        host.send([{"host": "quit"}])
        host.writer.join()
        host.proc.stdin.close()
        code = host.proc.wait()

    first, last = samples[0][1], samples[-1][1]
    ratio = last / first
    print("requests %d, unexpected replies %d, pdfhost exit %d" % (sent, failures, code))
    print("resident after %d: %.1f MiB; at the end: %.1f MiB; ratio %.3f (target <= 1.1)"
          % (samples[0][0], first / 1024, last / 1024, ratio))
    return 0 if ratio <= 1.1 and failures == 0 and code == 0 else 1


if __name__ == "__main__":
    sys.exit(main())
