#!/usr/bin/env python3
# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""Runs benchmarks and prints one table: each workload of benchmarks/targets.json, our time, the
times of others in the same run with the proportion of ours to theirs, what is wanted and whether
that is reached. Exit status 1 when a benchmark failed or a workload has none."""

import argparse
import json
import pathlib
import re
import sys

import machine
import profiles
import render
import runs
import targets

PAGE = machine.ROOT / "docs" / "performance.md"
TABLE = "measured by ./dev bench --markdown"
PROFILE = "profiled by ./dev bench --profile"


def arguments(values):
  parser = argparse.ArgumentParser(prog="./dev bench", description=__doc__)
  parser.add_argument("pattern", nargs="?", default="", metavar="REGEX",
                      help="only workloads whose family, text or benchmarks match")
  parser.add_argument("--quick", action="store_true", help="one short round: an impression, no measurement")
  parser.add_argument("--all", action="store_true", help="also every benchmark that no target names")
  parser.add_argument("--json", action="store_true", help="for machines")
  parser.add_argument("--markdown", nargs="?", type=pathlib.Path, metavar="PAGE",
                      const=PAGE,
                      help="put the table into a page between its markers [docs/performance.md]")
  parser.add_argument("--profile", nargs="?", type=pathlib.Path, metavar="PAGE", const=PAGE,
                      help="put a profile of the heaviest workloads there instead; needs perf")
  parser.add_argument("--repetitions", type=int, default=5, help="medians are taken over so many [5]")
  parser.add_argument("--targets", type=pathlib.Path, help=argparse.SUPPRESS,
                      default=machine.ROOT / "benchmarks" / "targets.json")
  parser.add_argument("--folder", type=pathlib.Path, help="of the benchmark programs",
                      default=machine.ROOT / "build" / "release" / "benchmarks")
  found = parser.parse_args(values)
  if found.repetitions < 1:
    parser.error("medians need at least one repetition")
  return found


def program_of(folder, name):
  return folder / f"hv_{name}_bench"


def measure(rows, wanted):
  """program -> name of a benchmark -> measure -> median; each program runs once."""
  names = {row.program: set() for row in rows}
  for row in rows:
    names[row.program].update(row.benchmarks())
  if wanted.all:
    known = (path.name[len("hv_"):-len("_bench")] for path in wanted.folder.glob("hv_*_bench"))
    names.update((name, None) for name in sorted(known))
  repetitions, seconds = (1, 0.02) if wanted.quick else (wanted.repetitions, 0.1)
  found = {}
  for name, chosen in names.items():
    program = program_of(wanted.folder, name)
    if not program.exists():
      continue
    print(f"{program.name} ...", file=sys.stderr, flush=True)
    found[name] = runs.medians(runs.measure(program, chosen, repetitions, seconds))
  return found


def untargeted(rows, found, pattern):
  """A row that only tells for each benchmark that no target names."""
  named = {(row.program, name) for row in rows for name in row.benchmarks()}
  for program, medians in found.items():
    for name in medians:
      row = targets.Row(f"Others of {program}", "", name, program, name, {}, {}, {})
      if (program, name) not in named and row.matches(pattern):
        yield targets.judge(row, medians)


def markers(name):
  return f"<!-- {name} -->\n", f"<!-- end of what was {name.split(' ')[0]} -->\n"


def replaced(page, name, text):
  """The page with what stands between a pair of markers exchanged."""
  begin, end = markers(name)
  before, has_begin, rest = page.partition(begin)
  _, has_end, after = rest.partition(end)
  if not has_begin or not has_end:
    raise ValueError(f"the page has no pair of markers for what is {name}")
  return f"{before}{begin}\n{text}\n{end}{after}"


def rewrite(path, name, text):
  path.write_text(replaced(path.read_text(), name, text))


def facts(about):
  return "\n".join(f"- {name}: {value}" for name, value in about.items() if value)


def main(values=None):
  wanted = arguments(values)
  if not any(wanted.folder.glob("hv_*_bench")):
    sys.exit(f"there is no benchmark in {wanted.folder}")
  about = machine.describe(wanted.folder.parent)
  if wanted.profile:
    lines = profiles.table(json.loads(wanted.targets.read_text())["heaviest"], wanted.folder)
    rewrite(wanted.profile, PROFILE, f"On {about['machine']}, {about['date']}, {about['revision']}.\n\n{lines}")
    print(lines)
    return 0
  every = targets.read(wanted.targets)
  try:
    pattern = re.compile(wanted.pattern)
  except re.error as reason:
    sys.exit(f"no regular expression: {wanted.pattern} ({reason})")
  rows = [row for row in every if row.matches(pattern)]
  try:
    found = measure(rows, wanted)
  except runs.Failed as reason:
    sys.exit(str(reason))
  outcomes = [targets.judge(row, found.get(row.program, {})) for row in rows]
  # What needs data of somebody else's may be absent.
  outcomes = [outcome for outcome in outcomes if outcome.cost is not None or not outcome.row.optional]
  if wanted.all:
    outcomes += untargeted(every, found, pattern)
  if not outcomes:
    sys.exit(f"nothing matches {wanted.pattern}")

  if wanted.json:
    print(json.dumps({"about": about, "rows": render.machine_readable(outcomes)}, indent=1))
  else:
    print(render.text(outcomes))
    print("\n" + summary(outcomes))
  if wanted.markdown:
    rewrite(wanted.markdown, TABLE, f"{facts(about)}\n\n{render.markdown(outcomes)}\n{summary(outcomes)}.\n")
  return 1 if any(outcome.cost is None for outcome in outcomes) else 0


def summary(outcomes):
  results = [outcome.verdict for outcome in outcomes]
  parts = [f"{results.count(targets.PASS)} pass", f"{results.count(targets.SHORT)} short"]
  for verdict, text in ((targets.FLOOR, "at the floor"), (targets.MISSING, "not measured")):
    if verdict in results:
      parts.append(f"{results.count(verdict)} {text}")
  return ", ".join(parts) + "; in brackets our cost over theirs, below 1 where ours is faster"


if __name__ == "__main__":
  sys.exit(main())
