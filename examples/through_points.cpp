// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Leads curves through points: a closed one through all of them, a spline near many.
//
//     hv_example_through_points [FILE]     writes the picture, through_points.svg by default
//
// Points are grey, and where two cubics join there is a ring.

#include "support/FitSink.h"

#include <cmath>

int main(int argc, char** argv)
{
    SvgPage page(argc > 1 ? argv[1] : "through_points.svg", 660, 210,
                 "font-family='sans-serif' font-size='13' fill='none' stroke-width='1.6'");
    FitSink sink(page);

    // A few points far apart, as somebody might have placed them.
    HvPoint2fArray placed;
    for (HvPoint2<float> const& p :
         {HvPoint2<float>(40, 120), HvPoint2<float>(70, 40), HvPoint2<float>(150, 52),
          HvPoint2<float>(158, 65), HvPoint2<float>(190, 45), HvPoint2<float>(290, 60),
          HvPoint2<float>(200, 135), HvPoint2<float>(195, 165)}) {
        placed.Add(p);
    }
    sink.Begin("#2060a0");
    HvBezierTool().ClosedCatmullRomFit(placed, sink);
    sink.End();
    DrawPoints(page, placed, 2);
    page.Text({20, 22}, "through every point: Catmull-Rom");

    // A spiral, which a spline follows over its length.
    HvPoint2dArray spiral;
    HvPoint2fArray shown;
    for (unsigned int i = 0; i <= 400; ++i) {
        double const angle = 0.04 * i;
        double const radius = 4 + 5.3 * angle;
        spiral.Add(500 + radius * std::cos(angle), 110 + 0.9 * radius * std::sin(angle));
        shown.Add(HvPoint2<float>(spiral[i]));
    }
    DrawPoints(page, shown, 1);
    HvSpline2d spline;
    spline.OpenFit(spiral, 0.5, HvSpline2d::ContinuousDerivative);
    sink.Begin("#c04020");
    spline.Draw(sink, 0);
    sink.End();
    char text[80];
    std::snprintf(text, sizeof text, "a spline over the length: %u knots", spline.NumKnots());
    page.Text({345, 22}, text);
    return page.Close("through_points") ? 0 : 1;
}
