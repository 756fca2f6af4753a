#!/usr/bin/env python3
# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""What Doxygen reads instead of a source file: `doxygen_input.py FILE`.

The title below the file head becomes the comment of the file, and what a header declares becomes
part of the module of its folder. Of another source only the title is given. Every line stays where
it is. The title of the first page makes it the main one.
"""

import os
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]


def title_end(lines):
  """The number of the first line behind the file head and its title."""
  end = 3
  while end < len(lines) and lines[end].startswith("//"):
    end += 1
  return end


def groups(lines, start):
  """The comments that stand alone: over the members of a class, they name a group of these; between
  other declarations they belong to the file."""
  lines = list(lines)
  is_open = False
  number = start
  while number < len(lines):
    line = lines[number]
    if is_open and re.match(r"(public|protected|private):|\};", line):
      lines[number] = "/** @} */ " + line
      is_open = False
    end = number
    while re.match(r" *//(?!/)", lines[end]):
      end += 1
    if end > number and lines[end] == "":
      inside = line.startswith("    ")
      text = [re.sub(r" *// ?", "", other) for other in lines[number:end]]
      if inside:
        title, sign, rest = re.match(r"([^.:;]*)([.:;]?) *(.*)", text[0]).groups()
        rest = rest if sign == "." else f"{title}{sign} {rest}" if sign else ""
        text[0] = f"@name {title}" + (f" \\ilinebr {rest}" if rest or len(text) > 1 else "")
        lines[end] = "/// @{"
      lines[number:end] = ["/// " + other for other in text]
      if not inside:
        lines[number - 1] = "/// @file"
      elif is_open:
        lines[number - 1] = "/** @} */"
      is_open = is_open or inside
    number = max(end, number + 1)
  return lines


def header(lines, module):
  """A header whose declarations stand in `module`, between the include guard."""
  guard = next(i for i, line in enumerate(lines) if re.match(r"#define HV_\w+_H$", line))
  end = len(lines) - 1 - lines[::-1].index("#endif")
  if lines[guard + 1] or lines[end - 1]:
    raise ValueError("no blank lines inside the include guard")
  # Doxygen takes an explicit instantiation for a class of its own, and puts a class into the module
  # of each header that declares it in advance.
  for number, line in enumerate(lines):
    if re.match(r"extern template |(class|struct) \w+;$", line):
      lines[number] = ""
      if lines[number - 1].startswith("template <"):
        lines[number - 1] = ""
  lines = groups(lines, guard)
  lines[guard + 1] = f"/** @addtogroup {module} */ /** @{{ */"
  lines[end - 1] = "/** @} */"
  return lines


def anchor(file, heading):
  """The name of a heading of a page, given as a link gives it."""
  return re.sub(r"\W", "_", f"{os.path.splitext(file)[0]}_{heading}")


# What the reference shows, besides pages of the web.
SHOWN = (".cpp", ".md", ".png", ".svg")


def linked(path, text, link):
  """A link of the page in the words of Doxygen; its text alone where it leads to what the reference
  does not show, a folder or data."""
  if re.match(r"[a-z]+:", link):
    return f"[{text}]({link})"
  name, _, heading = link.partition("#")
  file = os.path.relpath(path.parent / name if name else path, ROOT)
  if heading:
    return f"[{text}](@ref {anchor(file, heading)})"
  if file == "README.md":
    return f"[{text}](@ref index)"
  if not file.endswith(SHOWN):
    return text
  return f"[{text}](@ref {file})" if file.endswith(".cpp") else f"[{text}]({file})"


def joined(match):
  """A link of several lines in one, as Doxygen wants it, with the sign that follows it."""
  return match[0].replace("\n", " ") + "\n" * match[0].count("\n")


def named(file, line):
  """A heading of the page with its name: as in the links of Markdown, in lower case, blanks as
  hyphens, no other signs."""
  heading = re.sub(r"[^\w\- ]", "", line.lstrip("# ").lower()).replace(" ", "-")
  return f"{line} {{#{anchor(file, heading)}}}"


def page(path, lines):
  """A page; the first one is the main one, and all headings below the title have names."""
  file = os.path.relpath(path, ROOT)
  parts = re.split(r"(^```.*?^```$)", "\n".join(lines), flags=re.MULTILINE | re.DOTALL)
  # Every other part is a block of code.
  for i in range(0, len(parts), 2):
    text = re.sub(r"\[[^\[\]]*\n[^\[\]]*\]\([^\s)]+\)\S*", joined, parts[i])
    text = re.sub(r"\[([^\[\]]*)\]\(([^\s)]+)\)", lambda m: linked(path, m[1], m[2]), text)
    parts[i] = re.sub(r"^##.*", lambda m: named(file, m[0]), text, flags=re.MULTILINE)
  lines = "".join(parts).split("\n")
  if file == "README.md":
    lines[0] += " {#mainpage}"
  return lines


def main():
  path = pathlib.Path(sys.argv[1])
  lines = path.read_text().split("\n")
  if path.suffix == ".md":
    print("\n".join(page(path, lines)))
    return
  end = title_end(lines)
  lines[:end] = ["/// @file", "///", "/// @brief", *("/" + line for line in lines[3:end])]
  if path.suffix == ".h" and path.parent.parent.name == "hv":
    lines = header(lines, path.parent.name)
  elif path.name != "hv.h":
    lines = lines[:end]
  print("\n".join(lines))


if __name__ == "__main__":
  main()
