// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Words for what the numbers of a curve mean.

#include <tools/curve/curve_names.h>

namespace {

struct ConstraintName {
    HvBaseFCurve::KeyConstraint constraint;
    char const* name;
};

/// All but AllLocked, which says what four of these say.
constexpr ConstraintName kConstraintNames[] = {
    {HvBaseFCurve::ParameterLocked, "parameter locked"},
    {HvBaseFCurve::ValueLocked, "value locked"},
    {HvBaseFCurve::TangentContinuityLocked, "continuous"},
    {HvBaseFCurve::TangentDirectionLocked, "direction locked"},
    {HvBaseFCurve::TangentLengthLocked, "length locked"},
    {HvBaseFCurve::TangentLengthContinuityLocked, "equal lengths"},
    {HvBaseFCurve::FlatTangents, "flat"},
    {HvBaseFCurve::FlatAtExtremum, "flat at extremum"},
    {HvBaseFCurve::ZeroLengthTangents, "zero length"},
    {HvBaseFCurve::LinearTangents, "linear"},
    {HvBaseFCurve::MirroredTangents, "mirrored"},
    {HvBaseFCurve::AutomaticTangents, "automatic"},
    {HvBaseFCurve::UnlimitedAutoSlope, "unlimited slope"},
};

}  // namespace

std::string CurveName_OfKind(HvBaseFCurve::Kind kind)
{
    switch (kind) {
    case HvBaseFCurve::Boolean:
        return "boolean";
    case HvBaseFCurve::Integer:
        return "integer";
    case HvBaseFCurve::Standard:
        return "standard";
    case HvBaseFCurve::Raw:
        return "raw";
    case HvBaseFCurve::Quaternion:
        return "quaternion";
    }
    return "unknown";
}

std::string CurveName_OfExtrapolation(HvBaseFCurve::ExtrapolationMethod method)
{
    switch (method) {
    case HvBaseFCurve::ConstantExtrapolation:
        return "constant";
    case HvBaseFCurve::LinearExtrapolation:
        return "linear";
    case HvBaseFCurve::CycleExtrapolation:
        return "cycle";
    case HvBaseFCurve::RelativeCycleExtrapolation:
        return "relative cycle";
    }
    return "unknown";
}

std::string CurveName_OfSegmentKind(HvBaseFCurve::FSKind kind)
{
    switch (kind) {
    case HvBaseFCurve::ConstantSegment:
        return "constant";
    case HvBaseFCurve::LinearSegment:
        return "linear";
    case HvBaseFCurve::CubicSegment:
        return "cubic";
    }
    return "unknown";
}

std::string CurveName_OfConstraints(HvBaseFCurve const& curve, unsigned int key)
{
    std::string names;
    for (ConstraintName const& named : kConstraintNames) {
        int on = 0;
        if (curve.GetConstraintByIndex(key, named.constraint, on) != 0 && on != 0) {
            names += (names.empty() ? "" : ", ") + std::string(named.name);
        }
    }
    return names.empty() ? "-" : names;
}
