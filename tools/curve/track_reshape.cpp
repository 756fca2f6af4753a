// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Whole curves resampled, smoothed and reduced.

#include <tools/ToolError.h>
#include <tools/curve/track_reshape.h>
#include <tools/number_text.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

/// More keys than this are taken for a slip of the step.
constexpr double kMostKeys = 1e7;
/// Places between two keys where a reduced curve is held against the one before.
constexpr int kPlacesBetweenKeys = 32;

/// First and last key of a curve that has keys.
struct KeyRange {
    double first = 0.0;
    double last = 0.0;

    explicit KeyRange(HvStdFCurve const& curve)
    {
        curve.GetSmallestKeyParameter(first);
        curve.GetLargestKeyParameter(last);
    }
};

void Resample(HvStdFCurve& curve, double step)
{
    KeyRange const range(curve);
    if (!((range.last - range.first) / step < kMostKeys)) {
        throw ToolError("--resample " + NumberText_Exact(step) + " would give more than " +
                        NumberText_Rounded(kMostKeys, 1) + " keys");
    }
    curve.ResampleSequence(range.first, range.last, step, 0, 1);
}

/// The binomial coefficients of a row, made to sum to 1.
std::vector<double> BinomialKernel(unsigned int taps)
{
    std::vector<double> kernel(taps, 0.0);
    kernel[0] = 1.0;
    for (unsigned int row = 1; row < taps; ++row) {
        for (unsigned int i = row; i > 0; --i) {
            kernel[i] = (kernel[i] + kernel[i - 1]) * 0.5;
        }
        kernel[0] *= 0.5;
    }
    return kernel;
}

void Smooth(HvStdFCurve& curve, unsigned int taps)
{
    KeyRange const range(curve);
    std::vector<double> const kernel = BinomialKernel(taps);
    curve.SmoothSequence(range.first, range.last, kernel.data(), taps);
}

double LargestDifference(HvStdFCurve const& before, HvStdFCurve const& after)
{
    double largest = 0.0;
    auto const compare = [&](double x) {
        largest = std::max({largest, std::fabs(before.Eval(x, 0) - after.Eval(x, 0)),
                            std::fabs(before.EvalLeft(x, 0) - after.EvalLeft(x, 0))});
    };
    double from = 0.0;
    for (unsigned int key = 0; before.GetKeyParameter(key, from) != 0; ++key) {
        compare(from);
        double to = from;
        before.GetKeyParameter(key + 1, to);
        for (int place = 1; place < kPlacesBetweenKeys; ++place) {
            compare(from + (to - from) * place / kPlacesBetweenKeys);
        }
    }
    return largest;
}

TrackReduction Reduce(HvStdFCurve& curve, double tolerance)
{
    HvStdFCurve const before(curve);
    KeyRange const range(curve);
    curve.ReduceNumKeys(range.first, range.last, tolerance);
    TrackReduction reduction;
    reduction.keysBefore = before.GetNumKeys();
    reduction.keysAfter = curve.GetNumKeys();
    reduction.largestError = LargestDifference(before, curve);
    reduction.allowed = tolerance * (before.GetValueUpperBound(0) - before.GetValueLowerBound(0));
    return reduction;
}

}  // namespace

TrackReduction TrackReshape_Apply(TrackReshape const& reshape, HvStdFCurve& curve)
{
    if (reshape.resampleStep) {
        Resample(curve, *reshape.resampleStep);
    }
    if (reshape.smoothTaps) {
        Smooth(curve, *reshape.smoothTaps);
    }
    if (reshape.reduceTolerance) {
        return Reduce(curve, *reshape.reduceTolerance);
    }
    TrackReduction unreduced;
    unreduced.keysBefore = unreduced.keysAfter = curve.GetNumKeys();
    return unreduced;
}
