"""Reports which branches of the program the tests took, and compares the rest with a list.

    branches.py EXPORT LIST ROOT

EXPORT is what `llvm-cov export` wrote, LIST the branches that are known not to be taken, ROOT the
project's folder. LIST holds entries that begin at the left margin, each followed by its indented
reason; lines that begin with "#" are comments. An entry holds no line number, so that it survives
edits elsewhere in its file. A condition has two branches, "true" and "false"; a template's branch is taken
when one of its instances takes it. Conditions that are the literal `true` have no second side and
are not counted. Ends with status 1 when less than 97 % of the branches are taken, when one is
missing in the list, or when the list names one that is taken.
"""

from __future__ import annotations

import json
import sys
from collections import Counter, defaultdict
from dataclasses import dataclass, field
from pathlib import Path
from typing import Any

LEAST_PERCENT = 97.0
SIDES = ("true", "false")


@dataclass
class FileReport:
    name: str
    lines: int
    lines_missed: int
    branches: int = 0
    not_taken: list[tuple[str, str]] = field(default_factory=list)  # place and entry


def read_list(path: Path) -> Counter[str]:
    """How often each entry is in the list; an entry without a reason is an error."""
    entries: Counter[str] = Counter()
    waiting = ""
    for line in [*path.read_text().splitlines(), "end"]:
        if line[:1] in ("", "#"):
            continue
        if line[0].isspace():
            waiting = ""
            continue
        if waiting:
            raise SystemExit(f"{path}: no reason for: {waiting}")
        waiting = line
        entries[line] += 1
    del entries["end"]
    return entries


def span_text(source: list[str], span: tuple[int, int, int, int]) -> str:
    """The text between two positions, its blanks and line ends made single blanks."""
    first_line, first_column, last_line, last_column = span
    lines = source[first_line - 1 : last_line]
    lines[-1] = lines[-1][: last_column - 1]
    lines[0] = lines[0][first_column - 1 :]
    return " ".join(" ".join(lines).split())


def report_file(exported: dict[str, Any], root: Path) -> FileReport:
    path = Path(exported["filename"]).resolve()
    name = str(path.relative_to(root))
    summary = exported["summary"]["lines"]
    report = FileReport(name, summary["count"], summary["count"] - summary["covered"])
    source = path.read_text().splitlines()
    taken: dict[tuple[int, int, int, int], list[int]] = defaultdict(lambda: [0, 0])
    for branch in exported["branches"]:
        first_line, first_column, last_line, last_column, when_true, when_false = branch[:6]
        counts = taken[first_line, first_column, last_line, last_column]
        counts[0] += when_true
        counts[1] += when_false
    for span, counts in sorted(taken.items()):
        condition = span_text(source, span)
        if condition == "true":
            continue
        report.branches += 2
        for side, count in zip(SIDES, counts):
            if count == 0:
                place = f"{name}:{span[0]}:{span[1]}: {source[span[0] - 1].strip()}"
                report.not_taken.append((place, f"{name}: never {side}: {condition}"))
    return report


def percent(missed: int, count: int) -> str:
    return f"{100.0 * (count - missed) / count:.1f}" if count else "-"


def print_table(reports: list[FileReport]) -> None:
    heads = f"{'lines':>6} {'missed':>6} {'%':>6} {'branches':>9} {'missed':>6} {'%':>6}"
    print(f"{'file':<34} {heads}")
    total = FileReport("total", 0, 0)
    for report in reports:
        total.lines += report.lines
        total.lines_missed += report.lines_missed
        total.branches += report.branches
        total.not_taken += report.not_taken
    for report in [*reports, total]:
        missed = len(report.not_taken)
        print(
            f"{report.name:<34} {report.lines:>6} {report.lines_missed:>6} "
            f"{percent(report.lines_missed, report.lines):>6} {report.branches:>9} {missed:>6} "
            f"{percent(missed, report.branches):>6}"
        )


def judge(reports: list[FileReport], known: Counter[str]) -> list[str]:
    """What is wrong; prints the branches not taken."""
    not_taken = [entry for report in reports for entry in report.not_taken]
    branches = sum(report.branches for report in reports)
    found = Counter(entry for _, entry in not_taken)
    print("\nbranches not taken:")
    for place, entry in not_taken:
        print(f"{place}\n    {entry}{'' if known[entry] else '   (not in the list)'}")
    problems = [f"without a reason: {entry}" for entry in (found - known).elements()]
    problems += [f"taken now, or gone: {entry}" for entry in (known - found).elements()]
    if not branches or 100.0 * (branches - len(not_taken)) / branches < LEAST_PERCENT:
        problems.append(f"less than {LEAST_PERCENT} % of the branches are taken")
    return problems


def main() -> int:
    export, known, root = (Path(argument) for argument in sys.argv[1:])
    root = root.resolve()
    files = json.loads(export.read_text())["data"][0]["files"]
    ours = [file for file in files if root / "src" in Path(file["filename"]).resolve().parents]
    reports = [report_file(exported, root) for exported in ours]
    reports.sort(key=lambda report: report.name)
    print_table(reports)
    problems = judge(reports, read_list(known))
    for problem in problems:
        print(problem, file=sys.stderr)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
