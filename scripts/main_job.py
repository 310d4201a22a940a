#!/usr/bin/env python3
"""Runs pdfhost headless in its scripted mode with the plug-in loaded, opens each PDF given, and
prints what the bridge answers the page for the document queries."""
import argparse
import json
import subprocess
import sys


class ScriptedHost:
    def __init__(self, pdfhost, plugins):
        self.proc = subprocess.Popen(
            [pdfhost, "--headless", "--script", "--plugins", plugins],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True, encoding="utf-8")

    def send(self, line):
        self.proc.stdin.write(json.dumps(line) + "\n")
        self.proc.stdin.flush()

    def read_until(self, key):
        """Reads output lines until one carries `key`; returns that line's object."""
        while True:
            text = self.proc.stdout.readline()
            if not text:
                raise RuntimeError("pdfhost ended early (exit %s)" % self.proc.wait())
            line = json.loads(text)
            if "error" in line:
                raise RuntimeError("pdfhost: " + line["error"])
            if key in line:
                return line

    def call(self, command, params=None, uuid="main"):
        self.send({"post": json.dumps(["base", command, params or {}, uuid])})
        return self.read_until("reply")["reply"]

    def quit(self):
        self.send({"host": "quit"})
        self.proc.stdin.close()
        return self.proc.wait(timeout=60)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--pdfhost", required=True)
    parser.add_argument("--plugins", required=True)
    parser.add_argument("files", nargs="+")
    args = parser.parse_args()

    host = ScriptedHost(args.pdfhost, args.plugins)
    for path in args.files:
        host.send({"host": "open", "path": path})
        opened = host.read_until("opened")
        print("Document %d: %s" % (opened["opened"], opened["path"]))
        current = host.call("getCurrentDoc")
        print("  getCurrentDoc        ", current, end="")
        file_id = json.loads(current)["data"][0]["id"]
        for command, params in (("getFilePageCount", None), ("checkFilePermission", None),
                                ("getDocMetadata", {"file": {"id": file_id}}),
                                ("getFileImagesType", None)):
            print("  %-21s" % command, host.call(command, params), end="")
    return host.quit()


if __name__ == "__main__":
    sys.exit(main())
