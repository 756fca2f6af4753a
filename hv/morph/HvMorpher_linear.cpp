// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The morph of places.

#include <hv/morph/HvMorpher.h>

#include <hv/foundation/polyline_interpolate.h>
#include <hv/morph/HvMorpherImpl.h>
#include <hv/morph/internal/HvMorphOutput.h>
#include <hv/morph/internal/even_samples.h>
#include <hv/morph/internal/morph_tour.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvPath2fIter.h>

namespace {

/// Pairs the subpaths of two outlines in their order.
void MorphPairs(HvMorpherImpl const& morph, double t, HvMorphOutput& output)
{
    double const spacing = morph.gc->minPointGap;
    HvPath2fIter firstSubpaths(*morph.first);
    HvPath2fIter secondSubpaths(*morph.second);
    unsigned int first = 0;
    unsigned int second = 0;
    unsigned int last = 0;
    while (firstSubpaths.GetNextSubPathIndices(first, last) != 0 &&
           secondSubpaths.GetNextSubPathIndices(second, last) != 0) {
        HvMorphSamples samples =
            HvMorphSamples_Of(HvMorphLine_OfSubpath(*morph.first, first, spacing),
                              HvMorphLine_OfSubpath(*morph.second, second, spacing), spacing);
        if (samples.steps == 0) {
            continue;
        }
        HvPoint2fArray& blended = samples.first;
        HvPoint2fArraySingleComponent_Lerp(samples.first, samples.second, t, blended);
        bool const isClosed =
            morph.first->IsSubpathClosed(first) != 0 && morph.second->IsSubpathClosed(second) != 0;
        unsigned int const subpath = output.AppendFit(blended, isClosed);
        if (output.Has(subpath)) {
            morph.SetThePropertyCurve(t, output.path, samples.steps, first, second, subpath);
        }
    }
}

}  // namespace

int HvMorpher::LinearMorph(double t, HvPath2fProp1d& out) const
{
    if (!impl_->HasOutlines()) {
        return 1;
    }
    HvPath2fProp1d const& first = *impl_->first;
    HvPath2fProp1d const& second = *impl_->second;
    if (first.IsSiblingOf(second) != 0) {
        out.SetToLerpAB(first, second, t, impl_->gc->minPointGap, impl_->gc->propFlatness);
        return 1;
    }
    HvMorphOutput output(out, *impl_->gc);
    if (first.NumSubpaths() == second.NumSubpaths()) {
        MorphPairs(*impl_, t, output);
    } else {
        HvMorphTour_Append(*impl_, t, output);
    }
    output.Finish();
    return 1;
}
