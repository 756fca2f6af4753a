// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Slots of one stepped kind whose bodies land with their topics; each leaves this file when its own
// arrives.

#include <hv/fcurve/HvBooleanFCurve.h>
#include <hv/fcurve/HvIntegerFCurve.h>

HvBaseFCurve* HvBooleanFCurve::SnapShot(double, double, ExtrapolationMethod) const
{
    return nullptr;
}
HvBaseFCurve* HvIntegerFCurve::SnapShot(double, double, ExtrapolationMethod) const
{
    return nullptr;
}
int HvIntegerFCurve::SmoothSequence(double, double, double const*, unsigned int)
{
    return 0;
}
