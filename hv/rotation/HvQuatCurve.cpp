// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// HvQuatCurve: life, settings and the flags of keys.

#include <hv/foundation/dynamic_mem_size.h>
#include <hv/rotation/HvQuatCurve.h>
#include <hv/rotation/HvQuatSpline.h>
#include <hv/rotation/internal/quat_axes.h>
#include <hv/rotation/internal/quat_degrees.h>

#include <utility>

namespace {

/// Bits of the constraint data, which files hold.
constexpr unsigned short kValueLockBit = 2;
constexpr unsigned short kParamLockBit = 4;

}  // namespace

HvQuatCurve::HvQuatCurve() : extrapolationMethod_(HvQuatSpline::ConstantExtrapolation)
{
    InitializeCriticalSection(&section_);
}

HvQuatCurve::HvQuatCurve(HvQuatCurve const& other)
    : HvAllocated(), valueWhenNoKeys_(other.valueWhenNoKeys_), cachedValue_(other.cachedValue_),
      cachedParameter_(other.cachedParameter_), keys_(other.keys_),
      spline_(other.spline_ ? new HvQuatSpline(*other.spline_) : nullptr),
      extrapolationMethod_(other.extrapolationMethod_), readOnly_(other.readOnly_),
      selected_(other.selected_), rotOrder_(other.rotOrder_), isAscending_(other.isAscending_)
{
    InitializeCriticalSection(&section_);
}

HvQuatCurve& HvQuatCurve::operator=(HvQuatCurve const& other)
{
    if (this != &other) {
        HvQuatCurve copy(other);
        Swap(copy);
    }
    return *this;
}

void HvQuatCurve::Swap(HvQuatCurve& other) noexcept
{
    std::swap(valueWhenNoKeys_, other.valueWhenNoKeys_);
    std::swap(cachedValue_, other.cachedValue_);
    std::swap(cachedParameter_, other.cachedParameter_);
    keys_.swap(other.keys_);
    spline_.swap(other.spline_);
    std::swap(extrapolationMethod_, other.extrapolationMethod_);
    std::swap(readOnly_, other.readOnly_);
    std::swap(selected_, other.selected_);
    std::swap(rotOrder_, other.rotOrder_);
    std::swap(isAscending_, other.isAscending_);
}

HvQuatCurve::~HvQuatCurve()
{
    DeleteCriticalSection(&section_);
}

void HvQuatCurve::Ref()
{
    referenceCount_.fetch_add(1, std::memory_order_relaxed);
}

void HvQuatCurve::UnRef()
{
    // The last owner must see what the others wrote before they let go.
    if (referenceCount_.fetch_sub(1, std::memory_order_acq_rel) <= 1) {
        delete this;
    }
}

void HvQuatCurve::Invalidate()
{
    spline_.reset();
}

void HvQuatCurve::SetRotOrder(HvQuat::RotOrder order)
{
    if (order != rotOrder_ && HvQuat_IsOrder(order)) {
        rotOrder_ = order;
        Invalidate();
    }
}

int HvQuatCurve::SetExtrapolationMethod(unsigned int method)
{
    if (method < HvQuatSpline::ConstantExtrapolation ||
        method > HvQuatSpline::RelativeCycleExtrapolation) {
        return 0;
    }
    extrapolationMethod_ = method;
    if (spline_) {
        spline_->SetExtrapolationMethod(method);
    }
    return 1;
}

double HvQuatCurve::GetValueWhenNoKeys(unsigned int component) const
{
    return HvQuatDegrees_Get(valueWhenNoKeys_, component);
}

void HvQuatCurve::SetValueWhenNoKeys(unsigned int component, double degrees)
{
    valueWhenNoKeys_ = HvQuatDegrees_With(valueWhenNoKeys_, component, degrees);
}

unsigned long HvQuatCurve::GetDynamicMemSize() const
{
    unsigned long const keyBytes = XQGetDynamicMemSize(keys_);
    return spline_ ? keyBytes + sizeof(HvQuatSpline) + spline_->GetDynamicMemSize() : keyBytes;
}

int HvQuatCurve::SetValueLock(unsigned int i, int locked)
{
    if (i >= GetNumKeys()) {
        return 0;
    }
    keys_[i].valueLocked = (locked & 1) != 0;
    return 1;
}

int HvQuatCurve::SetParamLock(unsigned int i, int locked)
{
    if (i >= GetNumKeys()) {
        return 0;
    }
    keys_[i].parameterLocked = (locked & 1) != 0;
    return 1;
}

int HvQuatCurve::IsValueLocked(unsigned int i) const
{
    return i < GetNumKeys() && keys_[i].valueLocked ? -1 : 0;
}

int HvQuatCurve::IsParamLocked(unsigned int i) const
{
    return i < GetNumKeys() && keys_[i].parameterLocked ? -1 : 0;
}

int HvQuatCurve::SetKeySelected(unsigned int i, int selected)
{
    if (i >= GetNumKeys()) {
        return 0;
    }
    keys_[i].selected = (selected & 1) != 0;
    return 1;
}

int HvQuatCurve::IsKeySelected(unsigned int i) const
{
    return selected_ != 0 && i < GetNumKeys() && keys_[i].selected ? 1 : 0;
}

int HvQuatCurve::SetConstraintData(unsigned int i, unsigned short flags)
{
    SetValueLock(i, (flags & kValueLockBit) != 0);
    return SetParamLock(i, (flags & kParamLockBit) != 0);
}

unsigned short HvQuatCurve::GetConstraintData(unsigned int i) const
{
    int const value = IsValueLocked(i) & kValueLockBit;
    int const parameter = IsParamLocked(i) & kParamLockBit;
    return static_cast<unsigned short>(value | parameter);
}
