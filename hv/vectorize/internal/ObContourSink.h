// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the contour tracer tells.

#ifndef HV_VECTORIZE_INTERNAL_OBCONTOURSINK_H
#define HV_VECTORIZE_INTERNAL_OBCONTOURSINK_H

struct ObContour;

/// Takes the contours of complete regions, each as a whole: one call for a contour leaves the sink
/// free to draw its corners without another, and one for a region where that is simple enough.
class ObContourSink {
public:
    virtual void BeginRegion() = 0;
    /// Takes a closed contour, the outer one of the region first. Its vertices are used again
    /// afterwards.
    virtual void Add(ObContour const& contour) = 0;
    virtual void EndRegion() = 0;
    /// Takes a whole region that is nothing but the pixels from column `start` to `end` of row `y`.
    virtual void AddRun(int start, int end, int y) = 0;

protected:
    ~ObContourSink() = default;
};

#endif
