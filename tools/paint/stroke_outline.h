// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Outlines of strokes with all the round parts that drawings have.

#ifndef HV_TOOLS_PAINT_STROKE_OUTLINE_H
#define HV_TOOLS_PAINT_STROKE_OUTLINE_H

#include <hv/shape/HvGC.h>
#include <hv/shape/HvPath2f.h>

/// The outline that HvPath2f::GetStrokeOutline gives, with discs where the library leaves round
/// parts out: it turns a round join only up to 120 degrees and bevels sharper ones, joins the ends
/// of an open subpath that meet, where drawings have two caps, and draws nothing where all points
/// of a subpath are one. `gc.transform` keeps circles round. To be filled by winding.
HvPath2f StrokeOutline_Of(HvPath2f const& path, HvGC const& gc);

#endif
