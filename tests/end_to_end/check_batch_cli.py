#!/usr/bin/env python3
"""pdfhost --batch end to end: a folder of generated PDFs (and one file that is no PDF) is redacted
headless by the plug-in with the reference page's batch loop in the embedded browser. The copies
are read back with pdftotext (the e-mail addresses and the user's term are gone, the other text
is there), the report says the same as the copies, and bad usage exits with 2.

usage: check_batch_cli.py PDFHOST PLUGIN_DIR MAKE_TEXT_PDF WEB_DIR"""
import json
import os
import pathlib
import subprocess
import sys
import tempfile

from batch_host import SKIP, expect, pdftotext

KEPT = "Quarterly figures stay readable"
FILES = {
    "a.pdf": ["Contact ana.lind@example.com today", KEPT],
    "b.pdf": ["Signed by Ana Lind", KEPT],
    "c d.pdf": ["Write to bo.berg@example.org", KEPT],
}
GONE = ["ana.lind@example.com", "Ana Lind", "bo.berg@example.org"]
OUTPUT = {name: pathlib.Path(name).stem + "_redacted.pdf" for name in FILES}
AS_NOBODY = ["setpriv", "--reuid=nobody", "--regid=nogroup", "--clear-groups"]


def capture(command, timeout):
    return subprocess.run(command, capture_output=True, text=True, timeout=timeout)


def check_unwritable_output(base, root, source):
    """An output folder that cannot be written: the file is listed with the reason and nothing is
    written. Root writes anywhere, so as root the case runs as the user nobody, when nobody can
    reach the programs."""
    prefix = AS_NOBODY if os.geteuid() == 0 else []
    if prefix and subprocess.run(prefix + ["test", "-x", base[0], "-a", "-r", base[3]]).returncode:
        print("note: nobody cannot reach the programs; the unwritable output is not tried")
        return
    locked = root / "locked"
    locked.mkdir()
    locked.chmod(0o555)
    root.chmod(0o777)
    command = base[:4] + ["--profile", str(root / "profile-locked")] + base[6:]
    run = capture(prefix + ["env", "HOME=" + str(root)] + command +
                  ["--out", str(locked), str(source)], 120)
    target = locked / (source.stem + "_redacted.pdf")
    expect(run.returncode == 1, "an unwritable output folder fails the file: %s" % run)
    expect("%s: failed: cannot save %s" % (source, target) in run.stdout, run.stdout)
    expect(not any(locked.iterdir()), "nothing is written: %s" % list(locked.iterdir()))


def main():
    pdfhost, plugins, tool, web = sys.argv[1:5]
    if not os.path.exists(os.path.join(web, "js", "batch_run.js")):
        print("SKIP: the reference page has no batch mode")
        return SKIP
    with tempfile.TemporaryDirectory(prefix="batch-cli-") as temp:
        root = pathlib.Path(temp)
        source = root / "in"
        source.mkdir()
        for name, lines in FILES.items():
            subprocess.run([tool, str(source / name), *lines], check=True)
        (source / "notes.pdf").write_text("no PDF here\n")
        out = root / "out"
        report = root / "report.json"
        base = [pdfhost, "--batch", "--plugins", plugins, "--profile", str(root / "profile"),
                "--web", web]

        usage = capture(base + ["--shard", "3/2", str(source)], 60)
        expect(usage.returncode == 2, "a shard that doesn't exist is bad usage: %s" % usage)

        run = capture(base + ["--out", str(out), "--terms", "Ana Lind", "--report", str(report),
                              str(source)], 300)
        print(run.stdout, end="")
        if "showed no batch file list" in run.stderr:
            print("SKIP: the plug-in has no batch dialogs")
            return SKIP
        expect(run.returncode == 1, "one file fails: exit %d\n%s" % (run.returncode, run.stderr))
        lines = run.stdout.splitlines()
        expect(lines[-1] == "4 files: 3 redacted, 1 failed", lines)
        expect(any(l.startswith(str(source / "notes.pdf") + ": failed: ") for l in lines), lines)

        written = sorted(p.name for p in out.iterdir())
        expect(written == sorted(OUTPUT.values()), written)
        for name in FILES:
            text = " ".join(pdftotext(out / OUTPUT[name]).split())
            expect(KEPT in text, "%s lost its other text: %r" % (name, text))
            for gone in GONE:
                expect(gone not in text, "%s still holds %s" % (name, gone))

        entries = {e["name"]: e for e in json.loads(report.read_text())["files"]}
        expect(entries["notes.pdf"]["status"] == "failed" and
               entries["notes.pdf"]["output"] is None, entries["notes.pdf"])
        for name in FILES:
            entry = entries[name]
            expect(entry["status"] == "redacted" and entry["pages"] == 1, entry)
            expect(entry["output"] == str(out / OUTPUT[name]), entry)
            expect(entry["total"] >= 1 and entry["total"] == sum(entry["findings"].values()),
                   entry)
        expect(entries["a.pdf"]["findings"].get("email", 0) >= 1, entries["a.pdf"])

        again = capture(base + ["--out", str(out), str(source / "a.pdf")], 120)
        expect(again.returncode == 1 and "output exists" in again.stdout,
               "an existing output is kept without --overwrite: %s" % again.stdout)
        check_unwritable_output(base, root, source / "a.pdf")
    print("pdfhost --batch: ok")
    return 0


if __name__ == "__main__":
    sys.exit(main())
