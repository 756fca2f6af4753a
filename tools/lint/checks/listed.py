# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""Reports sources on disk that no CMake list names, so that nothing is silently left unbuilt."""

import posixpath
import re

from .finding import Finding
from .layers import read_table

ROOTS = ("hv/", "tests/", "benchmarks/", "fuzz/", "examples/", "tools/", "bindings/")
# The consumer projects have CMake lists of their own, built by the tests of the installation.
APART = ("tests/consumer/",)
# A call with one name on each line, as the lists of sources are written.
LIST = re.compile(r"^(hv_\w+\(\w*\n)((?:  \S+\n)+)\)", re.MULTILINE)


def words(tree, path):
  """The words of a CMake list without its comments."""
  return set(re.split(r"[\s()\"]+", re.sub(r"#.*", "", tree.text(path))))


def names_of(relative):
  """How a list may name a source: by its path, or by what the helpers make their names from."""
  stem = posixpath.splitext(relative)[0]
  yield relative
  yield stem
  yield stem.removesuffix("_bench")
  yield stem.removeprefix("fuzz_")


def check(tree):
  sources = [p for p in tree.matching(".cpp") if p.startswith(ROOTS) and not p.startswith(APART)]
  for path in sources:
    folder = posixpath.dirname(path)
    while folder and f"{folder}/CMakeLists.txt" not in tree:
      folder = posixpath.dirname(folder)
    if not folder:
      yield Finding(path, 0, "no CMake list names it")
      continue
    known = words(tree, f"{folder}/CMakeLists.txt")
    if not known.intersection(names_of(posixpath.relpath(path, folder))):
      yield Finding(path, 0, f"{folder}/CMakeLists.txt does not name it")
  yield from check_folders(tree)
  for path in tree.matching("CMakeLists.txt"):
    if in_order(tree.text(path)) != tree.text(path):
      yield Finding(path, 0, "the list is not in order, or names something twice; ./dev format mends it")


def check_folders(tree):
  """Folders of tests that tests/CMakeLists.txt does not add. It adds those of the subsystems."""
  known = set(read_table(tree)[1])
  if "tests/CMakeLists.txt" in tree:
    known |= words(tree, "tests/CMakeLists.txt")
  for folder in tree.folders("tests"):
    if f"tests/{folder}/CMakeLists.txt" in tree and folder not in known:
      yield Finding(f"tests/{folder}", 0, "tests/CMakeLists.txt does not add it")


def in_order(text):
  """The text of a CMake list with the names in each call sorted, and each of them once."""
  def sort(call):
    return call.group(1) + "".join(sorted(set(call.group(2).splitlines(keepends=True)))) + ")"
  return LIST.sub(sort, text)


def rewrite(tree):
  for path in tree.matching("CMakeLists.txt"):
    text = in_order(tree.text(path))
    if text != tree.text(path):
      (tree.root / path).write_text(text)
