# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""clang-format, version 14: other versions lay out some lines in another way."""

import concurrent.futures
import os
import re
import shutil
import subprocess

from .finding import Finding, Unavailable

VERSION = "14"
BATCH = 16


def program():
  for name in (f"clang-format-{VERSION}", "clang-format"):
    path = shutil.which(name)
    if path:
      version = subprocess.run([path, "--version"], capture_output=True, text=True).stdout
      if f"version {VERSION}." in version:
        return path
  raise Unavailable(f"there is no clang-format of version {VERSION}")


def check(tree):
  formatter = program()
  files = tree.matching(".h", ".cpp", ".inl")
  batches = [files[i:i + BATCH] for i in range(0, len(files), BATCH)]

  def run(batch):
    return subprocess.run([formatter, "--dry-run", "--style=file", *batch],
                          cwd=tree.root, capture_output=True, text=True).stderr

  with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
    outputs = list(pool.map(run, batches))
  places = re.findall(r"^(\S+?):(\d+):\d+: (?:warning|error):", "".join(outputs), re.MULTILINE)
  for path, line in dict.fromkeys(places):
    yield Finding(path, int(line), "not formatted; ./dev format mends it")
