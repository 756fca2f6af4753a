// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The user data of keys that a tool lifts again and again.

#include <hv/fcurve/internal/HvDragUserData.h>

#include <hv/fcurve/CFCUserDataSet.h>
#include <hv/fcurve/HvBaseFCurve.h>

HvDragUserData::~HvDragUserData()
{
    for (Copy const& copy : copies_) {
        delete copy.set;
    }
}

void HvDragUserData::Save(HvBaseFCurve const& curve, double parameter, unsigned int key)
{
    CFCUserDataSet const* const set = curve.GetUserDataSet(parameter);
    if (set == nullptr) {
        return;
    }
    copies_.Add({nullptr, key});
    copies_[copies_.Count() - 1].set = new CFCUserDataSet(*set);
}

void HvDragUserData::Give(Copy& copy, HvBaseFCurve& curve, double parameter)
{
    if (copy.set == nullptr) {
        return;
    }
    if (curve.IsKeyParameter(parameter, 0)) {
        curve.SetUserDataSet(*copy.set, parameter);
    }
    delete copy.set;
    copy.set = nullptr;
}
