"""Tests of the tools that show what the tests reach: python3 -m unittest discover tests/reach"""

from __future__ import annotations

import tempfile
import unittest
from pathlib import Path

from branches import report_file
from judged import read_judged
from mutants import mutants_of


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

    def test_does_not_depend_on_the_place(self) -> None:
        self.assertEqual(descriptions("a = b;\n"), descriptions("\n\n  a = b;\n"))


class ReadJudged(unittest.TestCase):
    def read(self, text: str) -> dict[str, int]:
        with tempfile.NamedTemporaryFile("w") as file:
            file.write(text)
            file.flush()
            return dict(read_judged(Path(file.name)))

    def test_counts_entries(self) -> None:
        self.assertEqual(self.read("# c\n\na\n    why\n\na\n    why\n  so\n"), {"a": 2})

    def test_wants_reasons(self) -> None:
        for text in ("a\n", "a\nb\n  why\n"):
            with self.assertRaises(SystemExit):
                self.read(text)


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
