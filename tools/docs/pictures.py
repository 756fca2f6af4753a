#!/usr/bin/env python3
# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""Draws the pictures of the pages anew: `pictures.py BUILD [--accept]`.

Each goes to BUILD/pictures and must be the one in docs/images; with --accept that becomes the new
one instead. Prints what differs and ends with 1 then. `pictures.py --targets` prints what has to be
built.
"""

import pathlib
import shutil
import subprocess
import sys
import zlib

ROOT = pathlib.Path(__file__).resolve().parents[2]
IMAGES = ROOT / "docs/images"

# What draws each picture, below the build; {} is the file, other paths start at the root.
COMMANDS = {
  "bezier.svg": "docs/pictures/hv_page_pictures bezier {}",
  "curves.svg": "docs/pictures/hv_page_pictures curves {}",
  "fills.svg": "docs/pictures/hv_page_pictures fills {}",
  "strokes.svg": "docs/pictures/hv_page_pictures strokes {}",
  "demo.svg": "tools/hv curve examples/data/bounce.json --track 0 --plot {}",
  "fitting.svg": "examples/hv_example_fitting {}",
  "driven_keys.svg": "examples/hv_example_driven_keys {}",
  "kite.png": "tools/hv play examples/data/kite.json --frames 13..13 --apng {} --force",
  "live_stroke.svg": "examples/hv_example_live_stroke {}",
  "morphing.svg": "examples/hv_example_morphing {}",
  "motion_path.svg": "tools/hv curve examples/data/flight.json --path 0 --plot {}",
  "pressure_stroke.svg": "examples/hv_example_pressure_stroke {}",
  "rotation_curves.svg": "examples/hv_example_rotation_curves {}",
  "stroke.svg": "tools/hv fit tests/data/stroke_hook.csv --tolerance 0.3 --out {}",
  "through_points.svg": "examples/hv_example_through_points {}",
  "trace_outlines.svg": "examples/hv_example_trace_outlines {}",
}


def unfiltered(rows, stride, step):
  """The bytes of the rows of a PNG file, each of which begins with the number of its filter and
  gives differences from the byte `step` before, from that above, or from a guess by both."""
  above = bytes(stride)
  pixels = bytearray()
  for start in range(0, len(rows), stride + 1):
    kind, row = rows[start], bytearray(rows[start + 1:start + 1 + stride])
    for i in range(stride) if kind else ():
      left, up = row[i - step] if i >= step else 0, above[i]
      corner = above[i - step] if i >= step else 0
      if kind == 4:
        near = min((abs(up - corner), 0, left), (abs(left - corner), 1, up),
                   (abs(left + up - 2 * corner), 2, corner))[2]
      else:
        near = (0, left, up, (left + up) // 2)[kind]
      row[i] = (row[i] + near) & 255
    pixels += row
    above = row
  return bytes(pixels)


def content(path):
  """What a picture shows: of a PNG file with bytes for colours the pixels, however it packs them."""
  data = path.read_bytes()
  if not data.startswith(b"\x89PNG"):
    return data
  rest, packed, at = [], b"", 8
  while at < len(data):
    size = int.from_bytes(data[at:at + 4], "big")
    kind, body = data[at + 4:at + 8], data[at + 8:at + 8 + size]
    if kind == b"IDAT":
      packed += body
    else:
      rest.append((kind, body))
    at += size + 12
  width, colours = int.from_bytes(rest[0][1][:4], "big"), rest[0][1][9]
  step = {0: 1, 2: 3, 3: 1, 4: 2, 6: 4}[colours]
  return rest, unfiltered(zlib.decompress(packed), width * step, step)


def same(one, other):
  return one.read_bytes() == other.read_bytes() or content(one) == content(other)


def draw(build, name, drawn):
  """Why the picture could not be drawn into the file `drawn`, or None."""
  program, *arguments = COMMANDS[name].split()
  run = subprocess.run([build / program, *(str(drawn) if a == "{}" else a for a in arguments)],
                       cwd=ROOT, capture_output=True, text=True)
  return None if run.returncode == 0 and drawn.exists() else run.stderr.strip() or "not drawn"


def targets():
  programs = {command.split()[0].rpartition("/")[2] for command in COMMANDS.values()}
  return sorted("hv_tool" if program == "hv" else program for program in programs)


def main():
  if sys.argv[1] == "--targets":
    print(*targets())
    return 0
  build = pathlib.Path(sys.argv[1]).resolve()
  accept = sys.argv[2:] == ["--accept"]
  out = build / "pictures"
  out.mkdir(parents=True, exist_ok=True)
  faults = [f"docs/images/{file.name} is drawn by nothing in {pathlib.Path(__file__).name}"
            for file in sorted(IMAGES.iterdir()) if file.name not in COMMANDS]
  for name in COMMANDS:
    drawn, kept = out / name, IMAGES / name
    drawn.unlink(missing_ok=True)
    fault = draw(build, name, drawn)
    if fault is not None:
      faults.append(f"{name}: {fault}")
    elif kept.exists() and same(drawn, kept):
      continue
    elif accept:
      shutil.copyfile(drawn, kept)
      print(f"docs/images/{name} is new")
    else:
      faults.append(f"docs/images/{name} differs from {drawn}, which was drawn now")
  print(*faults, sep="\n", end="\n" if faults else "")
  return 1 if faults else 0


if __name__ == "__main__":
  sys.exit(main())
