#!/usr/bin/env python3
# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""Holds `hv render` against rsvg-convert over a folder of SVG files.

    compare_icons.py --hv build/release/tools/hv FOLDER [--size 64=3 --size 512=1]

Renders every FOLDER/*.svg with both at each size and prints the mean absolute difference of their
coverage (the alpha channel) in percent of full coverage: the worst files, and the mean of all. The
signed difference tells who paints more; the difference of premultiplied colour, where shapes of
several colours lie over one another. Ends with 1 when a file is above the limit of its size, with 2
when a file cannot be rendered, and with 77, as a check that was skipped, when rsvg-convert or PIL is
missing.

What is known of the difference: the spans of the library take in the subsamples of both their ends,
so each is a quarter of a pixel too wide on the average, which is why the signed difference is above
0. Over 300 icons that is a third of the whole (0.65 % of coverage at 64 pixels, 0.44 % with spans
between the middles of subsamples; 0.090 % and 0.058 % at 512). The rest is coverage in steps of a
sixteenth and curves as chords within a quarter of a pixel. All of it shrinks with the share of the
pixels that lie on an edge, that is, as the picture grows.
"""

import argparse
import collections
import pathlib
import shutil
import subprocess
import sys
import tempfile

try:
  from PIL import Image, ImageChops, ImageStat
except ImportError:
  print("skipped: PIL is missing")
  sys.exit(77)

WORST_SHOWN = 8

Difference = collections.namedtuple("Difference", "coverage signed colour name")


def render(command):
  run = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
  if run.returncode:
    print(f"{' '.join(map(str, command))}: {(run.stderr or run.stdout).strip()}")
    sys.exit(2)


def percent(image):
  """The mean over all channels, of full coverage."""
  means = ImageStat.Stat(image).mean
  return sum(means) / len(means) / 255 * 100


def premultiplied(image):
  return image.convert("RGBa").tobytes()


def compare(name, ours, theirs):
  """How two pictures of one size differ."""
  a, b = ours.getchannel("A"), theirs.getchannel("A")
  # Bytes of colour times alpha, which PIL does not let ImageChops see.
  pixels = [Image.frombytes("CMYK", image.size, premultiplied(image)) for image in (ours, theirs)]
  return Difference(percent(ImageChops.difference(a, b)), percent(a) - percent(b),
                    percent(ImageChops.difference(*pixels)), name)


def differences(hv, files, size, folder):
  for file in files:
    ours, theirs = folder / "ours.png", folder / "theirs.png"
    render([hv, "render", file, "--out", ours, "--size", str(size)])
    render(["rsvg-convert", "-w", str(size), "-h", str(size), "-a", file, "-o", theirs])
    with Image.open(ours) as one, Image.open(theirs) as other:
      one, other = one.convert("RGBA"), other.convert("RGBA")
      if one.size != other.size:
        print(f"{file.name}: {one.size[0]} x {one.size[1]} pixels, rsvg-convert has "
              f"{other.size[0]} x {other.size[1]}")
        sys.exit(2)
      yield compare(file.stem, one, other)


def show(size, limit, found):
  mean = [sum(values) / len(found) for values in zip(*(d[:3] for d in found))]
  print(f"{size} pixels, {len(found)} files: coverage {mean[0]:.3f} %, signed {mean[1]:+.3f} %, "
        f"colour {mean[2]:.3f} % in the mean; at most {found[0].coverage:.2f} % (limit {limit:g} %)")
  for d in found[:WORST_SHOWN]:
    print(f"  {d.coverage:.2f} % coverage  {d.signed:+.2f} % signed  {d.colour:.2f} % colour  "
          f"{d.name}")


def size_and_limit(text):
  size, _, limit = text.partition("=")
  return int(size), float(limit)


def main():
  parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
  parser.add_argument("folder", type=pathlib.Path, help="where the SVG files are")
  parser.add_argument("--hv", required=True, help="the program hv")
  parser.add_argument("--size", type=size_and_limit, action="append", metavar="PIXELS=PERCENT",
                      help="a size with its limit; initially 64=3 and 512=1")
  arguments = parser.parse_args()
  if not shutil.which("rsvg-convert"):
    print("skipped: rsvg-convert is missing")
    return 77
  if not shutil.which(arguments.hv):
    print(f"{arguments.hv}: there is no such program")
    return 2
  files = sorted(arguments.folder.glob("*.svg"))
  if not files:
    print(f"{arguments.folder}: there is no SVG file")
    return 2
  is_good = True
  with tempfile.TemporaryDirectory() as folder:
    for size, limit in arguments.size or [(64, 3.0), (512, 1.0)]:
      found = sorted(differences(arguments.hv, files, size, pathlib.Path(folder)), reverse=True)
      show(size, limit, found)
      above = [d for d in found if d.coverage > limit]
      if above:
        print(f"  {len(above)} above the limit")
        is_good = False
  return 0 if is_good else 1


if __name__ == "__main__":
  sys.exit(main())
