// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The colours of a gradient over a picture.

#include <tools/play/painting/GradientColours.h>

#include <algorithm>
#include <cmath>

namespace {

/// Shares that are computed together.
constexpr std::size_t kBlock = 64;

}  // namespace

GradientColours::GradientColours(DrawnGradient const& gradient, HvTransfo4 const& toPixels,
                                 GradientTable const& table)
    : table_(table), isRadial_(gradient.isRadial)
{
    toPixels.Inverse(fromPixels_);
    HvPoint2<double> const axis = gradient.end - gradient.start;
    focus_ = isRadial_ ? gradient.focus : gradient.start;
    way_ = isRadial_ ? gradient.start - gradient.focus : axis;
    double const squared = HvPoint2_AdotB(axis, axis);
    scale_ = isRadial_ ? squared : (squared > 0.0 ? 1.0 / squared : 0.0);
}

double GradientColours::LinearShare(HvPoint2<double> const& p) const
{
    return HvPoint2_AdotB(p - focus_, way_) * scale_;
}

void GradientColours::Row(int x, int y, std::size_t count, std::uint32_t* pixels) const
{
    HvPoint2<double> const first = fromPixels_.Map(HvPoint2<double>(x + 0.5, y + 0.5));
    HvPoint2<double> const step(fromPixels_.GetMatrixElement(0, 0),
                                fromPixels_.GetMatrixElement(1, 0));
    double const share = LinearShare(first);
    double const shareStep = HvPoint2_AdotB(step, way_) * scale_;
    if (!isRadial_ && shareStep == 0.0) {
        std::uint32_t colour = 0;
        ColoursAt(&share, 1, &colour);
        std::fill(pixels, pixels + count, colour);
        return;
    }
    double shares[kBlock];
    for (std::size_t at = 0; at < count; at += kBlock) {
        std::size_t const numShares = std::min(kBlock, count - at);
        if (isRadial_) {
            RadialShares(first - focus_, step, at, numShares, shares);
        } else {
            for (std::size_t i = 0; i < numShares; ++i) {
                shares[i] = share + shareStep * static_cast<double>(static_cast<int>(at + i));
            }
        }
        ColoursAt(shares, numShares, pixels + at);
    }
}

/// What is no number counts as 0.
void GradientColours::ColoursAt(double const* shares, std::size_t count,
                                std::uint32_t* pixels) const
{
    int steps[kBlock];
    for (std::size_t i = 0; i < count; ++i) {
        double const share = shares[i] > 0.0 ? shares[i] : 0.0;
        steps[i] = static_cast<int>((share < 1.0 ? share : 1.0) * GradientTable::kSteps + 0.5);
    }
    for (std::size_t i = 0; i < count; ++i) {
        pixels[i] = table_.ColourAt(steps[i]);
    }
}

/// The ray from the focus f through p meets the circle of centre c and radius r at f + s (p - f);
/// the share is 1 / s, the greater root of
///
///     share^2 (r^2 - |c - f|^2) + 2 share (p - f).(c - f) - |p - f|^2 = 0
///
/// Of many points in a row, so that the compiler does several at a time.
void GradientColours::RadialShares(HvPoint2<double> const& ray, HvPoint2<double> const& step,
                                   std::size_t at, std::size_t count, double* shares) const
{
    double const a = scale_ - HvPoint2_AdotB(way_, way_);
    if (!(a > 0.0)) {
        std::fill(shares, shares + count, 1.0);
        return;
    }
    HvPoint2<double> const way = way_;
    for (std::size_t i = 0; i < count; ++i) {
        HvPoint2<double> const p = ray + step * static_cast<double>(static_cast<int>(at + i));
        double const b = HvPoint2_AdotB(p, way);
        shares[i] = (std::sqrt(b * b + a * HvPoint2_AdotB(p, p)) - b) / a;
    }
}
