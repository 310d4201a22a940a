#!/usr/bin/env python3
"""Table test of deploy/slurm/merge-reports.py: what it merges and when it refuses."""
import json
import os
import subprocess
import sys
import tempfile
import unittest

MERGE = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "deploy", "slurm",
                     "merge-reports.py")

A = {"files": [{"path": "/in/a.pdf", "output": "/out/a.pdf", "pages": 3, "findings": {"email": 2}},
               {"path": "/in/c.pdf", "status": "failed", "output": None, "reason": "not opened"}]}
B = {"files": [{"path": "/in/b.pdf", "status": "redacted", "output": "/out/b.pdf", "pages": 2,
                "findings": {"email": 1, "term": 4}}]}


class MergeReports(unittest.TestCase):
    def run_merge(self, reports, *flags):
        with tempfile.TemporaryDirectory() as folder:
            for name, report in reports.items():
                with open(os.path.join(folder, name), "w", encoding="utf-8") as f:
                    f.write(report if isinstance(report, str) else json.dumps(report))
            merged = os.path.join(folder, "merged.json")
            run = subprocess.run([sys.executable, MERGE, *flags, "-o", merged, folder],
                                 capture_output=True, text=True)
            with open(merged, encoding="utf-8") as f:
                return run.returncode, json.load(f), run.stderr

    def test_cases(self):
        cases = [
            ("two shards", {"report-0.json": A, "report-1.json": B}, ["--expect", "2"], 0,
             (3, 2, 1, 5, {"email": 3, "term": 4}), ""),
            ("a shard missing", {"report-0.json": A}, ["--expect", "2"], 1,
             (2, 1, 1, 3, {"email": 2}), "1 of 2 reports"),
            ("shards overlap", {"report-0.json": A, "report-1.json": A}, [], 1,
             (4, 2, 2, 6, {"email": 4}), "/in/a.pdf: in"),
            ("a report cut short", {"report-0.json": B, "report-1.json": '{"files": ['}, [], 1,
             (1, 1, 0, 2, {"email": 1, "term": 4}), "report-1.json"),
            ("other files in the folder are not reports", {"report-0.json": B, "notes.json": A}, [], 0,
             (1, 1, 0, 2, {"email": 1, "term": 4}), ""),
        ]
        for name, reports, flags, status, counts, problem in cases:
            with self.subTest(name):
                code, merged, errors = self.run_merge(reports, *flags)
                self.assertEqual(code, status, errors)
                self.assertEqual((len(merged["files"]), merged["redacted"], merged["failed"],
                                  merged["pages"], merged["findings"]), counts)
                self.assertIn(problem, errors)


if __name__ == "__main__":
    unittest.main()
