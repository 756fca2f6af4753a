// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A table of plain text.

#ifndef HV_TOOLS_TEXT_TABLE_H
#define HV_TOOLS_TEXT_TABLE_H

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

using TextRow = std::vector<std::string>;

/// Writes rows of equally many cells, each column as wide as its widest cell; the first
/// `numbers` columns, which hold numbers, to the right, the others to the left.
void TextTable_Write(std::ostream& out, std::vector<TextRow> const& rows, std::size_t numbers);

#endif
