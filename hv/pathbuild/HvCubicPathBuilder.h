// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Strokes as cubics through every point.

#ifndef HV_PATHBUILD_HVCUBICPATHBUILDER_H
#define HV_PATHBUILD_HVCUBICPATHBUILDER_H

#include <hv/pathbuild/HvBasePathBuilder.h>

/// Builds a chain of cubics, one between each two neighbouring points, after smoothing them.
///
/// The tangent at a point is the direction from the point before it to the one after. So the last
/// point of a running stroke is not joined to the path before another one has arrived; its tangent
/// at the end of the stroke, and that of the first point, come from a circle through three points.
/// The two tangents at a node may differ a little, as the next point is smoothed between the
/// cubic that arrives and the one that leaves.
class HV_API HvCubicPathBuilder : public HvBasePathBuilder {
public:
    /// A builder that appends to `path`; both arguments must outlive it.
    HvCubicPathBuilder(HvGC const& gc, HvPath2f* path);
    ~HvCubicPathBuilder() override;

    /// Drops a point within the gap of the last one.
    ///
    /// @param force  1: the point is taken all the same. Any other value is no force.
    void AddInputPoint(HvPoint2<float> const& p, int force) override;
    HvPoint2fArray const* GetTrailingSamples() override;
    HvPoint2fArray const* EndSubpath(HvPoint2<float> const& p, int closed) override;

protected:
    /// Appends the cubics that nothing can change any more, with `final` all of them; with `closed`
    /// too, back to the start.
    void AddTrailingInputPoints(int closed, int final);
    /// Makes `samples` those of the path from its point `n` on; with `final` the end is one.
    void ComputeTrailingSamplePoints(unsigned int n, int final);

private:
    HvPoint2fArray const* Commit(int closed, int final);
    void AddCubic(unsigned int i, HvPoint2<float> const& startTangent,
                  HvPoint2<float> const& endTangent);
};

#endif
