// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What a shape holds.

#ifndef HV_TOOLS_SHAPE_SHAPE_REPORT_H
#define HV_TOOLS_SHAPE_SHAPE_REPORT_H

#include <cstddef>
#include <iosfwd>

class HvShape2f;

/// Writes a line for a shape whose archive has `size` bytes, and unless `brief` a table: of the
/// subpaths of a path, of the control points of another shape.
void ShapeReport_Write(std::ostream& out, HvShape2f const& shape, std::size_t size, bool brief);

#endif
