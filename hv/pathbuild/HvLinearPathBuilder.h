// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Strokes as polylines.

#ifndef HV_PATHBUILD_HVLINEARPATHBUILDER_H
#define HV_PATHBUILD_HVLINEARPATHBUILDER_H

#include <hv/pathbuild/HvBasePathBuilder.h>

/// Builds a polyline, with a vertex only where the pen turns.
///
/// Points that go on in a straight line, within half of `gc.flatness` of it, become one line: the
/// last of them is held back until the pen turns or samples are asked for. Then the polyline is
/// smoothed, from the last committed point on. A point within the gap of the one held back takes
/// its place without any test of straightness, so a pen that creeps draws one line.
///
/// The edge that closes a subpath is in the path, but has no samples.
class HV_API HvLinearPathBuilder : public HvBasePathBuilder {
public:
    /// A builder that appends to `path`; both arguments must outlive it.
    HvLinearPathBuilder(HvGC const& gc, HvPath2f* path);
    ~HvLinearPathBuilder() override;

    /// @param force  not 0: the point becomes a vertex at once, ahead of the one held back, which
    ///               follows later, out of order.
    void AddInputPoint(HvPoint2<float> const& p, int force) override;
    HvPoint2fArray const* GetTrailingSamples() override;
    HvPoint2fArray const* EndSubpath(HvPoint2<float> const& p, int closed) override;
    void Reset() override;

protected:
    /// The direction of the line at hand, of length 1.
    HvPoint2<float> direction;
    /// The farthest point of that line.
    HvPoint2<float> pending;
    /// 1 when `pending` holds a point that is not in `input`.
    int hasPending;

    /// Makes the point that is held back a part of `input`.
    void PushPending();
    /// Appends the lines of all input that is not in the path yet; with `closed` back to the start.
    void AddTrailingInputPoints(int closed);
    /// Makes `samples` those of the input that was committed last; with `final` the end is one.
    void ComputeTrailingSamplePoints(int final);

private:
    HvPoint2fArray const* Commit(int closed, int final);
};

#endif
