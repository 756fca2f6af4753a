// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// How the dragging tools reach below a curve's locks, and what they need to know of its kind.

#ifndef HV_FCURVE_INTERNAL_HVCURVETOOLACCESS_H
#define HV_FCURVE_INTERNAL_HVCURVETOOLACCESS_H

#include <hv/fcurve/HvBooleanFCurve.h>
#include <hv/fcurve/HvIntegerFCurve.h>
#include <hv/fcurve/HvRawFCurve.h>
#include <hv/fcurve/HvStdFCurve.h>
#include <hv/fcurve/internal/CFCSingleValueImpl.h>
#include <hv/fcurve/internal/HvRawFCurveImpl.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <hv/foundation/saturate.h>

#include <cmath>

/// The implementation of a curve, for a tool that holds both locks.
struct HvCurveToolAccess {
    template <class Impl>
    static Impl& ImplOf(HvFCurveShell<Impl>& curve)
    {
        return *curve.impl_;
    }
};

/// What the tools need to know of a kind of curve: its implementation, whether its keys have
/// tangents, jumps and kinds, how a number becomes a value of it, and a new curve to work on.
template <class Curve>
struct HvCurveKindTraits;

template <>
struct HvCurveKindTraits<HvBooleanFCurve> {
    using Impl = CFCBooleanImpl;
    using Value = bool;
    static constexpr bool kHasTangents = false;
    static constexpr bool kIsStepped = true;
    static double Fitting(double number) { return number >= 0.5 ? 1 : 0; }
    static HvBooleanFCurve NewCurve() { return HvBooleanFCurve(0.0); }
};

template <>
struct HvCurveKindTraits<HvIntegerFCurve> {
    using Impl = CFCIntegerImpl;
    using Value = int;
    static constexpr bool kHasTangents = false;
    static constexpr bool kIsStepped = true;
    static double Fitting(double number) { return HvSaturate_To<int>(std::floor(number + 0.5)); }
    static HvIntegerFCurve NewCurve() { return HvIntegerFCurve(0.0); }
};

template <>
struct HvCurveKindTraits<HvRawFCurve> {
    using Impl = HvRawFCurveImpl;
    using Value = double;
    static constexpr bool kHasTangents = false;
    static constexpr bool kIsStepped = false;
    static double Fitting(double number) { return number; }
    static HvRawFCurve NewCurve() { return HvRawFCurve(0.0); }
};

template <>
struct HvCurveKindTraits<HvStdFCurve> {
    using Impl = HvStdFCurveImpl;
    using Value = double;
    static constexpr bool kHasTangents = true;
    static constexpr bool kIsStepped = false;
    static double Fitting(double number) { return number; }
    static HvStdFCurve NewCurve() { return HvStdFCurve(0.0, HvBaseFCurve::CubicSegment); }
};

/// Calls `visit` with the curve as what it is, and returns its result; `otherwise` for a kind that
/// the tools do not know.
template <class Result, class Visit>
Result HvCurveKind_Visit(HvBaseFCurve& curve, Result otherwise, Visit visit)
{
    switch (curve.GetKind()) {
    case HvBaseFCurve::Boolean:
        return visit(static_cast<HvBooleanFCurve&>(curve));
    case HvBaseFCurve::Integer:
        return visit(static_cast<HvIntegerFCurve&>(curve));
    case HvBaseFCurve::Standard:
        return visit(static_cast<HvStdFCurve&>(curve));
    case HvBaseFCurve::Raw:
        return visit(static_cast<HvRawFCurve&>(curve));
    case HvBaseFCurve::Quaternion:
        break;
    }
    return otherwise;
}

#endif
