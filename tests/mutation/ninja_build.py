# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""A test program built anew with one file changed, beside a build folder that stays as it is.

Ninja tells the commands. What the changed file reaches is compiled into a scratch folder, where an
overlay of the include path shows the file in place of the one in the tree, and linked with the
objects that are already there.
"""

import pathlib
import re
import shlex
import shutil
import subprocess


class Failed(Exception):
  """A command that ended badly; what it printed is the argument."""


def run(command, folder):
  done = subprocess.run(command, cwd=folder, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                        text=True)
  if done.returncode:
    raise Failed(done.stdout)
  return done.stdout


def link_arguments(command):
  """The compiler's part of a link command, which stands between other steps."""
  for step in command.split(" && "):
    words = shlex.split(step)
    if "-o" in words and "-c" not in words:
      return words
  raise Failed(f"no link command: {command[:200]}")


def parse_dependencies(text):
  """Object -> the files it was made of, from what `ninja -t deps` prints."""
  dependencies = {}
  files = None
  for line in text.splitlines():
    header = re.match(r"(\S+): #deps \d+", line)
    if header:
      files = dependencies.setdefault(header.group(1), set())
    elif line.startswith("    ") and files is not None:
      files.add(line.strip())
  return dependencies


class TestProgram:
  """The test program `target` of a build folder, to be linked with changed objects."""

  def __init__(self, source_root, build, target, scratch):
    self.root = pathlib.Path(source_root).resolve()
    self.build = pathlib.Path(build).resolve()
    self.scratch = pathlib.Path(scratch)
    if not (self.build / "build.ninja").is_file():
      raise Failed(f"{build} is no build folder of Ninja")
    commands = run(["ninja", "-t", "commands", target], self.build).splitlines()
    self.compile_commands = {}
    for command in commands:
      words = shlex.split(command) if " -c " in command else []
      if "-o" in words:
        self.compile_commands[words[words.index("-o") + 1]] = words
    self.link = link_arguments(commands[-1])
    # Symbols for a debugger are the most of what a linker copies.
    self.link += ["-Wl,-S"] + (["-fuse-ld=lld"] if shutil.which("ld.lld") else [])
    self.dependencies = parse_dependencies(run(["ninja", "-t", "deps"], self.build))

  def objects_of(self, file, through=()):
    """The objects of the program that are made of a file of the tree; with `through`, those whose
    source is one of these."""
    path = (self.root / file).resolve()
    wanted = {(self.root / source).resolve() for source in through}

    def is_made_of_it(words):
      source = (self.build / words[-1]).resolve()
      name = words[words.index("-o") + 1]
      uses = source == path or any(
        (self.build / used).resolve() == path for used in self.dependencies.get(name, ()))
      return uses and (not wanted or source in wanted)

    return [name for name, words in self.compile_commands.items()
            if name in self.link and is_made_of_it(words)]

  def compile(self, name, file, changed):
    """Compiles the object `name` with `changed` in place of `file`; returns where it lies."""
    overlay = self.scratch / "overlay"
    target = overlay / file
    target.parent.mkdir(parents=True, exist_ok=True)
    target.write_text(changed)
    words = list(self.compile_commands[name])
    if pathlib.Path(words[0]).name in ("ccache", "sccache"):
      del words[0]
    made = self.scratch / name.replace("/", "+")
    words[words.index("-o") + 1] = str(made)
    if "-MF" in words:
      words[words.index("-MF") + 1] = f"{made}.d"
    if (self.build / words[-1]).resolve() == (self.root / file).resolve():
      words[-1] = str(target)
    words[1:1] = [f"-I{overlay}"]
    run(words + ["-w", "-g0"], self.build)
    return made

  def build_with(self, file, changed, objects):
    """The program with `changed` in place of `file` in the given objects. Failed is raised when it
    does not compile."""
    made = {name: str(self.compile(name, file, changed)) for name in objects}
    program = self.scratch / "program"
    words = [word for word in self.link if word not in made]
    first = next(i for i, word in enumerate(words) if word.endswith(".o"))
    words[first:first] = made.values()  # in front, so that their copy of what is inline is taken
    words[words.index("-o") + 1] = str(program)
    run(words, self.build)
    return program
