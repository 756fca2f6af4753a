// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the caller of the contour tracer gives it.

#ifndef HV_VECTORIZE_OBCONTEXT_H
#define HV_VECTORIZE_OBCONTEXT_H

#include <hv/foundation/HvExtent2.h>

class HvUByteRaster;

/// The callbacks, thresholds and row buffers of ObVectorize, in the order in which a caller fills
/// them in. No callback may be null. An exception out of a callback ends the tracing and comes out
/// of ObVectorize.
struct ObContext {
    /// Called once, before the first pixel is read, with the arguments of ObVectorize.
    void (*begin)(void* user, HvUByteRaster const& raster, unsigned char value,
                  HvExtent2<float> const& extent);
    /// Begins a region: its outer contour comes next, then its holes.
    void (*beginRegion)(void* user);
    /// Starts a contour at a corner of a pixel. The contour before it, if any, is at its end.
    void (*moveto)(int x, int y, void* user);
    /// Goes on to the corner one or more pixels away, in a straight line along x or y. The last one
    /// of a contour leads to its start.
    void (*lineto)(int x, int y, void* user);
    /// Ends a region and its last contour.
    void (*endRegion)(void* user);
    /// Called once, after the last region.
    void (*end)(void* user);
    /// Handed to each callback.
    void* user;
    /// Contours with a shorter perimeter are dropped; 0 keeps all. See ObTestContourPerimeter.
    double perimeterThreshold;
    /// Contours with a smaller area are dropped; 0 keeps all. See ObTestContourArea.
    double areaThreshold;
    /// Three buffers of the caller's, each of width / 2 * 2 + 4 entries. They hold the rows that
    /// the tracer looks at, as runs of pixels; what they hold before and afterwards says nothing.
    unsigned short* rows[3];
};

#endif
