// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the editing slots of the standard curve ask of their arguments before they touch a key.

#ifndef HV_FCURVE_INTERNAL_STD_EDIT_CHECKS_H
#define HV_FCURVE_INTERNAL_STD_EDIT_CHECKS_H

#include <hv/fcurve/HvBaseFCurve.h>
#include <hv/foundation/HvPoint2.h>

#include <cmath>

/// Whether all numbers can be stored: a NaN would break the order of the keys for good.
inline bool HvStdEdit_AreFinite(double a)
{
    return std::isfinite(a);
}
inline bool HvStdEdit_AreFinite(double a, double b)
{
    return std::isfinite(a) && std::isfinite(b);
}
inline bool HvStdEdit_AreFinite(HvPoint2<double> const& P)
{
    return HvStdEdit_AreFinite(P.x, P.y);
}

/// `handle`, with the coordinate of the key for one that values near the limit of a double have
/// made no number. The other coordinate stays, for the segment may be valid only with that x.
inline HvPoint2<double> HvStdEdit_FiniteOr(HvPoint2<double> const& handle,
                                           HvPoint2<double> const& key)
{
    return {HvStdEdit_AreFinite(handle.x) ? handle.x : key.x,
            HvStdEdit_AreFinite(handle.y) ? handle.y : key.y};
}

/// Whether `kind` is one that a span can have.
inline bool HvStdEdit_IsKind(HvBaseFCurve::FSKind kind)
{
    return kind >= HvBaseFCurve::ConstantSegment && kind <= HvBaseFCurve::CubicSegment;
}

/// Whether `kind` is one that a span can have, or 0, which keeps the kind in place.
inline bool HvStdEdit_IsKindOrKeep(HvBaseFCurve::FSKind kind)
{
    return kind == 0 || HvStdEdit_IsKind(kind);
}

inline bool HvStdEdit_IsSide(HvBaseFCurve::KeySide side)
{
    return side == HvBaseFCurve::Left || side == HvBaseFCurve::Right;
}

/// `kind`, or `otherwise` when it is 0.
inline HvBaseFCurve::FSKind HvStdEdit_KindOr(HvBaseFCurve::FSKind kind,
                                             HvBaseFCurve::FSKind otherwise)
{
    return kind == 0 ? otherwise : kind;
}

/// The kind argument of the forms without one.
constexpr HvBaseFCurve::FSKind kHvKeepKind = static_cast<HvBaseFCurve::FSKind>(0);

#endif
