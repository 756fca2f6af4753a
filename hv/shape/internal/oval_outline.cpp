// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The outline of an oval as four cubics.

#include <hv/shape/internal/oval_outline.h>

#include <hv/shape/HvPath2f.h>

void HvOvalOutline_AppendTo(HvPath2f& path, HvOvalOutline const& outline)
{
    path.Moveto(outline[0]);
    for (int i = 1; i < 13; i += 3) {
        path.Curveto(outline[i], outline[i + 1], outline[i + 2]);
    }
    path.Closeto();
}
