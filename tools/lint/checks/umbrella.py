# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""hv/hv.h includes every public header, in layer order, and nothing else."""

from .finding import Finding
from .layers import includes, read_table

UMBRELLA = "hv/hv.h"
HEAD = """\
// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The whole library in one include; `dev format` keeps the list.

#ifndef HV_HV_H
#define HV_HV_H
"""


def public_headers(tree):
  """By subsystem, in layer order, the headers that are installed."""
  order, _ = read_table(tree)
  found = {}
  for path in tree.matching(".h", under="hv/"):
    parts = path.split("/")
    if len(parts) > 2 and "internal" not in parts:
      found.setdefault(parts[1], []).append(path)
  rank = {subsystem: i for i, subsystem in enumerate(order)}
  return [found[s] for s in sorted(found, key=lambda s: rank.get(s, len(order)))]


def rewrite(tree):
  groups = ["".join(f"#include <{path}>\n" for path in group) for group in public_headers(tree)]
  text = HEAD + "".join("\n" + group for group in groups) + "\n#endif\n"
  target = tree.root / UMBRELLA
  if not target.exists() or target.read_text() != text:
    target.write_text(text)


def check(tree):
  wanted = [path for group in public_headers(tree) for path in group]
  if UMBRELLA not in tree:
    yield Finding(UMBRELLA, 0, "missing; ./dev format writes it")
    return
  given = [(line, file) for line, _, file in includes(tree, UMBRELLA)]
  files = [file for _, file in given]
  for path in wanted:
    if path not in files:
      yield Finding(UMBRELLA, 0, f"does not include {path}; ./dev format adds it")
  for line, file in given:
    if file not in wanted:
      yield Finding(UMBRELLA, line, f"{file} is no public header of the library")
    elif files.count(file) > 1:
      yield Finding(UMBRELLA, line, f"{file} is included twice")
