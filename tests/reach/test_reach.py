"""Tests of the tools that show what the tests reach: python3 -m unittest discover tests/reach"""

from __future__ import annotations

import tempfile
import unittest
from contextlib import redirect_stdout
from io import StringIO
from pathlib import Path

from branches import read_list, report_file
from mutants import mutants_of
from mutate import Job, report


def descriptions(source: str) -> list[str]:
    return [mutant.describe(source) for mutant in mutants_of(source)]


class MutantsOf(unittest.TestCase):
    def test_leaves_comments_includes_and_templates_alone(self) -> None:
        source = "// a + 1\n/* b == 2\n*/\n#include <x> // 3\nstd::vector<int>& f(T&& t);\n"
        self.assertEqual(descriptions(source), [])

    def test_flips_comparisons_both_ways(self) -> None:
        found = descriptions("x = a < b;\n")
        self.assertEqual(found, [f"x = a < b; => x = a {other} b;" for other in ("<=", ">=")])

    def test_changes_numbers_and_keeps_their_suffix(self) -> None:
        found = descriptions("int a = 4U;\n")
        self.assertEqual(
            found, [f"int a = 4U; => int a = {other};" for other in ("0U", "3U", "5U")]
        )

    def test_drops_and_changes_a_character_but_no_escape(self) -> None:
        self.assertEqual(
            descriptions('f("abc\\n");\n'),
            ['f("abc\\n"); => f("abx\\n");', 'f("abc\\n"); => f("ac\\n");'],
        )

    def test_negates_a_condition_of_several_parts(self) -> None:
        found = descriptions("if (a && b) {\n  g();\n}\n")
        changed = [f"if (a && b) {{ => if ({other}) {{" for other in ("!(a && b)", "a || b")]
        self.assertEqual(found, [*changed, "g(); => ;"])

    def test_negates_no_condition_that_another_mutant_negates(self) -> None:
        self.assertEqual(descriptions("if (!a) {\n"), ["if (!a) { => if (a) {"])

    def test_drops_early_returns_and_no_last_one(self) -> None:
        found = descriptions("int f() {\n  if (a) {\n    return b;\n  }\n  return c;\n}\n")
        self.assertEqual(found, ["if (a) { => if (!(a)) {", "return b; => ;"])

    def test_leaves_declarations_alone(self) -> None:
        source = "void f() { std::string text; Token token(a); }\nclass A { A() = default; };\n"
        self.assertEqual(descriptions(source), [])

    def test_leaves_what_only_reserves_room_alone(self) -> None:
        source = (
            "inline constexpr std::size_t kScanPadding = 15;\n"
            "void f() {\n  static constexpr unsigned kFirstBits = 6;  // 2^6 places\n"
            "  model->ports.reserve(count(list) +\n                       1);\n  g();\n}\n"
        )
        self.assertEqual(descriptions(source), ["g(); => ;"])

    def test_changes_what_looks_like_room(self) -> None:
        source = "constexpr int kRoomNumber = 0;\nconstexpr int kTextCapacity = 0;\nreserve(a);\n"
        self.assertEqual(
            descriptions(source),
            [
                "constexpr int kRoomNumber = 0; => constexpr int kRoomNumber = 1;",
                "constexpr int kTextCapacity = 0; => constexpr int kTextCapacity = 1;",
                "reserve(a); => ;",
            ],
        )

    def test_does_not_depend_on_the_place(self) -> None:
        self.assertEqual(descriptions("a = b;\n"), descriptions("\n\n  a = b;\n"))


class ReadList(unittest.TestCase):
    def read(self, text: str) -> dict[str, int]:
        with tempfile.NamedTemporaryFile("w") as file:
            file.write(text)
            file.flush()
            return dict(read_list(Path(file.name)))

    def test_counts_entries(self) -> None:
        self.assertEqual(self.read("# c\n\na\n    why\n\na\n    why\n  so\n"), {"a": 2})

    def test_wants_reasons(self) -> None:
        for text in ("a\n", "a\nb\n  why\n"):
            with self.assertRaises(SystemExit):
                self.read(text)


class Report(unittest.TestCase):
    def enough(self, noticed: dict[str, int], survived: dict[str, int]) -> bool:
        jobs: list[Job] = []
        outcomes: list[str] = []
        for outcome, counts in (("cases", noticed), ("", survived), ("no compile", {"src/b": 50})):
            for folder, count in counts.items():
                jobs += [Job(f"{folder}/a.cpp", "", "")] * count
                outcomes += [outcome] * count
        with redirect_stdout(StringIO()):
            return report(jobs, outcomes)

    def test_wants_19_of_20_noticed_in_each_folder(self) -> None:
        self.assertTrue(self.enough({"src/a": 19, "src/b": 40}, {"src/a": 1}))
        self.assertFalse(self.enough({"src/a": 18, "src/b": 40}, {"src/a": 1}))
        self.assertFalse(self.enough({"src/a": 100, "src/b": 18}, {"src/b": 1}))


class ReportFile(unittest.TestCase):
    def test_merges_the_instances_of_a_template(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            root = Path(folder).resolve()
            (root / "a.cpp").write_text("while (true) {\nif (b ||\n  c) {}\n}\n")
            branches = [
                [1, 8, 1, 12, 0, 0, 0, 0, 4],
                [2, 5, 2, 6, 1, 0, 0, 0, 4],
                [2, 5, 2, 6, 0, 2, 0, 0, 4],
                [3, 3, 3, 4, 0, 2, 0, 0, 4],
            ]
            summary = {"lines": {"count": 4, "covered": 3}}
            exported = {
                "filename": str(root / "a.cpp"),
                "summary": summary,
                "branches": branches,
            }
            report = report_file(exported, root)
        self.assertEqual((report.branches, report.lines_missed), (4, 1))
        self.assertEqual(report.not_taken, [("a.cpp:3:3: c) {}", "a.cpp: never true: c")])


if __name__ == "__main__":
    unittest.main()
