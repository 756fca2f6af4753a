// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The quaternion curve kind: life, infos, constraints and settings, and its shell instantiated.

#include <hv/fcurve/HvQuatFCurve.h>
#include <hv/fcurve/internal/HvFCurveShell.inl>
#include <hv/fcurve/internal/HvQuatFCurveImpl.h>

#include <algorithm>
#include <cmath>
#include <memory>

template class HvFCurveShell<HvQuatFCurveImpl>;

namespace {

constexpr unsigned int kClampsAndSegmentKind = 0x08 | 0x10 | 0x20;
constexpr unsigned int kTangentsAndSegmentKind = 0x010 | 0x020 | 0x040 | 0x080 | 0x100;

/// The bits of a key's word for a supported constraint.
constexpr unsigned short ConstraintBits(HvBaseFCurve::KeyConstraint constraint)
{
    return CFCKeyConstraint_Bits(constraint) & HvQuatFCurveImpl::kEveryLock;
}

bool IsMethod(HvBaseFCurve::ExtrapolationMethod method)
{
    return method >= HvBaseFCurve::ConstantExtrapolation &&
           method <= HvBaseFCurve::RelativeCycleExtrapolation;
}

}  // namespace

// Life.

HvQuatFCurve::HvQuatFCurve(unsigned int component) : HvQuatFCurve(nullptr, component) {}

HvQuatFCurve::HvQuatFCurve(HvQuatCurve* curve, unsigned int component)
    : HvFCurveShell(new HvQuatFCurveImpl(curve, component))
{
}

HvQuatFCurve::HvQuatFCurve(HvQuatFCurve const& other) = default;

HvQuatFCurve& HvQuatFCurve::operator=(HvQuatFCurve const& other) = default;

unsigned int HvQuatFCurve::GetComponent() const
{
    Reader const lock(*this);
    return impl_->component;
}

HvQuatCurve* HvQuatFCurve::GetQuatCurve() const
{
    return &impl_->Curve();
}

HvBaseFCurve const* HvQuatFCurve::QueryFCurveKind(Kind kind) const
{
    Reader const lock(*this);
    return kind == Quaternion ? this : nullptr;
}

HvBaseFCurve::Kind HvQuatFCurve::GetKind() const
{
    return Quaternion;
}

HvBaseFCurve* HvQuatFCurve::Clone() const
{
    return new HvQuatFCurve(*this);
}

int HvQuatFCurve::Set(HvBaseFCurve const& other)
{
    if (other.GetKind() != Quaternion) {
        return 0;
    }
    *this = static_cast<HvQuatFCurve const&>(other);
    return 1;
}

HvBaseFCurve* HvQuatFCurve::SnapShot(double from, double to, ExtrapolationMethod method) const
{
    if (!std::isfinite(to - from)) {
        return nullptr;
    }
    // The copy is made under this curve's locks; what follows concerns the copy alone.
    auto copy = std::make_unique<HvQuatFCurve>(*this);
    HvQuatFCurveImpl const& impl = *copy->impl_;
    double const first = std::min(from, to);
    double const last = std::max(from, to);
    if (!std::isfinite(impl.Eval(first)) || !std::isfinite(impl.Eval(last))) {
        return nullptr;
    }
    // What the interval shows from beyond the keys is the work of this curve's own method: a key
    // put there, or a cycle written out, would bend the spline inside.
    bool const showsKeysAlone =
        impl.NumKeys() < 2 || (impl.FirstParameter() <= first && last <= impl.LastParameter());
    if (IsMethod(method) && showsKeysAlone) {
        impl.Curve().SetExtrapolationMethod(static_cast<unsigned int>(method));
    }
    return copy.release();
}

/// Swaps what this curve and a copy that nobody else knows hold.
void HvQuatFCurve::Exchange(HvQuatFCurve& other) noexcept
{
    impl_->Swap(*other.impl_);
    ExchangeUserData(other);
}

// Infos.

int HvQuatFCurve::GetFCurveInfo(FCurveInfo* info) const
{
    if (info == nullptr) {
        return 0;
    }
    Reader const lock(*this);
    if (info->mask & 0x01) {
        info->kind = Quaternion;
    }
    if (info->mask & 0x02) {
        info->numKeys = impl_->NumKeys();
    }
    if (info->mask & 0x04) {
        info->valueWhenNoKeys = impl_->ValueWhenNoKeys();
    }
    if (info->mask & 0x40) {
        info->extrapolation = impl_->Method();
    }
    if ((info->mask & kClampsAndSegmentKind) == 0) {
        return 1;
    }
    info->mask &= ~kClampsAndSegmentKind;
    info->defaultSegmentKind = ConstantSegment;
    info->lowerClamp = 0;
    info->upperClamp = 0;
    return 0;
}

int HvQuatFCurve::GetKeyInfoFromIndex(unsigned int index, KeyInfo* info) const
{
    if (info == nullptr) {
        return 0;
    }
    Reader const lock(*this);
    if (index >= impl_->NumKeys()) {
        info->mask = 0;
        return 0;
    }
    return FillKeyInfo(index, *info);
}

int HvQuatFCurve::GetKeyInfoFromParameter(double parameter, KeyInfo* info) const
{
    if (info == nullptr) {
        return 0;
    }
    Reader const lock(*this);
    unsigned int index;
    if (!impl_->FindKey(parameter, 0, index)) {
        info->mask = 0;
        return 0;
    }
    int const result = FillKeyInfo(index, *info);
    if (info->mask & 0x002) {
        info->parameter = parameter;  // -0 stays -0
    }
    return result;
}

int HvQuatFCurve::FillKeyInfo(unsigned int index, KeyInfo& info) const
{
    if (info.mask & 0x001) {
        info.index = index;
    }
    if (info.mask & 0x002) {
        info.parameter = impl_->Parameter(index);
    }
    if (info.mask & 0x004) {
        info.leftValue = impl_->LeftValueOf(index);
    }
    if (info.mask & 0x008) {
        info.rightValue = impl_->RightValueOf(index);
    }
    if (info.mask & 0x200) {
        info.selected = impl_->Curve().IsKeySelected(index);
    }
    if ((info.mask & kTangentsAndSegmentKind) == 0) {
        return 1;
    }
    info.mask &= ~kTangentsAndSegmentKind;
    info.leftTangentX = 0;
    info.leftTangentY = 0;
    info.rightTangentX = 0;
    info.rightTangentY = 0;
    info.segmentKind = ConstantSegment;
    return 0;
}

// Constraints.

int HvQuatFCurve::IsConstraintSupported(KeyConstraint constraint) const
{
    return constraint == ParameterLocked || constraint == ValueLocked || constraint == AllLocked
               ? 1
               : 0;
}

int HvQuatFCurve::SetConstraint(double& parameter, KeyConstraint constraint, int on,
                                double tolerance)
{
    if (!IsConstraintSupported(constraint)) {
        return 0;
    }
    Writer const lock(*this);
    unsigned int i;
    if (impl_->IsReadOnly() || !impl_->FindKey(parameter, tolerance, i)) {
        return 0;
    }
    CFCKeyConstraint word{impl_->ConstraintWord(i)};
    word.Assign(ConstraintBits(constraint), on != 0);
    impl_->SetConstraintWord(i, word.word);
    parameter = impl_->Parameter(i);
    return 1;
}

int HvQuatFCurve::GetConstraint(double& parameter, KeyConstraint constraint, int& on,
                                double tolerance) const
{
    if (!IsConstraintSupported(constraint)) {
        return 0;
    }
    Reader const lock(*this);
    unsigned int i;
    if (!impl_->FindKey(parameter, tolerance, i)) {
        return 0;
    }
    CFCKeyConstraint const word{impl_->ConstraintWord(i)};
    on = word.HasAll(ConstraintBits(constraint)) ? 1 : 0;
    parameter = impl_->Parameter(i);
    return 1;
}

int HvQuatFCurve::GetConstraintByIndex(unsigned int index, KeyConstraint constraint, int& on) const
{
    Reader const lock(*this);
    if (!IsConstraintSupported(constraint) || index >= impl_->NumKeys()) {
        return 0;
    }
    CFCKeyConstraint const word{impl_->ConstraintWord(index)};
    on = word.HasAll(ConstraintBits(constraint)) ? 1 : 0;
    return 1;
}

// Settings.

int HvQuatFCurve::SetExtrapolationMethod(ExtrapolationMethod method)
{
    Writer const lock(*this);
    if (impl_->IsReadOnly() || !IsMethod(method) || method == LinearExtrapolation) {
        return 0;
    }
    // The shown curve would go on giving its last result, found by the old method. One on a key is
    // good for every method.
    impl_->Curve().Eval(impl_->Parameter(0));
    return impl_->Curve().SetExtrapolationMethod(static_cast<unsigned int>(method));
}

int HvQuatFCurve::SetDefaultBezierTangentConstraint(bool on)
{
    Writer const lock(*this);
    impl_->defaultBezierTangentConstraint = on ? 1 : 0;
    return 1;
}

int HvQuatFCurve::SetClampingValues(double, double)
{
    return 0;
}

int HvQuatFCurve::GetClampingValues(double& lower, double& upper) const
{
    lower = -kHvMaxDouble;
    upper = kHvMaxDouble;
    return 1;
}
