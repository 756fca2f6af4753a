# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""Holds every #include against the table of layers."""

import re

from .finding import Finding

TABLE = "cmake/HvLayers.cmake"
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')
# These use the library as its users do; only the tests may reach what it hides.
OUTSIDE = ("tools/", "examples/", "benchmarks/", "bindings/")


def read_table(tree):
  """The order of the layers, and for each subsystem that exists the set of its direct edges."""
  text = re.sub(r"#.*", "", tree.text(TABLE)) if TABLE in tree else ""
  order = re.search(r"set\(HV_LAYER_ORDER\s+([^)]*)\)", text)
  edges = {}
  for call in re.finditer(r"^hv_layer\(([^)]*)\)", text, re.MULTILINE):
    subsystem, *lower = call.group(1).split()
    edges[subsystem] = set(lower)
  return (order.group(1).split() if order else []), edges


def includes(tree, path):
  """(line, quote, file) of each #include."""
  for number, line in enumerate(tree.lines(path), 1):
    found = INCLUDE.match(line)
    if found:
      yield number, found.group(1), found.group(2)


def check(tree):
  order, edges = read_table(tree)
  if not order or not edges:
    yield Finding(TABLE, 0, "the table of layers is empty")
    return
  yield from check_table(tree, order, edges)
  graph = {}
  for path in tree.matching(".h", ".cpp", ".inl"):
    for line, quote, file in includes(tree, path):
      for text in judge(tree, order, edges, path, quote, file):
        yield Finding(path, line, text)
      if path.startswith("hv/") and file in tree:
        graph.setdefault(path, []).append(file)
  yield from circles(graph)


def check_table(tree, order, edges):
  for subsystem, lower in edges.items():
    if subsystem not in order:
      yield Finding(TABLE, 0, f"{subsystem} is not in HV_LAYER_ORDER")
      continue
    for other in sorted(lower):
      if other not in order or order.index(other) >= order.index(subsystem):
        yield Finding(TABLE, 0, f"{subsystem} -> {other} is an upward arrow")
  folders = set(tree.folders("hv"))
  for folder in sorted(folders - edges.keys()):
    yield Finding(f"hv/{folder}", 0, f"no line in {TABLE}")
  for subsystem in sorted(edges.keys() - folders):
    yield Finding(TABLE, 0, f"hv/{subsystem} does not exist")


def judge(tree, order, edges, path, quote, file):
  """What is wrong with one #include."""
  parts = file.split("/")
  if quote == '"' and path.startswith("hv/"):
    yield f'"{file}": includes of the library start at the root, in angle brackets'
  if parts[0] != "hv":
    return
  if file not in tree:
    yield f"{file} does not exist"
  internal = "internal" in parts
  if internal and path.startswith(OUTSIDE):
    yield f"{file} is internal to the library"
  if not path.startswith("hv/") or path == "hv/hv.h":
    return
  if len(parts) < 3:
    yield f"{file} is for users of the library"
    return
  own, other = path.split("/")[1], parts[1]
  if own == other:
    if internal and path.endswith(".h") and "/internal/" not in path:
      yield f"{file} is not installed, and a public header includes it"
    return
  if internal:
    yield f"{file} is internal to {other}"
  if own in order and other in order and order.index(other) > order.index(own):
    yield f"upward arrow {own} -> {other}"
  elif other not in edges.get(own, ()):
    yield f"the edge {own} -> {other} is not in {TABLE}"


def circles(graph):
  """Each include circle once, by a walk in depth."""
  done = set()

  def walk(path, trail):
    if path in trail:
      circle = trail[trail.index(path):] + [path]
      yield Finding(path, 0, "include circle " + " -> ".join(circle))
      return
    if path in done:
      return
    for file in graph.get(path, ()):
      yield from walk(file, trail + [path])
    done.add(path)

  for path in sorted(graph):
    yield from walk(path, [])
