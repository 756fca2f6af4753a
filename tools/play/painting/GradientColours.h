// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The colours of a gradient over a picture.

#ifndef HV_TOOLS_PLAY_PAINTING_GRADIENTCOLOURS_H
#define HV_TOOLS_PLAY_PAINTING_GRADIENTCOLOURS_H

#include <hv/rotation/HvTransfo4.h>
#include <tools/play/painting/GradientTable.h>

#include <cstddef>
#include <cstdint>

/// Gives the colour of each pixel, premultiplied.
class GradientColours {
public:
    /// @param toPixels  from the gradient's coordinates; has an inverse.
    /// @param table     its colours; outlives this.
    GradientColours(DrawnGradient const& gradient, HvTransfo4 const& toPixels,
                    GradientTable const& table);

    /// Whether all its colours are opaque.
    bool IsOpaque() const { return table_.IsOpaque(); }
    /// Stores the colours of `count` pixels from (x, y) on.
    void Row(int x, int y, std::size_t count, std::uint32_t* pixels) const;

private:
    double LinearShare(HvPoint2<double> const& p) const;
    void RadialShares(HvPoint2<double> const& ray, HvPoint2<double> const& step, std::size_t at,
                      std::size_t count, double* shares) const;
    void ColoursAt(double const* shares, std::size_t count, std::uint32_t* pixels) const;

    GradientTable const& table_;
    HvTransfo4 fromPixels_;
    bool isRadial_;
    HvPoint2<double> focus_;  ///< a linear one's start
    HvPoint2<double> way_;    ///< to the end; a radial one's from the focus to the centre
    double scale_;            ///< one over the squared length; a radial one's squared radius
};

#endif
