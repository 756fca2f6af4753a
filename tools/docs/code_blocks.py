#!/usr/bin/env python3
# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""Takes the C++ blocks out of the pages: `code_blocks.py OUT PAGE...`.

A block that holds `int main` is a program; the text block that follows it, if one does before the
next heading, is what it prints. Any other block is a fragment and is wrapped into a program that
runs it. Writes OUT/<page>_<n>.cpp and OUT/<page>_<n>.expected, and prints the stems, one a line.
"""

import pathlib
import re
import sys

FRAGMENT = """#include <hv/hv.h>

#include <cstdio>

int main()
{
%s
}
"""


def blocks(text):
  """(line, language, lines) of each fenced block; a heading gives (line, "#", [])."""
  language = None
  for number, line in enumerate(text.splitlines(), 1):
    fence = re.match(r"```(\S*)", line)
    if language is None and fence:
      language, start, body = fence.group(1), number, []
    elif fence:
      yield start, language, body
      language = None
    elif language is not None:
      body.append(line)
    elif line.startswith("#"):
      yield number, "#", []


def programs(page):
  """(line, source, expected output or None) of each C++ block of a page."""
  found = list(blocks(page.read_text()))
  for (line, language, body), after in zip(found, found[1:] + [(0, "#", [])]):
    if language != "cpp":
      continue
    source = "\n".join(body) + "\n"
    if "int main" not in source:
      source = FRAGMENT % source
    expected = "\n".join(after[2]) + "\n" if after[1] == "text" else None
    yield line, source, expected


def write(path, text):
  """Leaves a file alone that holds the text already, so that nothing is built anew."""
  if not path.exists() or path.read_text() != text:
    path.write_text(text)


def main():
  out = pathlib.Path(sys.argv[1])
  out.mkdir(parents=True, exist_ok=True)
  for page in map(pathlib.Path, sys.argv[2:]):
    name = re.sub(r"\W", "_", str(page.with_suffix("")))
    for number, (line, source, expected) in enumerate(programs(page), 1):
      stem = f"{name}_{number}"
      write(out / f"{stem}.cpp", f'#line {line + 1} "{page.resolve()}"\n{source}')
      if expected is None:
        (out / f"{stem}.expected").unlink(missing_ok=True)
      else:
        write(out / f"{stem}.expected", expected)
      print(stem)


if __name__ == "__main__":
  main()
