// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Scaling and moving a stretch of a curve along the parameter axis: what all kinds have in common.

#include <hv/fcurve/internal/curve_rescale.h>

#include <hv/fcurve/HvFCurveKeyMover.h>
#include <hv/fcurve/HvFCurveStretcher.h>
#include <hv/fcurve/HvQuatFCurve.h>
#include <hv/fcurve/internal/CFCBaseImpl.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvExtent2.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

namespace {

/// Below this a scale is 0 and an offset none. Parameters are frames or seconds, where it is less
/// than any editor shows.
constexpr double kRescaleTolerance = 1e-7;
/// An end of the stretch this near to a key is the key.
constexpr double kStretchEndSnapParameter = 1e-6;

bool IsOne(double scale)
{
    return kRescaleTolerance > std::fabs(scale - 1);
}

bool IsNone(double offset)
{
    return kRescaleTolerance > std::fabs(offset);
}

/// Turns the stretch from `first` to `last` round: what it is goes, mirrored about its middle, in
/// its own place.
int MirrorStretch(HvBaseFCurve& curve, double first, double last)
{
    if (!(first < last)) {
        return 1;
    }
    std::unique_ptr<HvBaseFCurve> const piece(
        curve.SnapShot(first, last, curve.GetExtrapolationMethod()));
    if (piece == nullptr || !piece->MirrorParameters() || !curve.Paste(*piece, first, last)) {
        return 0;
    }
    // What follows the stretch begins with the value that was at its end; a key of one value alone
    // would take it over from there.
    double left = 0;
    double right = 0;
    piece->GetKeyValuesByIndex(piece->GetNumKeys() - 1, left, right);
    return curve.SetKeyValue(last, HvBaseFCurve::Left, left, kStretchEndSnapParameter);
}

}  // namespace

bool HvCurveRescale::IsPossible() const
{
    return !std::isnan(from) && !std::isnan(to) && std::isfinite(pivot) && std::isfinite(scale) &&
           std::isfinite(offset) && std::fabs(scale) >= kRescaleTolerance;
}

bool HvCurveRescale::IsIdentity() const
{
    return IsOne(scale) && IsNone(offset);
}

/// Whether all keys are in the stretch from `first` to `last`, which are drawn to keys near them.
bool HvCurveRescale::SnapStretch(HvBaseFCurve const& curve, double& first, double& last) const
{
    curve.GetNearestKeyParameterInCenteredInterval(first, kStretchEndSnapParameter);
    curve.GetNearestKeyParameterInCenteredInterval(last, kStretchEndSnapParameter);
    HvDoubleArray meant;
    curve.GetKeyParameters(first, last, meant, 0, 0, selectedOnly);
    return meant.Size() == curve.GetNumKeys();
}

int HvCurveRescale::ApplyTo(HvBaseFCurve& curve) const
{
    double first = from;
    double last = to;
    bool const isAll = SnapStretch(curve, first, last);
    if (!IsOne(scale)) {
        if (!(isAll ? ScaleAll(curve) : ScaleSome(curve, first, last))) {
            return 0;
        }
    }
    if (IsNone(offset)) {
        return 1;
    }
    return isAll ? curve.ShiftParameters(offset) : MoveSome(curve, first, last);
}

int HvCurveRescale::ScaleAll(HvBaseFCurve& curve) const
{
    double const size = std::fabs(scale);
    return curve.ScaleParameterAxis(size) && curve.ShiftParameters(pivot * (1 - size)) &&
           (scale > 0 || curve.MirrorParameters());
}

/// Scales the keys of the stretch; what stands in their way stops them. `first` and `last` become
/// where its ends come to. A ripple goes with the end that is dragged, and, where the pivot lies on
/// neither end, with the other one too.
int HvCurveRescale::ScaleSome(HvBaseFCurve& curve, double& first, double& last) const
{
    HvDoubleArray list;
    if (curve.GetKeyParameters(first, last, list, 0, 0, selectedOnly) == 0) {
        return 1;
    }
    double smallest = first;
    double largest = last;
    curve.GetSmallestKeyParameter(smallest);
    curve.GetLargestKeyParameter(largest);
    first = std::max(first, smallest);
    last = std::min(last, largest);

    bool const dragsFirst = DragsFirst(first, last);
    double const distance = (dragsFirst ? first : last) - pivot;
    if (IsNone(distance)) {
        return 1;  // all that there is lies on the pivot
    }
    // A region without height, so that the keys of the list alone are in it.
    constexpr double kBeyond = std::numeric_limits<double>::infinity();
    HvExtent2<double> region(first, kBeyond, last, kBeyond);
    HvFCurveStretcher stretcher(curve, region, list, HvExtent2<double>(),
                                HvPoint2<double>(pivot, 0),
                                dragsFirst ? HvBaseFCurve::LeftHandle : HvBaseFCurve::RightHandle,
                                dragsFirst ? rippleLeft : rippleRight, 0);
    HvPoint2<double> translation((std::fabs(scale) - 1) * distance, 0);
    HvDoubleArray before;
    HvDoubleArray after;
    HvExtent2<double> invalid;
    int limited = 0;
    constexpr double kNoEdge = std::numeric_limits<double>::quiet_NaN();
    if (!stretcher.Update(translation, kNoEdge, kNoEdge, before, after, invalid, region, limited) ||
        !stretcher.Finalize()) {
        return 0;
    }
    first = region.min.x;
    last = region.max.x;
    curve.GetNearestKeyParameterInCenteredInterval(first, kStretchEndSnapParameter);
    curve.GetNearestKeyParameterInCenteredInterval(last, kStretchEndSnapParameter);
    if (scale > 0) {
        return 1;
    }
    // A rotation cannot be cut without a trace, and its keys can be turned round where they are.
    return curve.GetKind() == HvBaseFCurve::Quaternion
               ? static_cast<HvQuatFCurve&>(curve).MirrorStretch(first, last)
               : MirrorStretch(curve, first, last);
}

/// Whether a scale drags the first end of the stretch: the one that ripples, or the one of the
/// handle; never one that lies on the pivot while the other does not.
bool HvCurveRescale::DragsFirst(double first, double last) const
{
    if (IsNone(first - pivot) || IsNone(last - pivot)) {
        return !IsNone(first - pivot);
    }
    bool const onlyOneRipples = (rippleLeft != 0) != (rippleRight != 0);
    return onlyOneRipples ? rippleLeft != 0 : handle == HvBaseFCurve::LeftHandle;
}

/// Moves the keys of the stretch and those that ripple along; what stands in their way stops them.
int HvCurveRescale::MoveSome(HvBaseFCurve& curve, double first, double last) const
{
    HvDoubleArray list;
    ListKeysToMove(curve, first, last, list);
    if (list.Size() == 0) {
        return 1;
    }
    HvExtent2<double> const anywhere(-kHvMaxDouble, -kHvMaxDouble, kHvMaxDouble, kHvMaxDouble);
    HvFCurveKeyMover mover(curve, list, anywhere, HvExtent2<double>());
    HvPoint2<double> translation(offset, 0);
    HvDoubleArray parameters;
    HvExtent2<double> invalid;
    HvExtent2<double> moved;
    constexpr double kNoEdge = std::numeric_limits<double>::quiet_NaN();
    return mover.Update(translation, parameters, invalid, moved, kNoEdge, kNoEdge) &&
           mover.Finalize();
}

/// A single ripple takes the keys of one side: the left one those in front of the move, the right
/// one those behind it.
void HvCurveRescale::ListKeysToMove(HvBaseFCurve const& curve, double first, double last,
                                    HvDoubleArray& list) const
{
    bool const both = rippleLeft != 0 && rippleRight != 0;
    bool const leftToo = both || (rippleLeft != 0 && !(offset > 0)) ||
                         (rippleRight != 0 && rippleLeft == 0 && offset >= 0);
    bool const rightToo = both || (rippleLeft != 0 && offset > 0) ||
                          (rippleRight != 0 && rippleLeft == 0 && !(offset >= 0));
    if (leftToo) {
        curve.GetKeyParameters(-kHvMaxDouble, first, list, 0, 1, 0);
    }
    curve.GetKeyParameters(first, last, list, 0, 0, selectedOnly);
    if (rightToo) {
        curve.GetKeyParameters(last, kHvMaxDouble, list, 1, 0, 0);
    }
}
