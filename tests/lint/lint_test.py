#!/usr/bin/env python3
# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""Each check of tools/lint on a small tree: silent on the good one, loud on each way to spoil it."""

import contextlib
import pathlib
import re
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools" / "lint"))

from checks import ALL, Unavailable, listed, umbrella
from checks.tree import Tree
from exports import missing, owner, promised

HEAD = "// Copyright (c) 2026 the Hv authors\n// SPDX-License-Identifier: MIT\n\n"
SCRIPT_HEAD = HEAD.replace("//", "#")


def header(guard, *includes):
  lines = "".join(f"#include <{file}>\n\n" for file in includes)
  return f"{HEAD}// A title.\n\n#ifndef {guard}\n#define {guard}\n\n{lines}#endif\n"


def source(*includes):
  return HEAD + "// A title.\n" + "".join(f"\n#include <{file}>\n" for file in includes)


def good_tree():
  """Two layers, a test, a benchmark, an example, a fuzz entry and the pages: nothing to mend."""
  return {
    "README.md": "# Hv\n\nSee [low](hv/low/README.md) and [high](hv/high/), [there](docs/page.md#a-heading).\n",
    "docs/page.md": "# A heading\n\n[back](../README.md) [site](https://example.org/none)\n",
    "cmake/HvLayers.cmake": SCRIPT_HEAD + "set(HV_LAYER_ORDER\n  low high later)\nhv_layer(low)\nhv_layer(high low)\n",
    "hv/hv.h": header("HV_HV_H", "hv/low/Low.h", "hv/high/High.h"),
    "hv/low/README.md": "# low\n",
    "hv/low/CMakeLists.txt": SCRIPT_HEAD + "hv_subsystem(\n  Low.cpp\n)\n",
    "hv/low/Low.h": header("HV_LOW_LOW_H"),
    "hv/low/Low.cpp": source("hv/low/Low.h", "hv/low/internal/steps.h"),
    "hv/low/internal/steps.h": header("HV_LOW_INTERNAL_STEPS_H", "hv/low/Low.h"),
    "hv/high/README.md": "# high\n",
    "hv/high/CMakeLists.txt": SCRIPT_HEAD + "hv_subsystem(\n)\n",
    "hv/high/High.h": header("HV_HIGH_HIGH_H", "hv/low/Low.h"),
    "tests/CMakeLists.txt": SCRIPT_HEAD + "add_subdirectory(low)\n",
    "tests/low/CMakeLists.txt": SCRIPT_HEAD + "hv_test(low\n  Low_test.cpp\n)\n",
    "tests/low/Low_test.cpp": source("hv/low/internal/steps.h"),
    "benchmarks/CMakeLists.txt": SCRIPT_HEAD + "hv_bench(low)\n",
    "benchmarks/low_bench.cpp": source("hv/hv.h"),
    "examples/CMakeLists.txt": SCRIPT_HEAD + "hv_example(walk)\n",
    "examples/walk.cpp": source("hv/hv.h"),
    "fuzz/CMakeLists.txt": SCRIPT_HEAD + "hv_fuzz(low)\n",
    "fuzz/fuzz_low.cpp": source("hv/hv.h"),
    ".clang-format": "BasedOnStyle: LLVM\nColumnLimit: 100\nIndentWidth: 4\n",
  }


@contextlib.contextmanager
def planted(files):
  """A folder that holds these files while the context lasts."""
  with tempfile.TemporaryDirectory() as folder:
    for path, text in files.items():
      target = pathlib.Path(folder) / path
      target.parent.mkdir(parents=True, exist_ok=True)
      target.write_bytes(text.encode())
    yield folder


def findings(check, files):
  """What the check reports on a tree of these files, as lines."""
  with planted(files) as folder:
    return [f"{f.place}: {f.text}" for f in ALL[check](Tree(folder))]


class Checks(unittest.TestCase):

  def spoiled(self, check, expected, change):
    """The check must report what matches `expected` once the change is made. A path given None goes
    away."""
    files = {**good_tree(), **change}
    files = {path: text for path, text in files.items() if text is not None}
    found = findings(check, files)
    self.assertTrue(any(re.search(expected, line) for line in found), f"{check}: {found}")

  def test_good_tree_is_silent(self):
    for check in ALL:
      try:
        self.assertEqual(findings(check, good_tree()), [], check)
      except Unavailable:
        pass

  def test_layers(self):
    table = "cmake/HvLayers.cmake"
    good = good_tree()[table]
    for expected, change in (
        ("upward arrow low -> high", {"hv/low/Low.cpp": source("hv/high/High.h")}),
        ("edge high -> low is not in", {table: good.replace("hv_layer(high low)", "hv_layer(high)")}),
        ("low -> high is an upward arrow", {table: good.replace("hv_layer(low)", "hv_layer(low high)")}),
        ("include circle", {"hv/low/internal/steps.h": header("HV_LOW_INTERNAL_STEPS_H", "hv/low/internal/b.h"),
                            "hv/low/internal/b.h": header("HV_LOW_INTERNAL_B_H", "hv/low/internal/steps.h")}),
        ("internal to low", {"hv/high/High.h": header("HV_HIGH_HIGH_H", "hv/low/internal/steps.h")}),
        ("is not installed", {"hv/low/Low.h": header("HV_LOW_LOW_H", "hv/low/internal/steps.h")}),
        ("internal to the library", {"examples/walk.cpp": source("hv/low/internal/steps.h")}),
        ("for users of the library", {"hv/low/Low.cpp": source("hv/hv.h")}),
        ("does not exist", {"hv/low/Low.cpp": source("hv/low/Gone.h")}),
        ("angle brackets", {"hv/low/Low.cpp": source() + '#include "Low.h"\n'}),
        ("hv/stray: no line in", {"hv/stray/Stray.h": header("HV_STRAY_STRAY_H")}),
        ("hv/later does not exist", {table: good + "hv_layer(later low)\n"}),
        ("is not in HV_LAYER_ORDER", {table: good.replace("low high later", "low later")}),
        ("table of layers is empty", {table: SCRIPT_HEAD}),
        ("table of layers is empty", {table: None})):
      with self.subTest(expected):
        self.spoiled("layers", expected, change)

  def test_listed(self):
    for expected, change in (
        ("hv/low/More.cpp: hv/low/CMakeLists", {"hv/low/More.cpp": source()}),
        ("tests/low/More_test.cpp", {"tests/low/More_test.cpp": source()}),
        ("hv/low/Low.cpp", {"hv/low/CMakeLists.txt": "hv_subsystem(\n#  Low.cpp\n)\n"}),
        ("hv/low/CMakeLists.txt: the list is not in order",
         {"hv/low/A.cpp": source(),
          "hv/low/CMakeLists.txt": SCRIPT_HEAD + "hv_subsystem(\n  Low.cpp\n  A.cpp\n)\n"}),
        ("hv/low/CMakeLists.txt: the list is not in order",
         {"hv/low/CMakeLists.txt": SCRIPT_HEAD + "hv_subsystem(\n  Low.cpp\n  Low.cpp\n)\n"}),
        ("benchmarks/more_bench.cpp", {"benchmarks/more_bench.cpp": source()}),
        ("examples/more.cpp", {"examples/more.cpp": source()}),
        ("fuzz/fuzz_more.cpp", {"fuzz/fuzz_more.cpp": source()}),
        ("hv/none/None.cpp: no CMake list", {"hv/none/None.cpp": source()}),
        ("tests/far: tests/CMakeLists.txt does not add it", {"tests/far/CMakeLists.txt": SCRIPT_HEAD})):
      with self.subTest(expected):
        self.spoiled("listed", expected, change)

  def test_heads(self):
    for expected, change in (
        ("Low.cpp:1: the two lines", {"hv/low/Low.cpp": "// A title.\n"}),
        ("Low_test.cpp:1: the two lines", {"tests/low/Low_test.cpp": HEAD.replace("2026", "2025")}),
        ("CMakeLists.txt:1: the two lines", {"hv/low/CMakeLists.txt": "hv_subsystem(\n)\n"}),
        ("dev:1: the two lines", {"dev": "#!/usr/bin/env bash\nset -e\n"}),
        ("title is missing", {"hv/low/Low.cpp": HEAD + "#include <cmath>\n"}),
        ("guard HV_LOW_LOW_H", {"hv/low/Low.h": header("HV_LOW_H")})):
      with self.subTest(expected):
        self.spoiled("heads", expected, change)

  def test_text(self):
    for expected, text in (
        ("page.md:2: trailing whitespace", "# A heading\nwords \n"),
        ("page.md:2: trailing whitespace", "# A heading\nwords\r\n"),
        ("page.md:2: tab", "# A heading\n\twords\n"),
        ("no newline", "# A heading\nwords"),
        ("empty lines", "# A heading\n\n")):
      with self.subTest(expected):
        self.spoiled("text", expected, {"docs/page.md": text})

  def test_sizes(self):
    self.spoiled("sizes", "Low.cpp: 70[0-9] lines", {"hv/low/Low.cpp": source() + "//\n" * 700})

  def test_an_example_fits_a_screen_and_a_half(self):
    long = source("hv/hv.h") + "//\n" * 75
    self.spoiled("sizes", "walk.cpp: 81 lines; an example has 80 at most", {"examples/walk.cpp": long})

  def test_umbrella(self):
    for expected, text in (
        ("does not include hv/high/High.h", header("HV_HV_H", "hv/low/Low.h")),
        ("no public header", header("HV_HV_H", "hv/low/Low.h", "hv/high/High.h", "vector")),
        ("no public header",
         header("HV_HV_H", "hv/low/Low.h", "hv/high/High.h", "hv/low/internal/steps.h")),
        ("included twice", header("HV_HV_H", "hv/low/Low.h", "hv/low/Low.h", "hv/high/High.h")),
        ("missing", None)):
      with self.subTest(expected):
        self.spoiled("umbrella", expected, {"hv/hv.h": text})

  def test_rewritten_umbrella_is_complete(self):
    with planted(good_tree()) as folder:
      (pathlib.Path(folder) / "hv/hv.h").unlink()
      umbrella.rewrite(Tree(folder))
      self.assertEqual(list(ALL["umbrella"](Tree(folder))), [])

  def test_rewritten_list_is_in_order(self):
    unordered = SCRIPT_HEAD + "hv_subsystem(\n  Low.cpp\n  A.cpp\n  Low.cpp\n)\n"
    files = {**good_tree(), "hv/low/A.cpp": source(), "hv/low/CMakeLists.txt": unordered}
    with planted(files) as folder:
      listed.rewrite(Tree(folder))
      self.assertEqual(list(ALL["listed"](Tree(folder))), [])
      self.assertEqual(Tree(folder).text("hv/low/CMakeLists.txt"),
                       SCRIPT_HEAD + "hv_subsystem(\n  A.cpp\n  Low.cpp\n)\n")

  def test_map(self):
    for expected, change in (
        ("does not name hv/high/", {"README.md": "# Hv\n\n[low](hv/low/)\n"}),
        ("hv/gone/ does not exist", {"README.md": good_tree()["README.md"] + "[gone](hv/gone/)\n"}),
        ("hv/low/README.md: missing", {"hv/low/README.md": None}),
        ("longer than 40", {"hv/low/README.md": "words\n" * 41}),
        ("README.md: longer than 120", {"README.md": good_tree()["README.md"] + "words\n" * 120}),
        ("README.md: missing", {"README.md": None})):
      with self.subTest(expected):
        self.spoiled("map", expected, change)

  def test_links(self):
    for expected, text in (
        ("gone.md leads nowhere", "[x](gone.md)\n"),
        ("README.md#none leads nowhere", "[x](../README.md#none)\n"),
        ("image.svg leads nowhere", "![x](image.svg)\n"),
        ("#none leads nowhere", "[x](#none)\n")):
      with self.subTest(expected):
        self.spoiled("links", expected, {"docs/page.md": "# A heading\n\n" + text})

  def test_allocations(self):
    table = "tests/allocations.txt"
    files = {
      "hv/low/Low.h": header("HV_LOW_LOW_H") + "class HV_API Low : public Base {\n};\nstruct Later;\n",
      "tests/low/Low_test.cpp": source() + "TEST(Low, Runs)\n{\n}\n"
                                "TEST(Low, Stays)\n{\n  RefuseEachAllocation();\n}\n",
      table: "# A table.\n\nLow: all: Low.Stays\n"}
    self.assertEqual(findings("allocations", {**good_tree(), **files}), [])
    for expected, change in (
        ("Low.h: Low is missing", {table: "\n"}),
        ("Low.h: Low is missing", {table: None}),
        ("txt:1: Low.Runs refuses no allocation", {table: "Low: all: Low.Stays, Low.Runs\n"}),
        ("txt:1: Low.Goes refuses no allocation", {table: "Low: all: Low.Goes\n"}),
        ("txt:2: there is no public class Later", {table: "Low: all: Low.Stays\nLater: -: none\n"}),
        ("txt:1: no row", {table: "Low\n"})):
      with self.subTest(expected):
        self.spoiled("allocations", expected, {**files, **change})

  def test_format(self):
    try:
      self.spoiled("format", "Low.cpp:[56]: not formatted", {"hv/low/Low.cpp": source() + "\nint  x ;\n"})
    except Unavailable as reason:
      self.skipTest(str(reason))

  def test_exports(self):
    self.assertEqual(owner("HvArray<HvPoint<double> >::Add(HvPoint<double> const&)"), "HvArray")
    self.assertEqual(owner("double HvPoint_Dot<float>(HvPoint<float> const&)"), "HvPoint_Dot")
    declared = ("class HV_API Low {};\nclass Hidden;\nHV_API void* Low_Make(int size);\n"
                "template HV_API double Low_Dot<float>(float);\n")
    with planted({**good_tree(), "hv/low/Low.h": header("HV_LOW_LOW_H") + declared}) as folder:
      names = promised(folder)
    self.assertEqual(names, {"Low", "Low_Make", "Low_Dot"})
    defined = {"a": "Low::Run()", "b": "Low_Make(int)", "c": "Hidden::Run()", "d": "Low::Stop()"}
    self.assertEqual(missing({"a", "b", "c", "x"}, defined, {"b"}, names), ["Low::Run()"])
    self.assertEqual(missing({"a", "b", "c", "x"}, defined, {"a", "b"}, names), [])


if __name__ == "__main__":
  unittest.main()
