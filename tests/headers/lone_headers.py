#!/usr/bin/env python3
# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""Compiles each public header by itself, and twice over, as a user's source would: what a header
needs it includes, its guard holds, and nothing in it is warned of.

Ends with 1 and what the compiler says when one does not compile, with 77 where there is no such
compiler.
"""

import argparse
import concurrent.futures
import os
import pathlib
import re
import shutil
import subprocess
import sys

WARNINGS = ["-Wall", "-Wextra", "-Wpedantic", "-Wconversion", "-Wshadow", "-Werror"]
SKIPPED = 77


def public_headers(root):
  return sorted(path.relative_to(root).as_posix() for pattern in ("hv/*.h", "hv/*/*.h")
                for path in root.glob(pattern))


def write_source(scratch, header):
  """A source is written only when it is new: a compiler cache goes by its content."""
  source = scratch / (re.sub(r"\W", "_", header) + ".cpp")
  text = f"#include <{header}>\n#include <{header}>\n"
  if not source.exists() or source.read_text() != text:
    source.write_text(text)
  return source


def complaint(command, root, scratch, header):
  """What the compiler says of a header; nothing where it is content.

  The source becomes an object, which costs as little as looking at it: a compiler cache keeps
  objects, so that a header which has not changed is not compiled again.
  """
  source = write_source(scratch, header)
  run = subprocess.run([*command, "-I", str(root), "-c", str(source), "-o", str(source.with_suffix(".o"))],
                       stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
  return f"<{header}> does not compile by itself:\n{run.stdout}" if run.returncode else ""


def main(values=None):
  parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
  parser.add_argument("root", type=pathlib.Path)
  parser.add_argument("--compiler", required=True)
  parser.add_argument("--standard", required=True)
  parser.add_argument("--launcher", default="", help="a compiler cache")
  parser.add_argument("--scratch", type=pathlib.Path, required=True)
  wanted = parser.parse_args(values)
  if shutil.which(wanted.compiler) is None:
    print(f"there is no {wanted.compiler} here")
    return SKIPPED
  headers = public_headers(wanted.root)
  if not headers:
    print(f"there is no header in {wanted.root}/hv")
    return 1
  wanted.scratch.mkdir(parents=True, exist_ok=True)
  launcher = [wanted.launcher] if wanted.launcher else []
  command = [*launcher, wanted.compiler, f"-std=c++{wanted.standard}", *WARNINGS]
  with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
    said = pool.map(lambda header: complaint(command, wanted.root, wanted.scratch, header), headers)
  faults = [text for text in said if text]
  print("\n".join(faults) or f"{len(headers)} headers compile by themselves")
  return 1 if faults else 0


if __name__ == "__main__":
  sys.exit(main())
