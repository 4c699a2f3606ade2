"""Collects gcov's JSON for every object of a coverage build and keeps what the product sources reach.

Writes BUILD/coverage.json: {"source": {"lines": [...], "branches": ["line:index", ...]}} for the
sources under the product folders (tests, benchmarks and third-party headers are left out). With
--compare OLD.json, prints each line and branch OLD reached that this run does not, and exits 1 if
there is any.
"""
import gzip
import json
import os
import subprocess
import sys
import tempfile

PRODUCT = ("CorvaneApp/", "CorvaneCore/", "CorvaneFiles/", "CorvaneStorage/", "CorvaneWidgetsUI/", "platform/")


def collect(root, build):
    reached = {}
    notes = []
    for folder, _, files in os.walk(build):
        notes += [os.path.join(folder, f) for f in files if f.endswith(".gcda")]
    # gcov names each report after its object's base name, in the working directory: a batch never
    # holds two objects of the same name.
    batches = []
    for note in sorted(notes):
        batch = next((b for b in batches if len(b) < 64 and os.path.basename(note) not in b), None)
        if batch is None:
            batch = {}
            batches.append(batch)
        batch[os.path.basename(note)] = note
    with tempfile.TemporaryDirectory() as scratch:
        for batch in batches:
            subprocess.run(["gcov", "-j", "-b", *batch.values()], cwd=scratch,
                           stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)
            for name in os.listdir(scratch):
                path = os.path.join(scratch, name)
                with gzip.open(path, "rt") as report:
                    merge(reached, json.load(report), root)
                os.remove(path)
    return {source: {"lines": sorted(entry["lines"]), "branches": sorted(entry["branches"])}
            for source, entry in sorted(reached.items())}


def merge(reached, report, root):
    for unit in report.get("files", []):
        source = os.path.relpath(os.path.realpath(os.path.join(report.get("current_working_directory", ""),
                                                               unit["file"])), root)
        if not source.startswith(PRODUCT):
            continue
        entry = reached.setdefault(source, {"lines": set(), "branches": set()})
        for line in unit.get("lines", []):
            if line["count"] > 0:
                entry["lines"].add(line["line_number"])
            for index, branch in enumerate(line.get("branches", [])):
                if branch["count"] > 0 and not branch.get("throw"):
                    entry["branches"].add(f'{line["line_number"]}:{index}')


def main():
    root, build = os.path.abspath(sys.argv[1]), os.path.abspath(sys.argv[2])
    reached = collect(root, build)
    with open(os.path.join(build, "coverage.json"), "w") as out:
        json.dump(reached, out, indent=0)
    lines = sum(len(e["lines"]) for e in reached.values())
    branches = sum(len(e["branches"]) for e in reached.values())
    print(f"{len(reached)} sources, {lines} lines and {branches} branches reached")
    if len(sys.argv) > 4 and sys.argv[3] == "--compare":
        with open(sys.argv[4]) as old_file:
            old = json.load(old_file)
        lost = 0
        for source, entry in old.items():
            now = reached.get(source, {"lines": [], "branches": []})
            for kind in ("lines", "branches"):
                gone = sorted(set(entry[kind]) - set(now[kind]), key=lambda k: [int(p) for p in str(k).split(":")])
                for item in gone:
                    print(f"{source}:{item} ({'line' if kind == 'lines' else 'branch'}) no longer reached")
                lost += len(gone)
        sys.exit(1 if lost else 0)


if __name__ == "__main__":
    main()
