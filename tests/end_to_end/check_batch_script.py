#!/usr/bin/env python3
"""Batch Redaction through pdfhost's scripted mode, end to end: the plug-in's dialogs take the
queued answers, and the test plays the batch page, posting the commands a page's batch loop
posts. The outputs are read back with pdftotext: the marked text is gone, the rest is there.
Bad inputs ride along: a file that is no PDF, a locked one, one that may not be changed, an XFA
form, two inputs that map to one output name, and a path with spaces, quotes and non-ASCII
characters.

usage: check_batch_script.py PDFHOST PLUGIN_DIR MAKE_TEXT_PDF TEST_DATA_DIR"""
import pathlib
import shutil
import subprocess
import sys
import tempfile

from batch_host import SKIP, ScriptedHost, expect, pdftotext

SECRET = "alice.secret@example.com"
KEPT = "Quarterly figures stay readable"


def make(tool, path, *args):
    path.parent.mkdir(parents=True, exist_ok=True)
    subprocess.run([tool, str(path), *args], check=True)
    return str(path)


def redact_current(host, name):
    """What the page does with the current file: find, mark, apply, save, close."""
    docs = host.succeed("getCurrentDoc")
    expect(docs["data"], "no current document: %s" % docs)
    found = host.succeed("findTexts", {"file": {"id": docs["data"][0]["id"]}, "text": SECRET})
    expect(found["data"]["count"] >= 1, "not found: %s" % found)
    host.succeed("addAnnot", {"searchKey": found["data"]["searchKey"], "index": 0,
                              "type": "redact", "uniqueIDName": name})
    host.answer("messageBox", 1)
    host.succeed("redactApply", {"uniqueIDNames": [name]})
    host.succeed("saveDocument", {})
    host.succeed("closeCurrentFile")


def main():
    pdfhost, plugins, tool, data = sys.argv[1:5]
    with tempfile.TemporaryDirectory(prefix="batch-script-") as temp:
        root = pathlib.Path(temp)
        out = root / "out"
        out.mkdir()
        odd = root / "in" / "it's \"odd\" ünïcødé"
        good = [
            make(tool, root / "in" / "a.pdf", "Contact " + SECRET, KEPT),
            make(tool, odd / "b c.pdf", "Mail " + SECRET, KEPT),
            make(tool, root / "x" / "same.pdf", "First " + SECRET, KEPT),
            make(tool, root / "y" / "same.pdf", "Second " + SECRET, KEPT),
        ]
        notpdf = root / "in" / "notes.pdf"
        notpdf.write_text("just words, no PDF\n")
        locked = make(tool, root / "in" / "locked.pdf", "--user-password", "pw", SECRET)
        fixed = make(tool, root / "in" / "fixed.pdf", "--no-modify", SECRET)
        xfa = root / "in" / "form.pdf"
        shutil.copy(pathlib.Path(data) / "real" / "annotation-text-widget.pdf", xfa)
        paths = good[:2] + [str(notpdf), locked, fixed, str(xfa)] + good[2:]

        profile = root / "profile"
        host = ScriptedHost(pdfhost, plugins, profile)
        host.answer("welcome", 0)
        host.answer("signIn", True)
        host.answer("fileList", paths + [str(root / "missing.pdf")])
        options = {"specificFolder": True, "folder": str(out) + "/", "addToName": True,
                   "prefix": "r:", "suffix": "_red", "overwrite": False}
        host.answer("options", options)
        lines = host.do({"host": "ribbon", "item": "BatchRedact"})
        dialogs = {l["dialog"]: l for l in lines if "dialog" in l}
        if "fileList" not in dialogs:
            host.quit()
            print("SKIP: the plug-in has no batch dialogs: %s" % lines)
            return SKIP
        expect(set(dialogs) >= {"fileList", "options", "batchPage"}, "dialogs: %s" % lines)
        expect("overwrite" not in dialogs, "nothing exists yet: %s" % lines)

        rows = {r["folder"] + "/" + r["name"]: r for r in dialogs["fileList"]["rows"]}
        expect(len(rows) == len(paths), "one row per existing path: %s" % rows)
        keys = {path: rows[path].get("errorKey") for path in paths}
        expect(keys[str(notpdf)] == "IDS_STR_PARSEERROR", keys)
        expect(keys[locked] == "IDS_STR_PARSEERROR", keys)
        expect(keys[fixed] == "IDS_STR_PERMISSIONERROR", keys)
        expect(keys[str(xfa)] == "IDS_STR_XFAERRORDES", keys)
        expect(all(keys[p] is None and rows[p]["pages"] == 1 for p in good), keys)
        expect(dialogs["fileList"]["totalPages"] == len(good), dialogs["fileList"])
        record = dialogs["options"]["record"]
        expect(record["folder"] == str(out) + "//" and record["prefix"] == "r" and
               record["suffix"] == "_red" and not record["overwrite"], record)
        state = host.state()
        expect(state["batchPage"] is not None and state["hidden"] == [], state)

        start, _ = host.call("startBatchRedaction")
        expect(start["ret"] == 0 and start["data"]["count"] == len(good), start)
        expect(host.do({"host": "open", "path": good[0]})[0].get("error"), "open is blocked")
        names = []
        for index in range(len(good)):
            host.succeed("openNextFileForBatch")
            hidden = host.state()["hidden"]
            expect([h["path"] for h in hidden] == [good[index]], hidden)
            names.append("ai_plugin_redact_email_%d" % index)
            redact_current(host, names[-1])
        last, _ = host.call("openNextFileForBatch")
        expect(last["ret"] == -1, "the queue is empty: %s" % last)
        expect(host.state()["hidden"] == [], "every file was closed")

        host.answer("result", 1)
        _, caused = host.call("endBatchRedaction", {"ret": 0, "message": "Finished"})
        result = [l for l in caused if l.get("dialog") == "result"]
        expect(result and result[0]["picture"] == "success" and
               result[0]["heightChange"] == -100, caused)
        expect(caused[-1] == {"dialog": "batchPage", "closed": 1}, caused)
        expect(host.state()["batchPage"] is None, "the page is closed")

        # Batches that end before their page: the list cancelled, not answered or holding more
        # than paths, or the overwriting of an earlier output refused.
        for answers, last in [
                ([("fileList", None)], {"dialog": "fileList", "answer": None}),
                ([], {"unanswered": "fileList"}),
                ([("fileList", [good[0], 3])], {"dialog": "fileList", "answer": [good[0], 3]}),
                ([("fileList", [good[0]]), ("options", options), ("overwrite", False)],
                 {"dialog": "overwrite", "answer": False, "files": [str(out) + "//ra_red.pdf"]})]:
            for dialog, value in answers:
                host.answer(dialog, value)
            lines = host.do({"host": "ribbon", "item": "BatchRedact"})
            expect(lines and all(lines[-1].get(k) == v for k, v in last.items()) and
                   not any(l.get("dialog") == "batchPage" for l in lines), lines)
        # Quitting while the batch page runs closes the page first.
        host.answer("fileList", [good[1]])
        expect(any(l.get("dialog") == "batchPage"
                   for l in host.do({"host": "ribbon", "item": "BatchRedact"})), "page shown")
        status, rest = host.quit()
        expect(status == 0, "pdfhost exit %s: %s" % (status, rest))
        expect({"dialog": "batchPage", "closed": 2} in rest, "page closed by quit: %s" % rest)

        expected = [out / "ra_red.pdf", out / "rb c_red.pdf", out / "rsame_red.pdf"]
        expect(sorted(out.iterdir()) == sorted(expected),
               "outputs: %s" % sorted(out.iterdir()))
        for path in expected:
            text = pdftotext(path)
            expect(SECRET not in text and KEPT in text, "%s: %r" % (path, text))
        # Both inputs named same.pdf went to one output: the later one is what is there.
        expect("Second" in pdftotext(expected[2]), "the second same.pdf wins")
        for path in good:
            expect(SECRET in pdftotext(path), "the source %s is untouched" % path)
    print("batch through the scripted mode: ok")
    return 0


if __name__ == "__main__":
    sys.exit(main())
