// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What a file of archives holds.

#ifndef HV_TOOLS_CURVE_ARCHIVE_REPORT_H
#define HV_TOOLS_CURVE_ARCHIVE_REPORT_H

#include <iosfwd>
#include <string>

/// Writes what each archive of `bytes` holds, curves and shapes, one standing behind another: a
/// line for each, and unless `brief` a table of its keys or subpaths. Throws ToolError with the
/// place and the reason at the first archive that the library refuses, after those before it are
/// written.
void ArchiveReport_Write(std::ostream& out, std::string const& file, std::string const& bytes,
                         bool brief);

#endif
