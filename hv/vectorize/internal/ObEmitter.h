// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// From the vertices of a contour to callbacks.

#ifndef HV_VECTORIZE_INTERNAL_OBEMITTER_H
#define HV_VECTORIZE_INTERNAL_OBEMITTER_H

#include <hv/foundation/HvPoint2.h>

struct ObContext;
struct ObContour;

/// Draws closed contours through `moveto` and `lineto` of a context.
class ObEmitter {
public:
    explicit ObEmitter(ObContext const& context) : context_(context) {}

    void Emit(ObContour const& contour);

private:
    void MoveTo(HvPoint2<int> const& p);
    void LineTo(HvPoint2<int> const& p);

    ObContext const& context_;
    // The last two points that were drawn.
    HvPoint2<int> last_;
    HvPoint2<int> beforeLast_;
};

#endif
