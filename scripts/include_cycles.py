#!/usr/bin/env python3
"""Reports include cycles among the files under src/.

Each quoted #include line is resolved against the including file's folder, then against
src/both/ and src/ (the project's include roots). A header and its source file are one unit, so
a loop that runs through a .cpp file counts as well: a.cpp -> b.h, b.cpp -> a.h is a cycle
between units a and b. Prints one line per strongly connected group of units and exits 1 when
there is any.
"""

import argparse
import os
import re
import sys

INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)
SOURCES = (".h", ".hpp", ".cpp", ".cc")


def unit_of(path):
    return os.path.splitext(path)[0]


def read_includes(root, path, roots):
    with open(os.path.join(root, path), encoding="utf-8", errors="replace") as f:
        text = f.read()
    found = []
    for name in INCLUDE.findall(text):
        for base in [os.path.dirname(path)] + roots:
            candidate = os.path.normpath(os.path.join(base, name))
            if os.path.isfile(os.path.join(root, candidate)):
                found.append(candidate)
                break
    return found


def strongly_connected(graph):
    """Tarjan's algorithm, iterative so that deep graphs do not hit the recursion limit."""
    index, low, on_stack, stack, groups = {}, {}, set(), [], []
    counter = 0
    for start in sorted(graph):
        if start in index:
            continue
        work = [(start, iter(sorted(graph[start])))]
        index[start] = low[start] = counter
        counter += 1
        stack.append(start)
        on_stack.add(start)
        while work:
            node, edges = work[-1]
            advanced = False
            for nxt in edges:
                if nxt not in index:
                    index[nxt] = low[nxt] = counter
                    counter += 1
                    stack.append(nxt)
                    on_stack.add(nxt)
                    work.append((nxt, iter(sorted(graph[nxt]))))
                    advanced = True
                    break
                if nxt in on_stack:
                    low[node] = min(low[node], index[nxt])
            if advanced:
                continue
            work.pop()
            if work:
                low[work[-1][0]] = min(low[work[-1][0]], low[node])
            if low[node] == index[node]:
                group = []
                while True:
                    member = stack.pop()
                    on_stack.discard(member)
                    group.append(member)
                    if member == node:
                        break
                if len(group) > 1 or node in graph[node]:
                    groups.append(sorted(group))
    return groups


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--root", default=os.path.join(os.path.dirname(__file__), ".."))
    parser.add_argument("--files", action="store_true",
                        help="files only: a header and its source are not joined into one unit")
    args = parser.parse_args()
    root = os.path.abspath(args.root)
    roots = ["src/both", "src"]
    files = []
    for folder, _, names in os.walk(os.path.join(root, "src")):
        for name in names:
            if name.endswith(SOURCES):
                files.append(os.path.relpath(os.path.join(folder, name), root))

    node = (lambda p: p) if args.files else unit_of
    graph = {}
    for path in files:
        graph.setdefault(node(path), set())
        for target in read_includes(root, path, roots):
            if node(target) != node(path):
                graph[node(path)].add(node(target))
            graph.setdefault(node(target), set())

    groups = strongly_connected(graph)
    for group in groups:
        print("cycle (%d): %s" % (len(group), " ".join(group)))
    print("%d include cycle(s) among %d %s" %
          (len(groups), len(graph), "files" if args.files else "units"))
    return 1 if groups else 0


if __name__ == "__main__":
    sys.exit(main())
