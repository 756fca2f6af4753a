# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""The source tree that the checks read."""

import fnmatch
import os
import pathlib

# What git ignores, too.
SKIPPED_FOLDERS = ("build", "build-*", "out", "__pycache__", ".git", ".cache")


class Tree:
  """The files under a root, by their path relative to it, with forward slashes."""

  def __init__(self, root):
    self.root = pathlib.Path(root)
    self.paths = sorted(self._walk())
    self._known = set(self.paths)
    self._texts = {}

  def _walk(self):
    for folder, folders, names in os.walk(self.root):
      folders[:] = [
        f for f in folders if not any(fnmatch.fnmatch(f, pattern) for pattern in SKIPPED_FOLDERS)]
      for name in names:
        # A work tree's .git is a file.
        if name != ".git":
          yield (pathlib.Path(folder) / name).relative_to(self.root).as_posix()

  def __contains__(self, path) -> bool:
    return path in self._known

  def matching(self, *suffixes, under=""):
    """Paths that end in one of the suffixes and start with `under`."""
    return [p for p in self.paths if p.startswith(under) and p.endswith(suffixes)]

  def folders(self, parent):
    """Names of the folders directly in `parent`."""
    prefix = parent + "/"
    return sorted({p[len(prefix):].split("/")[0] for p in self.paths
                   if p.startswith(prefix) and "/" in p[len(prefix):]})

  def text(self, path) -> str:
    if path not in self._texts:
      self._texts[path] = (self.root / path).read_bytes().decode("utf-8", "replace")
    return self._texts[path]

  def lines(self, path):
    return self.text(path).splitlines()
