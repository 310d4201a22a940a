#!/usr/bin/env python3
"""Auto Redaction, headless: pdfhost runs in its scripted mode with the plug-in's task pane showing
the reference page in the embedded browser. For each PDF the user's part is played through the
script: the file is opened, Auto Redaction is pressed, the editor's prompt before applying is
answered OK and the save dialog is given "<name>_redacted.pdf" in the output folder. The page
finds, marks, applies and saves on its own and writes one summary line on its console, which
pdfhost prints on its standard error; this driver prints it per document."""
import argparse
import json
import pathlib
import queue
import subprocess
import sys
import tempfile
import threading
import time

from local_service import AccountServer, page_address, write_profile

SUMMARY_TAG = "page: SABLEMARK-SUMMARY "
ERROR_TAG = "page: SABLEMARK-ERROR "


class BrowserPaneHost:
    """pdfhost in scripted mode with the page in the browser. Its standard output (JSON lines)
    and standard error (where the page's console lines arrive) are read on threads of their own
    into one queue."""

    def __init__(self, pdfhost, plugins, profile, verbose):
        self.proc = subprocess.Popen(
            [pdfhost, "--headless", "--script", "--browser-pane", "--signed-in",
             "--profile", str(profile), "--plugins", str(plugins)],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
            text=True, encoding="utf-8", errors="replace")
        self.lines = queue.Queue()
        self.verbose = verbose
        for stream, name in ((self.proc.stdout, "out"), (self.proc.stderr, "err")):
            threading.Thread(target=self._pump, args=(stream, name), daemon=True).start()

    def _pump(self, stream, name):
        for text in stream:
            self.lines.put((name, text.rstrip("\n")))
        self.lines.put((name, None))

    def send(self, line):
        self.proc.stdin.write(json.dumps(line) + "\n")
        self.proc.stdin.flush()

    def next_line(self, timeout):
        try:
            return self.lines.get(timeout=timeout)
        except queue.Empty:
            return None, None

    def run_until_page_reports(self, deadline):
        """Lets the host's event loop run until the page writes its summary or error line.
        Returns ("summary" | "error", object); raises on a time-out or when pdfhost ends."""
        self.send({"host": "wait", "ms": 200})
        while time.monotonic() < deadline:
            name, text = self.next_line(timeout=0.5)
            if name is None:
                self.send({"host": "wait", "ms": 200})
                continue
            if text is None:
                raise RuntimeError("pdfhost ended early (exit %s)" % self.proc.wait())
            if self.verbose:
                print("  [%s] %s" % (name, text), file=sys.stderr)
            if name == "err" and text.startswith(SUMMARY_TAG):
                return "summary", json.loads(text[len(SUMMARY_TAG):])
            if name == "err" and text.startswith(ERROR_TAG):
                return "error", json.loads(text[len(ERROR_TAG):])
            if name == "out":
                line = json.loads(text)
                if "error" in line or "unanswered" in line:
                    raise RuntimeError("pdfhost: " + text)
                if "opened" in line or "dialog" in line:
                    # The host is idle after a line it answered: keep its event loop going.
                    self.send({"host": "wait", "ms": 200})
        raise RuntimeError("the page reported nothing in time")

    def quit(self):
        self.send({"host": "quit"})
        self.proc.stdin.close()
        return self.proc.wait(timeout=60)


def print_summary(summary):
    findings = summary.get("findings") or {}
    kinds = ", ".join("%s %d" % (kind, count) for kind, count in sorted(findings.items()))
    print("%s" % summary.get("file"))
    print("  pages:    %s" % summary.get("pages"))
    print("  findings: %s (%s)" % (summary.get("total"), kinds or "none"))
    print("  output:   %s" % summary.get("output"))
    print("  %s" % verification_line(summary.get("verified")))
    print("  no text:  %s" % textless_line(summary.get("pagesWithoutText") or []))


def textless_line(pages):
    """The pages without text to search (scans, image-only pages), which were not searched."""
    if not pages:
        return "none"
    numbers = ", ".join(str(page + 1) for page in pages)
    return ("%d page(s) not searched (%s): scans or image-only pages; run pdfhost's Recognize Text "
            "on them and run again to search their text" % (len(pages), numbers))


def verification_line(verified):
    """What the page found when it searched the saved copy again for every redacted finding."""
    if not verified:
        return "Verified: not checked"
    remaining = verified.get("remaining") or []
    line = "Verified: %d of %d findings remain" % (len(remaining), verified.get("checked", 0))
    if remaining:
        line += ": " + ", ".join('"%s" (page %d)' % (r.get("text"), r.get("page", 0) + 1)
                                 for r in remaining)
    return line


def fully_verified(summary):
    """True when the copy was checked and nothing redacted remains in it (or nothing was to be
    redacted)."""
    verified = summary.get("verified")
    if not summary.get("total"):
        return True
    return bool(verified) and not verified.get("remaining")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--pdfhost", required=True)
    parser.add_argument("--plugins", required=True)
    parser.add_argument("--web", required=True, help="the reference page's folder")
    parser.add_argument("--out", required=True, help="folder of the redacted copies")
    parser.add_argument("--terms", default="", help="the user's own terms, comma-separated")
    parser.add_argument("--timeout", type=float, default=180, help="seconds per document")
    parser.add_argument("--verbose", action="store_true", help="echo pdfhost's lines")
    parser.add_argument("files", nargs="+")
    args = parser.parse_args()

    out = pathlib.Path(args.out).resolve()
    out.mkdir(parents=True, exist_ok=True)
    server = AccountServer()
    failures = 0
    with tempfile.TemporaryDirectory(prefix="sablemark-profile-") as profile_dir:
        profile = pathlib.Path(profile_dir)
        write_profile(profile, page_address(pathlib.Path(args.web), True, args.terms))
        host = BrowserPaneHost(args.pdfhost, args.plugins, profile, args.verbose)
        try:
            host.send({"host": "signIn", "server": server.address})
            for index, file in enumerate(args.files):
                source = pathlib.Path(file).resolve()
                target = out / (source.stem + "_redacted.pdf")
                target.unlink(missing_ok=True)
                host.send({"host": "answer", "dialog": "messageBox", "value": 1})
                host.send({"host": "answer", "dialog": "fileSave", "value": str(target)})
                host.send({"host": "open", "path": str(source)})
                if index == 0:
                    # A first use greets the user, who chooses to sign in, and signs in.
                    host.send({"host": "answer", "dialog": "welcome", "value": 0})
                    host.send({"host": "answer", "dialog": "signIn", "value": True})
                    host.send({"host": "ribbon", "item": "AutoRedaction"})
                kind, report = host.run_until_page_reports(time.monotonic() + args.timeout)
                if kind == "summary":
                    print_summary(report)
                    if not fully_verified(report):
                        failures += 1
                else:
                    failures += 1
                    print("%s\n  failed: %s" % (source, json.dumps(report)))
        finally:
            status = host.quit()
            server.close()
    return 1 if failures or status != 0 else 0


if __name__ == "__main__":
    sys.exit(main())
