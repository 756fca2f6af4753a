# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""What benchmarks/targets.json asks for, one Row a workload, and how a row came out."""

import dataclasses
import itertools
import json
import math
import re

# Other libraries; any other name says what a benchmark itself holds beside ours.
LIBRARIES = ("Cairo", "FreeType", "AGG", "OpenCV", "potrace", "rlottie")

PASS, SHORT, FLOOR, TOLD, MISSING = "pass", "short", "floor", "", "not measured"


@dataclasses.dataclass
class Row:
  """One workload: which benchmarks tell of it, and what is wanted."""
  family: str
  words: str
  workload: str
  program: str
  ours: str
  peers: dict
  at_most: dict
  floor: dict
  bound: float = None
  measure: str = "time"
  unit: str = "ns"
  optional: bool = False

  def benchmarks(self):
    return [self.ours, *self.peers.values()]

  def matches(self, pattern):
    return any(re.search(pattern, text) for text in (self.family, self.workload, *self.benchmarks()))

  def wanted(self):
    """In a few characters: `<= 1 x Cairo, <= 1.5 x FreeType`."""
    parts = [f"<= {limit:g} x {peer}" for peer, limit in self.at_most.items()]
    if self.bound is not None:
      parts.insert(0, f"<= {show(self.bound, self.is_time(), self.unit)}")
    return ", ".join(parts)

  def is_time(self):
    """Whether the cost is in nanoseconds: a time, or the reciprocal of a rate."""
    return self.measure == "time" or is_rate(self.measure)


def is_rate(measure):
  return measure.endswith(("/s", "_per_second"))


def show(cost, is_time, unit):
  if not is_time:
    return f"{cost:.4g} {unit}".rstrip()
  for power, letter in ((1e9, "s"), (1e6, "ms"), (1e3, "us")):
    if cost >= power:
      return f"{cost / power:.3g} {letter}"
  return f"{cost:.3g} ns"


def expand(target):
  """The rows of one entry: one for each combination of its `each`."""
  each = target.get("each", {})
  choices = [values.items() if isinstance(values, dict) else zip(values, values)
             for values in each.values()]
  for chosen in itertools.product(*choices):
    names = {key: name for key, (name, _) in zip(each, chosen)}
    texts = {key: text for key, (_, text) in zip(each, chosen)}
    ours = target["ours"].format(**names)
    peers = {peer: name.format(**names) for peer, name in target.get("peers", {}).items()}
    # What is the same benchmark in the first row of a series is nothing to compare with.
    peers = {peer: name for peer, name in peers.items() if name != ours}
    wanted = {peer: limit for peer, limit in target.get("at_most", {}).items() if peer in peers}
    yield Row(
      family=target["family"], words=target.get("words", ""),
      workload=target["workload"].format(**texts), program=target["program"], ours=ours,
      peers=peers, at_most=wanted, floor=target.get("floor", {}), bound=target.get("bound"),
      measure=target.get("measure", "time").format(**names), unit=target.get("unit", "ns"),
      optional=target.get("optional", False))


def read(path):
  rows = []
  for target in json.loads(path.read_text())["targets"]:
    unknown = set(target.get("at_most", {})) - set(target.get("peers", {}))
    if unknown:
      raise ValueError(f"{target['workload']}: no peer named {', '.join(sorted(unknown))}")
    rows += expand(target)
  return rows


@dataclasses.dataclass
class Outcome:
  """A row with what was measured: costs in nanoseconds, or in the unit of a counter."""
  row: Row
  cost: float
  peers: dict
  verdict: str
  short_of: list

  def ratio(self, peer):
    return self.cost / self.peers[peer] if self.peers[peer] else math.inf


def cost(measure, result):
  """What a result costs by a measure; None where it has not been measured."""
  if result is None or (measure != "time" and measure not in result):
    return None
  value = result[measure]
  return (1e9 / value if value else math.inf) if is_rate(measure) else value


def judge(row, medians):
  """@param medians  of the row's program: name of a benchmark -> measure -> median."""
  ours = cost(row.measure, medians.get(row.ours))
  if ours is None:
    return Outcome(row, None, {}, MISSING, [])
  peers = {}
  for peer, name in row.peers.items():
    value = cost(row.measure, medians.get(name))
    if value is not None:
      peers[peer] = value
  outcome = Outcome(row, ours, peers, TOLD, [])
  judged = row.bound is not None
  if judged and ours > row.bound:
    outcome.short_of.append("the bound")
  for peer, limit in row.at_most.items():
    if peer in peers:
      judged = True
      if outcome.ratio(peer) > limit:
        outcome.short_of.append(peer)
  if outcome.short_of:
    floors = (peer in peers and outcome.ratio(peer) <= limit for peer, limit in row.floor.items())
    outcome.verdict = FLOOR if any(floors) else SHORT
  elif judged:
    outcome.verdict = PASS
  elif row.at_most:
    outcome.verdict = MISSING
  return outcome
