// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Turns a Bezier arch into a polyline for the screen.
//
// The arch stands in the unit of a drawing; the screen has its y axis downwards and four pixels to
// a unit. A tolerance is given in the unit of the points, so the curve is placed first and
// flattened then: a quarter of a pixel stays a quarter of a pixel at every zoom.

#include <hv/hv.h>

#include <cstdio>

int main()
{
    HvPoint2<double> const arch[4] = {{0, 0}, {0, 40}, {60, 40}, {60, 0}};

    // Every modifier acts on the points before those that were composed earlier: scaled first,
    // moved then.
    HvTransfo4 screen;
    screen.Translate(20, 200, 0).Scale(4, -4, 1);
    HvPoint2<double> placed[4];
    screen.Map(arch, 4, placed);

    // The result is appended; a 1 in place of the 0 would leave out the first point, which another
    // curve may have given already.
    HvPoint2dArray points;
    HvBezierTool_FlattenCubic2d(placed, 0.25, &points, 0);

    HvExtent2<double> extent;
    for (HvPoint2<double> const& p : points) {
        extent.Augment(p);
    }
    std::printf("%u points from (%g, %g) to (%g, %g)\n", points.Size(), points[0].x, points[0].y,
                points[points.Size() - 1].x, points[points.Size() - 1].y);
    std::printf("they reach from x %g to %g and from y %g to %g\n", extent.min.x, extent.max.x,
                extent.min.y, extent.max.y);
}
