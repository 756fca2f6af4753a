// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Slots whose bodies land with their topics; each leaves this file when its own file arrives.

#include <hv/fcurve/HvStdFCurve.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>

HvBaseFCurve* HvStdFCurve::SnapShot(double, double, ExtrapolationMethod) const
{
    return nullptr;
}
int HvStdFCurve::ScaleAndOffsetParameters(double, double, double, double, double, int, int,
                                          RegionHandle, int)
{
    return 0;
}
int HvStdFCurve::ResampleSequence(double, double, double, int, int)
{
    return 0;
}
int HvStdFCurve::SmoothSequence(double, double, double const*, unsigned int)
{
    return 0;
}
unsigned int HvStdFCurve::ReduceNumKeys(double, double, double)
{
    return 0;
}
