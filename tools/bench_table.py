#!/usr/bin/env python3
# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""Runs the benchmark programs of a folder and prints one table: `bench_table.py FOLDER [REGEX]`.

One row a benchmark: time a pass, and what the benchmark counts itself (items a second, bytes, ...).
"""

import json
import pathlib
import subprocess
import sys

# Fields of a result that are no counters of the benchmark's own.
KNOWN = {
  "name", "run_name", "run_type", "family_index", "per_family_instance_index", "repetitions",
  "repetition_index", "threads", "iterations", "real_time", "cpu_time", "time_unit",
  "aggregate_name", "aggregate_unit", "label", "error_occurred", "error_message"}


def measure(program, pattern):
  """The results of one program."""
  command = [str(program), "--benchmark_format=json"]
  if pattern:
    command.append(f"--benchmark_filter={pattern}")
  run = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
  if run.returncode:
    sys.exit(f"{program.name} ended with {run.returncode}\n{run.stderr}")
  # A filter that nothing matches prints no document.
  return json.loads(run.stdout)["benchmarks"] if run.stdout.strip() else []


def number(value):
  """Three digits and a letter for the power of a thousand."""
  for power, letter in ((1e9, "G"), (1e6, "M"), (1e3, "k")):
    if abs(value) >= power:
      return f"{value / power:.3g}{letter}"
  return f"{value:.3g}"


def row(result):
  if result.get("error_occurred"):
    return result["name"], "failed", result["error_message"]
  time = f"{result['real_time']:.4g} {result['time_unit']}"
  counters = [f"{name}={number(value)}" for name, value in result.items()
              if name not in KNOWN and isinstance(value, (int, float))]
  if result.get("label"):
    counters.append(result["label"])
  return result["name"], time, "  ".join(counters).replace("items_per_second=", "items/s=")


def main():
  programs = sorted(pathlib.Path(sys.argv[1]).glob("hv_*_bench"))
  if not programs:
    sys.exit(f"there is no benchmark in {sys.argv[1]}")
  pattern = sys.argv[2] if len(sys.argv) > 2 else ""
  rows = [("benchmark", "time", "counted")]
  for program in programs:
    print(f"{program.name} ...", file=sys.stderr)
    rows += [row(result) for result in measure(program, pattern)]
  name, time = (max(len(r[i]) for r in rows) for i in (0, 1))
  for r in rows:
    print(f"{r[0]:<{name}}  {r[1]:>{time}}  {r[2]}".rstrip())
  if any(r[1] == "failed" for r in rows):
    sys.exit(1)


if __name__ == "__main__":
  main()
