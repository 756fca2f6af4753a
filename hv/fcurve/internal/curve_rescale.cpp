// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Scaling and moving a stretch of a curve along the parameter axis: what all kinds have in common.

#include <hv/fcurve/internal/curve_rescale.h>

#include <hv/fcurve/HvFCurveKeyMover.h>
#include <hv/fcurve/internal/CFCBaseImpl.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvExtent2.h>

#include <cmath>
#include <limits>

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
        // Scaling some keys among others is the work of the curve stretcher, which decides what
        // happens to the keys in the way; without it it is refused.
        if (!isAll || !ScaleAll(curve)) {
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
