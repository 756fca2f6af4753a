#!/usr/bin/env python3
# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""lone_headers.py on headers that are spoiled in each way."""

import contextlib
import io
import pathlib
import tempfile
import unittest

import lone_headers

GOOD = "#ifndef A_H\n#define A_H\ninline int Number(int x) { return x; }\n#endif\n"


class LoneHeaders(unittest.TestCase):
  def check(self, text, compiler="c++", standard="17"):
    """Status and output for a library of one public header."""
    with tempfile.TemporaryDirectory() as folder:
      root = pathlib.Path(folder)
      (root / "hv" / "low").mkdir(parents=True)
      if text is not None:
        (root / "hv" / "low" / "A.h").write_text(text)
      printed = io.StringIO()
      with contextlib.redirect_stdout(printed):
        status = lone_headers.main([folder, "--compiler", compiler, "--standard", standard,
                                    "--scratch", str(root / "scratch")])
      return status, printed.getvalue()

  def spoiled(self, text, standard="17"):
    status, printed = self.check(text, standard=standard)
    self.assertEqual(status, 1)
    self.assertIn("<hv/low/A.h> does not compile by itself", printed)

  def test_a_good_header_passes(self):
    self.assertEqual(self.check(GOOD), (0, "1 headers compile by themselves\n"))

  def test_a_header_that_leans_on_others_fails(self):
    self.spoiled(GOOD.replace("int Number", "std::size_t Number"))

  def test_a_header_without_a_guard_fails(self):
    self.spoiled("inline int Number(int x) { return x; }\n")

  def test_a_warning_fails(self):
    self.spoiled(GOOD.replace("return x;", "float y = x; return int(y);"))

  def test_what_a_later_standard_takes_away_fails_there(self):
    text = GOOD.replace("int Number(int x)", "int concept(int x)")
    self.assertEqual(self.check(text)[0], 0)
    self.spoiled(text, standard="20")

  def test_a_compiler_that_is_absent_is_skipped(self):
    self.assertEqual(self.check(GOOD, compiler="no-such-compiler"), (77, "there is no no-such-compiler here\n"))

  def test_no_header_at_all_fails(self):
    self.assertEqual(self.check(None)[0], 1)


if __name__ == "__main__":
  unittest.main()
