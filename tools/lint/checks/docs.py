# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""The README's map of folders, the pages of the subsystems, and links between pages."""

import posixpath
import re

from .finding import Finding

README = "README.md"
README_LINES = 120
PAGE_LINES = 40
LINK = re.compile(r"\[[^\]]*\]\(<?([^)>\s]+)>?(?:\s+\"[^\"]*\")?\)")
EXTERNAL = ("http://", "https://", "mailto:")


def prose(tree, path):
  """(line number, line) outside of fenced blocks."""
  fenced = False
  for number, line in enumerate(tree.lines(path), 1):
    if line.lstrip().startswith("```"):
      fenced = not fenced
    elif not fenced:
      yield number, line


def check_map(tree):
  if README not in tree:
    yield Finding(README, 0, "missing")
    return
  if len(tree.lines(README)) > README_LINES:
    yield Finding(README, 0, f"longer than {README_LINES} lines")
  mapped = {}
  for number, line in prose(tree, README):
    for found in re.finditer(r"\]\(hv/(\w+)/?(?:README\.md)?\)", line):
      mapped[found.group(1)] = number
  folders = tree.folders("hv")
  for folder in folders:
    page = f"hv/{folder}/README.md"
    if folder not in mapped:
      yield Finding(README, 0, f"the map does not name hv/{folder}/")
    if page not in tree:
      yield Finding(page, 0, "missing")
    elif len(tree.lines(page)) > PAGE_LINES:
      yield Finding(page, 0, f"longer than {PAGE_LINES} lines")
  for folder in sorted(mapped.keys() - set(folders)):
    yield Finding(README, mapped[folder], f"hv/{folder}/ does not exist")


def anchors(tree, path):
  """The anchors of a page's headings."""
  for _, line in prose(tree, path):
    heading = re.match(r"#+\s+(.*)", line)
    if heading:
      yield re.sub(r"[^\w\- ]", "", heading.group(1).lower()).strip().replace(" ", "-")


def check_links(tree):
  for path in tree.matching(".md"):
    for number, line in prose(tree, path):
      for target in LINK.findall(re.sub(r"`[^`]*`", "", line)):
        if not target.startswith(EXTERNAL) and not leads_somewhere(tree, path, target):
          yield Finding(path, number, f"{target} leads nowhere")


def leads_somewhere(tree, path, target):
  file, _, anchor = target.partition("#")
  page = posixpath.normpath(posixpath.join(posixpath.dirname(path), file)) if file else path
  if page not in tree:
    return not anchor and any(p.startswith(page + "/") for p in tree.paths)
  return not anchor or anchor in anchors(tree, page)
