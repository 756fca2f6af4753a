// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A table of plain text.

#include <tools/text_table.h>

#include <algorithm>
#include <ostream>

void TextTable_Write(std::ostream& out, std::vector<TextRow> const& rows, std::size_t numbers)
{
    std::vector<std::size_t> widths;
    for (TextRow const& row : rows) {
        widths.resize(row.size());
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], row[i].size());
        }
    }
    for (TextRow const& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            std::string const padding(widths[i] - row[i].size(), ' ');
            bool const isLast = i + 1 == row.size();
            out << "  " << (i < numbers ? padding + row[i] : row[i] + (isLast ? "" : padding));
        }
        out << "\n";
    }
}
