// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Paths joined into one, in other coordinates.

#include <tools/play/painting/mapped_path.h>

#include <hv/shape/HvPath2fIter.h>
#include <hv/shape/HvShapeLock.h>

#include <algorithm>
#include <cmath>

namespace {

/// Far outside any picture. Curves are flattened to a quarter of a pixel, wherever they run:
/// without a limit one of them could have more points than there is memory.
constexpr double kFarthest = 1 << 18;

float Near(double coordinate)
{
    return std::isnan(coordinate)
               ? 0.0F
               : static_cast<float>(std::clamp(coordinate, -kFarthest, kFarthest));
}

HvPoint2<float> Mapped(HvPoint2<float> const& point, HvTransfo4 const& map)
{
    HvPoint2<double> const mapped = map.Map(HvPoint2<double>(point));
    return {Near(mapped.x), Near(mapped.y)};
}

}  // namespace

void MappedPath_Append(HvPath2f const& path, HvTransfo4 const& map, OpenSubpaths open,
                       HvPath2f& out)
{
    // Held once, not for each point.
    HvShapePairLock const lock(out, path);
    HvPath2fIter subpaths(path);
    unsigned int first = 0;
    unsigned int last = 0;
    while (subpaths.GetNextSubPathIndices(first, last) != 0) {
        if (first == last) {
            continue;
        }
        HvPoint2<float> const start = Mapped(path.GetPoint(first), map);
        out.Moveto(start);
        for (unsigned int from = first; from < last;) {
            unsigned int const degree = path.Degree(from + 1);
            HvPoint2<float> points[8];
            for (unsigned int i = 0; i < degree; ++i) {
                points[i] = Mapped(path.GetPoint(from + 1 + i), map);
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
