// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The direction of a stroke at a point.

#include <hv/pathbuild/stroke_tangents.h>

#include <hv/pathbuild/internal/circle_tangent.h>
#include <hv/pathbuild/internal/unit_direction.h>
#include <hv/shape/HvPath2f.h>

namespace {

/// The squared sine of the bend from which on three points count as an arc. A smaller bend is as
/// likely noise of the pen, which a circle would exaggerate.
constexpr double kLeastBendSinSquared = 0.03;

/// Whether the steps at `b` bend enough; false also where one of them has no length.
bool Bends(HvPoint2<float> const& a, HvPoint2<float> const& b, HvPoint2<float> const& c)
{
    double const det = HvPoint2_ABdetCD(b, a, b, c);
    return det * det / (HvPoint2_SquaredLengthAB(b, a) * HvPoint2_SquaredLengthAB(b, c)) >=
           kLeastBendSinSquared;
}

HvPoint2<float> Step(HvPoint2fArray const& points, unsigned int from, unsigned int to)
{
    return HvPoint2<float>(HvDirection_FromTo(points[from], points[to]));
}

/// The number of points of the last subpath, counted up to 3.
unsigned int NumPointsOfLastSubpath(HvPath2f const& path)
{
    unsigned int const count = path.NumPoints();
    for (unsigned int k = 1; k < 3; ++k) {
        if (count <= k || path.IsStartOfSubpath(count - k)) {
            return count < k ? count : k;
        }
    }
    return 3;
}

}  // namespace

HvPoint2<float> EstimateTangentDirection(HvPoint2fArray const& points, unsigned int i, int forward,
                                         int backward, int crude)
{
    unsigned int const count = points.Size();
    if (i >= count || count == 1) {
        return HvPoint2<float>();
    }
    bool const isFirst = i == 0;
    bool const isLast = i == count - 1;
    if (forward == 0 && backward == 0 && !isFirst && !isLast) {
        return Step(points, i - 1, i + 1);
    }
    if (isFirst || (forward != 0 && !isLast)) {
        if (forward != 0 && crude == 0 && count - i > 2 &&
            Bends(points[i + 2], points[i + 1], points[i])) {
            return HvCircle_Tangent(points[i + 2], points[i + 1], points[i], HvWalk::FromStart);
        }
        return Step(points, i, i + 1);
    }
    if (forward == 0 && backward != 0 && crude == 0 && i > 1 &&
        Bends(points[i - 2], points[i - 1], points[i])) {
        return HvCircle_Tangent(points[i - 2], points[i - 1], points[i], HvWalk::ToEnd);
    }
    return Step(points, i - 1, i);
}

HvPoint2<double> GetTangentDirectionOnPath(HvPoint2fArray const& points, HvPath2f const* path,
                                           int atEnd)
{
    unsigned int const count = NumPointsOfLastSubpath(*path);
    if (count == 2) {
        return HvPoint2<double>();
    }
    if (count < 2) {
        unsigned int const size = points.Size();
        if (size < 2) {
            return HvPoint2<double>();
        }
        return atEnd != 0 ? HvDirection_FromTo(points[0], points[1])
                          : HvDirection_FromTo(points[size - 2], points[size - 1]);
    }
    unsigned int const last = path->NumPoints() - 1;
    if (atEnd != 0) {
        return HvDirection_FromTo(path->GetPoint(last - 1), path->GetPoint(last));
    }
    unsigned int start = 0;
    unsigned int end = 0;
    path->GetSubpathIndices(last, start, end);
    return HvDirection_FromTo(path->GetPoint(start), path->GetPoint(start + 1));
}
