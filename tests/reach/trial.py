"""One mutant's trial: compiled and linked beside a finished build, then tested."""

from __future__ import annotations

import json
import os
import re
import shlex
import signal
import subprocess
import threading
from collections import defaultdict
from contextlib import suppress
from pathlib import Path

PROGRAM = "src/quenfold"
UNIT_TESTS = "tests/quenfold_unit_tests"
LAYERS = ("quenfold_utilities", "quenfold_core", "quenfold_driver")
# Of the processor, which a busy machine does not change.
COMPILE_SECONDS = 120
UNIT_SECONDS = 120
CASE_SECONDS = 5
FAULTS_SECONDS = 60
PATIENCE = 20  # seconds on the clock for each of them, for what sleeps
SLOW_MILLISECONDS = 50
# Which cases concern a folder of the sources; the others are not tried.
CASE_GROUPS = {
    "src/app": ("cli", "regress", "roundtrip", "matrices-pack", "matrices-unpack", "logicalio-pack",
                "logicalio-unpack", "clocks"),
    "src/json": ("regress", "roundtrip", "matrices-unpack", "matrices-pack", "logicalio-pack",
                 "logicalio-unpack", "cli", "clocks"),
    "src/logicalio": ("logicalio-pack", "logicalio-unpack", "roundtrip", "regress", "cli",
                      "clocks"),
    "src/matrices": ("matrices-pack", "matrices-unpack", "roundtrip", "regress", "cli",
                     "clocks"),
}  # fmt: skip


running: set[int] = set()  # the process groups of the trials that go on
stopped = threading.Event()


class Stopped(Exception):
    """The trials were stopped: what a command ended with says nothing of a mutant."""


def end_group(leader: int) -> None:
    with suppress(ProcessLookupError):
        os.killpg(leader, signal.SIGKILL)


def stop_trials() -> None:
    """Ends the processes of all trials, which then raise `Stopped`."""
    stopped.set()
    for leader in list(running):
        end_group(leader)


def succeeds(command: list[str], folder: Path, seconds: int) -> bool:
    """Whether a command ends with status 0 in time; all its processes are gone afterwards."""
    limited = ["prlimit", f"--cpu={seconds}", *command]
    environment = {**os.environ, "TMPDIR": str(folder)}
    process = subprocess.Popen(
        limited,
        cwd=folder,
        env=environment,
        stdin=subprocess.DEVNULL,
        stdout=subprocess.DEVNULL,
        stderr=subprocess.DEVNULL,
        start_new_session=True,
    )
    running.add(process.pid)
    if stopped.is_set():  # between the start and the line above
        end_group(process.pid)
    try:
        status = process.wait(seconds * PATIENCE)
    except subprocess.TimeoutExpired:
        end_group(process.pid)
        status = process.wait()
    running.discard(process.pid)
    if stopped.is_set():
        raise Stopped
    return status == 0


class Build:
    """A finished build: how its objects are compiled and its programs linked."""

    def __init__(self, folder: Path, root: Path) -> None:
        self.folder = folder
        self.root = root
        self.compilers: dict[str, list[str]] = {}  # object to command
        for entry in json.loads((folder / "compile_commands.json").read_text()):
            command = shlex.split(entry["command"])
            if Path(command[0]).name == "ccache":
                del command[0]
            self.compilers[command[command.index("-o") + 1]] = command
        self.users = self._users()
        self.links = {name: self._link_command(name) for name in (PROGRAM, UNIT_TESTS)}

    def _ninja(self, *arguments: str) -> str:
        command = ["ninja", "-C", str(self.folder), "--quiet", *arguments]
        return subprocess.run(command, check=True, capture_output=True, text=True).stdout

    def _users(self) -> dict[str, list[str]]:
        """Which objects each of the project's files is part of."""
        users: dict[str, list[str]] = defaultdict(list)
        current = ""
        for line in self._ninja("-t", "deps").splitlines():
            if line and not line[0].isspace():
                current = line.split(":")[0]
            elif line:
                path = (self.folder / line.strip()).resolve()
                if self.root in path.parents and current in self.compilers:
                    users[str(path.relative_to(self.root))].append(current)
        return users

    def _link_command(self, program: str) -> list[str]:
        command = shlex.split(self._ninja("-t", "commands", program).splitlines()[-1])
        return [word for word in command if word not in (":", "&&")]

    def _compile(self, scratch: Path, file: str, object_file: str) -> bool:
        command = list(self.compilers[object_file])
        command[command.index("-o") + 1] = str(scratch / object_file)
        source = command.index("-c") + 1
        if Path(command[source]).resolve() == self.root / file:
            command[source] = str(scratch / file)
        command.insert(1, f"-I{scratch}/src")
        (scratch / object_file).parent.mkdir(parents=True, exist_ok=True)
        return self._in_build(command)

    def _in_build(self, command: list[str]) -> bool:
        return succeeds(["env", "-C", str(self.folder), *command], self.folder, COMPILE_SECONDS)

    def _link(self, scratch: Path, program: str, objects: list[str]) -> bool:
        """An object that is named before the archive of its layer takes the place of the archive's
        own, even where that is linked too: for a function that every user instantiates and the
        mutant no longer does."""
        command: list[str] = []
        for word in self.links[program]:
            layer = word.removeprefix("src/lib").removesuffix(".a")
            if layer in LAYERS:
                command += [str(scratch / name) for name in objects if f"/{layer}.dir/" in name]
            command.append(str(scratch / word) if word in objects or word == program else word)
        return self._in_build([*command, "-Wl,-z,muldefs"])

    def make(self, scratch: Path, file: str, text: str) -> bool:
        """Whether the changed file compiles; the programs are then in the scratch folder."""
        (scratch / file).parent.mkdir(parents=True)
        (scratch / file).write_text(text)
        objects = self.users[file]
        (scratch / "tests").mkdir(exist_ok=True)
        return all(self._compile(scratch, file, name) for name in objects) and all(
            self._link(scratch, program, objects) for program in (PROGRAM, UNIT_TESTS)
        )


class Tests:
    """What is run on a mutant. The cases that noticed the last ones of a file come first."""

    def __init__(self, build: Build, root: Path) -> None:
        self.root = root
        self.faults = build.folder / "tests/faults"
        self.clock = build.folder / "tests/clock/libquenfold_ticking_clock.so"
        self.slow = self._slow_tests(build.folder)
        self.cases = {group: self._cases_of(group) for group in CASE_GROUPS["src/app"]}
        self.noticing: dict[str, list[Path]] = defaultdict(list)

    def _slow_tests(self, folder: Path) -> str:
        run = subprocess.run([folder / UNIT_TESTS], check=True, capture_output=True, text=True)
        times = re.findall(r"\[       OK \] (\S+) \((\d+) ms\)", run.stdout)
        return ":".join(name for name, time in times if int(time) > SLOW_MILLISECONDS)

    def _cases_of(self, group: str) -> list[Path]:
        return sorted((self.root / "tests/cases" / group).iterdir())

    def unit(self, scratch: Path, chosen: str) -> bool:
        command = [str(scratch / UNIT_TESTS), "--gtest_fail_fast", f"--gtest_filter={chosen}"]
        return succeeds(command, scratch, UNIT_SECONDS)

    def whole_runs(self, scratch: Path, file: str) -> bool:
        first = list(self.noticing[file])
        groups = CASE_GROUPS[os.path.dirname(file)]
        others = [case for group in groups for case in self.cases[group] if case not in first]
        for case in first + others:
            command = ["env", f"QUENFOLD_CLOCK={self.clock}", str(self.root / "tests/run-case")]
            command += [str(scratch / PROGRAM), str(case)]
            if not succeeds(command, scratch, CASE_SECONDS):
                if case in others:
                    self.noticing[file].insert(0, case)
                return False
        return True

    def all_faults(self, scratch: Path) -> bool:
        shim = self.faults / "libquenfold_fault_shim.so"
        command = [self.faults / "inject_faults", scratch / PROGRAM, shim]
        return all(
            succeeds([str(word) for word in (*command, database)], scratch, FAULTS_SECONDS)
            for database in (self.root / "tests/faults/database", "large")
        )


def run_trial(build: Build, tests: Tests, scratch: Path, file: str, text: str) -> str:
    """What noticed the mutant, "no compile", or nothing for a survivor."""
    if not build.make(scratch, file, text):
        return "no compile"
    if not tests.unit(scratch, f"-{tests.slow}"):
        return "unit tests"
    if not tests.whole_runs(scratch, file):
        return "cases"
    if not tests.unit(scratch, tests.slow):
        return "slow tests"
    return "" if tests.all_faults(scratch) else "faults"
