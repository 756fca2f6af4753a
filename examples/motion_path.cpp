// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A camera travels along a path: it starts from rest, passes a node without a jerk, and stops.
//
// The path is built from two cubics, smoothed where they meet, and sampled at
// even times; the distance from sample to sample is the speed.

#include <hv/hv.h>

#include <cstdio>

namespace {

using Place = HvPoint3<double>;

/// How far a place may be off, in the unit of the places.
constexpr double kTolerance = 1e-3;

HvMotionPath3d Build()
{
    HvMotionPath3d path;
    path.Moveto(Place(0, 0, 0), 0);
    path.Curveto(Place(1, 0, 0), Place(3, 0, 0), Place(4, 0, 0), 2);
    path.Curveto(Place(5, 1, 0), Place(6, 3, 1), Place(6, 4, 2), 4);
    // The segment at point 0 meets the next one at point 3: one direction for both handles there.
    path.SmoothSegment(0);
    return path;
}

}  // namespace

int main()
{
    HvMotionPath3d const path = Build();
    if (path.IsG1ContinuityLocked(3) == 0) {
        std::fprintf(stderr, "the node between the segments is not smooth\n");
        return 1;
    }
    HvPoint3dArray places;
    path.EvalSequence(path.GetFirstTime(0), path.GetLastTime(0), 0.5, kTolerance, places, 0);
    for (unsigned int i = 0; i < places.Size(); ++i) {
        Place const& p = places[i];
        double const way = i == 0 ? 0.0 : HvPoint3_LengthAB(places[i - 1], p);
        std::printf("time %.1f  at (%5.2f, %5.2f, %5.2f)  way %.2f\n", i * 0.5, p.x, p.y, p.z, way);
    }
    return places.Size() == 9 ? 0 : 1;
}
