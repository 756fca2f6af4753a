#!/usr/bin/env python3
# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""The mutants found in small sources, and a program of three lines that is spoiled and judged."""

import pathlib
import shutil
import subprocess
import sys
import tempfile
import types
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))

import mutants
import mutate
from ninja_build import Failed, TestProgram, link_arguments, parse_dependencies


def changes(text, kinds=mutants.KINDS):
  return [mutant.change(text) for mutant in mutants.find(text, kinds)]


class Found(unittest.TestCase):
  def test_comparisons_move_by_a_step_and_turn_round(self):
    self.assertEqual(changes("return a < b;"), ["< to <=", "< to >="])
    self.assertEqual(changes("return a >= b && c != d;"),
                     [">= to <", ">= to >", "&& to ||", "!= to =="])

  def test_templates_are_no_comparisons(self):
    self.assertEqual(changes("template <class T>\nstd::vector<T> Make(std::pair<T, T> a);"), [])

  def test_an_operator_may_end_its_line(self):
    self.assertEqual(changes("bool x = a <\n  b;"), ["< to <=", "< to >="])

  def test_signs(self):
    self.assertEqual(changes("x = -y + (-z) - w;"),
                     ["- to nothing", "+ to -", "- to nothing #2", "- to + #3"])
    self.assertEqual(changes("x += y; *p = a * b; ++i;"), ["+= to -="])

  def test_numbers_go_up_and_down_and_real_ones_double_and_halve(self):
    self.assertEqual(changes("f(3, 0);"), ["3 to (3 + 1)", "3 to (3 - 1)", "0 to (0 + 1)"])
    self.assertEqual(changes("f(0.5, 1e-7, 0.0, 0.0f);"),
                     ["0.5 to (0.5 * 2)", "0.5 to (0.5 / 2)", "1e-7 to (1e-7 * 2)",
                      "1e-7 to (1e-7 / 2)", "0.0 to (0.0 + 1)", "0.0f to (0.0f + 1)"])
    self.assertEqual(changes("f(0x1Eu, 0x1p-52, 1'000);"),
                     ["0x1Eu to (0x1Eu + 1)", "0x1Eu to (0x1Eu - 1)", "0x1p-52 to (0x1p-52 * 2)",
                      "0x1p-52 to (0x1p-52 / 2)", "1'000 to (1'000 + 1)", "1'000 to (1'000 - 1)"])
    self.assertEqual(changes("P0.x = x3;"), [])

  def test_truth(self):
    self.assertEqual(changes("f(true, !g);"), ["true to false", "! to nothing"])

  def test_what_is_no_code_stays(self):
    text = ('#include <a/b1.h>\n#define X \\\n  (1 < 2)\n// a < b\n/* 1 +\n 2 */\n'
            'f("1 < 2 \\" + 3", \'1\', \'\\\'\');\n')
    self.assertEqual(changes(text), [])
    self.assertEqual(len(mutants.code_only(text)), len(text))

  def test_kinds_are_chosen(self):
    self.assertEqual(changes("if (a < 1 && b)", ["logic"]), ["&& to ||"])

  def test_a_mutant_knows_its_place(self):
    text = "int a;\n  if (b < 1 || c < 1) {\n"
    last = [mutant for mutant in mutants.find(text) if mutant.new == "<="][-1]
    self.assertEqual(last.line_number(text), 2)
    self.assertEqual(last.line(text), "if (b < 1 || c < 1) {")
    self.assertEqual(last.change(text), "< to <= #2")
    self.assertEqual(last.apply(text), "int a;\n  if (b < 1 || c <= 1) {\n")


class Lists(unittest.TestCase):
  def read(self, text):
    with tempfile.TemporaryDirectory() as folder:
      path = pathlib.Path(folder) / "equivalent.txt"
      path.write_text(text)
      return mutate.read_equivalents(path)

  def test_entries_have_a_reason(self):
    self.assertEqual(self.read("# head\n\nhv/a.cpp\n  if (a < b) {\n< to <=\nboth give b,\nor a\n"),
                     {("hv/a.cpp", "if (a < b) {", "< to <="): "both give b, or a"})
    self.assertEqual(self.read("# nothing\n"), {})
    with self.assertRaises(Failed):
      self.read("hv/a.cpp\nif (a < b) {\n< to <=\n")

  def test_every_entry_of_the_house_names_a_mutant(self):
    for file, line, change in mutate.read_equivalents(mutate.EQUIVALENT):
      text = (mutate.ROOT / file).read_text()
      known = {(mutant.line(text), mutant.change(text)) for mutant in mutants.find(text)}
      self.assertIn((line, change), known, file)

  def test_the_sample_is_the_same_for_a_seed_and_in_order(self):
    text = "f(1, 2, 3, 4, 5, 6, 7, 8);\n" * 3
    def chosen(*more):
      return mutate.choose(text, mutate.parse(["build", "hv/a/B.cpp", *more]))
    self.assertEqual(chosen("--sample", "5"), chosen("--sample", "5"))
    self.assertEqual(len(chosen("--sample", "5")), 5)
    self.assertEqual([m.offset for m in chosen("--sample", "5")],
                     sorted(m.offset for m in chosen("--sample", "5")))
    self.assertEqual({m.line_number(text) for m in chosen("--lines", "2-2")}, {2})


class Commands(unittest.TestCase):
  def test_the_compiler_stands_between_other_steps(self):
    self.assertEqual(link_arguments(": && /usr/bin/c++ a.o b.o -o test && cmake -P x"),
                     ["/usr/bin/c++", "a.o", "b.o", "-o", "test"])
    with self.assertRaises(Failed):
      link_arguments(": && cmake -P x")

  def test_dependencies(self):
    text = "a.o: #deps 2, deps mtime 1 (VALID)\n    ../a.cpp\n    ../a.h\n\nb.o: #deps 0\n"
    self.assertEqual(parse_dependencies(text), {"a.o": {"../a.cpp", "../a.h"}, "b.o": set()})


NINJA = """rule compile
  command = c++ -I{root} -MD -MF $out.d -o $out -c $in
  depfile = $out.d
  deps = gcc
rule link
  command = : && c++ $in -o $out && :
build limit.o: compile {root}/hv/low/limit.cpp
build main.o: compile {root}/main.cpp
build test: link limit.o main.o
"""


@unittest.skipUnless(shutil.which("ninja") and shutil.which("c++"), "needs Ninja and a compiler")
class Judged(unittest.TestCase):
  """A function in a header, seen by one of two sources, and a main that tests a part of it."""

  def setUp(self):
    scratch = tempfile.TemporaryDirectory()
    self.addCleanup(scratch.cleanup)
    self.root = pathlib.Path(scratch.name) / "tree"
    self.build = pathlib.Path(scratch.name) / "build"
    self.overlay = pathlib.Path(scratch.name) / "scratch"
    for folder in (self.root / "hv/low", self.build, self.overlay):
      folder.mkdir(parents=True)
    self.header = "inline int Limited(int a) { return a < 3 ? a : 3; }\n"
    (self.root / "hv/low/limit.h").write_text(self.header)
    (self.root / "hv/low/limit.cpp").write_text(
      '#include <hv/low/limit.h>\nint Limit(int a) { while (a == 9) { } return Limited(a); }\n')
    # 3 itself is not asked for, so the border may move.
    (self.root / "main.cpp").write_text(
      "int Limit(int);\nint main() { return Limit(1) == 1 && Limit(5) == 3 ? 0 : 1; }\n")
    (self.build / "build.ninja").write_text(NINJA.format(root=self.root))
    subprocess.run(["ninja"], cwd=self.build, check=True, stdout=subprocess.DEVNULL)
    self.program = TestProgram(self.root, self.build, "test", self.overlay)
    self.options = types.SimpleNamespace(folder=self.build, filters=["*"])

  def judge(self, file, text, old, new):
    mutant = mutants.Mutant("", text.index(old), old, new)
    objects = self.program.objects_of(file)
    return mutate.judge(self.program, self.options, file, text, mutant, objects, 2.0)

  def test_a_header_reaches_what_includes_it(self):
    self.assertEqual(self.program.objects_of("hv/low/limit.h"), ["limit.o"])
    self.assertEqual(self.program.objects_of("hv/low/limit.h", ["main.cpp"]), [])
    self.assertEqual(self.program.objects_of("main.cpp"), ["main.o"])

  def test_verdicts_on_a_header(self):
    self.assertEqual(self.judge("hv/low/limit.h", self.header, "<", "<="), "survived")
    self.assertEqual(self.judge("hv/low/limit.h", self.header, "<", ">="), "killed")
    self.assertEqual(self.judge("hv/low/limit.h", self.header, "<", "<<<"), "did not compile")

  def test_verdicts_on_a_source(self):
    text = (self.root / "hv/low/limit.cpp").read_text()
    self.assertEqual(self.judge("hv/low/limit.cpp", text, "== 9", "!= 9"), "hung")
    self.assertEqual(self.judge("hv/low/limit.cpp", text, "== 9", "== 8"), "survived")

  def test_the_tree_and_the_build_folder_stay_as_they_are(self):
    before = {path: path.read_bytes() for folder in (self.root, self.build)
              for path in folder.rglob("*") if path.is_file() and ".ninja_" not in path.name}
    self.judge("hv/low/limit.h", self.header, "<", ">=")
    after = {path: path.read_bytes() for folder in (self.root, self.build)
             for path in folder.rglob("*") if path.is_file() and ".ninja_" not in path.name}
    self.assertEqual(after, before)

  def test_the_share_counts_what_hangs_and_leaves_out_what_is_no_mutant(self):
    tally = mutate.Tally()
    for verdict in ("killed", "hung", "survived", "survived", "equivalent", "did not compile"):
      tally.add(verdict)
    self.assertEqual(tally.share_killed(), 0.5)
    self.assertEqual(mutate.Tally().share_killed(), 1)


if __name__ == "__main__":
  unittest.main()
