#!/usr/bin/env python3
"""Measures how much the tests notice: changes one operator, comparison or constant of
lut/, ip/, host/ or effects/ at a time in a copy of the tree, builds it and runs the tests
until one fails.

A change that no test notices either shows a missing test or computes the same. The second
kind stands in tests/mutation/equivalent.txt with the reason, and does not count. Changes
that do not compile do not count either, except those that a static_assert refuses.

    tools/mutate.py                     a sample of 300 changes (about half an hour)
    tools/mutate.py --sample 0          every change (many hours)
    tools/mutate.py ip/IpScale.cpp      every change of one file
    tools/mutate.py --list              print the changes, run nothing

Needs the packages of `tools/install-packages.sh test`. The report goes to out/mutation/.
Exit status: 0 if at least 95 % were noticed, 1 if not, 2 if the untouched tree fails.
"""

import argparse
import collections
import pathlib
import random
import re
import shutil
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
WORK = ROOT / "build" / "mutation"
TREE = WORK / "tree"
BUILD = WORK / "build"
REPORT = ROOT / "out" / "mutation"
EQUIVALENT = ROOT / "tests" / "mutation" / "equivalent.txt"

FOLDERS = ["lut", "ip", "host", "effects"]
LEFT_OUT = ["ip/arm/"]  # not compiled on this processor
WANTED = 0.95

# Test programs in the order in which they are asked; tests that start other programs only
# compare what the others compare already.
PROGRAMS = ["lut_tests", "ip_tests", "ip_scratch_tests", "variants_tests", "host_tests",
            "effects_tests", "module_tests", "conformant_tests", "headless_tests"]
QUICK = 0.1  # seconds: tests under it run together, the others one by one, quickest first

# Binary operators stand between blanks in this tree, which tells them from references,
# pointers and template brackets.
SWAPS = [(r" \+ ", " - "), (r" - ", " + "), (r" \* ", " / "), (r" / ", " * "),
         (r" % ", " / "), (r" << ", " >> "), (r" >> ", " << "), (r" & ", " | "),
         (r" \| ", " & "), (r" \^ ", " | "), (r" && ", " || "), (r" \|\| ", " && "),
         (r" < ", " <= "), (r" <= ", " < "), (r" > ", " >= "), (r" >= ", " > "),
         (r" == ", " != "), (r" != ", " == "), (r" \+= ", " -= "), (r" -= ", " += ")]
NUMBER = re.compile(r"(?<![\w.])(0x[0-9A-Fa-f]+|\d+\.\d*|\d+)([fuUlL]*)(?![\w.])")

Mutant = collections.namedtuple("Mutant", "path line before after")


def masked(text):
    """The text with comments, strings and preprocessor lines blanked out."""
    pattern = re.compile(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\''
                         r"|^[ \t]*#(?:[^\n]*\\\n)*[^\n]*", re.S | re.M)
    return pattern.sub(lambda m: re.sub(r"[^\n]", "\0", m.group()), text)


def other_numbers(match):
    digits, suffix = match.groups()
    if "." in digits:
        return [f"{float(digits) + 1}{suffix}"]
    value = int(digits, 8 if re.fullmatch(r"0\d+", digits) else 0)
    return [f"{other}{suffix}" for other in (value + 1, value - 1) if other >= 0]


def changes(line, mask):
    """Every changed form of one line."""
    for pattern, replacement in SWAPS:
        for m in re.finditer(pattern, mask):
            yield line[:m.start()] + replacement + line[m.end():]
    for m in re.finditer(r"\bif \((.*)\)(?= |$)", mask):
        yield line[:m.start(1)] + "!(" + line[m.start(1):m.end(1)] + ")" + line[m.end(1):]
    for m in NUMBER.finditer(mask):
        for number in other_numbers(m):
            yield line[:m.start()] + number + line[m.end():]


def mutants_of(path):
    text = (ROOT / path).read_text()
    for number, (line, mask) in enumerate(zip(text.split("\n"), masked(text).split("\n"))):
        if re.search(r"\bstatic_assert\b|\btemplate <|^\s*using ", mask):
            continue
        for changed in changes(line, mask):
            yield Mutant(path, number, line, changed)


def sources():
    for folder in FOLDERS:
        for path in sorted((ROOT / folder).rglob("*")):
            name = path.relative_to(ROOT).as_posix()
            if path.suffix in (".cpp", ".h") and not any(name.startswith(p) for p in LEFT_OUT):
                yield name


def equivalents():
    """(file, before, after) of the changes that compute the same."""
    known = set()
    if EQUIVALENT.exists():
        blocks = re.split(r"\n\s*\n", re.sub(r"(?m)^#.*\n?", "", EQUIVALENT.read_text()))
        for block in filter(str.strip, blocks):
            path, before, after = (text.strip() for text in block.strip().split("\n")[:3])
            known.add((path, before.removeprefix("- "), after.removeprefix("+ ")))
    return known


def run(command, seconds=None):
    """(status, output); status None when the time limit passed."""
    try:
        done = subprocess.run(command, cwd=WORK, timeout=seconds, text=True, errors="replace",
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        return done.returncode, done.stdout
    except subprocess.TimeoutExpired as late:
        return None, str(late.stdout)


def build():
    return run(["ninja", "-C", str(BUILD)] + PROGRAMS, 900)


def prepare():
    WORK.mkdir(parents=True, exist_ok=True)
    names = subprocess.run(["git", "ls-files", "-co", "--exclude-standard"], cwd=ROOT, text=True,
                           check=True, stdout=subprocess.PIPE).stdout.split("\n")
    for name in filter(None, names):
        source, target = ROOT / name, TREE / name
        if not source.is_file():
            continue
        target.parent.mkdir(parents=True, exist_ok=True)
        if not target.exists() or target.read_bytes() != source.read_bytes():
            shutil.copy(source, target)
    status, output = run(["cmake", "-S", str(TREE), "-B", str(BUILD), "-G", "Ninja",
                          "-DCMAKE_BUILD_TYPE=None", "-DCMAKE_CXX_FLAGS=-O1 -w",
                          "-DZEL_SANITIZE=address", "-DZEL_BUILD_CLI=OFF",
                          "-DZEL_BUILD_BENCH=OFF"])
    if status != 0:
        sys.exit(f"cannot configure the copy of the tree:\n{output}")


class Suite:
    """The tests, quickest first, each group with its time limit."""

    def __init__(self):
        self.groups = []  # (command, seconds)
        slow = []
        for name in PROGRAMS:
            program = next(BUILD.rglob(name))
            status, output = run([str(program), "--gtest_brief=0"], 900)
            if status != 0:
                print(output)
                sys.exit(2)
            times = re.findall(r"\[       OK \] (\S+?),? .*?\((\d+) ms\)", output)
            late = [(int(ms) / 1000, test) for test, ms in times if int(ms) > QUICK * 1000]
            slow += [(seconds, program, test) for seconds, test in late]
            together = "-" + ":".join(test for _, test in late) if late else "*"
            self.groups.append(([str(program), "--gtest_fail_fast", "--gtest_brief=1",
                                 f"--gtest_filter={together}"], 60))
        for seconds, program, test in sorted(slow):
            self.groups.append(([str(program), "--gtest_brief=1", f"--gtest_filter={test}"],
                                20 * seconds + 10))

    def notices(self):
        for command, seconds in self.groups:
            status, _ = run(command, seconds)
            if status != 0:
                return "time" if status is None else "test"
        return None


def verdict(mutant, suite):
    path = TREE / mutant.path
    original = path.read_text()
    lines = original.split("\n")
    lines[mutant.line] = mutant.after
    try:
        path.write_text("\n".join(lines))
        status, output = build()
        if status != 0:
            refused = "static assertion failed" in output or "overflow in constant" in output
            return "assert" if refused else "invalid"
        return suite.notices() or "survived"
    finally:
        path.write_text(original)


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("files", nargs="*", help="files to change, default all")
    parser.add_argument("--sample", type=int, help="how many changes, 0 all (300; all of FILES)")
    parser.add_argument("--seed", type=int, default=1, help="of the sample (1)")
    parser.add_argument("--list", action="store_true", help="print the changes, run nothing")
    options = parser.parse_args()

    sample = options.sample if options.sample is not None else 0 if options.files else 300
    mutants = [m for path in options.files or sources() for m in mutants_of(path)]
    found = len(mutants)
    random.Random(options.seed).shuffle(mutants)
    mutants = mutants[:sample] if sample else mutants
    if options.list:
        for m in mutants:
            print(f"{m.path}:{m.line + 1}\n- {m.before.strip()}\n+ {m.after.strip()}")
        print(f"{len(mutants)} of {found} changes")
        return 0

    prepare()
    status, output = build()
    if status != 0:
        print(output)
        return 2
    suite = Suite()
    known, counts, open_ones = equivalents(), collections.Counter(), []
    start = time.time()
    for at, m in enumerate(mutants, 1):
        if (m.path, m.before.strip(), m.after.strip()) in known:
            counts["equivalent"] += 1
            continue
        result = verdict(m, suite)
        counts[result] += 1
        if result == "survived":
            open_ones.append(m)
            print(f"{m.path}:{m.line + 1}\n- {m.before.strip()}\n+ {m.after.strip()}", flush=True)
        if at % 10 == 0:
            print(f"{at}/{len(mutants)}  {dict(counts)}  {time.time() - start:.0f} s",
                  file=sys.stderr, flush=True)

    noticed = counts["test"] + counts["time"] + counts["assert"]
    score = noticed / max(1, noticed + counts["survived"])
    REPORT.mkdir(parents=True, exist_ok=True)
    lines = [f"{len(mutants)} of {found} changes, seed {options.seed}",
             f"{noticed} noticed ({counts['test']} by a test, {counts['assert']} by the compiler, "
             f"{counts['time']} by the time limit), {counts['survived']} not",
             f"{counts['equivalent']} compute the same, {counts['invalid']} do not compile",
             f"score {100 * score:.1f} %", ""]
    for m in open_ones:
        lines += [m.path, f"- {m.before.strip()}", f"+ {m.after.strip()}", ""]
    (REPORT / "report.txt").write_text("\n".join(lines))
    print("\n".join(lines[:4]))
    return 0 if score >= WANTED else 1


if __name__ == "__main__":
    sys.exit(main())
