#!/usr/bin/env python3
# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""The house's own checks: `lint.py [--root DIR] [--fix] [CHECK...]`, all of them when none is named.

Prints one line for each finding and ends with 1 when there is one. Notes do not fail. A check that
cannot run on this machine says so and, when it was the only one asked for, ends with 77.
"""

import argparse
import pathlib
import sys

from checks import ALL, Unavailable, listed, umbrella
from checks.tree import Tree

SKIPPED = 77


def main() -> int:
  parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
  parser.add_argument("--root", default=pathlib.Path(__file__).resolve().parents[2])
  parser.add_argument("--fix", action="store_true", help="first put hv/hv.h and the lists of sources in order")
  parser.add_argument("checks", nargs="*", metavar="CHECK", help=", ".join(ALL))
  arguments = parser.parse_args()
  for name in arguments.checks:
    if name not in ALL:
      parser.error(f"no check named {name}; there are {', '.join(ALL)}")

  tree = Tree(arguments.root)
  if arguments.fix:
    listed.rewrite(tree)
    umbrella.rewrite(tree)
    tree = Tree(arguments.root)
  failures = skipped = 0
  names = arguments.checks or list(ALL)
  for name in names:
    try:
      for finding in ALL[name](tree):
        print(f"{finding.place}: {'note: ' if finding.note else ''}{finding.text} [{name}]")
        failures += not finding.note
    except Unavailable as reason:
      print(f"{name}: skipped, {reason}")
      skipped += 1
  if failures:
    print(f"lint: {failures} to mend")
    return 1
  return SKIPPED if skipped == len(names) else 0


if __name__ == "__main__":
  sys.exit(main())
