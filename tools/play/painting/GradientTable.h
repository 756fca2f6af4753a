// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The colours along a gradient.

#ifndef HV_TOOLS_PLAY_PAINTING_GRADIENTTABLE_H
#define HV_TOOLS_PLAY_PAINTING_GRADIENTTABLE_H

#include <tools/paint/paint_pixel.h>
#include <tools/play/evaluation/drawing.h>
#include <tools/play/painting/PaintKey.h>

#include <cstddef>
#include <cstdint>
#include <vector>

/// The colours in even steps from the start of a gradient to its end. Between stops colours and
/// opacities run evenly; before the first and behind the last they stay.
class GradientTable {
public:
    /// Finer than a byte tells apart, also where a stop follows soon.
    static constexpr int kSteps = 1024;

    /// Adds all that `Make` looks at.
    static void AddTo(PaintKey& key, DrawnGradient const& gradient, double opacity);

    /// @param gradient  has a colour at least.
    /// @param opacity   0 to 1, for all of it.
    void Make(DrawnGradient const& gradient, double opacity);

    /// Whether all colours are opaque.
    bool IsOpaque() const { return isOpaque_; }
    /// Premultiplied; from 0 to kSteps, both included.
    std::uint32_t ColourAt(int step) const { return colours_[static_cast<std::size_t>(step)]; }
    std::size_t NumBytes() const { return colours_.size() * sizeof(std::uint32_t); }

private:
    std::vector<std::uint32_t> colours_;
    bool isOpaque_ = false;
};

#endif
