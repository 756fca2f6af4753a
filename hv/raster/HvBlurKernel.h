// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The kernel of a soft fill.

#ifndef HV_RASTER_HVBLURKERNEL_H
#define HV_RASTER_HVBLURKERNEL_H

#include <hv/platform/HvExport.h>

/// The symmetric weights by which a soft fill blurs in x and in y, taken from a falloff function:
/// at 0 in the middle, towards 1 at the rim. Not copied: a kernel lives for one fill.
class HV_API HvBlurKernel {
public:
    /// Whether a fill of this radius is blurred at all: the radius is at least 1.
    static bool IsSoft(double radius) { return radius >= 1.0; }

    /// Samples `falloff`, called as `double falloff(double)`, once for each distance from the
    /// middle, nearest first: at 0 and at i / (Reach() + 0.5).
    ///
    /// @param radius  pixels, at least 1; Reach() is the radius rounded, half down.
    ///
    /// The weights are divided by their sum; when that is 0 or NaN the weights mean nothing, and
    /// pixels that they reach come out as 0. Throws std::bad_alloc for a radius above
    /// kMaxReach, or without memory. What `falloff` throws passes.
    template <class Falloff>
    HvBlurKernel(double radius, Falloff&& falloff) : HvBlurKernel(radius)
    {
        SetWeight(0, falloff(0.0));
        for (int i = 1; i <= reach_; ++i) {
            SetWeight(i, falloff(i / (reach_ + 0.5)));
        }
        Normalize();
    }
    HvBlurKernel(HvBlurKernel const&) = delete;
    HvBlurKernel& operator=(HvBlurKernel const&) = delete;
    ~HvBlurKernel();

    /// Pixels that the kernel reaches to each side.
    int Reach() const { return reach_; }
    /// The 2 * Reach() + 1 weights.
    double const* Weights() const { return weights_; }
    /// At i, 255 times the sum of the weights from i to the last.
    double const* Sums() const { return weights_ + 2 * reach_ + 1; }

    /// Greatest reach: beyond it the square of the kernel's width, which a blurred raster padded by
    /// the kernel would exceed, no longer fits an int.
    static constexpr int kMaxReach = 23169;

private:
    explicit HvBlurKernel(double radius);
    void SetWeight(int distance, double weight);
    void Normalize();

    int reach_;
    double* weights_;  // the weights, then the sums
};

#endif
