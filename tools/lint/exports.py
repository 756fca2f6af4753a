#!/usr/bin/env python3
# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""What the public headers promise, the shared library exports.

`exports.py --nm NM --source ROOT --shared LIBHV.SO --objects FOLDER --users FOLDER`: the tests are
linked with the library's objects, so they also reach what it hides. Of the functions that the users'
objects call and the library's objects define, those that a public header declares for export must be
in the shared library's table. Prints each that is not, and ends with 1.
"""

import argparse
import pathlib
import re
import subprocess
import sys

from checks.tree import Tree
from checks.umbrella import public_headers


def symbols(nm, files, *flags):
  """The symbols that nm lists, by their mangled name, demangled."""
  def names(*more):
    output = subprocess.run([nm, "--format=posix", *flags, *more, *map(str, files)],
                            capture_output=True, text=True, check=True).stdout
    # Lines that end in a colon name the file; the others are: name, type, value, size.
    return [re.sub(r" [A-Za-z](?: +[0-9a-f]+)*$", "", line.rstrip())
            for line in output.splitlines() if line and not line.endswith(":")]
  return dict(zip(names(), names("--demangle")))


def promised(source):
  """Names of the classes and of the free functions that public headers mark for export."""
  tree = Tree(source)
  text = "\n".join(tree.text(path) for group in public_headers(tree) for path in group)
  classes = re.findall(r"\b(?:class|struct|enum)\s+HV_API\w*\s+(\w+)", text)
  functions = re.findall(r"^(?:(?:extern )?template[ \n].*)?HV_API [^;{=(]*?\b(\w+)(?:<.*>)?\(", text,
                         re.MULTILINE)
  return {*classes, *functions}


def owner(demangled):
  """The class of a member, the name of a free function; both without template arguments."""
  name = demangled
  while re.search(r"<[^<>]*>", name):
    name = re.sub(r"<[^<>]*>", "", name)
  name = name.split("(")[0]
  member = re.search(r"(\w+)::", name)
  return member.group(1) if member else name.split()[-1]


def missing(used, defined, exported, names):
  """Demangled names of promised functions that are used and defined, but not exported."""
  return sorted(defined[mangled] for mangled in used & defined.keys() - exported
                if owner(defined[mangled]) in names)


def main():
  parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
  for option in ("nm", "source", "shared", "objects", "users"):
    parser.add_argument(f"--{option}", required=True)
  given = parser.parse_args()
  objects = sorted(pathlib.Path(given.objects).rglob("*.o"))
  users = sorted(pathlib.Path(given.users).rglob("*.o"))
  if not objects or not users:
    sys.exit("there is nothing built to look at")
  exported = symbols(given.nm, [given.shared], "--dynamic", "--defined-only").keys()
  used = symbols(given.nm, users, "--undefined-only").keys()
  defined = symbols(given.nm, objects, "--defined-only")
  found = missing(used, defined, exported, promised(given.source))
  for name in found:
    print(f"{name} is not exported [exports]")
  print(f"exports: {len(used & defined.keys())} functions in use, {len(found)} to mend")
  return 1 if found else 0


if __name__ == "__main__":
  sys.exit(main())
