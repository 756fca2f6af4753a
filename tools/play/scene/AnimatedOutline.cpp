// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// An outline that moves from key to key.

#include <tools/play/scene/AnimatedOutline.h>
#include <tools/play/scene/PathBlend.h>

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
        outlines_.push_back(PathOf(outline));
    }
}

HvPath2f AnimatedOutline::At(double frame) const
{
    Phase const phase = phase_.At(frame);
    HvPath2f const& outline = outlines_[phase.key];
    if (phase.share == 0.0 || phase.key + 1 >= outlines_.size()) {
        return outline;
    }
    HvPath2f blend(outline.NumPoints());
    PathBlend_Set(outline, outlines_[phase.key + 1], phase.share, blend);
    return blend;
}
