// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A panel of a picture in which curves are drawn over time.

#ifndef EXAMPLES_SUPPORT_CURVEPANEL_H
#define EXAMPLES_SUPPORT_CURVEPANEL_H

#include "SvgPage.h"

/// Shows parameters and values of an extent in a framed rectangle of the page.
class CurvePanel {
public:
    /// Draws the frame, of `size` pixels and with a title above it.
    CurvePanel(SvgPage& page, HvExtent2<double> const& shown, HvPoint2<double> const& topLeft,
               HvPoint2<double> const& size, char const* title);

    /// Draws a curve with a dot on each key. Where the curve jumps, which a flag of 0 tells on the
    /// vertex where the jump starts, the line is dashed.
    void Draw(HvBaseFCurve const& curve, char const* colour);

private:
    SvgPage& page_;
    HvExtent2<double> shown_;
    HvTransfo4 toPage_;
};

#endif
