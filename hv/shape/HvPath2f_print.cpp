// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Paths as text.

#include <hv/shape/HvPath2f.h>

#include <hv/shape/HvShapeLock.h>

#include <ostream>

// Two of the lines end in a blank, which those who read the text back expect.
std::ostream& operator<<(std::ostream& stream, HvPath2f const& path)
{
    HvShapeLock const lock(path);
    stream << "Statistics for this path: \n"
           << "NumPoints: " << path.NumPoints() << "\n"
           << "NumSegments: " << path.NumSegments() << "\n"
           << "NumSubpaths: " << path.NumSubpaths() << "\n"
           << "LargestDegree: " << path.LargestDegree() << "\n"
           << "The points: \n";
    unsigned int const count = path.NumPoints();
    for (unsigned int i = 0; i < count; ++i) {
        HvPoint2<float> const p = path.GetPoint(i);
        unsigned int start = 0;
        unsigned int end = 0;
        path.GetSegmentIndices(i, start, end);
        stream << "Index: " << i << " X: " << p.x << " Y: " << p.y << " First: " << start
               << " Last: " << end << "\n";
    }
    return stream;
}
