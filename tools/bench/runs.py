# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""Runs benchmark programs, and takes the medians of what they measured."""

import json
import re
import statistics
import subprocess

NANOSECONDS = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}

# Fields of a result that are no counters of the benchmark's own.
KNOWN = {
  "name", "run_name", "run_type", "family_index", "per_family_instance_index", "repetitions",
  "repetition_index", "threads", "iterations", "real_time", "cpu_time", "time_unit",
  "aggregate_name", "aggregate_unit", "label", "error_occurred", "error_message"}


class Failed(Exception):
  """A program or one of its benchmarks did not come to its end."""


def exactly(names):
  """The filter that lets these benchmarks pass and no other."""
  escaped = (re.sub(r"([][().*+?{}|^$\\])", r"\\\1", name) for name in sorted(names))
  return f"^({'|'.join(escaped)})$"


def measure(program, names, repetitions, seconds):
  """The document that a program prints of its benchmarks of these names, or of all for None.

  All repetitions of all benchmarks are run in random order, so that what else the machine does falls
  on everyone alike.
  """
  command = [
    str(program), "--benchmark_format=json", f"--benchmark_repetitions={repetitions}",
    f"--benchmark_min_time={seconds}", "--benchmark_enable_random_interleaving=true"]
  if names is not None:
    command.append(f"--benchmark_filter={exactly(names)}")
  run = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
  if run.returncode:
    raise Failed(f"{program.name} ended with {run.returncode}\n{run.stderr}")
  # A filter that nothing matches prints no document.
  return json.loads(run.stdout) if run.stdout.strip() else {"benchmarks": []}


def medians(document):
  """name of a benchmark -> measure -> median over the repetitions; times in nanoseconds.

  The time is that of the processor, or, where the benchmark asks for it, that of the clock.
  """
  found = {}
  for result in document["benchmarks"]:
    if result.get("error_occurred"):
      raise Failed(f"{result['name']}: {result['error_message']}")
    if result.get("run_type") == "aggregate":
      continue
    name = result.get("run_name", result["name"])
    clock = "real_time" if "/real_time" in name else "cpu_time"
    values = {"time": result[clock] * NANOSECONDS[result["time_unit"]]}
    values.update((key, value) for key, value in result.items()
                  if key not in KNOWN and isinstance(value, (int, float)))
    for measure_name, value in values.items():
      found.setdefault(name, {}).setdefault(measure_name, []).append(value)
  return {name: {key: statistics.median(values) for key, values in measures.items()}
          for name, measures in found.items()}
