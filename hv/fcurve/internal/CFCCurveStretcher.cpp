// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The work of the curve stretcher on one kind of curve.

#include <hv/fcurve/internal/CFCCurveStretcher.h>

#include <hv/fcurve/internal/drag_edges.h>
#include <hv/fcurve/internal/std_edit_checks.h>
#include <hv/foundation/HvDoubleArray.h>

#include <algorithm>
#include <cmath>

namespace {

using Point = HvPoint2<double>;

/// Whether anything of the key follows the stretch: where it stands, or its handles. Those of a key
/// on the pivot scale as the curve on both sides of it does.
bool Follows(HvStretchKey const& key, bool horizontal)
{
    return key.weight != 0 || key.leftWeight != 0 ||
           (key.part != HvStretchOutside && key.IsFree(horizontal));
}

constexpr unsigned short kDirectionLocks = CFCKeyConstraint::kTangentDirectionLocked;
constexpr unsigned short kLengthLocks =
    CFCKeyConstraint::kTangentLengthLocked | CFCKeyConstraint::kTangentLengthContinuityLocked;

bool IsHandleLocked(CFCKeyConstraint word)
{
    return word.HasAny(kDirectionLocks | kLengthLocks);
}

/// A handle vector stretched by `sx` and `sy`, as far as the key's locks let it: a locked length
/// follows in direction only, a locked direction in length only.
Point StretchedVector(Point const& vector, double sx, double sy, CFCKeyConstraint word)
{
    Point const stretched(vector.x * sx, vector.y * sy);
    bool const keepsDirection = word.HasAny(kDirectionLocks);
    bool const keepsLength = word.HasAny(kLengthLocks);
    if (!keepsDirection && !keepsLength) {
        return stretched;
    }
    double const length = HvPoint2_Length(vector);
    double const wanted = HvPoint2_Length(stretched);
    if (keepsDirection && !keepsLength && length > 0) {
        return vector * (wanted / length);
    }
    return keepsLength && !keepsDirection && wanted > 0 ? stretched * (length / wanted) : vector;
}

/// The handle of the key at `point` with this vector, stretched by `sy`.
Point HandleOf(Point const& point, Point const& vector, double sy)
{
    return HvStdEdit_FiniteOr(point + Point(vector.x, vector.y * sy), point);
}

}  // namespace

template <class Curve>
CFCCurveStretcher<Curve>::CFCCurveStretcher(Curve& curve, HvStretchRequest const& request,
                                            HvDoubleArray const& listed)
    : HvFCurveStretcherImpl(curve, request, listed), impl_(HvCurveToolAccess::ImplOf(curve)),
      lift_(curve, dragged_)
{
    if (!Plan().IsUsable()) {
        return;
    }
    bool const horizontal = Plan().IsHorizontal();
    bool const savesUserData = horizontal && curve.HasUserData();
    dragged_.BeginWith(impl_);
    for (unsigned int j = 0; j < Plan().Keys().Count(); ++j) {
        HvStretchKey const& planned = Plan().Keys()[j];
        if (!Follows(planned, horizontal)) {
            continue;
        }
        unsigned int const k = dragged_.Count();
        unsigned int const i = Plan().First() + j;
        dragged_.Add(impl_, i);
        plannedOf_.Add(j);
        if (horizontal && planned.weight != 0) {
            order_.Add(k);
            if (savesUserData) {
                userData_.Save(curve, planned.parameter, k);
            }
        }
        if constexpr (Traits::kHasTangents) {
            if (!horizontal) {
                handles_.Add({impl_.keys[i].leftHandle, impl_.keys[i].rightHandle});
            }
        }
    }
    if (horizontal) {
        lift_.Begin(order_);
        wanted_.Reserve(Traits::kHasTangents ? dragged_.Count() : 0);
    }
}

template <class Curve>
int CFCCurveStretcher<Curve>::Stretch(Step const& step, double viewLeft, double viewRight,
                                      HvDoubleArray& before, HvDoubleArray& after,
                                      HvExtent2<double>& invalid)
{
    View const view{viewLeft, viewRight};
    unsigned int const count = Plan().Keys().Count();
    before.Reserve(HvArrayCapacity_GrownSize(before.Size(), count));
    after.Reserve(HvArrayCapacity_GrownSize(after.Size(), count));
    SetTargets(step);
    if (!AreTargetsFinite()) {
        return 0;
    }
    bool const staysPut = IsAtTargets();
    if (!staysPut && Plan().IsHorizontal() && !PrepareLift()) {
        return 0;
    }
    // From here on nothing fails.
    AppendParameters(before);
    if (!staysPut && Plan().IsHorizontal()) {
        StretchParameters(step, view, invalid);
    } else {
        bool const first = ReachesFirst();
        bool const last = ReachesLast();
        AugmentByEdges(view, first, last, invalid);
        AugmentByKeys(false, invalid);
        if (!staysPut) {
            StretchValues(step);
            AugmentByKeys(false, invalid);
            AugmentByEdges(view, first, last, invalid);
        }
    }
    AppendParameters(after);
    return 1;
}

template <class Curve>
void CFCCurveStretcher<Curve>::Finalize()
{
    userData_.Restore(EditedCurve(), [this](unsigned int k) { return dragged_.keys[k].parameter; });
}

// Targets.

template <class Curve>
void CFCCurveStretcher<Curve>::SetTargets(Step const& step)
{
    for (unsigned int k = 0; k < dragged_.Count(); ++k) {
        SetTarget(k, step);
    }
}

template <class Curve>
void CFCCurveStretcher<Curve>::SetTarget(unsigned int k, Step const& step)
{
    HvStretchKey const& planned = Planned(k);
    CFCDraggedKey& key = dragged_.keys[k];
    auto const target = [&step](double start, double weight) {
        return HvStretchPlan::Target(start, weight, step.share);
    };
    if (!Plan().IsHorizontal()) {
        double const right = target(planned.rightValue, planned.weight);
        key.targetRightValue = right == planned.rightValue ? right : Traits::Fitting(right);
        if (Traits::kHasTangents) {
            key.targetLeftValue = target(planned.leftValue, planned.leftWeight);
        }
        return;
    }
    key.targetParameter = target(planned.parameter, planned.weight);
    bool const flips = step.scale < 0 && planned.weight != 0;
    if constexpr (Traits::kIsRotation) {
        dragged_.rotations[k].targetIsTurned = flips;
    }
    if constexpr (Traits::kHasTangents) {
        // Turned round about the pivot, a key's left side is its right one.
        key.targetLeftValue = flips ? key.startRightValue : key.startLeftValue;
        key.targetRightValue = flips ? key.startLeftValue : key.startRightValue;
        CFCDraggedTangents& tangents = dragged_.tangents[k];
        tangents.targetKind = flips ? tangents.leftKind : tangents.rightKind;
    }
}

template <class Curve>
bool CFCCurveStretcher<Curve>::AreTargetsFinite() const
{
    return std::all_of(dragged_.keys.begin(), dragged_.keys.end(), [](CFCDraggedKey const& key) {
        return std::isfinite(key.targetParameter) && std::isfinite(key.targetLeftValue) &&
               std::isfinite(key.targetRightValue);
    });
}

template <class Curve>
bool CFCCurveStretcher<Curve>::IsAtTargets() const
{
    return std::all_of(dragged_.keys.begin(), dragged_.keys.end(), [](CFCDraggedKey const& key) {
        return key.parameter == key.targetParameter && key.leftValue == key.targetLeftValue &&
               key.rightValue == key.targetRightValue;
    });
}

// What the host is told.

template <class Curve>
void CFCCurveStretcher<Curve>::AppendParameters(HvDoubleArray& parameters) const
{
    unsigned int k = 0;
    for (unsigned int j = 0; j < Plan().Keys().Count(); ++j) {
        bool const isDragged = k < plannedOf_.Count() && plannedOf_[k] == j;
        parameters.Add(isDragged ? dragged_.keys[k].parameter : Plan().Keys()[j].parameter);
        k += isDragged ? 1 : 0;
    }
}

/// Where the dragged key k stands in the curve; false when it does not stand where it was left.
template <class Curve>
bool CFCCurveStretcher<Curve>::FindIndex(unsigned int k, unsigned int& i) const
{
    // Unless keys were turned round, none has changed its place among the others.
    i = Plan().First() + plannedOf_[k];
    double const parameter = dragged_.keys[k].parameter;
    return (i < impl_.NumKeys() && impl_.Parameter(i) == parameter) ||
           impl_.FindKey(parameter, 0, i) != 0;
}

/// Augments by the surroundings of the dragged keys, or of those alone that keep their places.
template <class Curve>
void CFCCurveStretcher<Curve>::AugmentByKeys(bool fixedOnly, HvExtent2<double>& invalid) const
{
    unsigned int end = 0;  // keys before it are in
    for (unsigned int k = 0; k < dragged_.Count(); ++k) {
        unsigned int i = 0;
        if ((fixedOnly && Planned(k).weight != 0) || !FindIndex(k, i)) {
            continue;
        }
        unsigned int const low = i - std::min(i, Impl::kExtentReach);
        unsigned int const high = std::min(i + Impl::kExtentReach, impl_.NumKeys() - 1);
        // Keys turned round come in any order.
        unsigned int const from = end > low && end <= high ? end : low;
        impl_.AugmentByKeys(from, high, invalid);
        end = high + 1;
    }
}

template <class Curve>
void CFCCurveStretcher<Curve>::AugmentByEdges(View const& view, bool first, bool last,
                                              HvExtent2<double>& invalid) const
{
    HvDragEdges_Augment(impl_, view.left, view.right, first, last, invalid);
}

/// Whether one of the two first keys of the curve follows the drag: what is before the keys changes
/// with them.
template <class Curve>
bool CFCCurveStretcher<Curve>::ReachesFirst() const
{
    return plannedOf_.Count() != 0 && Plan().First() + plannedOf_[0] <= 1;
}

template <class Curve>
bool CFCCurveStretcher<Curve>::ReachesLast() const
{
    return plannedOf_.Count() != 0 &&
           Plan().First() + plannedOf_[plannedOf_.Count() - 1] + 2 >= impl_.NumKeys();
}

// Parameters.

/// Makes ready what is to move; false when that is impossible.
template <class Curve>
bool CFCCurveStretcher<Curve>::PrepareLift()
{
    auto const isBefore = [this](unsigned int a, unsigned int b) {
        return dragged_.keys[a].targetParameter < dragged_.keys[b].targetParameter;
    };
    if (!std::is_sorted(order_.begin(), order_.end(), isBefore)) {
        std::sort(order_.begin(), order_.end(), isBefore);
    }
    return lift_.Prepare(order_);
}

template <class Curve>
void CFCCurveStretcher<Curve>::StretchParameters(Step const& step, View const& view,
                                                 HvExtent2<double>& invalid)
{
    bool const first = lift_.ReachesFirst() || ReachesFirst();
    bool const last = lift_.ReachesLast() || ReachesLast();
    AugmentByEdges(view, first, last, invalid);
    lift_.AugmentBefore(invalid);
    AugmentByKeys(true, invalid);
    lift_.Move();
    if (Traits::kHasTangents) {
        StoreHandles(step.scale);
    }
    lift_.RestoreEnds();
    lift_.AugmentAfter(invalid);
    AugmentByKeys(true, invalid);
    AugmentByEdges(view, first, last, invalid);
}

/// Gives all keys that follow their handles: stretched along in the region, as they were beyond.
template <class Curve>
void CFCCurveStretcher<Curve>::StoreHandles(double scale)
{
    wanted_.Chop(0);
    for (unsigned int k = 0; k < dragged_.Count(); ++k) {
        HvStretchKey const& planned = Planned(k);
        CFCDraggedKey const& key = dragged_.keys[k];
        CFCDraggedTangents const& tangents = dragged_.tangents[k];
        unsigned int i = 0;
        if (key.isLost || !FindIndex(k, i)) {
            continue;
        }
        Point left = tangents.leftUnit * tangents.leftLength;
        Point right = tangents.rightUnit * tangents.rightLength;
        if (scale < 0 && planned.weight != 0) {
            std::swap(left, right);
            left.x = -left.x;
            right.x = -right.x;
        }
        double const sx = planned.part == HvStretchOutside ? 1 : std::fabs(scale);
        CFCKeyConstraint const word{key.word};
        wanted_.Add({i, StretchedVector(left, sx, 1, word), StretchedVector(right, sx, 1, word)});
    }
    if constexpr (Traits::kHasTangents) {
        CFCWantedHandles_Store(impl_, wanted_);
    }
}

// Values.

template <class Curve>
void CFCCurveStretcher<Curve>::StretchValues(Step const& step)
{
    for (unsigned int k = 0; k < dragged_.Count(); ++k) {
        CFCDraggedKey& key = dragged_.keys[k];
        unsigned int i = 0;
        key.isLost = !FindIndex(k, i);
        if (!key.isLost) {
            SetValues(k, i, step);
            key.leftValue = key.targetLeftValue;
            key.rightValue = key.targetRightValue;
        }
    }
    // Now that all other handles have the x of the start, with which the segments were valid.
    for (unsigned int k = 0; Traits::kHasTangents && k < dragged_.Count(); ++k) {
        unsigned int i = 0;
        if (step.share != 0 && IsHandleLocked({dragged_.keys[k].word}) && FindIndex(k, i)) {
            StretchLockedHandles(k, i, step.scale);
        }
    }
}

/// Sets the values of the dragged key k, which stands at index i, and stretches its handles in y; a
/// locked one moves along as it was at the start.
template <class Curve>
void CFCCurveStretcher<Curve>::SetValues(unsigned int k, unsigned int i, Step const& step)
{
    CFCDraggedKey const& target = dragged_.keys[k];
    if constexpr (Traits::kIsRotation) {
        CFCDraggedKey_SetAngle(impl_, i, target, dragged_.rotations[k]);
        (void)step;
    } else if constexpr (!Traits::kHasTangents) {
        impl_.keys[i].value = static_cast<typename Traits::Value>(target.targetRightValue);
        (void)step;
    } else {
        CFCStdKey& key = impl_.keys[i];
        key.leftValue = target.targetLeftValue;
        key.rightValue = target.targetRightValue;
        if (step.share == 0) {
            key.leftHandle = handles_[k].left;
            key.rightHandle = handles_[k].right;
            return;
        }
        double const sy = IsHandleLocked({target.word}) ? 1 : step.scale;
        HvStretchKey const& planned = Planned(k);
        if (planned.IsLeftInside() || planned.leftWeight != 0) {
            Point const vector = handles_[k].left - Point(planned.parameter, planned.leftValue);
            impl_.WriteLeftHandle(
                i, HandleOf(impl_.LeftPoint(i), vector, planned.IsLeftInside() ? sy : 1));
        }
        if (planned.IsRightInside() || planned.weight != 0) {
            Point const vector = handles_[k].right - Point(planned.parameter, planned.rightValue);
            impl_.WriteRightHandle(
                i, HandleOf(impl_.RightPoint(i), vector, planned.IsRightInside() ? sy : 1));
        }
    }
}

/// Stretches the handles of a key as far as its locks let them. Their x changes with that; a handle
/// that no length fits into its segment stays.
template <class Curve>
void CFCCurveStretcher<Curve>::StretchLockedHandles(unsigned int k, unsigned int i, double scale)
{
    if constexpr (Traits::kHasTangents) {
        auto const store = [&](HvBaseFCurve::KeySide side) {
            Point const start = impl_.StoredHandle(i, side) - impl_.KeyPoint(i, side);
            Point wanted = StretchedVector(start, 1, scale, {dragged_.keys[k].word});
            if (impl_.FitActualKeyTgtHandle(i, side, wanted)) {
                impl_.WriteVector(i, side, wanted);
            }
        };
        if (Planned(k).IsLeftInside()) {
            store(HvBaseFCurve::Left);
        }
        if (Planned(k).IsRightInside()) {
            store(HvBaseFCurve::Right);
        }
    } else {
        (void)k;
        (void)i;
        (void)scale;
    }
}

template class CFCCurveStretcher<HvBooleanFCurve>;
template class CFCCurveStretcher<HvIntegerFCurve>;
template class CFCCurveStretcher<HvRawFCurve>;
template class CFCCurveStretcher<HvStdFCurve>;
template class CFCCurveStretcher<HvQuatFCurve>;
