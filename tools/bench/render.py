# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""The outcomes as one table: as text, as Markdown, or for machines."""

import itertools

from targets import LIBRARIES, show


def sections(outcomes):
  """(family, words, heading, rows of cells) of each family, with columns for its own peers."""
  for family, group in itertools.groupby(outcomes, key=lambda outcome: outcome.row.family):
    group = list(group)
    present = {peer for outcome in group for peer in outcome.peers}
    libraries = [name for name in LIBRARIES if name in present]
    # What is no library stands in one column, under its own name in each row.
    beside = [] if present <= set(libraries) else ["beside"]
    heading = ["workload", "ours", *libraries, *beside, "wanted", "result"]
    words = "; ".join(outcome.row.words for outcome in group if outcome.row.words)
    unique = "; ".join(dict.fromkeys(words.split("; "))) if words else ""
    yield family, unique, heading, [cells(outcome, libraries, beside) for outcome in group]


def cells(outcome, libraries, beside):
  row = outcome.row

  def amount(value):
    return show(value, row.is_time(), row.unit)

  def peer(name):
    if name not in outcome.peers:
      return ""
    return f"{amount(outcome.peers[name])} ({outcome.ratio(name):.2f})"

  found = [row.workload, amount(outcome.cost) if outcome.cost is not None else ""]
  found += [peer(name) for name in libraries]
  if beside:
    found.append(", ".join(f"{name} {peer(name)}" for name in outcome.peers if name not in LIBRARIES))
  verdict = outcome.verdict
  if outcome.short_of:
    verdict = f"{verdict} of {', '.join(outcome.short_of)}" if verdict == "short" else "at the floor"
  return [*found, row.wanted(), verdict]


def text(outcomes):
  lines = []
  for family, words, heading, rows in sections(outcomes):
    widths = [max(map(len, column)) for column in zip(heading, *rows)]
    lines += ["", family] + ([f"  {words}"] if words else [])
    for line in (heading, *rows):
      lines.append("  " + "  ".join(cell.ljust(width) for cell, width in zip(line, widths)).rstrip())
  return "\n".join(lines[1:])


def markdown(outcomes):
  lines = []
  for family, words, heading, rows in sections(outcomes):
    lines += [f"### {family}", ""]
    if words:
      lines += [f"Wanted: {words}.", ""]
    lines += ["| " + " | ".join(heading) + " |", "|" + "---|" * len(heading)]
    lines += ["| " + " | ".join(cells).replace("<=", "≤").replace(" x ", " × ") + " |" for cells in rows] + [""]
  return "\n".join(lines)


def machine_readable(outcomes):
  return [{
    "family": outcome.row.family, "workload": outcome.row.workload, "program": outcome.row.program,
    "measure": outcome.row.measure, "unit": "ns" if outcome.row.is_time() else outcome.row.unit,
    "benchmark": outcome.row.ours, "ours": outcome.cost,
    "bound": outcome.row.bound,
    "peers": {peer: {"benchmark": outcome.row.peers[peer], "cost": value, "ratio": outcome.ratio(peer),
                     "at_most": outcome.row.at_most.get(peer)}
              for peer, value in outcome.peers.items()},
    "result": outcome.verdict, "short_of": outcome.short_of,
  } for outcome in outcomes]
