#!/usr/bin/env python3
# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""tools/bench on targets and results of its own: what is read, compared, told and refused."""

import contextlib
import io
import json
import pathlib
import re
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools" / "bench"))

import bench_table
import profiles
import render
import runs
import targets


def entry(**changes):
  return {"family": "Fills", "workload": "a star", "program": "fill", "ours": "Star/Ours",
          "peers": {"Cairo": "Star/Cairo"}, "at_most": {"Cairo": 1}, **changes}


def only(target):
  rows = list(targets.expand(target))
  assert len(rows) == 1
  return rows[0]


def judged(target, **medians):
  """Results by the last word of a benchmark's name: Ours=..., Cairo=..., as times or as measures."""
  return targets.judge(only(target), {
    f"Star/{name}": value if isinstance(value, dict) else {"time": value} for name, value in medians.items()})


class Targets(unittest.TestCase):
  def test_an_entry_expands_over_every_combination(self):
    rows = list(targets.expand(entry(
      workload="{shape}, {size} pixels", ours="{shape}/Ours/{size}", peers={"Cairo": "{shape}/Cairo/{size}"},
      each={"shape": {"Star": "star", "Circle": "circle"}, "size": ["64", "512"]})))
    self.assertEqual([row.workload for row in rows],
                     ["star, 64 pixels", "star, 512 pixels", "circle, 64 pixels", "circle, 512 pixels"])
    self.assertEqual(rows[3].benchmarks(), ["Circle/Ours/512", "Circle/Cairo/512"])

  def test_the_first_of_a_series_is_not_compared_with_itself(self):
    rows = list(targets.expand(entry(
      ours="Eval/{n}", each={"n": ["10", "100"]}, peers={"10 keys": "Eval/10"}, at_most={"10 keys": 1.25})))
    self.assertEqual([row.peers for row in rows], [{}, {"10 keys": "Eval/10"}])
    self.assertEqual(rows[0].at_most, {})

  def test_a_limit_for_a_peer_that_is_none_is_refused(self):
    with tempfile.TemporaryDirectory() as folder:
      path = pathlib.Path(folder, "targets.json")
      path.write_text(json.dumps({"targets": [entry(at_most={"Skia": 1})]}))
      with self.assertRaisesRegex(ValueError, "a star: no peer named Skia"):
        targets.read(path)

  def test_the_targets_of_the_house_name_benchmarks_that_exist(self):
    sources = {path.name[:-len("_bench.cpp")]: path.read_text() for path in (ROOT / "benchmarks").glob("*_bench.cpp")}
    for row in targets.read(ROOT / "benchmarks" / "targets.json"):
      self.assertIn(row.program, sources)
      for name in row.benchmarks():
        # Parts of a name may be put together; each word of it stands somewhere in the source.
        for word in re.findall(r"[A-Za-z_]{3,}", name):
          if word not in ("real_time", "threads", "iterations", "folder", "bounce", "flight", "kite"):
            self.assertTrue(all(part in sources[row.program] for part in word.split("_")), f"{row.program}: {name}")

  def test_what_is_wanted_is_said(self):
    self.assertEqual(only(entry(bound=20000)).wanted(), "<= 20 us, <= 1 x Cairo")
    self.assertEqual(only(entry(bound=400, measure="bytes", unit="bytes", at_most={})).wanted(), "<= 400 bytes")
    self.assertEqual(only(entry(at_most={})).wanted(), "")

  def test_a_row_is_found_by_family_text_or_benchmark(self):
    row = only(entry())
    for pattern in ("Fill", "a st", "Star/C"):
      self.assertTrue(row.matches(pattern))
    self.assertFalse(row.matches("Circle"))


class Judging(unittest.TestCase):
  def test_level_passes_and_more_is_short(self):
    self.assertEqual(judged(entry(), Ours=10.0, Cairo=10.0).verdict, targets.PASS)
    outcome = judged(entry(), Ours=11.0, Cairo=10.0)
    self.assertEqual((outcome.verdict, outcome.short_of), (targets.SHORT, ["Cairo"]))
    self.assertAlmostEqual(outcome.ratio("Cairo"), 1.1)

  def test_a_missing_peer_is_not_counted_against_the_others(self):
    both = entry(peers={"Cairo": "Star/Cairo", "AGG": "Star/AGG"}, at_most={"Cairo": 1, "AGG": 1})
    self.assertEqual(judged(both, Ours=1.0, AGG=2.0).verdict, targets.PASS)
    self.assertEqual(judged(both, Ours=3.0, AGG=2.0).short_of, ["AGG"])

  def test_without_any_peer_nothing_is_claimed(self):
    self.assertEqual(judged(entry(), Ours=1.0).verdict, targets.MISSING)
    self.assertEqual(judged(entry(), Cairo=1.0).verdict, targets.MISSING)

  def test_a_row_without_a_wish_only_tells(self):
    self.assertEqual(judged(entry(at_most={}), Ours=3.0, Cairo=1.0).verdict, targets.TOLD)

  def test_a_bound_holds_without_peers(self):
    self.assertEqual(judged(entry(peers={}, at_most={}, bound=20), Ours=20.0).verdict, targets.PASS)
    self.assertEqual(judged(entry(peers={}, at_most={}, bound=20), Ours=20.1).short_of, ["the bound"])

  def test_a_rate_costs_its_reciprocal(self):
    outcome = judged(entry(measure="items_per_second"),
                     Ours={"items_per_second": 1e8}, Cairo={"items_per_second": 5e7})
    self.assertAlmostEqual(outcome.cost, 10)
    self.assertAlmostEqual(outcome.ratio("Cairo"), 0.5)

  def test_a_counter_that_is_absent_is_not_measured(self):
    self.assertEqual(judged(entry(measure="segments"), Ours=1.0, Cairo=1.0).verdict, targets.MISSING)

  def test_short_at_the_floor_is_told_as_such(self):
    target = entry(peers={"Cairo": "Star/Cairo", "writes": "Star/Writes"}, floor={"writes": 1.1})
    self.assertEqual(judged(target, Ours=10.9, Cairo=5.0, Writes=10.0).verdict, targets.FLOOR)
    self.assertEqual(judged(target, Ours=11.1, Cairo=5.0, Writes=10.0).verdict, targets.SHORT)
    self.assertEqual(judged(target, Ours=11.1, Cairo=5.0).verdict, targets.SHORT)
    self.assertEqual(judged(target, Ours=4.0, Cairo=5.0, Writes=10.0).verdict, targets.PASS)


def result(name, time, unit="ns", **more):
  return {"name": name, "run_name": name, "run_type": "iteration", "iterations": 1, "real_time": 7 * time,
          "cpu_time": time, "time_unit": unit, **more}


class Medians(unittest.TestCase):
  def test_the_middle_of_the_repetitions_counts_in_nanoseconds(self):
    found = runs.medians({"benchmarks": [result("a", time, "us") for time in (9, 1, 2)]})
    self.assertEqual(found["a"]["time"], 2000)

  def test_aggregates_are_left_out(self):
    found = runs.medians({"benchmarks": [result("a", 1), {**result("a", 5), "run_type": "aggregate"}]})
    self.assertEqual(found["a"]["time"], 1)

  def test_the_clock_counts_where_the_benchmark_asks_for_it(self):
    self.assertEqual(runs.medians({"benchmarks": [result("a/real_time", 1)]})["a/real_time"]["time"], 7)

  def test_counters_have_medians_of_their_own(self):
    found = runs.medians({"benchmarks": [result("a", 1, segments=n) for n in (3, 5, 4)]})
    self.assertEqual(found["a"]["segments"], 4)

  def test_a_benchmark_that_failed_is_no_number(self):
    with self.assertRaisesRegex(runs.Failed, "a: no file"):
      runs.medians({"benchmarks": [{**result("a", 0), "error_occurred": True, "error_message": "no file"}]})

  def test_a_filter_lets_exactly_the_names_pass(self):
    names = ["Eval<Cubic, Walk>/10", "a.b", "f(x)[1]"]
    pattern = re.compile(runs.exactly(names))
    for name in names:
      self.assertTrue(pattern.search(name))
    for name in ("Eval<Cubic, Walk>/100", "axb", "Lone a.b"):
      self.assertFalse(pattern.search(name))


class Rendering(unittest.TestCase):
  OUTCOMES = [judged(entry(words="ahead"), Ours=1.5e3, Cairo=3e3),
              judged(entry(workload="a circle", peers={"plain": "Star/Plain"}, at_most={"plain": 0.5}),
                     Ours=9e6, Plain=1e7)]

  def test_a_family_has_its_words_and_columns_of_its_own_peers(self):
    lines = render.text(self.OUTCOMES).splitlines()
    self.assertEqual(lines[:2], ["Fills", "  ahead"])
    self.assertEqual(lines[2].split(), ["workload", "ours", "Cairo", "beside", "wanted", "result"])
    self.assertIn("1.5 us  3 us (0.50)", lines[3])
    self.assertTrue(lines[3].endswith("pass"))
    self.assertIn("plain 10 ms (0.90)", lines[4])
    self.assertTrue(lines[4].endswith("short of plain"))

  def test_markdown_has_as_many_cells_in_each_line(self):
    table = [line for line in render.markdown(self.OUTCOMES).splitlines() if line.startswith("|")]
    self.assertEqual({line.count("|") for line in table}, {7})
    self.assertIn("≤ 1 × Cairo", table[2])

  def test_machines_read_numbers(self):
    row = json.loads(json.dumps(render.machine_readable(self.OUTCOMES)))[1]
    self.assertEqual((row["ours"], row["result"], row["short_of"]), (9e6, "short", ["plain"]))
    self.assertEqual(row["peers"]["plain"], {"benchmark": "Star/Plain", "cost": 1e7, "ratio": 0.9, "at_most": 0.5})


PROGRAM = """#!/usr/bin/env python3
import json, re, sys
times = {"Star/Ours": 1.0, "Star/Cairo": 2.0, "Other": 3.0}
pattern = "."
for argument in sys.argv[1:]:
  if argument.startswith("--benchmark_filter="):
    pattern = argument.split("=", 1)[1]
chosen = [{"name": name, "run_type": "iteration", "cpu_time": time, "real_time": time, "time_unit": "us"}
          for name, time in times.items() if re.search(pattern, name)]
if chosen:
  print(json.dumps({"benchmarks": chosen}))
"""


class Command(unittest.TestCase):
  def setUp(self):
    folder = tempfile.TemporaryDirectory()
    self.addCleanup(folder.cleanup)
    self.folder = pathlib.Path(folder.name)
    self.program = self.folder / "hv_fill_bench"
    self.program.write_text(PROGRAM)
    self.program.chmod(0o755)
    self.targets = self.folder / "targets.json"
    self.write(entry())

  def write(self, *entries):
    self.targets.write_text(json.dumps({"targets": entries}))

  def run_it(self, *values):
    printed = io.StringIO()
    with contextlib.redirect_stdout(printed), contextlib.redirect_stderr(io.StringIO()):
      status = bench_table.main([*values, "--targets", str(self.targets), "--folder", str(self.folder)])
    return status, printed.getvalue()

  def test_one_table_and_what_it_comes_to(self):
    status, printed = self.run_it()
    self.assertEqual(status, 0)
    self.assertRegex(printed, r"a star +1 us +2 us \(0\.50\) +<= 1 x Cairo +pass")
    self.assertIn("1 pass, 0 short", printed)

  def test_json_is_one_document(self):
    document = json.loads(self.run_it("--json", "--quick")[1])
    self.assertEqual(document["rows"][0]["peers"]["Cairo"]["ratio"], 0.5)
    self.assertIn("machine", document["about"])

  def test_a_pattern_that_matches_nothing_is_told(self):
    with self.assertRaisesRegex(SystemExit, "nothing matches Circle"):
      self.run_it("Circle")
    with self.assertRaisesRegex(SystemExit, "no regular expression"):
      self.run_it("(")

  def test_all_shows_what_no_target_names(self):
    self.assertNotIn("Other", self.run_it()[1])
    self.assertRegex(self.run_it("--all")[1], r"Others of fill\n.*\n +Other +3 us")

  def test_a_workload_without_its_benchmark_fails(self):
    self.write(entry(ours="Star/Gone"))
    status, printed = self.run_it()
    self.assertEqual(status, 1)
    self.assertIn("1 not measured", printed)

  def test_an_optional_one_may_be_absent(self):
    self.write(entry(), entry(workload="a folder", ours="Star/Gone", optional=True))
    status, printed = self.run_it()
    self.assertEqual(status, 0)
    self.assertNotIn("a folder", printed)

  def test_a_program_that_fails_ends_it(self):
    self.program.write_text("#!/bin/sh\necho broken >&2\nexit 3\n")
    with self.assertRaisesRegex(SystemExit, "hv_fill_bench ended with 3\nbroken"):
      self.run_it()

  def test_a_page_gets_its_table_between_the_markers(self):
    page = self.folder / "page.md"
    begin, end = bench_table.markers(bench_table.TABLE)
    page.write_text(f"before\n{begin}old\n{end}after\n")
    self.run_it("--markdown", str(page))
    text = page.read_text()
    self.assertTrue(text.startswith("before\n") and text.endswith("after\n"))
    self.assertIn("| a star | 1 us | 2 us (0.50) | ≤ 1 × Cairo | pass |", text)
    self.assertIn("1 pass, 0 short", text)
    self.assertNotIn("old", text)
    page.write_text("no markers\n")
    with self.assertRaisesRegex(ValueError, "no pair of markers"):
      self.run_it("--markdown", str(page))

  def test_the_page_of_the_house_has_both_pairs_of_markers(self):
    text = bench_table.PAGE.read_text()
    for name in (bench_table.TABLE, bench_table.PROFILE):
      self.assertIn("new text", bench_table.replaced(text, name, "new text"))


REPORT = """# Overhead  Shared Object  Symbol
    40.00%  libc.so.6         [.] __memset_avx512_unaligned_erms
    20.50%  [kernel.kallsyms] [k] exc_page_fault
    10.50%  [kernel.kallsyms] [k] clear_page_erms
    16.00%  libhv.so.0.1.0    [.] std::__introsort_loop<Edge*, long, Less<Edge>(a)>(Edge*, long)
    12.00%  libhv.so.0.1.0    [.] (anonymous namespace)::Run::Add(double*) const
     1.00%  libhv.so.0.1.0    [.] memset@plt
"""


class Profiles(unittest.TestCase):
  def test_the_kernel_is_one_and_names_are_short(self):
    self.assertEqual(profiles.shares(REPORT), [
      (41.0, "`memset`"), (31.0, "the kernel"), (16.0, "`std::__introsort_loop`"), (12.0, "`Run::Add`")])

  def test_what_is_left_is_told_as_others(self):
    self.assertEqual(profiles.told([(60.0, "a"), (30.0, "b"), (1.0, "c")]), "60 % a, 30 % b, 10 % others")


if __name__ == "__main__":
  unittest.main()
