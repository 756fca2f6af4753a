# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""All checks by name. A check takes a Tree and yields Findings."""

from .finding import Unavailable
from . import allocations, docs, files, formatting, layers, listed, umbrella

ALL = {
  "layers": layers.check,
  "listed": listed.check,
  "heads": files.check_heads,
  "text": files.check_text,
  "sizes": files.check_sizes,
  "umbrella": umbrella.check,
  "map": docs.check_map,
  "links": docs.check_links,
  "allocations": allocations.check,
  "format": formatting.check,
}
