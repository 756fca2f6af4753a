// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The contour tracer: from pixels to callbacks.

#ifndef HV_VECTORIZE_OBVECTORIZE_H
#define HV_VECTORIZE_OBVECTORIZE_H

#include <hv/foundation/HvExtent2.h>
#include <hv/platform/HvExport.h>

class HvUByteRaster;
struct ObContext;

/// Tells the contours of the pixels that equal `value`, through the callbacks of `context`.
///
/// Pixels that share a side are of one region; pixels that only touch at a corner are not. The
/// contours of a region are closed chains along sides of pixels, (0, 0) being the outer corner of
/// the first pixel: first the outer one, which starts at its topmost, then leftmost corner and goes
/// down the left side, then, in any order, the holes, which run the other way round from the lower
/// left corner of their topmost, then leftmost pixel. No side is drawn twice; a straight stretch
/// may come in several steps. Regions come as they end: by the row of their last pixels, then from
/// left to right.
///
/// When the outer contour fails a test, first ObTestContourArea, then ObTestContourPerimeter, the
/// whole region is left out; otherwise each hole that fails one.
///
/// @param extent  handed to `context.begin`; no effect otherwise.
///
/// A raster without pixels, or wider than 65,533, which the rows do not hold, has no regions.
/// std::bad_alloc comes out with all memory given back, but not what the callbacks did undone.
/// Threads: reads the raster; the context with its rows serves one call at a time.
/// Cost: one pass over the pixels, and a step for each change of direction of an outline. Memory:
/// that of the contours that are open or belong to an open region.
HV_API void ObVectorize(ObContext& context, HvUByteRaster const& raster, unsigned char value,
                        HvExtent2<float> const& extent);

#endif
