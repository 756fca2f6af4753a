// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Smoothing of the standard curve: the values of its keys convolved with a kernel.

#include <hv/fcurve/HvStdFCurve.h>

#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>

int HvStdFCurve::SmoothSequence(double from, double to, double const* kernel,
                                unsigned int kernelSize)
{
    HvCurveWriter const guard(*this);
    if (impl_->readOnly || AreAnyValuesLockedInInterval(from, to, 0, 0)) {
        return 0;
    }
    return impl_->SmoothSequence(from, to, kernel, kernelSize, *this);
}
