// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The morph between sections that travel.

#include <hv/morph/HvMorpher.h>

#include <hv/foundation/polyline_interpolate.h>
#include <hv/morph/HvMorpherImpl.h>
#include <hv/morph/internal/HvMorphOutput.h>
#include <hv/morph/internal/even_samples.h>
#include <hv/rotation/HvTransfo4.h>
#include <hv/shape/HvGC.h>

namespace {

/// Ends nearer than this name no direction.
constexpr double kLeastDistance = 1e-7;

HvPoint2<float> Between(HvPoint2<float> const& a, HvPoint2<float> const& b, double u)
{
    HvPoint2<double> const from(a);
    HvPoint2<double> const to(b);
    return HvPoint2<float>(from + (to - from) * u);
}

/// The place at `t` of the length of a road from `from` to `to`, which stand in for its ends. What
/// is nowhere on the road, as for a `t` that is no number, is (0, 0).
HvPoint2<float> PlaceOnRoad(HvMorphLine const& road, double t, HvPoint2<float> const& from,
                            HvPoint2<float> const& to)
{
    double d = t * road.length;
    if (d > road.length) {
        d = road.length;
    }
    if (d <= 0) {
        return from;
    }
    if (d == road.length) {
        return to;
    }
    for (unsigned int i = 1; i < road.chord.Size(); ++i) {
        double const before = road.chord[i - 1];
        if (road.chord[i] >= d) {
            return Between(road.points[i - 1], road.points[i],
                           (d - before) / (road.chord[i] - before));
        }
    }
    return HvPoint2<float>(0, 0);
}

/// Where the anchor of a record is at `t`.
HvPoint2<float> TravellingAnchor(MPathData const& anchor, HvPoint2<float> const& from,
                                 HvPoint2<float> const& to, double t, double spacing)
{
    return anchor.path == nullptr
               ? Between(from, to, t)
               : PlaceOnRoad(HvMorphLine_OfPath(*anchor.path, spacing), t, from, to);
}

/// The similarity that carries p[0], p[1] onto q[0], q[1]; the identity where one of the two pairs
/// is too close to have a direction.
HvTransfo4 Similarity(HvPoint2<float> const* p, HvPoint2<float> const* q)
{
    HvPoint2<double> const from = HvPoint2<double>(p[1]) - HvPoint2<double>(p[0]);
    HvPoint2<double> const to = HvPoint2<double>(q[1]) - HvPoint2<double>(q[0]);
    double const length = HvPoint2_Length(from);
    double const wanted = HvPoint2_Length(to);
    HvTransfo4 similarity;
    double angle = 0.0;
    if (length >= kLeastDistance && wanted >= kLeastDistance &&
        HvPoint2_AngleInDegrees(from, to, angle) != 0) {
        HvPoint2<double> const centre(q[0]);
        double const scale = wanted / length;
        similarity.ScaleXY(scale, scale, centre);
        similarity.RotateXY(angle, centre);
        similarity.Translate(centre - HvPoint2<double>(p[0]), 0.0);
    }
    return similarity;
}

/// The section of an outline between two of its points, carried to the travelling anchors.
HvMorphLine CarriedSection(HvPath2f const& outline, unsigned int firstPoint, unsigned int lastPoint,
                           HvPoint2<float> const* anchors, HvPoint2<float> const* travelling,
                           double spacing)
{
    HvPath2f section(outline, firstPoint, lastPoint);
    section.Transform(Similarity(anchors, travelling));
    return HvMorphLine_OfPath(section, spacing);
}

/// The points of two anchors; 0 unless they ascend and lie on the outline.
int GetAnchors(HvPath2f const& outline, unsigned int firstPoint, unsigned int lastPoint,
               HvPoint2<float>* anchors)
{
    return firstPoint < lastPoint && outline.GetPoint(firstPoint, anchors[0]) != 0 &&
           outline.GetPoint(lastPoint, anchors[1]) != 0;
}

}  // namespace

int HvMorpher::LinearMotionPathMorph(double t, HvPath2fProp1d& out) const
{
    if (!impl_->HasOutlines() || impl_->motionPaths.Count() < 2) {
        return 0;
    }
    MPathData const& start = impl_->motionPaths[0];
    MPathData const& end = impl_->motionPaths[1];
    HvPath2f const& first = *impl_->first;
    HvPath2f const& second = *impl_->second;
    HvPoint2<float> a[2];
    HvPoint2<float> b[2];
    if (GetAnchors(first, start.firstIndex, end.firstIndex, a) == 0 ||
        GetAnchors(second, start.secondIndex, end.secondIndex, b) == 0) {
        return 0;
    }
    double const spacing = impl_->gc->minPointGap;
    HvPoint2<float> const travelling[2] = {TravellingAnchor(start, a[0], b[0], t, spacing),
                                           TravellingAnchor(end, a[1], b[1], t, spacing)};
    HvMorphSamples samples = HvMorphSamples_Of(
        CarriedSection(first, start.firstIndex, end.firstIndex, a, travelling, spacing),
        CarriedSection(second, start.secondIndex, end.secondIndex, b, travelling, spacing),
        spacing);
    if (samples.steps == 0) {
        return 1;
    }
    HvPoint2fArray& blended = samples.first;
    HvPoint2fArraySingleComponent_Lerp(samples.first, samples.second, t, blended);
    HvMorphOutput_AppendOpen(*impl_, t, blended, samples.steps, out);
    return 1;
}
