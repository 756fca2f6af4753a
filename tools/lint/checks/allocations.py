# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""The table of what allocates: no public class is missing, and its tests refuse allocations."""

import re

from .finding import Finding

TABLE = "tests/allocations.txt"
CLASS = re.compile(
  r"^(?:class|struct)\s+(?:HV_API(?:_TYPE)?\s+)?(\w+)(?:\s+final)?\s*(?::[^{;]*)?\{", re.MULTILINE)
TEST = re.compile(r"^(?:TEST|TEST_F|TEST_P|TYPED_TEST)\(\s*(\w+),\s*(\w+)\)", re.MULTILINE)
REFUSAL = re.compile(r"\bRefuse(?:Each)?Allocation\b")
ROW = re.compile(r"(\w+): (.+): (.+)")


def public_classes(tree):
  """(class, header) of all that an application can include."""
  for path in tree.matching(".h", under="hv/"):
    if "/internal/" not in path:
      for found in CLASS.finditer(tree.text(path)):
        yield found.group(1), path


def refusing_tests(tree):
  """Suite.Test of every test that refuses allocations."""
  for path in tree.matching("_test.cpp", under="tests/"):
    text = tree.text(path)
    starts = list(TEST.finditer(text))
    for start, end in zip(starts, [*(s.start() for s in starts[1:]), len(text)]):
      if REFUSAL.search(text, start.end(), end):
        yield f"{start.group(1)}.{start.group(2)}"


def check(tree):
  tests = set(refusing_tests(tree))
  rows = {}
  for number, line in enumerate(tree.lines(TABLE) if TABLE in tree else (), 1):
    if not line or line.startswith("#"):
      continue
    row = ROW.fullmatch(line)
    if not row:
      yield Finding(TABLE, number, "no row: \"Class: what allocates: Suite.Test, ...\"")
      continue
    name, what, named = row.groups()
    rows[name] = number
    for test in named.split(", ") if what != "-" else []:
      if test not in tests:
        yield Finding(TABLE, number, f"{test} refuses no allocation, or does not exist")
  classes = dict(public_classes(tree))
  for name, header in sorted(classes.items()):
    if name not in rows:
      yield Finding(header, 0, f"{name} is missing in {TABLE}")
  for name in sorted(rows.keys() - classes.keys()):
    yield Finding(TABLE, rows[name], f"there is no public class {name}")
