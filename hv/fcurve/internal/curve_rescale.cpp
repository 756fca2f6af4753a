// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Scaling and moving a stretch of a curve along the parameter axis: what all kinds have in common.

#include <hv/fcurve/internal/curve_rescale.h>

#include <hv/foundation/HvDoubleArray.h>

#include <cmath>

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
    return std::isfinite(pivot) && std::isfinite(scale) && std::isfinite(offset) &&
           std::fabs(scale) >= kRescaleTolerance;
}

bool HvCurveRescale::IsIdentity() const
{
    return IsOne(scale) && IsNone(offset);
}

bool HvCurveRescale::ConcernsAllKeys(HvBaseFCurve const& curve) const
{
    double first = from;
    double last = to;
    curve.GetNearestKeyParameterInCenteredInterval(first, kStretchEndSnapParameter);
    curve.GetNearestKeyParameterInCenteredInterval(last, kStretchEndSnapParameter);
    HvDoubleArray meant;
    curve.GetKeyParameters(first, last, meant, 0, 0, selectedOnly);
    return meant.Size() == curve.GetNumKeys();
}

int HvCurveRescale::ApplyTo(HvBaseFCurve& curve) const
{
    // Moving some keys among others is the work of the interactive tools, the mover and the
    // stretcher, which decide what happens to the keys in the way; without them it is refused.
    if (!ConcernsAllKeys(curve)) {
        return 0;
    }
    if (!IsOne(scale)) {
        double const size = std::fabs(scale);
        if (!curve.ScaleParameterAxis(size) || !curve.ShiftParameters(pivot * (1 - size)) ||
            (scale < 0 && !curve.MirrorParameters())) {
            return 0;
        }
    }
    return IsNone(offset) ? 1 : curve.ShiftParameters(offset);
}
