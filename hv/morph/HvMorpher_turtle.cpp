// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The morph of directions and steps.

#include <hv/morph/HvMorpher.h>

#include <hv/foundation/polyline_interpolate.h>
#include <hv/morph/HvMorpherImpl.h>
#include <hv/morph/internal/HvMorphOutput.h>
#include <hv/morph/internal/even_samples.h>
#include <hv/shape/HvGC.h>

int HvMorpher::TurtleMorph(double t, HvPath2fProp1d& out) const
{
    if (!impl_->HasOutlines()) {
        return 1;
    }
    double const spacing = impl_->gc->minPointGap;
    HvMorphSamples samples =
        HvMorphSamples_Of(HvMorphLine_OfPath(*impl_->first, spacing),
                          HvMorphLine_OfPath(*impl_->second, spacing), spacing);
    if (samples.steps == 0) {
        return 1;
    }
    HvPoint2fArray& blended = samples.first;
    HvPoint2fArraySingleComponent_TurtleInterp(samples.first, samples.second, t, blended);
    HvMorphOutput_AppendOpen(*impl_, t, blended, samples.steps, out);
    return 1;
}
