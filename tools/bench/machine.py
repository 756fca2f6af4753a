# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""What a measurement ran on, and what built it."""

import datetime
import json
import os
import pathlib
import re
import subprocess

ROOT = pathlib.Path(__file__).resolve().parents[2]

# The packages of the other libraries, whose versions belong to the numbers.
PACKAGES = {
  "Cairo": "libcairo2-dev", "FreeType": "libfreetype-dev", "AGG": "libagg-dev",
  "OpenCV": "libopencv-imgproc-dev", "potrace": "libpotrace-dev", "rlottie": "librlottie-dev",
  "Google Benchmark": "libbenchmark-dev"}


def said(*command):
  """The first line that a command prints; nothing where it cannot be had."""
  try:
    run = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, cwd=ROOT)
  except OSError:
    return ""
  return run.stdout.splitlines()[0].strip() if run.returncode == 0 and run.stdout else ""


def processor():
  found = re.search(r"^model name\s*: (.*)$", pathlib.Path("/proc/cpuinfo").read_text(), re.M) \
    if os.path.exists("/proc/cpuinfo") else None
  return found.group(1) if found else "processor unknown"


def settings(build):
  """Compiler, build type and flags of a build folder: those that its first source of the library is
  compiled with, but for warnings and places."""
  cache = build / "CMakeCache.txt"
  values = dict(re.findall(r"^(\w+):\w+=(.*)$", cache.read_text(), re.M)) if cache.exists() else {}
  commands = build / "compile_commands.json"
  entries = json.loads(commands.read_text()) if commands.exists() else []
  command = next((entry["command"] for entry in entries if "/hv/" in entry["file"]), "")
  flags = re.findall(r" (-(?:O|std=|f|m|DNDEBUG)\S*)", command)
  return values.get("CMAKE_CXX_COMPILER", "c++"), values.get("CMAKE_BUILD_TYPE", ""), " ".join(flags)


def describe(build):
  compiler, kind, flags = settings(build)
  versions = {name: said("dpkg-query", "-W", "-f=${Version}", package)
              for name, package in PACKAGES.items()}
  return {
    "date": datetime.datetime.now(datetime.timezone.utc).strftime("%Y-%m-%d %H:%M UTC"),
    "revision": said("git", "describe", "--always", "--dirty"),
    "machine": f"{processor()}, {os.cpu_count()} processors",
    "system": re.sub(r'^PRETTY_NAME="?(.*?)"?$', r"\1", said("grep", "PRETTY_NAME", "/etc/os-release")),
    "compiler": said(compiler, "--version"),
    "build": f"{kind}: {flags}",
    "load": "%.1f at the start" % os.getloadavg()[0],
    "versions": ", ".join(f"{name} {version}" for name, version in versions.items() if version)}
