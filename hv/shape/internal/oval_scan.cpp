// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Which scan converter fills an oval.

#include <hv/shape/internal/oval_scan.h>

#include <algorithm>
#include <cmath>

namespace {

/// A side of an oval whose ends differ by less on one axis runs along the other: far below a pixel,
/// far above the rounding of coordinates up to some hundred.
constexpr double kAlongAxis = 0.0001;
/// An isothetic oval along x up to this cheap length is small enough for the general converter's
/// more exact ends.
constexpr double kSmallOval = 20.0;
/// Up to this cheap length an oval may fall between the rows.
constexpr double kThinOval = 1.5;

/// The length of the difference of two coordinates, as float arithmetic gives it.
double Reach(float from, float to)
{
    return std::fabs(to - from);
}

}  // namespace

HvOvalScan HvOvalScan_For(HvParallelogram2f const& frame)
{
    HvPoint2<float> const& p0 = frame.p0;
    HvPoint2<float> const& p1 = frame.p1;
    HvPoint2<float> const& p2 = frame.p2;
    double const width = HvPoint2_CheapLengthAB(p1, p0);
    double const height = HvPoint2_CheapLengthAB(p2, p0);
    if (kAlongAxis > Reach(p0.y, p2.y) && kAlongAxis > Reach(p0.x, p1.x)) {
        return HvOvalScan::Isothetic;
    }
    if (kAlongAxis > Reach(p0.x, p2.x) && kAlongAxis > Reach(p0.y, p1.y) && width > kSmallOval &&
        height > kSmallOval) {
        return HvOvalScan::Isothetic;
    }
    if (width > kThinOval && height > kThinOval) {
        return HvOvalScan::General;
    }
    double const dx = std::max(Reach(p0.x, p1.x), Reach(p0.x, p2.x));
    double const dy = std::max(Reach(p0.y, p1.y), Reach(p0.y, p2.y));
    return dy < dx ? HvOvalScan::Transposed : HvOvalScan::General;
}
