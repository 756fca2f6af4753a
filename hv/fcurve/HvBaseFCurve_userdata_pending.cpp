// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// User data operations that keep no data, until those that do arrive with the records' own files.

#include <hv/fcurve/HvBaseFCurve.h>

CFCUserData* HvBaseFCurve::CloneUserDataRecord(CFCUserData const*)
{
    return nullptr;
}
void HvBaseFCurve::DeleteUserDataRecord(CFCUserData*) noexcept {}
unsigned long HvBaseFCurve::DynamicMemSizeOfUserDataRecord(CFCUserData const*)
{
    return 0;
}
int HvBaseFCurve::HasUserData() const
{
    return 0;
}
int HvBaseFCurve::HasUserData(double) const
{
    return 0;
}
CFCUserDataSet const* HvBaseFCurve::GetUserDataSet(double) const
{
    return nullptr;
}
int HvBaseFCurve::SetUserDataSet(CFCUserDataSet const&, double)
{
    return 0;
}
int HvBaseFCurve::SetFCurveUserData(_GUID const&, unsigned char const*, unsigned int)
{
    return 0;
}
int HvBaseFCurve::GetFCurveUserData(_GUID const&, unsigned char const*&, unsigned int&) const
{
    return 0;
}
int HvBaseFCurve::RemoveFCurveUserData(_GUID const&)
{
    return 0;
}
int HvBaseFCurve::SetKeyUserData(double&, _GUID const&, unsigned char const*, unsigned int, double)
{
    return 0;
}
int HvBaseFCurve::GetKeyUserData(double&, _GUID const&, unsigned char const*&, unsigned int&,
                                 double) const
{
    return 0;
}
int HvBaseFCurve::RemoveKeyUserData(double&, _GUID const&, double)
{
    return 0;
}
int HvBaseFCurve::RemoveKeyUserData(double)
{
    return 0;
}
int HvBaseFCurve::RemoveAllKeyUserData()
{
    return 1;
}
int HvBaseFCurve::ScaleAllKeyUserData(double)
{
    return 1;
}
int HvBaseFCurve::TranslateAllKeyUserData(double)
{
    return 1;
}
int HvBaseFCurve::MoveKeyUserDataTail(HvDoubleArray const&, HvDoubleArray const&)
{
    return 1;
}
int HvBaseFCurve::CopyKeyUserData(HvBaseFCurve const&, double, double)
{
    return 0;
}
void HvBaseFCurve::ExchangeUserData(HvBaseFCurve&) {}
unsigned int HvBaseFCurve::GetUserDataBufferSize() const
{
    return 0;
}
unsigned int HvBaseFCurve::WriteUserDataToBuffer(void*) const
{
    return 0;
}
unsigned int HvBaseFCurve::ReadUserDataFromBufferBody(void const*)
{
    return 0;
}
