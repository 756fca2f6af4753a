// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Scaling and moving a stretch of the standard curve along the parameter axis.

#include <hv/fcurve/HvStdFCurve.h>

#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <hv/fcurve/internal/curve_rescale.h>

int HvStdFCurve::ScaleAndOffsetParameters(double from, double to, double pivot, double scale,
                                          double offset, int rippleLeft, int rippleRight,
                                          RegionHandle handle, int selectedOnly)
{
    HvCurveWriter const guard(*this);
    HvCurveRescale const rescale{from,       to,          pivot,  scale,       offset,
                                 rippleLeft, rippleRight, handle, selectedOnly};
    if (impl_->readOnly || impl_->IsAnyKeyLocked(CFCKeyConstraint::kParameterLocked) ||
        !rescale.IsPossible()) {
        return 0;
    }
    if (rescale.IsIdentity() || impl_->NumKeys() == 0) {
        return 1;
    }
    HvStdFCurve work(*this);
    if (!rescale.ApplyTo(work) || !work.impl_->IsValid()) {
        return 0;
    }
    ExchangeContents(work);
    return 1;
}
