# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""Small faults for C++ sources: one comparison, constant, sign or logical operator changed.

The sources are formatted by clang-format, and that is what tells operators from other uses of their
characters: ` < ` between spaces compares, `<` in `std::min<double>` does not; ` * ` multiplies, but
it is no sign and stays.
"""

import dataclasses
import re

KINDS = ("comparison", "constant", "sign", "logic")

# Each comparison moves its border by one step, and turns round.
COMPARISONS = {
  "<": ("<=", ">="), "<=": ("<", ">"), ">": (">=", "<="), ">=": (">", "<"),
  "==": ("!=",), "!=": ("==",)}
SIGNS = {"+": "-", "-": "+", "+=": "-=", "-=": "+="}
LOGIC = {"&&": "||", "||": "&&"}

COMPARISON = re.compile(r"(?<!\btemplate)(?<=\s)(<=|>=|==|!=|<|>)(?=\s)")
SIGN = re.compile(r"(?<=\s)(\+=|-=|\+|-)(?=\s)")
UNARY_MINUS = re.compile(r"(?:[(\[{,=?:<>*/+|&]\s*|\breturn\s+|^\s*)(-)(?=[\w(.])", re.MULTILINE)
LOGICAL = re.compile(r"(?<=\s)(&&|\|\|)(?=\s)")
NOT = re.compile(r"(?<![\w)\]])(!)(?=[\w(*:])")
NUMBER = re.compile(
  r"(?<![\w.])(?:0[xX][\da-fA-F']*(?:\.[\da-fA-F]*)?(?:[pP][+-]?\d+)?"
  r"|(?:\d[\d']*\.?\d*|\.\d+)(?:[eE][+-]?\d+)?)[uUlLfF]*(?![\w.])")
TRUTH = re.compile(r"\b(?:true|false)\b")

# What is no code, longest first: comments, strings, characters, preprocessor lines. An apostrophe
# between digits separates them.
NO_CODE = re.compile(
  r"//[^\n]*|/\*.*?\*/"
  r'|"(?:\\.|[^"\\\n])*"'
  r"|(?<![\da-fA-F])'(?:\\.|[^'\\\n])+'"
  r"|^[ \t]*#(?:\\\n|[^\n])*", re.DOTALL | re.MULTILINE)


@dataclasses.dataclass(frozen=True)
class Mutant:
  """`old` at `offset` of the text replaced by `new`."""

  kind: str
  offset: int
  old: str
  new: str

  def apply(self, text):
    return text[:self.offset] + self.new + text[self.offset + len(self.old):]

  def line_number(self, text):
    return text.count("\n", 0, self.offset) + 1

  def line(self, text):
    """The source line, trimmed."""
    begin = text.rfind("\n", 0, self.offset) + 1
    end = text.find("\n", self.offset)
    return text[begin:end if end >= 0 else len(text)].strip()

  def change(self, text):
    """What is changed in its line, such as `< to <=`, with a number behind when the line holds
    the same again: `< to <= #2`."""
    begin = text.rfind("\n", 0, self.offset) + 1
    number = text.count(self.old, begin, self.offset) + 1
    return f"{self.old} to {self.new or 'nothing'}" + (f" #{number}" if number > 1 else "")


def code_only(text):
  """`text` with everything that is no code made blank, each character in its place."""
  return NO_CODE.sub(lambda found: re.sub(r"[^\n]", " ", found.group()), text)


def changed_numbers(number):
  """The next number up and down; of a real number the double and the half."""
  is_hex = number[:2].lower() == "0x"
  is_real = ("p" if is_hex else "e") in number.lower() or "." in number
  digits = re.sub(r"[^\da-fA-F]", "", number[2:]) if is_hex else re.sub(
    r"\D", "", number.lower().split("e")[0])
  if not digits.strip("0"):
    return (f"({number} + 1)",)
  return (f"({number} * 2)", f"({number} / 2)") if is_real else (f"({number} + 1)", f"({number} - 1)")


def find(text, kinds=KINDS):
  """All mutants of a source text, in its order."""
  code = code_only(text)
  found = []

  def add(kind, pattern, changes):
    if kind in kinds:
      for match in pattern.finditer(code):
        group = 1 if match.groups() else 0
        old = match.group(group)
        found.extend(Mutant(kind, match.start(group), old, new) for new in changes(old))

  add("comparison", COMPARISON, COMPARISONS.get)
  add("sign", SIGN, lambda old: (SIGNS[old],))
  add("sign", UNARY_MINUS, lambda old: ("",))
  add("logic", LOGICAL, lambda old: (LOGIC[old],))
  add("logic", NOT, lambda old: ("",))
  add("constant", NUMBER, changed_numbers)
  add("constant", TRUTH, lambda old: ("false" if old == "true" else "true",))
  return sorted(found, key=lambda mutant: (mutant.offset, mutant.new))
