// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// An outline that moves from key to key.

#include <tools/play/scene/AnimatedOutline.h>

#include <cstddef>

namespace {

using Point = HvPoint2<double>;

/// Segments are cubics all, also straight ones: outlines of equal counts are then siblings.
HvPath2f PathOf(OutlineValue const& outline)
{
    auto const count = static_cast<unsigned int>(outline.nodes.size());
    HvPath2f path(3 * count + 1);
    if (count == 0) {
        return path;
    }
    path.Moveto(HvPoint2<float>(outline.nodes.front()));
    auto const drawTo = [&outline, &path](std::size_t from, std::size_t to) {
        path.Curveto(HvPoint2<float>(outline.nodes[from] + outline.leaving[from]),
                     HvPoint2<float>(outline.nodes[to] + outline.arriving[to]),
                     HvPoint2<float>(outline.nodes[to]));
    };
    for (std::size_t i = 1; i < count; ++i) {
        drawTo(i - 1, i);
    }
    if (outline.isClosed) {
        drawTo(count - 1, 0);
        path.Closeto();
    }
    return path;
}

}  // namespace

AnimatedOutline::AnimatedOutline(OutlineProperty const& property) : phase_(property.phase)
{
    outlines_.reserve(property.outlines.size());
    for (OutlineValue const& outline : property.outlines) {
        outlines_.emplace_back(PathOf(outline));
    }
    // Blends point at their outlines, which stay where they are now.
    for (std::size_t i = 1; i < outlines_.size(); ++i) {
        blends_.emplace_back(outlines_[i - 1], outlines_[i]);
    }
}

HvPath2f AnimatedOutline::At(double frame) const
{
    Phase const phase = phase_.At(frame);
    bool const isResting = phase.share == 0.0 || phase.key >= blends_.size();
    return isResting ? HvPath2f(outlines_[phase.key]) : blends_[phase.key].At(phase.share);
}
