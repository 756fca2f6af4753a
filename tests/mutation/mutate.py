#!/usr/bin/env python3
# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""Puts one small fault at a time into a file of hv/ and tells which ones no test of it notices.

    tests/mutation/mutate.py build hv/fcurve/HvStdFCurve_eval.cpp --sample 40

The file's tests are the suites of its name, `HvStdFCurve_eval.*` of hv_fcurve_test here; --filter
names more. The tree and the build folder stay as they are, so the folder has to be up to date. For
a header or an .inl file everything that includes it is compiled anew for each fault; --through
names the sources for which that is enough.

A fault that does not compile does not count. One that changes nothing that can be told, such as a
border that two branches share, is listed in equivalent.txt beside this file with the reason.
"""

import argparse
import os
import pathlib
import random
import resource
import subprocess
import sys
import tempfile
import time

import mutants
from ninja_build import Failed, TestProgram

ROOT = pathlib.Path(__file__).resolve().parents[2]
EQUIVALENT = pathlib.Path(__file__).with_name("equivalent.txt")
# Properties try the same cases as in the test run.
SEED_OF_PROPERTIES = "seed=20261120"
# A fault in a size may ask for all memory; the tests themselves need far less.
MEMORY_BYTES = 4 << 30
# A mutant may be slower than the program for a moment; one that hangs is waited for this long, or
# as long as --patience says.
LEAST_TIME_LIMIT_SECONDS = 5.0
TIME_LIMIT_FACTOR = 5.0


def read_equivalents(path):
  """Entries of four lines - file, source line, change, reason - with a blank line between; a line
  that begins with # is a comment."""
  entries = {}
  lines = [line for line in path.read_text().splitlines() if not line.startswith("#")]
  for block in filter(None, (block.strip() for block in "\n".join(lines).split("\n\n"))):
    fields = [line.strip() for line in block.splitlines()]
    if len(fields) < 4:
      raise Failed(f"{path.name}: file, line, change and reason are asked for: {block!r}")
    entries[tuple(fields[:3])] = " ".join(fields[3:])
  return entries


def run_tests(program, folder, filters, seconds):
  """What the tests make of the program: 'passed', 'failed' or 'hung', and what they printed."""
  command = [str(program), f"--gtest_filter={':'.join(filters)}", "--gtest_fail_fast",
             "--gtest_brief=1"]

  def limit_memory():
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY_BYTES, MEMORY_BYTES))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))

  try:
    done = subprocess.run(command, cwd=folder, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          text=True, errors="replace", timeout=seconds, preexec_fn=limit_memory,
                          env=dict(os.environ, RC_PARAMS=SEED_OF_PROPERTIES))
  except subprocess.TimeoutExpired:
    return "hung", ""
  return "failed" if done.returncode else "passed", done.stdout


class Tally:
  """Mutants by what became of them."""

  def __init__(self):
    self.count = {"killed": 0, "hung": 0, "survived": 0, "equivalent": 0, "did not compile": 0}

  def add(self, verdict):
    self.count[verdict] += 1

  def share_killed(self):
    killed = self.count["killed"] + self.count["hung"]
    counted = killed + self.count["survived"]
    return killed / counted if counted else 1.0

  def __str__(self):
    counts = ", ".join(f"{number} {verdict}" for verdict, number in self.count.items() if number)
    return f"{counts or 'none'}: {100 * self.share_killed():.1f} % killed"


def judge(program, options, file, text, mutant, objects, seconds):
  try:
    built = program.build_with(file, mutant.apply(text), objects)
  except Failed:
    return "did not compile"
  verdict, _ = run_tests(built, options.folder, options.filters, seconds)
  return {"passed": "survived", "failed": "killed", "hung": "hung"}[verdict]


def choose(text, options):
  """The mutants asked for, in the file's order."""
  found = [mutant for mutant in mutants.find(text, options.kinds)
           if options.first <= mutant.line_number(text) <= options.last]
  if options.sample and options.sample < len(found):
    found = random.Random(options.seed).sample(found, options.sample)
  return sorted(found, key=lambda mutant: (mutant.offset, mutant.new))


def mutate(options):
  file = options.file
  text = (ROOT / file).read_text()
  chosen = choose(text, options)
  if options.list:
    for mutant in chosen:
      print(f"{mutant.line_number(text)}: {mutant.change(text)}: {mutant.line(text)}")
    return Tally()

  equivalents = read_equivalents(EQUIVALENT)
  subsystem = pathlib.Path(file).parts[1]
  target = f"tests/{subsystem}/hv_{subsystem}_test"
  options.folder = pathlib.Path(options.build).resolve() / f"tests/{subsystem}"
  with tempfile.TemporaryDirectory(prefix="mutate.") as scratch:
    program = TestProgram(ROOT, options.build, target, scratch)
    objects = program.objects_of(file, options.through)
    if not objects:
      raise Failed(f"nothing of {target} is made of {file}")
    print(f"{file}: {len(chosen)} mutants of {len(mutants.find(text))}, "
          f"{len(objects)} objects each, tests {':'.join(options.filters)}")

    start = time.monotonic()
    verdict, output = run_tests(program.build_with(file, text, objects), options.folder,
                                options.filters, None)
    seconds = max(options.patience, TIME_LIMIT_FACTOR * (time.monotonic() - start))
    if verdict != "passed" or "[  PASSED  ] 0 tests" in output:
      raise Failed(f"the tests have to pass, and to be some, without a fault:\n{output}")

    tally = Tally()
    end = time.monotonic() + options.minutes * 60
    for mutant in chosen:
      if time.monotonic() > end:
        print("the time is over")
        break
      change, line = mutant.change(text), mutant.line(text)
      verdict = ("equivalent" if (file, line, change) in equivalents else
                 judge(program, options, file, text, mutant, objects, seconds))
      tally.add(verdict)
      if verdict == "survived" or options.verbose:
        print(f"  {verdict}: line {mutant.line_number(text)}: {change}: {line}", flush=True)
    print(tally)
    return tally


def parse(arguments):
  parser = argparse.ArgumentParser(
    description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
  parser.add_argument("build", help="an up-to-date build folder of Ninja, with tests")
  parser.add_argument("file", help="the file to spoil, from the root: hv/fcurve/HvStdFCurve.cpp")
  parser.add_argument("--sample", type=int, default=0, metavar="N", help="only N mutants, by chance")
  parser.add_argument("--seed", type=int, default=1, help="of the sample; initially 1")
  parser.add_argument("--minutes", type=float, default=30.0, help="stop after them; initially 30")
  parser.add_argument("--patience", type=float, default=LEAST_TIME_LIMIT_SECONDS, metavar="SECONDS",
                      help="the least time after which a mutant counts as hung; initially 5")
  parser.add_argument("--filter", action="append", default=[], metavar="PATTERN",
                      help="further tests that are the file's, as --gtest_filter; may be repeated")
  parser.add_argument("--through", action="append", default=[], metavar="SOURCE",
                      help="compile only this source anew; may be repeated")
  parser.add_argument("--kinds", default=",".join(mutants.KINDS),
                      help=f"of mutants, of {', '.join(mutants.KINDS)}; initially all")
  parser.add_argument("--lines", default="1-1000000", metavar="A-B", help="only mutants in them")
  parser.add_argument("--least", type=float, default=0.0, metavar="PERCENT",
                      help="end with 1 when fewer are killed")
  parser.add_argument("--list", action="store_true", help="print the mutants and try none")
  parser.add_argument("--verbose", action="store_true", help="print every mutant's fate")
  options = parser.parse_args(arguments)
  options.kinds = options.kinds.split(",")
  options.first, options.last = (int(line) for line in options.lines.split("-"))
  options.filters = [f"{pathlib.Path(options.file).stem}.*"] + options.filter
  return options


def main():
  options = parse(sys.argv[1:])
  try:
    tally = mutate(options)
  except Failed as failure:
    sys.exit(f"mutate.py: {failure}")
  return 1 if 100 * tally.share_killed() < options.least else 0


if __name__ == "__main__":
  sys.exit(main())
