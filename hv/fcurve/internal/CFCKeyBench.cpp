// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The bench of a key lift: making and removing keys one by one.

#include <hv/fcurve/internal/CFCKeyBench.h>

#include <hv/fcurve/internal/std_edit_checks.h>

#include <algorithm>
#include <cmath>

namespace {

// What a curve tells of the time before its first key.

template <class T, class K>
void CopyHead(CFCKeyStoreA<T, K> const& from, CFCKeyStoreA<T, K>& to)
{
    to.leftValue = from.leftValue;
}
template <class T, class K>
void CopyHead(CFCKeyStoreB<T, K> const&, CFCKeyStoreB<T, K>&)
{
}
template <class T, class K>
void CopyHead(CFCKeyStoreC<T, K> const& from, CFCKeyStoreC<T, K>& to)
{
    to.defaultSegmentKind = from.defaultSegmentKind;
}

/// Moves the last key of one store behind the last of another.
template <class Store>
void MoveLast(Store& from, Store& to)
{
    unsigned int const last = from.keys.Count() - 1;
    to.InsertKey(to.keys.Count(), from.keys[last], from.ConstraintWord(last));
    from.RemoveKeyRange(last, last);
}

}  // namespace

template <class Curve>
CFCKeyBench<Curve>::CFCKeyBench(Impl& impl, CFCDraggedKeys<Curve>& dragged,
                                HvAltDynArray<unsigned int> const& lifted)
    : impl_(impl), dragged_(dragged), lifted_(lifted), benchCurve_(Traits::NewCurve()),
      bench_(HvCurveToolAccess::ImplOf(benchCurve_))
{
    bench_.keepsSpareKeys = true;
    pile_.keepsSpareKeys = true;
}

template <class Curve>
unsigned int CFCKeyBench<Curve>::Capacity() const
{
    return std::min(bench_.keys.Capacity(), pile_.keys.Capacity());
}

template <class Curve>
void CFCKeyBench<Curve>::Reserve(unsigned int numKeys)
{
    bench_.ReserveKeys(numKeys);
    pile_.ReserveKeys(numKeys);
}

template <class Curve>
void CFCKeyBench<Curve>::Begin()
{
    leftGuard_.isRestored = false;
    rightGuard_.isRestored = false;
}

template <class Curve>
void CFCKeyBench<Curve>::Work(unsigned int first, unsigned int last, CFCKeyTurn const* lifts,
                              CFCKeyTurn const* puts, unsigned int count)
{
    Load(first, last);
    for (unsigned int j = count; j-- > 0;) {
        Lift(lifts[j].key);
    }
    for (unsigned int j = 0; j < count; ++j) {
        PutDown(puts[j].key);
    }
    Store(first);
}

template <class Curve>
void CFCKeyBench<Curve>::Load(unsigned int first, unsigned int last)
{
    if (bench_.NumKeys() != 0) {
        bench_.RemoveKeyRange(0, bench_.NumKeys() - 1);
    }
    CopyHead(impl_, bench_);
    bench_.valueWhenNoKeys = impl_.valueWhenNoKeys;
    bench_.defaultBezierTangentConstraint = impl_.defaultBezierTangentConstraint;
    for (unsigned int i = first; i <= last; ++i) {
        bench_.InsertKey(bench_.NumKeys(), impl_.keys[i], impl_.ConstraintWord(i));
    }
    benchHasFirst_ = first == 0;
    benchHasLast_ = last + 1 == impl_.NumKeys();
}

template <class Curve>
void CFCKeyBench<Curve>::Store(unsigned int first)
{
    while (pile_.keys.Count() != 0) {
        MoveLast<typename Impl::Store>(pile_, bench_);
    }
    for (unsigned int i = 0; i < bench_.NumKeys(); ++i) {
        impl_.keys[first + i] = bench_.keys[i];
        impl_.SetConstraintWord(first + i, bench_.ConstraintWord(i));
    }
    if (benchHasFirst_) {
        CopyHead(bench_, impl_);
        impl_.valueWhenNoKeys = bench_.valueWhenNoKeys;
    }
}

/// Leaves two keys above the parameter on the bench, or those that there are: one more than an edit
/// looks at, so that none takes the last of them for the end of the curve.
template <class Curve>
void CFCKeyBench<Curve>::Seek(double parameter)
{
    typename Impl::Store& bench = bench_;
    constexpr unsigned int kKeysAbove = 2;
    auto const isAbove = [&](unsigned int fromEnd) {
        unsigned int const count = bench.keys.Count();
        return count >= fromEnd && bench.keys[count - fromEnd].parameter > parameter;
    };
    while (isAbove(kKeysAbove + 1)) {
        MoveLast(bench, pile_);
    }
    while (pile_.keys.Count() != 0 && !isAbove(kKeysAbove)) {
        MoveLast(pile_, bench);
    }
}

template <class Curve>
void CFCKeyBench<Curve>::Lift(unsigned int key)
{
    double const parameter = dragged_.keys[key].parameter;
    Seek(parameter);
    if constexpr (Traits::kHasTangents) {
        CFCDraggedTangents& tangents = dragged_.tangents[key];
        unsigned int i = 0;
        bench_.FindKey(parameter, 0, i);
        RememberGuards(i);
        bool const isInside = i != 0 && i + 1 != bench_.NumKeys();
        CFCFacingHandles beside{};
        if (isInside) {
            beside = HandlesBeside(i - 1, i + 1);
            tangents.atStart = tangents.atStart.isSet ? tangents.atStart : beside;
        }
        // The segment that closes takes its left part's kind; one that the key had divided gets
        // back the kind it had.
        bool const keepsKind = dragged_.isUniform || isFirstStep_;
        auto const kind = static_cast<HvBaseFCurve::FSKind>(keepsKind ? 0 : tangents.temporaryKind);
        bench_.RemoveKey(parameter, kind, 0, benchCurve_);
        if (isInside) {
            GiveHandlesBack(tangents, beside, i - 1);
        }
    } else {
        bench_.RemoveKey(parameter, 0, benchCurve_);
    }
}

template <class Curve>
void CFCKeyBench<Curve>::PutDown(unsigned int index)
{
    CFCDraggedKey const& key = dragged_.keys[index];
    Seek(key.targetParameter);
    unsigned int k = 0;
    if constexpr (Traits::kHasTangents) {
        CFCDraggedTangents& tangents = dragged_.tangents[index];
        unsigned int const r = bench_.NumKeysNotAbove(key.targetParameter);
        bool const isInside = r != 0 && r != bench_.NumKeys();
        tangents.undivided = isInside ? HandlesBeside(r - 1, r) : CFCFacingHandles();
        Create(key, tangents);
        bench_.FindKey(key.targetParameter, 0, k);
        if (isInside && key.targetParameter == key.startParameter) {
            GiveHandlesOfStart(tangents.atStart, k);
        }
        CFCStdKey& made = bench_.keys[k];
        if (key.startLeftValue != key.startRightValue) {
            made.leftHandle = HvStdEdit_FiniteOr(
                made.leftHandle + HvPoint2<double>(0, key.targetLeftValue - made.leftValue),
                HvPoint2<double>(made.parameter, key.targetLeftValue));
            made.leftValue = key.targetLeftValue;
        }
        made.privateByte1 = tangents.privateByte1;
        made.privateByte2 = tangents.privateByte2;
    } else {
        auto const value = static_cast<typename Traits::Value>(key.targetRightValue);
        bench_.CreateKey(key.targetParameter, value, benchCurve_);
        bench_.FindKey(key.targetParameter, 0, k);
    }
    bench_.SetConstraintWord(k, key.word);
    bench_.SetSelected(k, key.isSelected);
    if constexpr (Traits::kHasTangents) {
        RestoreGuards(k);
        CFCDraggedTangents& tangents = dragged_.tangents[index];
        tangents.divided =
            tangents.undivided.isSet ? HandlesBeside(k - 1, k + 1) : CFCFacingHandles();
    }
}

/// Creates a key of a standard curve, and remembers the kind of the segment that it divides. Where
/// the solver cannot tell the place from one end of its segment, the key of that end would take the
/// value instead: the key is then put in with its handles on it.
template <class Curve>
void CFCKeyBench<Curve>::Create(CFCDraggedKey const& key, CFCDraggedTangents& tangents)
{
    if constexpr (Traits::kHasTangents) {
        double const x = key.targetParameter;
        double const y = key.targetRightValue;
        unsigned int const numKeys = bench_.NumKeys();
        unsigned int const r = bench_.NumKeysNotAbove(x);
        auto const kind = static_cast<HvBaseFCurve::FSKind>(tangents.targetKind);
        tangents.temporaryKind = static_cast<unsigned char>(r == 0 ? bench_.FirstSegmentKind()
                                                                   : bench_.SegmentKind(r - 1));
        bool const isInside = r != 0 && r != numKeys;
        CFCStdKey const before = isInside ? bench_.keys[r - 1] : CFCStdKey();
        CFCStdKey const after = isInside ? bench_.keys[r] : CFCStdKey();
        bench_.CreateKey(x, y, kHvKeepKind, dragged_.isUniform ? kHvKeepKind : kind, benchCurve_);
        if (bench_.NumKeys() == numKeys) {
            bench_.keys[r - 1] = before;
            bench_.keys[r] = after;
            bench_.InsertKey(r,
                             CFCStdKey(x, y, dragged_.isUniform ? bench_.SegmentKind(r - 1) : kind),
                             CFCKeyConstraint::kTangentContinuityLocked);
            bench_.RegularizeRightTgt(r - 1, {x, y});
            bench_.RegularizeLeftTgt(r + 1, {x, y});
        }
    }
}

// Handles of the keys beside.

template <class Curve>
CFCFacingHandles CFCKeyBench<Curve>::HandlesBeside(unsigned int left, unsigned int right) const
{
    if constexpr (Traits::kHasTangents) {
        return {bench_.Parameter(left), bench_.Parameter(right), bench_.keys[left].rightHandle,
                bench_.keys[right].leftHandle, true};
    } else {
        return {};
    }
}

/// Gives the segment after key i, which a lifted key had divided, the handles that it had before:
/// each where the key is the same, and where nobody has changed the handle since, which `now`
/// tells; or where that key is lifted too, and its tangents go with it.
template <class Curve>
void CFCKeyBench<Curve>::GiveHandlesBack(CFCDraggedTangents const& tangents,
                                         CFCFacingHandles const& now, unsigned int i)
{
    if constexpr (Traits::kHasTangents) {
        CFCFacingHandles const& before = tangents.undivided;
        CFCFacingHandles const& after = tangents.divided;
        bool const givesLeft = after.isSet && now.leftParameter == after.leftParameter &&
                               (now.left == after.left || IsLifted(now.leftParameter));
        bool const givesRight = after.isSet && now.rightParameter == after.rightParameter &&
                                (now.right == after.right || IsLifted(now.rightParameter));
        CFCStdKey& leftKey = bench_.keys[i];
        CFCStdKey& rightKey = bench_.keys[i + 1];
        HvPoint2<double> const left = givesLeft ? before.left : leftKey.rightHandle;
        HvPoint2<double> const right = givesRight ? before.right : rightKey.leftHandle;
        if (bench_.IsSegmentValidWith(i, left, right)) {
            leftKey.rightHandle = left;
            rightKey.leftHandle = right;
        }
    }
}

/// Gives the keys beside key k, which is back where it started, the handles that they had then.
template <class Curve>
void CFCKeyBench<Curve>::GiveHandlesOfStart(CFCFacingHandles const& start, unsigned int k)
{
    if constexpr (Traits::kHasTangents) {
        if (start.isSet && start.leftParameter == bench_.Parameter(k - 1) &&
            start.rightParameter == bench_.Parameter(k + 1)) {
            bench_.keys[k - 1].rightHandle = start.left;
            bench_.keys[k + 1].leftHandle = start.right;
        }
    }
}

// Guards.

/// Whether the key at `parameter` is one that the step lifts.
template <class Curve>
bool CFCKeyBench<Curve>::IsLifted(double parameter) const
{
    unsigned int i = 0;
    return impl_.FindKey(parameter, 0, i) != 0 &&
           std::binary_search(lifted_.begin(), lifted_.end(), i);
}

template <class Curve>
void CFCKeyBench<Curve>::RememberGuards(unsigned int i)
{
    if constexpr (Traits::kHasTangents) {
        unsigned int const numKeys = bench_.NumKeys();
        auto const remember = [this](Guard& guard, unsigned int g, HvPoint2<double> const& vector) {
            // What is remembered of a key stays, so that a handle shortened by one step grows back;
            // a key whose own turn comes next does not take its place.
            if ((guard.isSet && guard.parameter == bench_.Parameter(g)) ||
                IsLifted(bench_.Parameter(g))) {
                return;
            }
            double const length = std::hypot(vector.x, vector.y);
            guard.parameter = bench_.Parameter(g);
            guard.leftValue = bench_.keys[g].leftValue;
            guard.unit = length > 0 ? HvPoint2<double>(vector.x / length, vector.y / length)
                                    : HvPoint2<double>();
            guard.length = length;
            guard.isSet = true;
        };
        if (numKeys > 1 && benchHasFirst_ && i == 0) {
            remember(leftGuard_, 1, bench_.LeftVector(1));
        }
        if (numKeys > 1 && benchHasLast_ && pile_.keys.Count() == 0 && i + 1 == numKeys) {
            remember(rightGuard_, i - 1, bench_.RightVector(i - 1));
        }
    }
}

template <class Curve>
void CFCKeyBench<Curve>::RestoreGuards(unsigned int i)
{
    if constexpr (Traits::kHasTangents) {
        unsigned int const numKeys = bench_.NumKeys();
        auto const isAt = [this](Guard const& guard, unsigned int g) {
            return guard.isSet && !guard.isRestored && guard.parameter == bench_.Parameter(g);
        };
        if (i + 1 < numKeys && isAt(leftGuard_, i + 1)) {
            CFCStdKey& key = bench_.keys[i + 1];
            if (!key.constraints.HasAny(CFCKeyConstraint::kValueLocked)) {
                key.leftHandle = HvStdEdit_FiniteOr(
                    key.leftHandle + HvPoint2<double>(0, leftGuard_.leftValue - key.leftValue),
                    HvPoint2<double>(key.parameter, leftGuard_.leftValue));
                key.leftValue = leftGuard_.leftValue;
            }
            bench_.SetActualKeyTgtHandleDirectionAndLength(leftGuard_.parameter, HvBaseFCurve::Left,
                                                           leftGuard_.unit, leftGuard_.length);
            leftGuard_.isRestored = true;
        }
        if (i != 0 && isAt(rightGuard_, i - 1)) {
            bench_.SetActualKeyTgtHandleDirectionAndLength(
                rightGuard_.parameter, HvBaseFCurve::Right, rightGuard_.unit, rightGuard_.length);
            rightGuard_.isRestored = true;
        }
    }
}

template class CFCKeyBench<HvBooleanFCurve>;
template class CFCKeyBench<HvIntegerFCurve>;
template class CFCKeyBench<HvRawFCurve>;
template class CFCKeyBench<HvStdFCurve>;
