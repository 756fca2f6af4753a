// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Paths joined into one, in other coordinates.

#include <tools/play/painting/mapped_path.h>

#include <hv/shape/HvPath2fIter.h>

void MappedPath_Append(HvPath2f const& path, HvTransfo4 const& map, OpenSubpaths open,
                       HvPath2f& out)
{
    HvPath2fIter subpaths(path);
    unsigned int first = 0;
    unsigned int last = 0;
    while (subpaths.GetNextSubPathIndices(first, last) != 0) {
        if (first == last) {
            continue;
        }
        HvPoint2<float> const start = map.Map(path.GetPoint(first));
        out.Moveto(start);
        for (unsigned int from = first; from < last;) {
            unsigned int const degree = path.Degree(from + 1);
            HvPoint2<float> points[8];
            for (unsigned int i = 0; i < degree; ++i) {
                points[i] = map.Map(path.GetPoint(from + 1 + i));
            }
            out.AltCurveto(points, degree);
            from += degree;
        }
        bool const isClosed = path.IsSubpathClosed(first) != 0;
        if (isClosed || open == OpenSubpaths::Closed) {
            if (out.GetCurrentPoint() != start) {
                out.Lineto(start);
            }
            out.Closeto();
        }
    }
}
