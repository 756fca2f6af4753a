// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Slots whose bodies land with their topics; each leaves this file when its own file arrives.

#include <hv/fcurve/HvStdFCurve.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>

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
