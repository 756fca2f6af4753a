// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Slots whose bodies land with their topics; each leaves this file when its own file arrives.

#include <hv/fcurve/HvStdFCurve.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>

HvBaseFCurve* HvStdFCurve::SnapShot(double, double, ExtrapolationMethod) const
{
    return nullptr;
}
int HvStdFCurve::CreateKey(double, double)
{
    return 0;
}
int HvStdFCurve::CreateNonModifyingKey(double, int)
{
    return 0;
}
int HvStdFCurve::MergeAndCreateKey(double, double, double, double, int, int, int)
{
    return 0;
}
int HvStdFCurve::MergeAndCreateNonModifyingKey(double, double, double, int, int, int, int)
{
    return 0;
}
int HvStdFCurve::RemoveKey(double, double)
{
    return 0;
}
int HvStdFCurve::RemoveKeys(double, double, int, int)
{
    return 0;
}
int HvStdFCurve::RemoveHead(double)
{
    return 0;
}
int HvStdFCurve::RemoveTail(double)
{
    return 0;
}
int HvStdFCurve::Cut(double, double, HvBaseFCurve&)
{
    return 0;
}
int HvStdFCurve::Paste(HvBaseFCurve const&, double, double)
{
    return 0;
}
int HvStdFCurve::Append(HvBaseFCurve const&)
{
    return 0;
}
int HvStdFCurve::ShiftParameters(double)
{
    return 0;
}
int HvStdFCurve::ScaleParameterAxis(double)
{
    return 0;
}
int HvStdFCurve::ShiftValues(double)
{
    return 0;
}
int HvStdFCurve::ScaleAndShiftValues(double, double)
{
    return 0;
}
int HvStdFCurve::MirrorValues()
{
    return 0;
}
int HvStdFCurve::MirrorParameters()
{
    return 0;
}
int HvStdFCurve::SetKeyValue(double, KeySide, double, double)
{
    return 0;
}
int HvStdFCurve::SetConstraint(double&, KeyConstraint, int, double)
{
    return 0;
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
unsigned int HvStdFCurve::GetBufferSize() const
{
    return 0;
}
unsigned int HvStdFCurve::WriteToBuffer(void*) const
{
    return 0;
}
unsigned int HvStdFCurve::ReadFromBufferBody(void const*)
{
    return 0;
}
void HvStdFCurveImpl::SetToApproxCubicFitG1(HvPoint2dArray const& points, double)
{
    SetToInterpCatmullRom(points);
}
