// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The kernel of a soft fill.

#include <hv/raster/HvBlurKernel.h>

#include <hv/foundation/HvMemory.h>
#include <hv/foundation/saturate.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <new>
#include <numeric>

HvBlurKernel::HvBlurKernel(double radius)
    : reach_(std::max(HvSaturate_To<int>(std::ceil(radius - 0.5)), 1)), weights_(nullptr)
{
    if (reach_ > kMaxReach) {
        throw std::bad_alloc();
    }
    std::size_t const width = 2 * static_cast<std::size_t>(reach_) + 1;
    weights_ = static_cast<double*>(HvAllocate(2 * width * sizeof(double)));
}

HvBlurKernel::~HvBlurKernel()
{
    HvFree(weights_);
}

void HvBlurKernel::SetWeight(int distance, double weight)
{
    weights_[reach_ - distance] = weights_[reach_ + distance] = weight;
}

void HvBlurKernel::Normalize()
{
    int const width = 2 * reach_ + 1;
    double* const sums = weights_ + width;
    double const total = std::accumulate(weights_, weights_ + width, 0.0);
    double sum = 0.0;
    for (int i = width - 1; i >= 0; --i) {
        weights_[i] /= total;
        sum = 255.0 * weights_[i] + sum;
        sums[i] = sum;
    }
}
