// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Coverage over distance, for the radial fills.

#include <hv/shape/internal/HvRadialProfile.h>

#include <hv/fcurve/HvStdFCurve.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/foundation/polyline_eval.h>
#include <hv/foundation/saturate.h>
#include <hv/rotation/HvTransfo4.h>

namespace {

/// Greatest error of the flattened falloff: a quarter of what one step of a pixel is worth.
constexpr double kFalloffTolerance = 0.001;
constexpr double kFullCoverage = 255.0;

}  // namespace

HvRadialProfile::HvRadialProfile(HvStdFCurve const& falloff)
{
    HvPointTagArray tags;
    if (falloff.Flatten(HvTransfo4(), kFalloffTolerance, pairs_, tags, 0) == 0) {
        pairs_.Add(HvPoint2<double>(0.0, falloff.Eval(0.0, 0)));
    }
    falloff.GetLargestKeyParameter(length_);
}

unsigned char HvRadialProfile::CoverageAt(double distance) const
{
    double const value = HvPoint2dArray_EvalYInSortedArray(pairs_, distance);
    if (value > 1.0) {
        return 255;
    }
    return HvSaturate_To<unsigned char>(value * kFullCoverage + 0.5);
}
