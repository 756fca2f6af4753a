#!/usr/bin/env python3
# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""Compares the name and the symbols of the shared library with the list that is kept.

    exported_symbols.py libhv.so exported_symbols.txt            exit status 1 when they differ
    exported_symbols.py --update libhv.so exported_symbols.txt   keep what the library exports
"""

import argparse
import difflib
import pathlib
import re
import subprocess
import sys


def name_of(readelf, library):
    """The name that programs remember when they are linked, as the list's first line."""
    listing = subprocess.run(
        [readelf, "--dynamic", library], check=True, capture_output=True, text=True).stdout
    found = re.search(r"\(SONAME\).*\[(.*)\]", listing)
    return f"SONAME {found.group(1) if found else '(none)'}"


def exported(nm, library):
    """The names, sorted. What the standard library's own templates leave in is not ours."""
    listing = subprocess.run(
        [nm, "--dynamic", "--defined-only", "--demangle", "--format=posix", library],
        check=True, capture_output=True, text=True).stdout
    names = set()
    for line in listing.splitlines():
        name = line.rsplit(" ", 3)[0]
        if "std::" not in name.split("(")[0] and not name.startswith("_"):
            names.add(name)
    return sorted(names)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--nm", default="nm")
    parser.add_argument("--readelf", default="readelf")
    parser.add_argument("--update", action="store_true")
    parser.add_argument("shared_object", metavar="LIBRARY")
    parser.add_argument("kept", type=pathlib.Path)
    arguments = parser.parse_args()
    now = [name_of(arguments.readelf, arguments.shared_object),
           *exported(arguments.nm, arguments.shared_object)]
    if arguments.update:
        arguments.kept.write_text("\n".join(now) + "\n")
        return 0
    kept = arguments.kept.read_text().splitlines()
    difference = list(difflib.unified_diff(kept, now, "kept", "exported", n=0, lineterm=""))
    print("\n".join(difference) or f"{now[0]} and {len(now) - 1} symbols, as kept")
    return 1 if difference else 0


if __name__ == "__main__":
    sys.exit(main())
