"""Deliberate faults: flips one comparison, logical operator, boolean or off-by-one at a time in
lines the suite reaches, rebuilds, runs the suite, and puts the line back.

A fault nobody catches is either a gap in the tests or a change that cannot be seen (a comparison
already guarded by the line before it, say); the report lists each with its line to judge.
"""
import json
import os
import random
import re
import subprocess
import sys

FAULTS = [
    (r"==", " != "), (r"!=", " == "), (r"<=", " < "), (r">=", " > "),
    (r"&&", " || "), (r"\|\|", " && "), (r"\btrue\b", "false"), (r"\bfalse\b", "true"),
    (r"\+ 1\b", "+ 2"), (r"- 1\b", "- 2"),
]


def candidates(root, reached):
    found = []
    for source, entry in reached.items():
        # The macOS adapters are not built here; the POSIX ones are mostly system calls.
        if not source.endswith(".cpp") or "/macos/" in source or source.startswith("platform/"):
            continue
        with open(os.path.join(root, source)) as text:
            lines = text.read().split("\n")
        for number in entry["lines"]:
            line = lines[number - 1] if number <= len(lines) else ""
            if line.strip().startswith("//") or line.startswith("#"):
                continue
            for pattern, replacement in FAULTS:
                for match in re.finditer(pattern, line):
                    found.append((source, number, match.start(), match.end(), replacement))
    return found


def main():
    root, build, count, seed = sys.argv[1], sys.argv[2], int(sys.argv[3]), int(sys.argv[4])
    with open(os.path.join(build, "coverage.json")) as measured:
        reached = json.load(measured)
    chosen = candidates(root, reached)
    random.Random(seed).shuffle(chosen)
    caught = missed = 0
    for source, number, start, end, replacement in chosen[:count]:
        path = os.path.join(root, source)
        with open(path) as text:
            original = text.read()
        lines = original.split("\n")
        before = lines[number - 1]
        lines[number - 1] = before[:start] + replacement + before[end:]
        try:
            with open(path, "w") as text:
                text.write("\n".join(lines))
            built = subprocess.run(["cmake", "--build", build, "--parallel", os.environ.get("CORVANE_JOBS", "2")],
                                   capture_output=True, text=True)
            if built.returncode != 0:
                print(f"{source}:{number} does not build with the fault; skipped")
                continue
            ran = subprocess.run(["ctest", "--test-dir", build, "--parallel", os.environ.get("CORVANE_JOBS", "2"),
                                  "--timeout", "300"], capture_output=True, text=True)
            failed = re.findall(r"^\s*\d+ - (\S+) \(", ran.stdout, re.M)
        finally:
            with open(path, "w") as text:
                text.write(original)
        if failed:
            caught += 1
            print(f"{source}:{number} caught by {len(failed)}: {', '.join(failed[:3])}")
        else:
            missed += 1
            print(f"{source}:{number} MISSED: {before.strip()}  =>  {lines[number - 1].strip()}")
        sys.stdout.flush()
    subprocess.run(["cmake", "--build", build, "--parallel", "2"], capture_output=True)
    print(f"{caught} caught, {missed} missed")


if __name__ == "__main__":
    main()
