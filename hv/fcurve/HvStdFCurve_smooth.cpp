// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Smoothing of the standard curve: the values of its keys convolved with a kernel.

#include <hv/fcurve/HvStdFCurve.h>

#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <hv/fcurve/internal/smooth_values.h>
#include <hv/fcurve/internal/std_edit_checks.h>

void HvStdFCurveImpl::SmoothSequence(double from, double to, double const* kernel,
                                     unsigned int kernelSize)
{
    unsigned int i = 0;
    unsigned int j = 0;
    if (NumKeys() == 0 || !GetKeyIndicesInClosedInterval(from, to, i, j)) {
        return;
    }
    HvDoubleArray left(j - i + 1);
    HvDoubleArray right(j - i + 1);
    for (unsigned int k = i; k <= j; ++k) {
        left.Add(keys[k].leftValue);
        right.Add(keys[k].rightValue);
    }
    left = HvSmooth_Values(left, kernel, kernelSize);
    right = HvSmooth_Values(right, kernel, kernelSize);

    // Each side takes its handle along; a value that is no number stays out.
    for (unsigned int k = i; k <= j; ++k) {
        CFCStdKey& key = keys[k];
        if (key.constraints.HasAny(CFCKeyConstraint::kValueLocked)) {
            continue;
        }
        double const newLeft = left[k - i];
        double const leftHandleY = key.leftHandle.y + (newLeft - key.leftValue);
        if (HvStdEdit_AreFinite(newLeft, leftHandleY)) {
            key.leftValue = newLeft;
            key.leftHandle.y = leftHandleY;
        }
        double const newRight = right[k - i];
        double const rightHandleY = key.rightHandle.y + (newRight - key.rightValue);
        if (HvStdEdit_AreFinite(newRight, rightHandleY)) {
            key.rightValue = newRight;
            key.rightHandle.y = rightHandleY;
        }
    }
}

int HvStdFCurve::SmoothSequence(double from, double to, double const* kernel,
                                unsigned int kernelSize)
{
    HvCurveWriter const guard(*this);
    if (impl_->readOnly || AreAnyValuesLockedInInterval(from, to, 0, 0)) {
        return 0;
    }
    impl_->SmoothSequence(from, to, kernel, kernelSize);
    return 1;
}
