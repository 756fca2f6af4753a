#!/usr/bin/env python3
# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""Builds the reference: `reference.py DOXYFILE`, from the root. Prints the warnings and ends with 1
when there are any, or when a link of the pages leads nowhere.
"""

import html.parser
import pathlib
import re
import shutil
import subprocess
import sys
import urllib.parse

HTML = pathlib.Path("build/docs/html")

# Doxygen takes each use of a class template for a class, and does not see that its members are
# documented; those of the template itself it checks.
INSTANCE = re.compile(r"of (?:class|struct) \w+<.*> is not documented")


class Links(html.parser.HTMLParser):
  """The files that a page leads to and shows."""

  def __init__(self):
    super().__init__()
    self.files = set()

  def handle_starttag(self, tag, attributes):
    for name, value in attributes:
      if name in ("href", "src") and value and not re.match(r"[a-z]+:", value):
        self.files.add(urllib.parse.unquote(value.partition("#")[0]))


def dead_links():
  for page in sorted(HTML.glob("*.html")):
    links = Links()
    links.feed(page.read_text())
    yield from (f"{page.name}: no file {file}" for file in sorted(links.files)
                if file and not (HTML / file).exists())


def raw_links():
  """What Doxygen did not take for a link."""
  for page in sorted(HTML.glob("*.html")):
    yield from (f"{page.name}: {text}" for text in re.findall(r"@ref [^<]{1,60}", page.read_text()))


def main():
  shutil.rmtree(HTML, ignore_errors=True)
  log = subprocess.run(["doxygen", sys.argv[1]], stderr=subprocess.PIPE, text=True, check=True).stderr
  faults = [line for line in log.splitlines() if not INSTANCE.search(line)]
  shutil.copytree("docs/images", HTML / "docs/images")
  faults += [*dead_links(), *raw_links()]
  print(*faults, sep="\n", end="\n" if faults else "")
  return 1 if faults else 0


if __name__ == "__main__":
  sys.exit(main())
