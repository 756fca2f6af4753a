// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The flattened segments of a motion path, each made once.

#ifndef HV_MOTIONPATH_INTERNAL_HVSEGMENTPOLYLINES_H
#define HV_MOTIONPATH_INTERNAL_HVSEGMENTPOLYLINES_H

#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvMemory.h>
#include <hv/foundation/HvPoint3dArray.h>

#include <memory>

/// The tolerance with which a segment is flattened: the caller's, but not so fine that rounding
/// would decide, nor so fine that a number without sense would ask for billions of points.
double HvSegment_UsableTolerance(HvPoint3<double> const* cubic, double tolerance);

/// A segment as a polyline with the running length at each of its points.
struct HvSegmentPolyline : HvAllocated {
    HvPoint3dArray points;
    HvDoubleArray chord;
    double length;

    HvSegmentPolyline(HvPoint3<double> const* cubic, double tolerance);
};

/// Remembers polylines and lengths of segments for one tolerance at a time. It holds no state that
/// a result would show: forgetting everything at any time only costs time.
///
/// Memory: 16 bytes for each segment of a path that is evaluated at all, and kMostPoints points of
/// 32 bytes. Beyond these the polylines are forgotten, but not the lengths.
class HvSegmentPolylines {
public:
    /// As many as a path of ten thousand nodes takes at a thousandth of its segments' size; 8 MB.
    static constexpr unsigned int kMostPoints = 1u << 18;

    /// Forgets everything: the points of the path change.
    void Drop() noexcept;

    /// Length of segment `k` of the path with these points.
    double Length(HvPoint3dArray const& points, unsigned int k, double tolerance);
    /// The segment's polyline; it stays until the next call of any of the operations.
    HvSegmentPolyline const& Polyline(HvPoint3dArray const& points, unsigned int k,
                                      double tolerance);

private:
    struct Entry : HvAllocated {
        double length = 0.0;
        bool hasLength = false;
        std::unique_ptr<HvSegmentPolyline> polyline;
    };

    void Prepare(unsigned int segments, double tolerance);
    HvSegmentPolyline const& Flatten(HvPoint3dArray const& points, unsigned int k,
                                     double tolerance);
    void DropPolylines() noexcept;

    std::unique_ptr<Entry[]> entries_;
    unsigned int count_ = 0;       ///< entries
    unsigned int keptPoints_ = 0;  ///< in all polylines
    double tolerance_ = 0.0;       ///< of all that is kept
};

#endif
