// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What every kind of curve does alike: its life, its lock, the question for selected keys.

#include <hv/fcurve/HvBaseFCurve.h>
#include <hv/fcurve/internal/HvCurveGuards.h>

HvBaseFCurve::HvBaseFCurve() : userData_(nullptr)
{
    InitializeCriticalSection(&section_);
}

HvBaseFCurve::HvBaseFCurve(HvBaseFCurve const& other) : userData_(nullptr)
{
    {
        HvCurveReader const lockOnOther(other);
        userData_ = CloneUserDataRecord(other.userData_);
    }
    InitializeCriticalSection(&section_);
}

HvBaseFCurve& HvBaseFCurve::operator=(HvBaseFCurve const& other)
{
    if (this != &other) {
        HvCurveWriter const lock(*this);
        HvCurveReader const lockOnOther(other);
        CFCUserData* const copy = CloneUserDataRecord(other.userData_);
        DeleteUserDataRecord(userData_);
        userData_ = copy;
    }
    return *this;
}

HvBaseFCurve::~HvBaseFCurve()
{
    {
        HvCurveWriter const lock(*this);
        DeleteUserDataRecord(userData_);
        userData_ = nullptr;
    }
    DeleteCriticalSection(&section_);
}

int HvBaseFCurve::HasSelectedKeys() const
{
    HvCurveReader const lock(*this);
    if (!IsSelected()) {
        return 0;
    }
    unsigned int const n = GetNumKeys();
    for (unsigned int i = 0; i < n; ++i) {
        if (IsKeySelected(i)) {
            return 1;
        }
    }
    return 0;
}

void HvBaseFCurve::AcquireLocks() const
{
    EnterCriticalSection(&section_);
}

void HvBaseFCurve::ReleaseLocks() const
{
    LeaveCriticalSection(&section_);
}

unsigned long HvBaseFCurve::GetDynamicMemSize() const
{
    HvCurveReader const lock(*this);
    return DynamicMemSizeOfUserDataRecord(userData_);
}
