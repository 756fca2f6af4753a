// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Hits of a rectangle, whose outline is known without flattening.

#ifndef HV_SHAPE_INTERNAL_RECT_HITS_H
#define HV_SHAPE_INTERNAL_RECT_HITS_H

#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvPoint2.h>

class HvTransfo4;
struct HvParallelogram2f;

/// The corners of a rectangle in device coordinates, and what they and the four sides between them
/// meet.
class HvRectHits {
public:
    HvRectHits(HvParallelogram2f const& rect, HvTransfo4 const& transform);

    /// Whether a corner or a side meets the closed extent.
    bool DoesOutlineMeet(HvExtent2<float> const& extent) const;
    /// Whether `p` lies in the closed rectangle.
    bool Holds(HvPoint2<float> const& p) const;

private:
    HvPoint2<float> corners_[4];  // in their order along the outline
};

#endif
