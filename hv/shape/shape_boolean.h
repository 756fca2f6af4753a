// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Two shapes combined as pixels.

#ifndef HV_SHAPE_SHAPE_BOOLEAN_H
#define HV_SHAPE_SHAPE_BOOLEAN_H

#include <hv/platform/HvExport.h>

struct HvGC;
class HvShape2f;
class HvUByteRaster;

// Each fills `a` and `b`, which may be one shape, by HvShape2f::Fill into rasters of the size of
// `out` and sets the pixels of `out` that belong to the result to 255. The others keep their value:
// `out` is not cleared. Coverage and softness of the context play no part. Cost: two rasters.
// Should there be no memory for them, std::bad_alloc passes and `out` is as it was.

/// The pixels that both shapes fill.
HV_API void HvShape2f_IntersectionAB(HvGC const& gc, HvShape2f const* a, HvShape2f const* b,
                                     HvUByteRaster& out);
/// The pixels that `a` fills and `b` does not.
HV_API void HvShape2f_DifferenceAB(HvGC const& gc, HvShape2f const* a, HvShape2f const* b,
                                   HvUByteRaster& out);
/// The pixels that either shape fills.
HV_API void HvShape2f_UnionAB(HvGC const& gc, HvShape2f const* a, HvShape2f const* b,
                              HvUByteRaster& out);

#endif
