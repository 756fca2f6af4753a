# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""Where the time of a benchmark goes, by samples of `perf`."""

import pathlib
import re
import subprocess
import tempfile

import runs

# Functions that are told of a workload, and the share below which none is.
MOST, LEAST = 6, 2.0


def short(symbol):
  """A function's name without what it takes and without the arguments of templates."""
  name = symbol.replace("(anonymous namespace)::", "").replace("operator()", "call")
  while re.search(r"<[^<>]*>", name):
    name = re.sub(r"<[^<>]*>", "", name)
  name = re.sub(r"\(.*$|@.*$|\.(constprop|part|isra|cold)\b.*$", "", name)
  # The C library has one function for each kind of processor.
  name = re.sub(r"_(fma|avx512|avx2|evex|sse2)?(_?unaligned)?(_erms)?$", "", name)
  return name.lstrip("_").split(" ")[-1]


def shares(report):
  """(percent, name) of a report of perf, the greatest first; the kernel is one, and so is what
  stands under one name in several places."""
  found = {}
  for line in report.splitlines():
    fields = re.match(r"\s*([\d.]+)%\s+(\S+)\s+\[(.)\]\s+(.*)$", line)
    if fields:
      name = "the kernel" if fields.group(3) == "k" else f"`{short(fields.group(4).strip())}`"
      found[name] = found.get(name, 0.0) + float(fields.group(1))
  return sorted(((share, name) for name, share in found.items()), reverse=True)


def profile(program, benchmark, seconds=1.0):
  with tempfile.TemporaryDirectory() as folder:
    samples = pathlib.Path(folder) / "samples"
    try:
      subprocess.run(["perf", "record", "-q", "-o", samples, program, f"--benchmark_min_time={seconds}",
                      f"--benchmark_filter={runs.exactly([benchmark])}"],
                     check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
      report = subprocess.run(["perf", "report", "-i", samples, "--stdio", "--no-children", "-F", "overhead,dso,symbol"],
                              check=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    except (OSError, subprocess.CalledProcessError) as reason:
      raise runs.Failed(f"no profile of {benchmark}: {reason}") from reason
  return shares(report.stdout)


def told(found):
  listed = [f"{share:.0f} % {name}" for share, name in found[:MOST] if share >= LEAST]
  rest = 100 - sum(share for share, _ in found[:len(listed)])
  return ", ".join(listed + ([f"{rest:.0f} % others"] if rest >= 1 else []))


def table(heaviest, folder):
  """A line of Markdown for each workload."""
  lines = ["| workload | where its time goes |", "|---|---|"]
  for one in heaviest:
    found = profile(folder / f"hv_{one['program']}_bench", one["benchmark"])
    lines.append(f"| {one['workload']} | {told(found)} |")
  return "\n".join(lines) + "\n"
