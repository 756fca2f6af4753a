// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// How the dragging tools reach below a curve's locks, and what they need to know of its kind.

#ifndef HV_FCURVE_INTERNAL_HVCURVETOOLACCESS_H
#define HV_FCURVE_INTERNAL_HVCURVETOOLACCESS_H

#include <hv/fcurve/HvBooleanFCurve.h>
#include <hv/fcurve/HvIntegerFCurve.h>
#include <hv/fcurve/HvQuatFCurve.h>
#include <hv/fcurve/HvRawFCurve.h>
#include <hv/fcurve/HvStdFCurve.h>
#include <hv/fcurve/internal/CFCSingleValueImpl.h>
#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvQuatFCurveImpl.h>
#include <hv/fcurve/internal/HvRawFCurveImpl.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <hv/foundation/saturate.h>

#include <cmath>
#include <optional>

/// The implementation of a curve, for a tool that holds both locks.
struct HvCurveToolAccess {
    template <class Impl>
    static Impl& ImplOf(HvFCurveShell<Impl>& curve)
    {
        return *curve.impl_;
    }
};

/// The locks of a call of a tool: those of a writer, and around a component of a rotation also the
/// lock of the rotation, which other curves show.
class HvCurveToolLock {
public:
    explicit HvCurveToolLock(HvBaseFCurve const& curve) : section_(curve)
    {
        if (curve.GetKind() == HvBaseFCurve::Quaternion) {
            shown_.emplace(*static_cast<HvQuatFCurve const&>(curve).GetQuatCurve());
        }
    }

private:
    HvCurveWriter section_;
    std::optional<HvQuatCurveLock> shown_;
};

/// What the tools need to know of a kind of curve: its implementation, whether its keys have
/// tangents, jumps and kinds, or are rotations, whether a drag of all keys shifts the curve instead
/// of moving keys, how a number becomes a value of it, and a new curve to work on.
template <class Curve>
struct HvCurveKindTraits;

/// Booleans cannot be shifted in value.
template <>
struct HvCurveKindTraits<HvBooleanFCurve> {
    using Impl = CFCBooleanImpl;
    using Value = bool;
    static constexpr bool kHasTangents = false;
    static constexpr bool kIsStepped = true;
    static constexpr bool kIsRotation = false;
    static constexpr bool kShiftsAsAWhole = false;
    static double Fitting(double number) { return number >= 0.5 ? 1 : 0; }
    static HvBooleanFCurve NewCurve() { return HvBooleanFCurve(0.0); }
};

template <>
struct HvCurveKindTraits<HvIntegerFCurve> {
    using Impl = CFCIntegerImpl;
    using Value = int;
    static constexpr bool kHasTangents = false;
    static constexpr bool kIsStepped = true;
    static constexpr bool kIsRotation = false;
    static constexpr bool kShiftsAsAWhole = true;
    static double Fitting(double number) { return HvSaturate_To<int>(std::floor(number + 0.5)); }
    static HvIntegerFCurve NewCurve() { return HvIntegerFCurve(0.0); }
};

template <>
struct HvCurveKindTraits<HvRawFCurve> {
    using Impl = HvRawFCurveImpl;
    using Value = double;
    static constexpr bool kHasTangents = false;
    static constexpr bool kIsStepped = false;
    static constexpr bool kIsRotation = false;
    static constexpr bool kShiftsAsAWhole = true;
    static double Fitting(double number) { return number; }
    static HvRawFCurve NewCurve() { return HvRawFCurve(0.0); }
};

template <>
struct HvCurveKindTraits<HvStdFCurve> {
    using Impl = HvStdFCurveImpl;
    using Value = double;
    static constexpr bool kHasTangents = true;
    static constexpr bool kIsStepped = false;
    static constexpr bool kIsRotation = false;
    static constexpr bool kShiftsAsAWhole = true;
    static double Fitting(double number) { return number; }
    static HvStdFCurve NewCurve() { return HvStdFCurve(0.0, HvBaseFCurve::CubicSegment); }
};

/// Degrees are kept as radians: a shift at each step would add what rounding does to them, and a
/// drag back would not restore the angles.
template <>
struct HvCurveKindTraits<HvQuatFCurve> {
    using Impl = HvQuatFCurveImpl;
    using Value = double;
    static constexpr bool kHasTangents = false;
    static constexpr bool kIsStepped = false;
    static constexpr bool kIsRotation = true;
    static constexpr bool kShiftsAsAWhole = false;
    static double Fitting(double number) { return number; }
};

/// Whether the values of a curve can be dragged: not those of a component that a rotation has not.
template <class Impl>
bool HvCurveTool_HasValues(Impl const&)
{
    return true;
}
inline bool HvCurveTool_HasValues(HvQuatFCurveImpl const& impl)
{
    return impl.HasComponent();
}

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
        return visit(static_cast<HvQuatFCurve&>(curve));
    }
    return otherwise;
}

#endif
