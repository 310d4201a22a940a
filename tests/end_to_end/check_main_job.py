#!/usr/bin/env python3
"""The main job end to end: Auto Redaction runs headless on the bundled samples with the reference
page in the embedded browser; the leak checker (raw and inflated bytes, pdftotext) must find none
of the samples' personal data in the copies, the job must report each copy verified with nothing
remaining, and the rest of their text must still be there."""
import pathlib
import re
import subprocess
import sys
import tempfile

from batch_host import pdftotext

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))
import leak_check  # noqa: E402

PERSONAL = {
    "sample": [
        "Marta Quillfeather", "marta.quillfeather@example.com", "+1 555 0134 2287", "1984-03-17",
        "4539 1488 0343 6467", "DE89 3704 0044 0532 0130 00", "Tobias Fennick",
        "tobias.fennick@example.org", "(555) 201-7788", "12/05/1979", "HS-20417", "Ingrid Solvay",
        "ingrid.solvay@example.net", "555-303-4412", "28 February 1991", "HS-31108",
        "+44 20 7946 0958", "Piet van Brakel", "GB82 WEST 1234 5698 7654 32",
        "5555 5555 5555 4444", "piet.vanbrakel@example.com", "+31 20 555 0199", "1969-11-02",
    ],
    "letter": [
        "Elena Varga-Holm", "Varga-Holm", "7 Larkspur Close", "elena.vargaholm@example.com",
        "+44 7700 900461", "NL91 ABNA 0417 1643 00", "23/07/1988", "536-22-4107",
        "4000 0566 5566 5556", "payroll@example.org", "(555) 014-2290", "Jonas Pemberly",
        "1975-09-30",
    ],
}
KEPT = {
    "sample": ["Customer record - Orchard Lane Insurance", "Policy holder since 2011",
               "Signed in Rotterdam on 2 January 2024."],
    "letter": ["Northgate Logistics Ltd - Human Resources", "Senior Planner",
               "Reference HR-2023-0117, printed 12 April 2023."],
}


def words(text):
    """Text with every run of whitespace made one space, so line breaks do not hide a finding."""
    return re.sub(r"\s+", " ", text)


def main():
    pdfhost, plugins, root = sys.argv[1], sys.argv[2], pathlib.Path(sys.argv[3])
    samples = root / "res" / "samples"
    faults = []
    with tempfile.TemporaryDirectory(prefix="main-job-") as out:
        run = subprocess.run(
            [sys.executable, str(root / "scripts" / "main_job.py"), "--pdfhost", pdfhost,
             "--plugins", plugins, "--web", str(root / "web"), "--out", out,
             "--terms", (samples / "terms.txt").read_text(encoding="utf-8").strip(),
             "--timeout", "120"] + [str(samples / (name + ".pdf")) for name in PERSONAL],
            capture_output=True, text=True, timeout=600)
        print(run.stdout)
        if run.returncode != 0:
            print(run.stderr[-4000:])
            return "the main job failed (exit %d)" % run.returncode
        for name, personal in PERSONAL.items():
            copy = pathlib.Path(out) / (name + "_redacted.pdf")
            if "output:   %s" % copy not in run.stdout:
                faults.append("no summary names %s" % copy)
            verified = re.search(r"output:   %s\n  Verified: 0 of (\d+) findings remain\n"
                                 % re.escape(str(copy)), run.stdout)
            if not verified or int(verified.group(1)) == 0:
                faults.append("%s is not reported verified with nothing remaining" % copy.name)
            if not re.search(r"Verified: [^\n]*\n  no text:  none\n", run.stdout):
                faults.append("the pages of %s are not all reported searched" % name)
            text = words(pdftotext(copy))
            faults += ["%s still holds %r (%s)" % (copy.name, item, where)
                       for item, where in leak_check.find_leaks(str(copy), personal)]
            faults += ["%s lost %r" % (copy.name, item) for item in KEPT[name]
                       if item not in text]
    return "\n".join(faults) or None


if __name__ == "__main__":
    sys.exit(main())
