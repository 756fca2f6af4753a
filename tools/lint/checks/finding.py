# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""What a check reports."""

from typing import NamedTuple


class Finding(NamedTuple):
  """One thing to mend, or a note that only informs."""

  path: str
  line: int
  text: str
  note: bool = False

  @property
  def place(self) -> str:
    return f"{self.path}:{self.line}" if self.line else self.path


class Unavailable(Exception):
  """The check needs a program that this machine does not have."""
