"""pdfhost in scripted mode as a child process, for the batch tests: one line in, and every line it
caused out. After each line a "state" line is sent; what comes out up to the state's answer is what
the line caused (pdfhost answers lines in order, the batch page's own run included). Also the
checks the end-to-end scripts share."""
import json
import queue
import subprocess
import threading

SKIP = 77  # the exit status ctest counts as skipped


def expect(condition, message):
    if not condition:
        raise AssertionError(message)


def pdftotext(path):
    return subprocess.run(["pdftotext", str(path), "-"], check=True, capture_output=True,
                          text=True).stdout


class ScriptedHost:
    def __init__(self, pdfhost, plugins, profile, extra=()):
        self.proc = subprocess.Popen(
            [pdfhost, "--headless", "--script", "--profile", str(profile), "--plugins",
             str(plugins), *extra],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
            text=True, encoding="utf-8")
        self.lines = queue.Queue()
        threading.Thread(target=self._pump, daemon=True).start()

    def _pump(self):
        for text in self.proc.stdout:
            self.lines.put(json.loads(text))
        self.lines.put(None)

    def send(self, line):
        self.proc.stdin.write(json.dumps(line) + "\n")
        self.proc.stdin.flush()

    def collect(self, until, timeout=60):
        """The lines printed up to the first for which `until` holds (left out)."""
        caused = []
        while True:
            line = self.lines.get(timeout=timeout)
            if line is None:
                raise RuntimeError("pdfhost ended; it printed %s" % caused)
            if until(line):
                return caused, line
            caused.append(line)

    def do(self, line):
        """Sends the line and gives what it caused."""
        self.send(line)
        self.send({"host": "state"})
        caused, _ = self.collect(lambda l: "state" in l)
        return caused

    def state(self):
        self.send({"host": "state"})
        return self.collect(lambda l: "state" in l)[1]["state"]

    def call(self, command, params=None, uuid="u"):
        """Posts a bridge request; gives its reply, parsed, and every line it caused."""
        caused = self.do({"post": json.dumps(["base", command, params or {}, uuid])})
        replies = [json.loads(l["reply"]) for l in caused if "reply" in l]
        return (replies[-1] if replies else None), caused

    def succeed(self, command, params=None):
        """Posts a bridge request that must answer ret 0; gives its reply."""
        reply, _ = self.call(command, params)
        expect(reply and reply["ret"] == 0, "%s: %s" % (command, reply))
        return reply

    def answer(self, dialog, value):
        self.send({"host": "answer", "dialog": dialog, "value": value})

    def quit(self):
        self.send({"host": "quit"})
        self.proc.stdin.close()
        rest = []
        while True:
            line = self.lines.get(timeout=60)
            if line is None:
                break
            rest.append(line)
        return self.proc.wait(timeout=60), rest
