#!/usr/bin/env python3
"""Joins the reports of the tasks of one sharded batch into one report.

usage: merge-reports.py [--expect N] [-o MERGED.json] REPORT.json|DIR ...

A folder stands for its report-*.json files. Each report holds "files", one entry per input
file, its "path" and "status" ("redacted" or "failed"; without a status, an entry with an
"output" counts as redacted). The merged report lists
every entry once, with the report it came from, and sums the findings by kind and the pages.
Exits 1 when a report is missing (fewer than --expect), unreadable, or when two reports hold
the same input file (the shards overlapped); 0 otherwise, failed files included.
"""
import argparse
import glob
import json
import os
import sys

PATH_KEYS = ("path", "file", "input")


def entry_path(entry):
    for key in PATH_KEYS:
        if isinstance(entry.get(key), str):
            return entry[key]
    return None


def redacted(entry):
    if "status" in entry:
        return entry["status"] == "redacted"
    return bool(entry.get("output"))


def report_paths(args):
    paths = []
    for arg in args:
        if os.path.isdir(arg):
            paths.extend(sorted(glob.glob(os.path.join(arg, "report-*.json"))))
        else:
            paths.append(arg)
    return paths


def merge(paths):
    merged = {"reports": [], "files": [], "redacted": 0, "failed": 0, "pages": 0, "findings": {}}
    problems = []
    seen = {}
    for path in paths:
        try:
            with open(path, encoding="utf-8") as f:
                report = json.load(f)
        except (OSError, ValueError) as error:
            problems.append(f"{path}: {error}")
            continue
        entries = report.get("files") if isinstance(report, dict) else None
        if not isinstance(entries, list):
            problems.append(f"{path}: no list of files")
            continue
        merged["reports"].append(path)
        for entry in entries:
            if not isinstance(entry, dict):
                problems.append(f"{path}: an entry is not an object")
                continue
            name = entry_path(entry)
            if name in seen:
                problems.append(f"{name}: in {seen[name]} and in {path}")
            seen[name] = path
            merged["files"].append({**entry, "report": path})
            if redacted(entry):
                merged["redacted"] += 1
            else:
                merged["failed"] += 1
            pages = entry.get("pages")
            if isinstance(pages, int) and pages > 0:
                merged["pages"] += pages
            findings = entry.get("findings")
            if isinstance(findings, dict):
                for kind, count in findings.items():
                    if isinstance(count, int):
                        merged["findings"][kind] = merged["findings"].get(kind, 0) + count
    return merged, problems


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("reports", nargs="+")
    parser.add_argument("--expect", type=int, default=0, help="number of reports there must be")
    parser.add_argument("-o", "--output", help="write the merged report here (default: stdout)")
    args = parser.parse_args()
    paths = report_paths(args.reports)
    merged, problems = merge(paths)
    if len(merged["reports"]) < args.expect:
        problems.append(f"{len(merged['reports'])} of {args.expect} reports")
    text = json.dumps(merged, indent=2, ensure_ascii=False) + "\n"
    if args.output:
        with open(args.output, "w", encoding="utf-8") as f:
            f.write(text)
    else:
        sys.stdout.write(text)
    print(f"{len(merged['files'])} file(s): {merged['redacted']} redacted, {merged['failed']} failed, "
          f"{merged['pages']} page(s), from {len(merged['reports'])} report(s)", file=sys.stderr)
    for problem in problems:
        print(f"merge-reports: {problem}", file=sys.stderr)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
