// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A motion path for display.

#include <hv/motionpath/HvMotionPath3d.h>
#include <hv/motionpath/internal/HvMotionPath3dImpl.h>

#include <algorithm>
#include <cmath>

namespace {

/// Accuracy of displayed positions, relative to the largest side of the box of all points: less
/// than half a pixel where the path fills a picture of 4000 pixels.
constexpr double kDisplayTolerance = 1e-4;

double LargestSide(HvPoint3dArray const& points)
{
    HvPoint3<double> low = points[0];
    HvPoint3<double> high = points[0];
    for (HvPoint3<double> const& p : points) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
    return std::max({high.x - low.x, high.y - low.y, high.z - low.z});
}

/// Sample `i` of `count` even ones; the last is `last` itself, and a single one is `first`.
double SampleTime(double first, double last, unsigned int i, unsigned int count)
{
    if (i == 0) {
        return first;
    }
    return i + 1 == count ? last : first + (last - first) * (i / (count - 1.0));
}

}  // namespace

// The implementation.

HvMotionPath3d::SampleKind HvMotionPath3dImpl::SampleKindAt(unsigned int r, int exact) const
{
    if (exact != 0) {
        return HvMotionPath3d::SampleAtNode;
    }
    if (r == 0 || r == NumNodes() || tangents[r - 1].right == HvMotionPath3d::TangentStep) {
        return HvMotionPath3d::SampleAtRest;
    }
    return IsLine(r - 1) ? HvMotionPath3d::SampleOnLine : HvMotionPath3d::SampleOnCurve;
}

void HvMotionPath3dImpl::Render(double first, double last, unsigned int samples,
                                HvPoint3dArray& positions, HvUByteArray& kinds,
                                HvDoubleArray& sampleTimes, HvULongArray& nodes) const
{
    double const duration = last - first;
    if (NumNodes() == 0 || !(duration >= 0.0) || !std::isfinite(duration)) {
        return;
    }
    positions.Reserve(HvArrayCapacity_GrownSize(positions.Size(), samples));
    kinds.Reserve(HvArrayCapacity_GrownSize(kinds.Size(), samples));
    sampleTimes.Reserve(HvArrayCapacity_GrownSize(sampleTimes.Size(), samples));
    nodes.Reserve(HvArrayCapacity_GrownSize(nodes.Size(), samples));
    unsigned int const before = positions.Size();
    double const tolerance = kDisplayTolerance * LargestSide(points);
    HvSegmentPolylines lines;
    try {
        // Positions first: they alone may need memory now.
        for (unsigned int i = 0; i < samples; ++i) {
            Point p;
            Eval(SampleTime(first, last, i, samples), tolerance, lines, p);
            positions.Add(p);
        }
    } catch (...) {
        positions.Chop(before);
        throw;
    }
    for (unsigned int i = 0; i < samples; ++i) {
        double const t = SampleTime(first, last, i, samples);
        int exact;
        unsigned int const r = LocateTimeValue(t, exact);
        kinds.Add(static_cast<unsigned char>(SampleKindAt(r, exact)));
        sampleTimes.Add(t);
        nodes.Add(r == 0 ? 0 : 3 * r - 3);
    }
}

// The path.

void HvMotionPath3d::Render(double first, double last, unsigned int samples,
                            HvPoint3dArray& positions, HvUByteArray& kinds, HvDoubleArray& times,
                            HvULongArray& nodes) const
{
    CXQCriticalSectionLock const lock(section);
    impl->Render(first, last, samples, positions, kinds, times, nodes);
}
