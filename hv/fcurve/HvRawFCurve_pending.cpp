// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Slots of the raw curve whose bodies land with their topics; each leaves this file when its own
// arrives.

#include <hv/fcurve/HvRawFCurve.h>

HvBaseFCurve* HvRawFCurve::SnapShot(double, double, ExtrapolationMethod) const
{
    return nullptr;
}
int HvRawFCurve::ScaleAndOffsetParameters(double, double, double, double, double, int, int,
                                          RegionHandle, int)
{
    return 0;
}
int HvRawFCurve::ResampleSequence(double, double, double, int, int)
{
    return 0;
}
int HvRawFCurve::SmoothSequence(double, double, double const*, unsigned int)
{
    return 0;
}
unsigned int HvRawFCurve::ReduceNumKeys(double, double, double)
{
    return 0;
}
