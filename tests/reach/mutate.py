"""Puts small mistakes into the program's sources, one at a time, and counts those that the tests
notice.

    mutate.py BUILD [--sample N] [--seed S] [--jobs J] [FOLDER|FILE...]

BUILD is a finished build of the tree. A mutant lives in a scratch folder: its one changed file is
compiled from there, found before the tree's own, and linked with the other objects of BUILD. One
that does not compile is not counted. The tests are run from the quickest to the slowest, and only
until the first that fails: unit tests, whole-run cases, slow unit tests, faults. Ends with status 1
when less than 95 % of a folder's mutants are noticed.
"""

from __future__ import annotations

import argparse
import os
import random
import resource
import signal
import sys
import tempfile
from collections import defaultdict
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass
from pathlib import Path
from types import FrameType

from mutants import Mutant, mutants_of
from trial import Build, Tests, run_trial, stop_trials

LEAST_PERCENT = 95.0
ADDRESS_SPACE = 3 << 30  # a mutant may ask for any amount of memory
FILE_SIZE = 9 << 30  # and of disk; a test makes a file of 8 GiB with nothing in it


@dataclass(frozen=True)
class Job:
    file: str
    mutated: str
    entry: str


def sample(mutants: list[Mutant], source: str, size: int, choice: random.Random) -> list[Mutant]:
    """A line counts as much as another, however many mutants it has."""
    if size == 0 or len(mutants) <= size:
        return mutants
    lines: dict[int, list[Mutant]] = defaultdict(list)
    for mutant in mutants:
        lines[source.count("\n", 0, mutant.start)].append(mutant)
    chosen: list[Mutant] = []
    while len(chosen) < size:
        line = choice.choice(sorted(lines))
        chosen.append(lines[line].pop(choice.randrange(len(lines[line]))))
        if not lines[line]:
            del lines[line]
    return chosen


def files_of(root: Path, places: list[str]) -> list[str]:
    found: set[Path] = set()
    for place in places:
        path = root / place
        if not path.exists():
            raise SystemExit(f"no such folder or file: {place}")
        found.update([path] if path.is_file() else path.rglob("*.[ch]*"))
    return sorted(str(path.relative_to(root)) for path in found if path.suffix in (".cpp", ".h"))


def jobs_of(root: Path, options: argparse.Namespace) -> list[Job]:
    jobs: list[Job] = []
    for file in files_of(root, options.places):
        source = (root / file).read_text()
        choice = random.Random(f"{options.seed} {file}")
        for mutant in sample(mutants_of(source), source, options.sample, choice):
            jobs.append(Job(file, mutant.apply(source), f"{file}: {mutant.describe(source)}"))
    return jobs


def run_job(build: Build, tests: Tests, job: Job) -> str:
    with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as scratch:
        outcome = run_trial(build, tests, Path(scratch), job.file, job.mutated)
    print(f"{outcome or 'SURVIVED':<12} {job.entry}", flush=True)
    return outcome


def report(jobs: list[Job], outcomes: list[str]) -> bool:
    """Whether enough are noticed in every folder; prints how many."""
    counts: dict[str, list[int]] = defaultdict(lambda: [0, 0])  # mutants, noticed
    for job, outcome in zip(jobs, outcomes):
        if outcome != "no compile":
            count = counts[os.path.dirname(job.file)]
            count[0] += 1
            count[1] += outcome != ""
    print(f"\n{'folder':<16} {'mutants':>8} {'noticed':>8} {'%':>6}")
    enough = True
    for folder, (mutants, noticed) in sorted(counts.items()):
        percent = 100.0 * noticed / mutants
        enough = enough and percent >= LEAST_PERCENT
        print(f"{folder:<16} {mutants:>8} {noticed:>8} {percent:>6.1f}")
    return enough


def stop(number: int, _frame: FrameType | None) -> None:
    stop_trials()
    raise SystemExit(128 + number)


def main() -> int:
    parser = argparse.ArgumentParser(description="Counts the mutants that the tests notice.")
    parser.add_argument("build", type=Path)
    parser.add_argument("places", nargs="*", default=["src"], help="folders or files; all of src")
    parser.add_argument("--sample", type=int, default=0, help="mutants a file; 0: all")
    parser.add_argument("--seed", default="1", help="chooses the sample")
    parser.add_argument("--jobs", type=int, default=os.cpu_count() or 1)
    options = parser.parse_intermixed_args()
    resource.setrlimit(resource.RLIMIT_AS, (ADDRESS_SPACE, ADDRESS_SPACE))
    resource.setrlimit(resource.RLIMIT_FSIZE, (FILE_SIZE, FILE_SIZE))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))

    for number in (signal.SIGINT, signal.SIGTERM):
        signal.signal(number, stop)

    root = Path.cwd()
    build = Build(options.build.resolve(), root)
    tests = Tests(build, root)
    jobs = jobs_of(root, options)
    first = "src/app/main.cpp"
    unchanged = Job(first, (root / first).read_text(), "no change")
    with ThreadPoolExecutor(options.jobs) as pool:
        if pool.submit(run_job, build, tests, unchanged).result():
            raise SystemExit("the tests fail without a mutant")
        outcomes = list(pool.map(lambda job: run_job(build, tests, job), jobs))
    return 0 if report(jobs, outcomes) else 1


if __name__ == "__main__":
    sys.exit(main())
