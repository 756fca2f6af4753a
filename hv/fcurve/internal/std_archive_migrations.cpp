// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What older versions of the standard curve's archive meant by the same bytes, in the order in
// which it is made good.

#include <hv/fcurve/internal/curve_archive_readers.h>

#include <cmath>

namespace {

using Point = HvPoint2<double>;
using Word = CFCKeyConstraint;

// The last version that each migration is for.
constexpr std::uint32_t kLastWithOneAutomaticBit = 265;
constexpr std::uint32_t kLastWithFreeHandlesOnLines = 257;
constexpr std::uint32_t kLastWithoutAutomaticTangents = 259;
constexpr std::uint32_t kLastWithoutOuterHandles = 262;
constexpr std::uint32_t kLastWithStoredAutomaticTangents = 264;

/// A handle whose squared distance from its key is below this lies on the key.
constexpr double kOnKeySquaredDistance = 1e-7;

/// 0x0080 alone once meant what the two automatic bits mean together.
void AddAutomaticBit(HvStdFCurveImpl& impl)
{
    for (CFCStdKey& key : impl.keys) {
        if (key.constraints.HasAny(Word::kUnlimitedAutoSlope)) {
            key.constraints.Set(Word::kAutomaticTangents);
        }
    }
}

void ClearAutomaticBit(HvStdFCurveImpl& impl)
{
    for (CFCStdKey& key : impl.keys) {
        key.constraints.Clear(Word::kAutomaticTangents);
    }
}

bool IsOnKey(Point const& vector)
{
    return kOnKeySquaredDistance > vector.x * vector.x + vector.y * vector.y;
}

/// The handles that point away from the curve were once not kept: where one lies on its key it
/// becomes the reflection of the key's other handle. At a jump each handle belongs to the value of
/// its own side.
void ReflectOuterHandles(HvStdFCurveImpl& impl)
{
    unsigned int const last = impl.NumKeys() - 1;
    if (IsOnKey(impl.LeftVector(0))) {
        impl.keys[0].leftHandle = impl.LeftPoint(0) - impl.RightVector(0);
    }
    if (IsOnKey(impl.RightVector(last))) {
        impl.keys[last].rightHandle = impl.RightPoint(last) - impl.LeftVector(last);
    }
}

/// The handle, or the key's point when the numbers of a damaged file give none.
Point FiniteHandle(Point const& handle, Point const& key)
{
    return std::isfinite(handle.x) && std::isfinite(handle.y) ? handle : key;
}

/// Automatic tangents were once written out by the slope limit rule, whether or not the curve was
/// under the default Bezier tangent constraint. Evaluated handles depend on the values and
/// parameters of the neighbours alone, so one pass in place is enough.
void StoreAutomaticTangents(HvStdFCurveImpl& impl)
{
    unsigned char const constraint = impl.defaultBezierTangentConstraint;
    impl.defaultBezierTangentConstraint = 1;
    for (unsigned int i = 0; i < impl.NumKeys(); ++i) {
        CFCStdKey& key = impl.keys[i];
        if (!key.constraints.HasAny(Word::kAutomaticTangents)) {
            continue;
        }
        Point const left = impl.SlopeLimitRule(i, HvBaseFCurve::Left, impl.GetEvaluatedLeftTgt(i));
        Point const right =
            impl.SlopeLimitRule(i, HvBaseFCurve::Right, impl.GetEvaluatedRightTgt(i));
        key.leftHandle = FiniteHandle(left, impl.LeftPoint(i));
        key.rightHandle = FiniteHandle(right, impl.RightPoint(i));
        key.constraints.Clear(Word::kAutomaticTangents);
    }
    impl.defaultBezierTangentConstraint = constraint;
}

}  // namespace

void HvStdArchive_Migrate(HvStdFCurveImpl& impl, std::uint32_t version)
{
    bool const hasSegments = impl.NumKeys() >= 2;
    if (version <= kLastWithOneAutomaticBit) {
        AddAutomaticBit(impl);
    }
    if (version <= kLastWithFreeHandlesOnLines) {
        impl.SetValidBezierTangentsOnConstantOrLinearSegments();
    }
    if (version <= kLastWithoutAutomaticTangents) {
        ClearAutomaticBit(impl);
    }
    if (version <= kLastWithoutOuterHandles && hasSegments) {
        ReflectOuterHandles(impl);
    }
    if (version <= kLastWithStoredAutomaticTangents && hasSegments) {
        StoreAutomaticTangents(impl);
    }
}
