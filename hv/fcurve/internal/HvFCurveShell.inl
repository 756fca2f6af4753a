// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The slots that are the same in every key-based kind. Included by the one source file of each kind
// that instantiates the shell; the guard in a slot's first line is its locking.

#ifndef HV_FCURVE_INTERNAL_HVFCURVESHELL_INL
#define HV_FCURVE_INTERNAL_HVFCURVESHELL_INL

#include <hv/fcurve/HvFCurveShell.h>
#include <hv/fcurve/internal/CFCBaseImpl.h>
#include <hv/fcurve/internal/CFCKeyStoreMemSize.h>
#include <hv/fcurve/internal/HvFCurveShellGuards.h>
#include <hv/foundation/HvBoolArray.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPointTagArray.h>

#include <cmath>
#include <new>
#include <utility>

// Life.

template <class Impl>
HvFCurveShell<Impl>::HvFCurveShell(Impl* impl) : impl_(impl)
{
}

template <class Impl>
HvFCurveShell<Impl>::HvFCurveShell(HvFCurveShell const& other) : HvFCurveShell(other, Reader(other))
{
}

template <class Impl>
HvFCurveShell<Impl>::HvFCurveShell(HvFCurveShell const& other, Reader const&)
    : HvBaseFCurve(other), impl_(new Impl(*other.impl_))
{
}

template <class Impl>
HvFCurveShell<Impl>& HvFCurveShell<Impl>::operator=(HvFCurveShell const& other)
{
    if (this != &other) {
        HvCurveWriter const lock(*this);
        HvCurveReader const lockOnOther(other);
        // Shared keys come after every section: who holds them waits for no curve.
        HvKeysLock<Impl> const keys(*impl_);
        HvKeysLock<Impl> const keysOfOther(*other.impl_);
        Impl copy(*other.impl_);
        HvBaseFCurve::operator=(other);
        impl_->Swap(copy);
    }
    return *this;
}

template <class Impl>
void HvFCurveShell<Impl>::TakeOver(HvFCurveShell& other) noexcept
{
    HvCurveWriter const lock(*this);
    ExchangeUserData(other);
    std::swap(impl_, other.impl_);
}

template <class Impl>
HvFCurveShell<Impl>::~HvFCurveShell()
{
    HvCurveWriter const lock(*this);
    delete impl_;
    impl_ = nullptr;
}

// Keys by index and by parameter.

template <class Impl>
int HvFCurveShell<Impl>::GetKeyParameter(unsigned int index, double& parameter) const
{
    Reader const lock(*this);
    if (index >= impl_->NumKeys()) {
        return 0;
    }
    parameter = impl_->Parameter(index);
    return 1;
}

template <class Impl>
int HvFCurveShell<Impl>::GetKeyIndex(double parameter, unsigned int& index) const
{
    Reader const lock(*this);
    return impl_->FindKey(parameter, 0, index);
}

template <class Impl>
unsigned int HvFCurveShell<Impl>::GetNumKeys() const
{
    Reader const lock(*this);
    return impl_->NumKeys();
}

template <class Impl>
int HvFCurveShell<Impl>::GetKeyValues(double parameter, double& left, double& right,
                                      double tolerance) const
{
    Reader const lock(*this);
    unsigned int i;
    if (!impl_->FindKey(parameter, tolerance, i)) {
        return 0;
    }
    left = static_cast<double>(impl_->LeftValueOf(i));
    right = static_cast<double>(impl_->RightValueOf(i));
    return 1;
}

template <class Impl>
int HvFCurveShell<Impl>::GetKeyValuesByIndex(unsigned int index, double& left, double& right) const
{
    Reader const lock(*this);
    if (index >= impl_->NumKeys()) {
        return 0;
    }
    left = static_cast<double>(impl_->LeftValueOf(index));
    right = static_cast<double>(impl_->RightValueOf(index));
    return 1;
}

template <class Impl>
unsigned int HvFCurveShell<Impl>::GetKeyParameters(double from, double to,
                                                   HvDoubleArray& parameters, int openAtFrom,
                                                   int openAtTo, int selectedOnly) const
{
    Reader const lock(*this);
    unsigned int i;
    unsigned int last;
    if (impl_->NumKeys() == 0 || (selectedOnly && !impl_->IsCurveSelected()) ||
        !impl_->GetKeyIndicesInClosedInterval(from, to, i, last)) {
        return 0;
    }
    // A single parameter with one open end counts as closed.
    bool const closed = from == to && (openAtFrom != 0) != (openAtTo != 0);
    if (openAtFrom && !closed && impl_->Parameter(i) == from) {
        ++i;
    }
    unsigned int const end = openAtTo && !closed && impl_->Parameter(last) == to ? last : last + 1;
    if (i >= end) {
        return 0;
    }
    unsigned int const before = parameters.Size();
    parameters.Reserve(HvArrayCapacity_GrownSize(before, end - i));
    for (; i < end; ++i) {
        if (!selectedOnly || impl_->IsSelected(i)) {
            parameters.Add(impl_->Parameter(i));
        }
    }
    return parameters.Size() - before;
}

template <class Impl>
unsigned int HvFCurveShell<Impl>::GetAllKeyParameters(HvDoubleArray& parameters) const
{
    Reader const lock(*this);
    unsigned int const n = impl_->NumKeys();
    parameters.Reserve(HvArrayCapacity_GrownSize(parameters.Size(), n));
    for (unsigned int i = 0; i < n; ++i) {
        parameters.Add(impl_->Parameter(i));
    }
    return n;
}

template <class Impl>
unsigned int HvFCurveShell<Impl>::CollectKeys(HvDoubleArray& parameters, HvDoubleArray& leftValues,
                                              HvDoubleArray& rightValues, int selectedOnly) const
{
    Reader const lock(*this);
    unsigned int count = 0;
    try {
        for (unsigned int i = 0; i < impl_->NumKeys(); ++i) {
            if (selectedOnly == 0 || (impl_->IsCurveSelected() && impl_->IsSelected(i))) {
                parameters.Add(impl_->Parameter(i));
                leftValues.Add(static_cast<double>(impl_->LeftValueOf(i)));
                rightValues.Add(static_cast<double>(impl_->RightValueOf(i)));
                ++count;
            }
        }
    } catch (std::bad_alloc const&) {
        // Emptied without shrinking: there may be no memory for that either.
        parameters.Chop(0);
        leftValues.Chop(0);
        rightValues.Chop(0);
        return 0;
    }
    return count;
}

// Selection. The setters ignore the read-only flag: selecting does not edit the curve.

template <class Impl>
int HvFCurveShell<Impl>::IsKeySelected(unsigned int index) const
{
    Reader const lock(*this);
    return impl_->IsCurveSelected() && index < impl_->NumKeys() && impl_->IsSelected(index) ? 1 : 0;
}

template <class Impl>
int HvFCurveShell<Impl>::IsKeySelected(double parameter) const
{
    Reader const lock(*this);
    unsigned int i;
    return impl_->IsCurveSelected() && impl_->FindKey(parameter, 0, i) && impl_->IsSelected(i) ? 1
                                                                                               : 0;
}

template <class Impl>
int HvFCurveShell<Impl>::SetKeySelected(unsigned int index, int on)
{
    Writer const lock(*this);
    if (index >= impl_->NumKeys()) {
        return 0;
    }
    impl_->SetSelected(index, on != 0);
    return 1;
}

template <class Impl>
int HvFCurveShell<Impl>::SetKeySelected(double parameter, int on)
{
    Writer const lock(*this);
    unsigned int i;
    if (!impl_->FindKey(parameter, 0, i)) {
        return 0;
    }
    impl_->SetSelected(i, on != 0);
    return 1;
}

template <class Impl>
int HvFCurveShell<Impl>::IsSelected() const
{
    Reader const lock(*this);
    return impl_->IsCurveSelected() ? 1 : 0;
}

template <class Impl>
int HvFCurveShell<Impl>::SetSelected(int on)
{
    Writer const lock(*this);
    impl_->SetCurveSelected(on != 0);
    return 1;
}

template <class Impl>
int HvFCurveShell<Impl>::HasSelectedKeys() const
{
    Reader const lock(*this);
    if (!impl_->IsCurveSelected()) {
        return 0;
    }
    for (unsigned int i = 0; i < impl_->NumKeys(); ++i) {
        if (impl_->IsSelected(i)) {
            return 1;
        }
    }
    return 0;
}

// Walking the keys.

template <class Impl>
int HvFCurveShell<Impl>::IsKeyParameter(double parameter, double tolerance) const
{
    Reader const lock(*this);
    unsigned int i;
    return impl_->FindKey(parameter, tolerance, i);
}

template <class Impl>
int HvFCurveShell<Impl>::GetNextKeyParameter(double parameter, double& next, int inclusive) const
{
    Reader const lock(*this);
    if (impl_->NumKeys() == 0) {
        return 0;
    }
    int exact;
    unsigned int const r = impl_->LocateParameter(parameter, exact);
    unsigned int const i = exact && inclusive ? r - 1 : r;
    if (i >= impl_->NumKeys() || !(impl_->Parameter(i) >= parameter)) {
        return 0;
    }
    next = impl_->Parameter(i);
    return 1;
}

template <class Impl>
int HvFCurveShell<Impl>::GetPrevKeyParameter(double parameter, double& previous,
                                             int inclusive) const
{
    Reader const lock(*this);
    if (impl_->NumKeys() == 0) {
        return 0;
    }
    int exact;
    unsigned int const r = impl_->LocateParameter(parameter, exact);
    unsigned int const end = exact && !inclusive ? r - 1 : r;
    if (end == 0) {
        return 0;
    }
    previous = impl_->Parameter(end - 1);
    return 1;
}

/// The right key wins a tie here, unlike in CFCBaseImpl::GetNearestKeyIndex.
template <class Impl>
int HvFCurveShell<Impl>::GetNearestKeyParameter(double parameter, double& nearest) const
{
    Reader const lock(*this);
    unsigned int const n = impl_->NumKeys();
    if (n == 0) {
        return 0;
    }
    int exact;
    unsigned int const r = impl_->LocateParameter(parameter, exact);
    unsigned int i = r;
    if (exact || r == n) {
        i = r - 1;
    } else if (r != 0 && std::fabs(impl_->Parameter(r - 1) - parameter) <
                             std::fabs(impl_->Parameter(r) - parameter)) {
        i = r - 1;
    }
    nearest = impl_->Parameter(i);
    return 1;
}

template <class Impl>
int HvFCurveShell<Impl>::GetNearestKeyParameterInCenteredInterval(double& parameter,
                                                                  double tolerance) const
{
    Reader const lock(*this);
    unsigned int i;
    if (!impl_->FindKey(parameter, tolerance, i)) {
        return 0;
    }
    parameter = impl_->Parameter(i);
    return 1;
}

// Both ends.

template <class Impl>
int HvFCurveShell<Impl>::GetSmallestKeyParameter(double& parameter) const
{
    Reader const lock(*this);
    if (impl_->NumKeys() == 0) {
        return 0;
    }
    parameter = impl_->FirstParameter();
    return 1;
}

template <class Impl>
int HvFCurveShell<Impl>::IsSmallestKeyParameter(double parameter) const
{
    Reader const lock(*this);
    return impl_->NumKeys() != 0 && impl_->FirstParameter() == parameter ? 1 : 0;
}

template <class Impl>
double HvFCurveShell<Impl>::GetMinusInfinityVal() const
{
    Reader const lock(*this);
    return static_cast<double>(impl_->NumKeys() == 0 ? impl_->ValueWhenNoKeys()
                                                     : impl_->LeftValueOf(0));
}

template <class Impl>
int HvFCurveShell<Impl>::GetLargestKeyParameter(double& parameter) const
{
    Reader const lock(*this);
    if (impl_->NumKeys() == 0) {
        return 0;
    }
    parameter = impl_->LastParameter();
    return 1;
}

template <class Impl>
int HvFCurveShell<Impl>::IsLargestKeyParameter(double parameter) const
{
    Reader const lock(*this);
    return impl_->NumKeys() != 0 && impl_->LastParameter() == parameter ? 1 : 0;
}

template <class Impl>
double HvFCurveShell<Impl>::GetPlusInfinityVal() const
{
    Reader const lock(*this);
    return static_cast<double>(impl_->NumKeys() == 0 ? impl_->ValueWhenNoKeys()
                                                     : impl_->RightValueOf(impl_->NumKeys() - 1));
}

// Evaluating.

template <class Impl>
double HvFCurveShell<Impl>::Eval(double parameter, int clamp) const
{
    Reader const lock(*this);
    return EvalNoLock(parameter, clamp);
}

template <class Impl>
void HvFCurveShell<Impl>::EvalMany(double const* parameters, unsigned int n, double* values,
                                   int clamp) const
{
    Reader const lock(*this);
    for (unsigned int i = 0; i < n; ++i) {
        values[i] = EvalNoLock(parameters[i], clamp);
    }
}

template <class Impl>
unsigned int HvFCurveShell<Impl>::Flatten(HvTransfo4 const& transfo, double tolerance,
                                          HvPoint2dArray& points, HvPointTagArray& tags,
                                          int clamp) const
{
    Reader const lock(*this);
    return impl_->Flatten(transfo, tolerance, points, tags, clamp);
}

template <class Impl>
int HvFCurveShell<Impl>::FlattenFromTo(HvExtent2<double> const& extent, HvTransfo4 const& transfo,
                                       double tolerance, HvPoint2dArray& points,
                                       HvPointTagArray& tags, HvBoolArray& flags, int) const
{
    Reader const lock(*this);
    try {
        impl_->FlattenFromTo(extent, transfo, tolerance, points, tags, flags);
        return 1;
    } catch (std::bad_alloc const&) {
        // Emptied without shrinking: there may be no memory for that either.
        points.Chop(0);
        tags.Chop(0);
        flags.Chop(0);
        return 0;
    }
}

template <class Impl>
HvBaseFCurve::ExtrapolationMethod HvFCurveShell<Impl>::GetExtrapolationMethod() const
{
    Reader const lock(*this);
    return impl_->Method();
}

template <class Impl>
double HvFCurveShell<Impl>::FoldParameter(double parameter) const
{
    // Takes the access lock too, although it only reads: the contract says so for every kind.
    Writer const lock(*this);
    return impl_->FoldParameter(parameter);
}

// Constraints. The three questions take no lock of the curve: who asks holds it already. Keys that
// other curves share may be asked for all the same.

template <class Impl>
int HvFCurveShell<Impl>::AreAnyValuesLockedInInterval(double from, double to, int openAtFrom,
                                                      int openAtTo) const
{
    HvKeysLock<Impl> const keys(*impl_);
    return impl_->HasConstraintInInterval(CFCKeyConstraint::kValueLocked, true, from, to,
                                          openAtFrom, openAtTo);
}

template <class Impl>
int HvFCurveShell<Impl>::AreAnyParametersLockedInInterval(double from, double to, int openAtFrom,
                                                          int openAtTo) const
{
    HvKeysLock<Impl> const keys(*impl_);
    return impl_->HasConstraintInInterval(CFCKeyConstraint::kParameterLocked, true, from, to,
                                          openAtFrom, openAtTo);
}

template <class Impl>
int HvFCurveShell<Impl>::AreAnyKeysLockedInInterval(double from, double to, int openAtFrom,
                                                    int openAtTo) const
{
    HvKeysLock<Impl> const keys(*impl_);
    return impl_->HasConstraintInInterval(Impl::kEveryLock, true, from, to, openAtFrom, openAtTo);
}

// Flags.

template <class Impl>
int HvFCurveShell<Impl>::SetReadOnlyConstraint(int on)
{
    Writer const lock(*this);
    impl_->SetReadOnly(on != 0);
    return 1;
}

template <class Impl>
int HvFCurveShell<Impl>::IsReadOnly() const
{
    Reader const lock(*this);
    return impl_->IsReadOnly() ? 1 : 0;
}

template <class Impl>
int HvFCurveShell<Impl>::IsDefautlBezierTangentConstraintOn() const
{
    Reader const lock(*this);
    return impl_->defaultBezierTangentConstraint ? 1 : 0;
}

template <class Impl>
int HvFCurveShell<Impl>::SetAsTimeFCurve(bool on)
{
    Writer const lock(*this);
    if (impl_->IsReadOnly() || (impl_->timeCurve != 0) == on) {
        return 0;
    }
    impl_->timeCurve = on ? 1 : 0;
    return 1;
}

template <class Impl>
int HvFCurveShell<Impl>::IsTimeFCurve() const
{
    Reader const lock(*this);
    return impl_->timeCurve ? 1 : 0;
}

template <class Impl>
unsigned long HvFCurveShell<Impl>::GetDynamicMemSize() const
{
    Reader const lock(*this);
    return HvBaseFCurve::GetDynamicMemSize() + XQGetDynamicMemSize<typename Impl::Store>(*impl_);
}

#endif
