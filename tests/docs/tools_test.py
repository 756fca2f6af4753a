#!/usr/bin/env python3
# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""What Doxygen reads instead of the files, and when two pictures are the same."""

import pathlib
import struct
import sys
import tempfile
import unittest
import zlib

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools/docs"))

import doxygen_input  # noqa: E402
import pictures  # noqa: E402

HEADER = """// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A title.

#ifndef HV_SHAPE_A_H
#define HV_SHAPE_A_H

template <class T>
struct Elsewhere;

class A {
public:
    // Reading. Nothing is changed.

    int Get() const;

private:
    int a_;
};

#endif
""".split("\n")


class Header(unittest.TestCase):
  def setUp(self):
    self.lines = doxygen_input.header(HEADER, "shape")

  def test_every_line_stays_where_it_is(self):
    self.assertEqual(len(self.lines), len(HEADER))
    self.assertEqual(self.lines.index("    int Get() const;"), HEADER.index("    int Get() const;"))

  def test_declarations_join_the_module(self):
    self.assertIn("@addtogroup shape", self.lines[7])
    self.assertEqual(self.lines[-3:], ["/** @} */", "#endif", ""])

  def test_a_comment_over_members_names_a_group_that_ends_with_its_section(self):
    at = HEADER.index("    // Reading. Nothing is changed.")
    self.assertEqual(self.lines[at], "/// @name Reading \\ilinebr Nothing is changed.")
    self.assertEqual(self.lines[at + 1], "/// @{")
    self.assertIn("/** @} */ private:", self.lines)

  def test_classes_declared_in_advance_are_left_out(self):
    self.assertNotIn("struct Elsewhere;", self.lines)
    self.assertNotIn("template <class T>", self.lines)


class Page(unittest.TestCase):
  def test_links_start_at_the_root_and_headings_have_names(self):
    page = doxygen_input.page(ROOT / "docs/x.md", [
      "# X", "[a](images/a.svg) [b](../README.md) [c](y.md#one-two)", "## One, two", "```cpp",
      "## no heading [d](e)", "```"])
    self.assertEqual(page[1],
                     "[a](docs/images/a.svg) [b](@ref index) [c](@ref docs_y_one_two)")
    self.assertEqual(page[2], "## One, two {#docs_x_one_two}")
    self.assertEqual(page[4], "## no heading [d](e)")

  def test_links_are_of_one_line_and_lead_to_what_is_shown(self):
    page = doxygen_input.page(ROOT / "docs/x.md", [
      "[data](../benchmarks/targets.json) [folder](../tests) ![a](a.png) [web](https://a.org/) [two",
      "lines](y.md), and"])
    self.assertEqual(page, ["data folder ![a](docs/a.png) [web](https://a.org/) [two lines](docs/y.md),",
                            " and"])


class Picture(unittest.TestCase):
  # Two rows of two pixels, each of red, green and blue.
  PIXELS = bytes([9, 8, 7, 10, 10, 10, 200, 0, 3, 250, 250, 250])

  def png(self, filters, level=9, pixels=PIXELS):
    def chunk(kind, body):
      return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))

    rows = b""
    for y, kind in enumerate(filters):
      rows += bytes([kind])
      for i in range(6):
        left = pixels[6 * y + i - 3] if i >= 3 else 0
        up = pixels[6 * y + i - 6] if y else 0
        corner = pixels[6 * y + i - 9] if y and i >= 3 else 0
        guess = left + up - corner
        paeth = min((left, up, corner), key=lambda near: abs(guess - near))
        near = (0, left, up, (left + up) // 2, paeth)[kind]
        rows += bytes([(pixels[6 * y + i] - near) & 255])
    header = struct.pack(">IIBBBBB", 2, 2, 8, 2, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) +
            chunk(b"IDAT", zlib.compress(rows, level)) + chunk(b"IEND", b""))

  def content(self, data):
    with tempfile.TemporaryDirectory() as folder:
      file = pathlib.Path(folder) / "picture"
      file.write_bytes(data)
      return pictures.content(file)

  def test_packing_does_not_count(self):
    plain = self.content(self.png([0, 0], 0))
    self.assertEqual(plain[1], self.PIXELS)
    for filters in ([0, 1], [1, 2], [2, 3], [3, 4], [4, 4]):
      self.assertEqual(self.content(self.png(filters)), plain)

  def test_pixels_count(self):
    other = bytes([9, 8, 6]) + self.PIXELS[3:]
    self.assertNotEqual(self.content(self.png([0, 0], pixels=other)), self.content(self.png([0, 0])))

  def test_other_files_are_compared_as_they_are(self):
    self.assertEqual(self.content(b"<svg/>"), b"<svg/>")


if __name__ == "__main__":
  unittest.main()
