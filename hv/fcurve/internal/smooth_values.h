// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The convolution of key values: the same for every kind of curve that can be smoothed.

#ifndef HV_FCURVE_INTERNAL_SMOOTH_VALUES_H
#define HV_FCURVE_INTERNAL_SMOOTH_VALUES_H

#include <hv/foundation/HvDoubleArray.h>

#include <algorithm>

/// Each value replaced by the sum of its neighbours' values times the taps of `kernel`, whose
/// middle tap, of two the left one, falls on the value itself; later taps fall on later values.
///
/// Near the ends, and when there are fewer values than taps, only the taps that meet a value count,
/// and their sum is divided by that of their weights, so that a constant stays constant; where
/// these weights cancel out the value stays. Inside, the kernel is taken as it is.
///
/// Cost: values times taps. A null or empty kernel changes nothing.
inline HvDoubleArray HvSmooth_Values(HvDoubleArray const& values, double const* kernel,
                                     unsigned int kernelSize)
{
    HvDoubleArray smooth(values);
    if (kernel == nullptr || kernelSize == 0) {
        return smooth;
    }
    auto const n = static_cast<long long>(values.Size());
    auto const numTaps = static_cast<long long>(kernelSize);
    long long const half = (numTaps - 1) / 2;
    for (long long i = 0; i < n; ++i) {
        // Tap t meets value i + t - half.
        long long const first = std::max(0LL, half - i);
        long long const end = std::min(numTaps, n + half - i);
        double sum = 0;
        double weight = 0;
        for (long long t = first; t < end; ++t) {
            sum += kernel[t] * values[static_cast<unsigned int>(i + t - half)];
            weight += kernel[t];
        }
        bool const isWhole = first == 0 && end == numTaps;
        if (isWhole || weight != 0) {
            smooth[static_cast<unsigned int>(i)] = isWhole ? sum : sum / weight;
        }
    }
    return smooth;
}

#endif
