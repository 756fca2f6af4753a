// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What a dragging tool remembers of its keys.

#include <hv/fcurve/internal/CFCDraggedKeys.h>

#include <cmath>

namespace {

using Point = HvPoint2<double>;

/// A vector as a direction and a length.
void Divide(Point const& vector, Point& unit, double& length)
{
    length = std::hypot(vector.x, vector.y);
    unit = length > 0 ? Point(vector.x / length, vector.y / length) : Point();
    if (!(length > 0)) {
        length = 0;
    }
}

CFCDraggedTangents TangentsOf(HvStdFCurveImpl const& impl, unsigned int i)
{
    unsigned int const last = impl.NumKeys() - 1;
    CFCDraggedTangents tangents{};
    Divide(impl.LeftVector(i), tangents.leftUnit, tangents.leftLength);
    Divide(impl.RightVector(i), tangents.rightUnit, tangents.rightLength);
    // The outer handle of an end key, which linear extrapolation shows, continues the inner one
    // where there is none.
    if (i == 0 && last != 0 && tangents.leftLength == 0) {
        tangents.leftUnit = -tangents.rightUnit;
        tangents.leftLength = tangents.rightLength;
    }
    if (i == last && last != 0 && tangents.rightLength == 0) {
        tangents.rightUnit = -tangents.leftUnit;
        tangents.rightLength = tangents.leftLength;
    }
    tangents.leftGap = i == 0 ? 0 : impl.Parameter(i) - impl.Parameter(i - 1);
    tangents.rightGap = i == last ? 0 : impl.Parameter(i + 1) - impl.Parameter(i);
    tangents.leftKind = static_cast<unsigned char>(impl.SegmentKind(i, HvBaseFCurve::Left));
    tangents.rightKind = impl.keys[i].segmentKind;
    tangents.targetKind = tangents.rightKind;
    tangents.temporaryKind = HvBaseFCurve::CubicSegment;
    tangents.privateByte1 = impl.keys[i].privateByte1;
    tangents.privateByte2 = impl.keys[i].privateByte2;
    return tangents;
}

CFCDraggedRotation RotationOf(HvQuatFCurveImpl const& impl, unsigned int i)
{
    // No span comes before the first key.
    HvQuatKey const before = i == 0 ? HvQuatKey() : impl.Curve().GetKey(i - 1);
    return {impl.AngleOf(i), before.spins, false, false};
}

}  // namespace

template <class Curve>
void CFCDraggedKeys<Curve>::BeginWith(Impl const& impl)
{
    if constexpr (Traits::kHasTangents) {
        firstSegmentKind = impl.FirstSegmentKind();
        lastKeyKind = firstSegmentKind;
        for (CFCStdKey const& key : impl.keys) {
            lastKeyKind = static_cast<FSKind>(key.segmentKind);
            isUniform = isUniform && lastKeyKind == firstSegmentKind;
        }
    } else {
        (void)impl;
    }
}

template <class Curve>
void CFCDraggedKeys<Curve>::Reserve(unsigned int count)
{
    keys.Reserve(count);
    if (Traits::kHasTangents) {
        tangents.Reserve(count);
    }
    if (Traits::kIsRotation) {
        rotations.Reserve(count);
    }
}

template <class Curve>
void CFCDraggedKeys<Curve>::Add(Impl const& impl, unsigned int i)
{
    CFCKeyConstraint word{impl.ConstraintWord(i)};
    CFCDraggedKey key{};
    key.isSelected = impl.IsCurveSelected() && impl.IsSelected(i);
    word.Clear(CFCKeyConstraint::kSelected);
    key.word = word.word;
    key.startParameter = impl.Parameter(i);
    key.startRightValue = static_cast<double>(impl.RightValueOf(i));
    bool const hasLeftValue = Traits::kHasTangents || (Traits::kIsStepped && i == 0);
    key.startLeftValue =
        hasLeftValue ? static_cast<double>(impl.LeftValueOf(i)) : key.startRightValue;
    key.parameter = key.previousParameter = key.targetParameter = key.startParameter;
    key.leftValue = key.targetLeftValue = key.startLeftValue;
    key.rightValue = key.targetRightValue = key.startRightValue;
    if constexpr (Traits::kHasTangents) {
        tangents.Reserve(HvArrayCapacity_GrownSize(tangents.Count(), 1));
        keys.Add(key);
        tangents.Add(TangentsOf(impl, i));
    } else if constexpr (Traits::kIsRotation) {
        rotations.Reserve(HvArrayCapacity_GrownSize(rotations.Count(), 1));
        keys.Add(key);
        rotations.Add(RotationOf(impl, i));
    } else {
        keys.Add(key);
    }
}

void CFCDraggedKey_SetAngle(HvQuatFCurveImpl& impl, unsigned int i, CFCDraggedKey const& key,
                            CFCDraggedRotation const& rotation)
{
    if (key.targetRightValue == key.startRightValue) {
        impl.SetAngle(i, rotation.startAngle);
    } else if (key.targetRightValue != key.rightValue) {
        impl.SetValue(i, key.targetRightValue);
    }
}

template class CFCDraggedKeys<HvBooleanFCurve>;
template class CFCDraggedKeys<HvIntegerFCurve>;
template class CFCDraggedKeys<HvRawFCurve>;
template class CFCDraggedKeys<HvStdFCurve>;
template class CFCDraggedKeys<HvQuatFCurve>;
