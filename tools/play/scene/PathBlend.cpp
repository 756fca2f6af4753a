// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// One outline that becomes another.

#include <tools/play/scene/PathBlend.h>

#include <hv/foundation/HvExtent2.h>

#include <algorithm>

namespace {

/// A morph samples outlines, and fits the result, at this share of the size of the larger one:
/// finer than is seen where it fills the picture.
constexpr double kSpacing = 1.0 / 512.0;

/// What siblings without a property do not use, but must be above 0.
constexpr double kPropertyStep = 1.0;

double SizeOf(HvPath2f const& path)
{
    HvExtent2<float> extent;
    path.GetExtent(extent);
    return std::max({extent.max.x - extent.min.x, extent.max.y - extent.min.y, 0.0F});
}

HvGC MorphGC(HvPath2f const& from, HvPath2f const& to)
{
    HvGC gc;
    double const spacing = kSpacing * std::max(SizeOf(from), SizeOf(to));
    if (spacing > 0.0) {
        gc.minPointGap = spacing;
    }
    return gc;
}

}  // namespace

PathBlend::Morph::Morph(HvPath2fProp1d const& from, HvPath2fProp1d const& to)
    : gc(MorphGC(from, to)), morpher(&from, &to, gc)
{
}

PathBlend::PathBlend(HvPath2fProp1d const& from, HvPath2fProp1d const& to)
    : from_(&from), to_(&to),
      morph_(from.IsSiblingOf(to) != 0 ? nullptr : std::make_unique<Morph>(from, to))
{
}

HvPath2f PathBlend::At(double share) const
{
    HvPath2fProp1d blend(from_->NumPoints());
    if (morph_ == nullptr) {
        blend.SetToLerpAB(*from_, *to_, share, kPropertyStep, kPropertyStep);
    } else {
        morph_->morpher.LinearMorph(share, blend);
    }
    return blend;
}
