// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A stretch of the standard curve as a curve of its own, what lies beyond the keys included.
//
// What the source shows of itself through its extrapolation becomes keys. Beyond the ends these are
// two, joined to the keys by a line or a constant. Of a cycling curve the snapshot is built of
// pieces, each a section of the key range, moved by the number of its cycle:
//
//     source       f-------l
//     snapshot     [ a-----l|f-------l|f---b ]      a, b: `from` and `to` in the key range
//
// At a joint the last key of one piece takes over the right side of the first key of the next, so a
// jump between the cycles is a jump of one key. Whatever would derive handles from the neighbours
// is taken away there, because a joint has other neighbours than an end.

#include <hv/fcurve/HvStdFCurve.h>

#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <hv/fcurve/internal/HvUserDataMoves.h>
#include <hv/fcurve/internal/cycle_span.h>
#include <hv/fcurve/internal/std_edit_checks.h>
#include <hv/foundation/saturate.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

namespace {

using CurvePtr = std::unique_ptr<HvStdFCurve>;

/// How the keys of a cycle are moved.
struct CycleShift {
    double dx;
    double dy;
};

/// Moves the right side of a key, value and handle, whatever locks it: the key belongs to a curve
/// that is being made.
void MoveRightSide(CFCStdKey& key, double dy)
{
    key.rightValue += dy;
    key.rightHandle.y += dy;
}

void MoveLeftSide(CFCStdKey& key, double dy)
{
    key.leftValue += dy;
    key.leftHandle.y += dy;
}

void MoveAlongAxis(CFCStdKey& key, double dx)
{
    key.parameter += dx;
    key.leftHandle.x += dx;
    key.rightHandle.x += dx;
}

void Move(CFCStdKey& key, CycleShift const& shift)
{
    MoveAlongAxis(key, shift.dx);
    MoveLeftSide(key, shift.dy);
    MoveRightSide(key, shift.dy);
}

/// Whether cycles that rise have not left the numbers.
bool AreKeysFinite(HvStdFCurveImpl const& impl)
{
    return std::all_of(impl.keys.begin(), impl.keys.end(), [](CFCStdKey const& key) {
        return HvStdEdit_AreFinite(key.leftValue, key.rightValue) &&
               HvStdEdit_AreFinite(key.leftHandle) && HvStdEdit_AreFinite(key.rightHandle);
    });
}

/// Makes the handles of an end key plain stored ones, which a joint takes over as they are.
void PrepareJoint(HvStdFCurveImpl& impl, unsigned int i)
{
    impl.FixKeyHandles(i);
    impl.keys[i].constraints.Clear(CFCKeyConstraint::kFlatTangents |
                                   CFCKeyConstraint::kZeroLengthTangents);
}

}  // namespace

/// Makes the snapshot of [from, to], from <= to, both finite, of a curve that the caller has
/// locked. Results are null where a value is no finite number.
class HvStdFCurve::SnapShotBuilder {
public:
    SnapShotBuilder(HvStdFCurve const& source, double from, double to)
        : source_(source), keys_(*source.impl_), from_(from), to_(to)
    {
    }

    CurvePtr Build() const
    {
        if (keys_.NumKeys() == 0) {
            return FromValues(keys_.FirstSegmentKind(), keys_.FirstSegmentKind());
        }
        if (keys_.Cycles()) {
            return FromCycles();
        }
        if (to_ < keys_.FirstParameter()) {
            return FromValues(EndKind(), keys_.FirstSegmentKind());
        }
        if (keys_.LastParameter() < from_) {
            return FromValues(EndKind(), keys_.SegmentKind(keys_.NumKeys() - 1));
        }
        return FromKeys();
    }

private:
    /// The kind of a segment that shows what the curve is beyond its keys.
    FSKind EndKind() const
    {
        return keys_.extrapolation == LinearExtrapolation ? LinearSegment : ConstantSegment;
    }
    double ValueAt(double x) const { return keys_.EvalRightUsingExtrapolationMethod(x); }

    /// Two keys with the values at both ends; the spans outside of them have the kind `outer`.
    CurvePtr FromValues(FSKind kind, FSKind outer) const
    {
        double const first = ValueAt(from_);
        double const last = ValueAt(to_);
        if (!HvStdEdit_AreFinite(first, last)) {
            return nullptr;
        }
        CurvePtr result(new HvStdFCurve(source_));
        HvStdFCurveImpl& impl = *result->impl_;
        impl.RemoveAllKeys(outer, *result);
        impl.CreateKey(from_, first, outer, from_ < to_ ? kind : outer, *result);
        if (from_ < to_) {
            impl.CreateKey(to_, last, kind, outer, *result);
        }
        return result;
    }

    /// The section of the keys, with a further key where an end lies beyond them.
    CurvePtr FromKeys() const
    {
        double const first = keys_.FirstParameter();
        double const last = keys_.LastParameter();
        double const firstValue = ValueAt(from_);
        double const lastValue = ValueAt(to_);
        if (!HvStdEdit_AreFinite(firstValue, lastValue)) {
            return nullptr;
        }
        CurvePtr result(new HvStdFCurve(source_, std::max(from_, first), std::min(to_, last)));
        HvStdFCurveImpl& impl = *result->impl_;
        if (from_ < first) {
            impl.FixKeyHandles(0);
            CFCStdKey& key = impl.keys[0];
            if (HasLineBesideJump(key)) {
                MoveLeftSide(key, LineAt(first, from_) - key.leftValue);
            }
            impl.CreateKey(from_, firstValue, kHvKeepKind, EndKind(), *result);
        }
        if (last < to_) {
            unsigned int const end = impl.NumKeys() - 1;
            impl.FixKeyHandles(end);
            CFCStdKey& key = impl.keys[end];
            if (HasLineBesideJump(key)) {
                MoveRightSide(key, LineAt(last, to_) - key.rightValue);
            }
            impl.CreateKey(to_, lastValue, EndKind(), kHvKeepKind, *result);
        }
        return result;
    }

    /// Whether the line beyond an end key may start beside the value that faces it.
    bool HasLineBesideJump(CFCStdKey const& key) const
    {
        return EndKind() == LinearSegment && key.leftValue != key.rightValue;
    }
    /// The height at the end key `x` of the line that passes `beyond`.
    double LineAt(double x, double beyond) const
    {
        return 2 * ValueAt(0.5 * x + 0.5 * beyond) - ValueAt(beyond);
    }

    CurvePtr FromCycles() const
    {
        unsigned int const n = keys_.NumKeys();
        double const first = keys_.FirstParameter();
        double const last = keys_.LastParameter();
        HvCycleSpan const span = HvCycleSpan_Of(from_, to_, first, last, n);
        double const a = InKeyRange(from_ - ShiftOf(span.first).dx);
        double const b = InKeyRange(to_ - ShiftOf(span.last).dx);
        bool const isOne = span.first == span.last;

        HvStdFCurve cycle(source_);
        if (!isOne) {
            PrepareJoint(*cycle.impl_, 0);
            PrepareJoint(*cycle.impl_, n - 1);
        }
        CurvePtr result(new HvStdFCurve(cycle, a, isOne ? b : last));
        MoveAll(*result, ShiftOf(span.first));
        for (double c = span.first + 1; c < span.last; ++c) {
            AppendCycle(*result, cycle, ShiftOf(c));
        }
        if (!isOne) {
            AppendCycle(*result, HvStdFCurve(cycle, first, b), ShiftOf(span.last));
        }
        FinishEnds(*result, b == last ? ShiftOf(span.last + 1).dy + keys_.keys[0].rightValue
                                      : LastRightValue(*result));
        return AreKeysFinite(*result->impl_) ? std::move(result) : nullptr;
    }

    /// What cycle number c adds to parameters and values; the values rise with the cycles of the
    /// right-hand evaluation, and their number saturates as it does there.
    CycleShift ShiftOf(double c) const
    {
        bool const rises = keys_.extrapolation == RelativeCycleExtrapolation;
        double const offset = keys_.keys[keys_.NumKeys() - 1].rightValue - keys_.keys[0].rightValue;
        return {c * (keys_.LastParameter() - keys_.FirstParameter()),
                rises ? HvSaturate_To<int>(c) * offset : 0};
    }
    double InKeyRange(double x) const
    {
        return std::min(std::max(x, keys_.FirstParameter()), keys_.LastParameter());
    }
    static double LastRightValue(HvStdFCurve const& curve)
    {
        return curve.impl_->keys[curve.impl_->NumKeys() - 1].rightValue;
    }

    static void MoveAll(HvStdFCurve& curve, CycleShift const& shift)
    {
        for (CFCStdKey& key : curve.impl_->keys) {
            Move(key, shift);
        }
        curve.impl_->RepairOrder();  // far from the keys two of them may round to one
        if (shift.dx != 0 && curve.HasUserData()) {
            curve.TranslateAllKeyUserData(shift.dx);
        }
    }

    /// Appends a piece of the key range as a cycle. The joint takes over the right side of the
    /// piece's first key, even against a lock, which is there to keep the key's value for editors.
    static void AppendCycle(HvStdFCurve& curve, HvStdFCurve const& piece, CycleShift const& shift)
    {
        HvStdFCurveImpl& impl = *curve.impl_;
        HvStdFCurveImpl const& added = *piece.impl_;
        unsigned int const joint = impl.NumKeys() - 1;
        bool const locked = impl.keys[joint].constraints.HasAny(CFCKeyConstraint::kValueLocked);
        impl.keys[joint].constraints.Clear(CFCKeyConstraint::kValueLocked);
        impl.Append(added, shift.dx);
        impl.keys[joint].constraints.Assign(CFCKeyConstraint::kValueLocked, locked);
        MoveRightSide(impl.keys[joint], shift.dy);
        for (unsigned int i = joint + 1; i < impl.NumKeys(); ++i) {
            MoveLeftSide(impl.keys[i], shift.dy);
            MoveRightSide(impl.keys[i], shift.dy);
        }
        if (!piece.HasUserData()) {
            return;
        }
        for (unsigned int k = 0; k < added.NumKeys(); ++k) {
            double const p = added.Parameter(k);
            double const moved = k == 0 ? impl.Parameter(joint) : p + shift.dx;
            if (piece.HasUserData(p) && curve.IsKeyParameter(moved, 0)) {
                curve.CopyKeyUserData(piece, p, moved);
            }
        }
    }

    /// Puts the end keys exactly where they belong, whatever folding has rounded, and gives the
    /// last one the value that the curve has there.
    void FinishEnds(HvStdFCurve& curve, double lastValue) const
    {
        HvStdFCurveImpl& impl = *curve.impl_;
        CFCStdKey& first = impl.keys[0];
        CFCStdKey& last = impl.keys[impl.NumKeys() - 1];
        HvUserDataMoves moves(curve);
        moves.Add(first.parameter, from_);
        if (&first != &last) {
            moves.Add(last.parameter, to_);
        }
        moves.Apply();
        MoveAlongAxis(first, from_ - first.parameter);
        first.parameter = from_;
        if (&first != &last) {
            MoveAlongAxis(last, to_ - last.parameter);
            last.parameter = to_;
        }
        MoveRightSide(last, lastValue - last.rightValue);
        impl.RepairOrder();
    }

    HvStdFCurve const& source_;
    HvStdFCurveImpl const& keys_;
    double from_;
    double to_;
};

HvBaseFCurve* HvStdFCurve::SnapShot(double from, double to, ExtrapolationMethod method) const
{
    HvCurveWriter const guard(*this);
    double const first = std::min(from, to);
    double const last = std::max(from, to);
    if (!impl_->CanHoldParameter(from) || !impl_->CanHoldParameter(to) ||
        !HvStdEdit_AreFinite(last - first)) {
        return nullptr;
    }
    CurvePtr result = SnapShotBuilder(*this, first, last).Build();
    if (result != nullptr && method >= ConstantExtrapolation &&
        method <= RelativeCycleExtrapolation) {
        result->impl_->extrapolation = static_cast<unsigned char>(method);
    }
    return result.release();
}
