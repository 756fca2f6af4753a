# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""What every file keeps to: the two lines of its head, its include guard, clean text, its size."""

import re

from .finding import Finding

OWNER = "Copyright (c) 2026 the Hv authors"
LICENCE = "SPDX-License-Identifier: MIT"
CODE = (".h", ".cpp", ".inl")
SCRIPTS = (".cmake", ".py", ".sh", "CMakeLists.txt")
PLAIN = ("dev", ".ci/run")
TEXT = CODE + SCRIPTS + (".md", ".in", ".json", ".yml", ".clang-format", ".clang-tidy", ".gitignore")
# Recorded input keeps the bytes that it came with.
DATA = ("tests/data/", "examples/data/", "fuzz/corpus/")
NOTED_LINES = 700
# An example shows one task, on a screen and a half; what draws for it stands in examples/support.
EXAMPLE_LINES = 80


def own_files(tree, suffixes):
  return [p for p in tree.paths
          if (p.endswith(suffixes) or p in PLAIN) and not p.startswith(DATA)]


def check_heads(tree):
  for path in own_files(tree, CODE + SCRIPTS):
    mark = "//" if path.endswith(CODE) else "#"
    lines = tree.lines(path)
    if lines and lines[0].startswith("#!"):
      lines = lines[1:]
    if lines[:2] != [f"{mark} {OWNER}", f"{mark} {LICENCE}"]:
      yield Finding(path, 1, "the two lines of the file head are missing")
    elif path.startswith("hv/") and path.endswith(CODE):
      if len(lines) < 4 or lines[2] or not lines[3].startswith("// "):
        yield Finding(path, 4, "the file's title is missing")
    if path.startswith("hv/") and path.endswith(".h"):
      guard = guard_of(path)
      if f"#ifndef {guard}" not in lines or f"#define {guard}" not in lines:
        yield Finding(path, 1, f"the include guard {guard} is missing")


def guard_of(path):
  """hv/fcurve/HvStdFCurve.h -> HV_FCURVE_HVSTDFCURVE_H."""
  return re.sub(r"\W", "_", path).upper()


def check_text(tree):
  for path in own_files(tree, TEXT):
    text = tree.text(path)
    if text and not text.endswith("\n"):
      yield Finding(path, text.count("\n") + 1, "no newline at the end of the file")
    if text.endswith("\n\n"):
      yield Finding(path, text.count("\n"), "empty lines at the end of the file")
    for number, line in enumerate(text.split("\n"), 1):
      if line != line.rstrip():
        yield Finding(path, number, "trailing whitespace")
      elif "\t" in line:
        yield Finding(path, number, "tab")


def check_sizes(tree):
  for path in own_files(tree, CODE + (".py",)):
    count = len(tree.lines(path))
    if count > NOTED_LINES:
      yield Finding(path, 0, f"{count} lines; is there a second topic in it?", note=True)
    if re.fullmatch(r"examples/[^/]*\.cpp", path) and count > EXAMPLE_LINES:
      yield Finding(path, 0, f"{count} lines; an example has {EXAMPLE_LINES} at most")
