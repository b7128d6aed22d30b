"""The committed lists of what the tests do not reach.

A list holds entries that begin at the left margin, each followed by its indented reason. Lines that
begin with "#" are comments. An entry's text holds no line number, so that it survives edits
elsewhere in its file.
"""

from __future__ import annotations

from collections import Counter
from pathlib import Path


def read_judged(path: Path) -> Counter[str]:
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
