// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The flattened segments of a motion path, each made once.

#include <hv/motionpath/internal/HvSegmentPolylines.h>

#include <hv/bezier/HvBezierTool_flatten.h>
#include <hv/foundation/polyline_length.h>

#include <limits>

namespace {

/// Points that a polyline has room for from the start; most segments need no more.
constexpr unsigned int kFirstPoints = 32;

/// The finest tolerance, relative to the length of the control polygon. It takes some hundred
/// thousand points; finer ones would take millions, whose roundings add up to as much.
constexpr double kFinestTolerance = 1e-11;

}  // namespace

double HvSegment_UsableTolerance(HvPoint3<double> const* cubic, double tolerance)
{
    double const size = HvPoint3_LengthAB(cubic[0], cubic[1]) +
                        HvPoint3_LengthAB(cubic[1], cubic[2]) +
                        HvPoint3_LengthAB(cubic[2], cubic[3]);
    // A segment of no size is flat at any tolerance; it only may not be 0.
    double const finest = kFinestTolerance * size + std::numeric_limits<double>::min();
    return tolerance > finest ? tolerance : finest;
}

HvSegmentPolyline::HvSegmentPolyline(HvPoint3<double> const* cubic, double tolerance)
    : points(kFirstPoints), chord(1), length(0.0)
{
    HvBezierTool_FlattenCubic3d(cubic, HvSegment_UsableTolerance(cubic, tolerance), &points, 0);
    length = HvPoint3dArraySingleComponent_ComputeChordLength(points, chord);
}

void HvSegmentPolylines::Drop() noexcept
{
    entries_.reset();
    count_ = 0;
    keptPoints_ = 0;
}

double HvSegmentPolylines::Length(HvPoint3dArray const& points, unsigned int k, double tolerance)
{
    Prepare(points.Size() / 3, tolerance);
    return entries_[k].hasLength ? entries_[k].length : Flatten(points, k, tolerance).length;
}

HvSegmentPolyline const& HvSegmentPolylines::Polyline(HvPoint3dArray const& points, unsigned int k,
                                                      double tolerance)
{
    Prepare(points.Size() / 3, tolerance);
    HvSegmentPolyline const* const known = entries_[k].polyline.get();
    return known != nullptr ? *known : Flatten(points, k, tolerance);
}

void HvSegmentPolylines::Prepare(unsigned int segments, double tolerance)
{
    // All that are not above 0 flatten alike; NaN would be equal to none, not even to itself.
    double const kept = tolerance > 0.0 ? tolerance : 0.0;
    if (count_ != segments || tolerance_ != kept) {
        Drop();
        entries_.reset(new Entry[segments]);
        count_ = segments;
        tolerance_ = kept;
    }
}

HvSegmentPolyline const& HvSegmentPolylines::Flatten(HvPoint3dArray const& points, unsigned int k,
                                                     double tolerance)
{
    auto made = std::make_unique<HvSegmentPolyline>(points.Data() + 3 * k, tolerance);
    unsigned int const size = made->points.Size();
    if (size > kMostPoints - keptPoints_) {
        DropPolylines();
    }
    // One polyline alone may be larger than what is kept otherwise; the next one replaces it.
    keptPoints_ = size > kMostPoints - keptPoints_ ? kMostPoints : keptPoints_ + size;
    Entry& entry = entries_[k];
    entry.length = made->length;
    entry.hasLength = true;
    entry.polyline = std::move(made);
    return *entry.polyline;
}

void HvSegmentPolylines::DropPolylines() noexcept
{
    for (unsigned int k = 0; k < count_; ++k) {
        entries_[k].polyline.reset();
    }
    keptPoints_ = 0;
}
