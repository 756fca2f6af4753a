// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The quaternion curve kind: cutting, trimming and joining whole pieces. Edits of several steps run
// on a copy that is exchanged for the curve at the end: a refusal or a failed allocation leaves it
// as it was.

#include <hv/fcurve/HvQuatFCurve.h>
#include <hv/fcurve/internal/HvQuatFCurveImpl.h>
#include <hv/foundation/HvDoubleArray.h>

#include <cmath>

namespace {

/// The locks of a writer that reads a second curve: both sections before either of the shown
/// curves, which the two may share.
class TwoCurvesLock {
public:
    TwoCurvesLock(HvBaseFCurve const& written, HvQuatFCurveImpl* const& impl,
                  HvBaseFCurve const& other)
        : section_(written), sectionOfOther_(other), keys_(*impl)
    {
    }

private:
    HvCurveWriter section_;
    HvCurveReader sectionOfOther_;
    HvKeysLock<HvQuatFCurveImpl> keys_;
};

}  // namespace

/// Clears the locks of the keys of an interval.
void HvQuatFCurve::Unlock(double from, double to, int openAtFrom, int openAtTo)
{
    unsigned int i;
    unsigned int last;
    if (impl_->GetKeyIndicesInInterval(from, to, i, last, openAtFrom, openAtTo)) {
        for (; i <= last; ++i) {
            impl_->SetConstraintWord(i, 0);
        }
    }
}

int HvQuatFCurve::RemoveTail(double parameter)
{
    Writer const lock(*this);
    if (impl_->IsReadOnly() || !std::isfinite(parameter)) {
        return 0;
    }
    if (impl_->NumKeys() != 0) {
        double const last = impl_->LastParameter();
        if (last == parameter) {
            return 1;
        }
        if (AreAnyLocked(parameter, last, 1, 0)) {
            return 0;
        }
    }
    HvQuatCurve& curve = impl_->Curve();
    unsigned int i;
    if (!impl_->FindKey(parameter, 0, i)) {
        i = curve.SetKey(parameter, impl_->AnglesHeldAt(parameter), 0.0);
    }
    for (unsigned int k = i + 1; HasUserData() && k < impl_->NumKeys(); ++k) {
        RemoveKeyUserData(impl_->Parameter(k));
    }
    if (i + 1 < impl_->NumKeys()) {
        curve.RemoveKeyRange(i + 1, impl_->NumKeys() - 1);
    }
    return 1;
}

int HvQuatFCurve::RemoveHead(double parameter)
{
    Writer const lock(*this);
    if (impl_->IsReadOnly() || !std::isfinite(parameter)) {
        return 0;
    }
    if (impl_->NumKeys() != 0) {
        double const first = impl_->FirstParameter();
        if (first == parameter) {
            return 1;
        }
        if (AreAnyLocked(first, parameter, 0, 1)) {
            return 0;
        }
    }
    HvQuatCurve& curve = impl_->Curve();
    unsigned int i;
    if (!impl_->FindKey(parameter, 0, i)) {
        i = curve.SetKey(parameter, impl_->AnglesHeldAt(parameter), 0.0);
    }
    for (unsigned int k = 0; HasUserData() && k < i; ++k) {
        RemoveKeyUserData(impl_->Parameter(k));
    }
    if (i != 0) {
        curve.RemoveKeyRange(0, i - 1);
    }
    return 1;
}

int HvQuatFCurve::Append(HvBaseFCurve const& other)
{
    if (&other == this) {
        HvQuatFCurve const copy(*this);
        return Append(copy);
    }
    if (other.GetKind() != Quaternion) {
        return 0;
    }
    TwoCurvesLock const lock(*this, impl_, other);
    HvQuatFCurveImpl const& source = *static_cast<HvQuatFCurve const&>(other).impl_;
    HvKeysLock<HvQuatFCurveImpl> const keysOfOther(source);
    if (impl_->IsReadOnly() || source.NumKeys() == 0 || impl_->NumKeys() == 0 ||
        source.Curve().GetRotOrder() != impl_->Curve().GetRotOrder()) {
        return 0;
    }
    HvQuatCurve work(impl_->Curve());
    unsigned int const fused = impl_->NumKeys() - 1;
    double const shift = impl_->LastParameter() - source.FirstParameter();
    HvQuatKey joint = work.GetKey(fused);
    HvQuatKey const start = source.Curve().GetKey(0);
    if (joint.valueLocked && joint.angles != start.angles) {
        return 0;
    }
    joint.angles = start.angles;
    joint.spins = start.spins;
    work.SetKey(fused, joint);
    HvDoubleArray from;
    HvDoubleArray to;
    from.Add(start.time);
    to.Add(joint.time);
    double before = joint.time;
    for (unsigned int i = 1; i < source.NumKeys(); ++i) {
        HvQuatKey key = source.Curve().GetKey(i);
        double const parameter = key.time + shift;
        if (!std::isfinite(parameter)) {
            return 0;
        }
        if (!(parameter > before)) {
            continue;  // the shift has rounded two keys to one
        }
        from.Add(key.time);
        to.Add(parameter);
        key.time = parameter;
        work.SetKey(key, 0.0);
        before = parameter;
    }
    if (other.HasUserData()) {
        for (unsigned int i = 0; i < from.Size(); ++i) {
            CopyKeyUserData(other, from[i], to[i]);
        }
    }
    impl_->Curve().Swap(work);
    return 1;
}

int HvQuatFCurve::Paste(HvBaseFCurve const& other, double from, double to)
{
    if (other.GetKind() != Quaternion) {
        return 0;
    }
    TwoCurvesLock const lock(*this, impl_, other);
    HvKeysLock<HvQuatFCurveImpl> const keysOfOther(*static_cast<HvQuatFCurve const&>(other).impl_);
    if (impl_->IsReadOnly() || other.GetNumKeys() == 0 || !(from <= to) ||
        (impl_->NumKeys() != 0 && AreAnyLocked(from, impl_->LastParameter(), 0, 0))) {
        return 0;
    }
    HvQuatFCurve result(*this);
    HvQuatFCurve tail(*this);
    tail.Unlock(-kHvMaxDouble, to, 0, 1);
    if (!tail.RemoveHead(to) || !result.RemoveTail(from) || !result.Append(other) ||
        !result.Append(tail)) {
        return 0;
    }
    Exchange(result);
    return 1;
}

int HvQuatFCurve::Cut(double from, double to, HvBaseFCurve& removed)
{
    if (&removed == this || removed.GetKind() != Quaternion) {
        return 0;
    }
    auto& target = static_cast<HvQuatFCurve&>(removed);
    TwoCurvesLock const lock(*this, impl_, removed);
    HvKeysLock<HvQuatFCurveImpl> const keysOfTarget(*target.impl_);
    bool const isInterval = from <= to && std::isfinite(from) && std::isfinite(to);
    bool const isShared = &target.impl_->Curve() == &impl_->Curve();
    if (impl_->IsReadOnly() || !isInterval || isShared || AreAnyLocked(from, to, 0, 0)) {
        return 0;
    }
    HvQuatFCurve kept(*this);
    HvQuatFCurve tail(*this);
    HvQuatFCurve piece(*this);
    // Locks outside of what each of them keeps do not concern it; keys that move must be free to.
    kept.Unlock(to, kHvMaxDouble, 0, 0);
    tail.Unlock(-kHvMaxDouble, to, 0, 1);
    if (tail.AreAnyParametersLockedInInterval(to, kHvMaxDouble, 0, 0)) {
        return 0;
    }
    piece.Unlock(-kHvMaxDouble, from, 0, 1);
    piece.Unlock(to, kHvMaxDouble, 1, 0);
    // Both ends of the piece, before a cut at one of them bends the curve at the other.
    HvPoint3<double> const start = impl_->AnglesHeldAt(from);
    HvPoint3<double> const end = impl_->AnglesHeldAt(to);
    piece.impl_->Curve().SetKey(from, start, 0.0);
    piece.impl_->Curve().SetKey(to, end, 0.0);
    if (!kept.RemoveTail(from) || !tail.RemoveHead(to) || !kept.Append(tail) ||
        !piece.RemoveHead(from) || !piece.RemoveTail(to)) {
        return 0;
    }
    piece.impl_->component = target.impl_->component;
    target.Exchange(piece);
    Exchange(kept);
    return 1;
}
