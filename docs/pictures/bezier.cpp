// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What can be done with one cubic: flattened, split, clipped and enclosed, asked for a near place.

#include "Picture.h"

namespace {

using Point = Picture::Point;

/// The cubic of all panels, in the panel at (x, y).
void Make(double x, double y, Point* cubic)
{
    Point const shape[4] = {{20, 130}, {80, 28}, {150, 200}, {260, 60}};
    for (int i = 0; i < 4; ++i) {
        cubic[i] = shape[i] + Point(x, y);
    }
}

void Controls(Picture& picture, Point const* cubic, char const* colour)
{
    picture.Line(cubic[0], cubic[1], kGrey);
    picture.Line(cubic[2], cubic[3], kGrey);
    for (int i = 0; i < 4; ++i) {
        picture.Ring(cubic[i], 3, colour);
    }
}

void DrawFlattened(Picture& picture, double x, double y)
{
    picture.Text(x + 10, y + 20, "flattened within 8 pixels (red) and 0.5 (blue)");
    Point cubic[4];
    Make(x, y, cubic);
    for (double tolerance : {0.5, 8.0}) {
        char const* const colour = tolerance == 8.0 ? kRed : kBlue;
        HvPoint2dArray points;
        HvBezierTool_FlattenCubic2d(cubic, tolerance, &points, 0);
        picture.Line(points, colour);
        for (Point const& p : points) {
            picture.Dot(p, tolerance == 8.0 ? 3.5 : 2, colour);
        }
    }
}

void DrawSplit(Picture& picture, double x, double y)
{
    picture.Text(x + 10, y + 20, "split at 0.4, with the controls of both parts");
    Point cubic[4];
    Make(x, y, cubic);
    Point inner[5];
    HvCubic_SplitInner(cubic, inner, 0.4);
    Point const left[4] = {cubic[0], inner[0], inner[1], inner[2]};
    Point const right[4] = {inner[2], inner[3], inner[4], cubic[3]};
    picture.Cubic(left, kBlue);
    picture.Cubic(right, kRed);
    Controls(picture, left, kBlue);
    Controls(picture, right, kRed);
}

void DrawClipped(Picture& picture, double x, double y)
{
    picture.Text(x + 10, y + 20, "clipped to a rectangle while it is flattened");
    Point cubic[4];
    Make(x, y, cubic);
    picture.Cubic(cubic, "#ddd");
    HvExtent2<double> const clip(x + 45, y + 101, x + 235, y + 112);
    picture.Box(clip, kGrey);
    HvPoint2dArray points;
    HvPointTagArray tags;
    HvBoolArray flags;
    HvBezierTool_ClipAndFlattenCubic2d(cubic, 0.1, clip, &points, &tags, &flags);
    picture.Lines(points, tags, flags, kBlue);
}

void DrawLocated(Picture& picture, double x, double y)
{
    picture.Text(x + 10, y + 20, "boxes; places nearest to four points");
    Point cubic[4];
    Make(x, y, cubic);
    HvExtent2<double> loose;
    for (Point const& p : cubic) {
        loose.Augment(p);
    }
    HvExtent2<double> tight;
    HvBezierTool_AugmentExtentWithCubic2dTightExtent(tight, cubic, 0);
    picture.Box(loose, "#ddd");
    picture.Box(tight, kGreen);
    picture.Cubic(cubic, kBlue);
    for (Point const& offset : {Point(80, 135), Point(140, 50), Point(195, 150), Point(250, 115)}) {
        Point const p = offset + Point(x, y);
        double squaredDistance;
        double t;
        if (HvBezierTool_LocatePoint2d(cubic, 0.01, p, 1e6, squaredDistance, t) != 0) {
            Point inner[5];
            HvCubic_SplitInner(cubic, inner, t);
            picture.Line(p, inner[2], kRed);
            picture.Dot(p, 3, kRed);
            picture.Ring(inner[2], 3, kRed);
        }
    }
}

}  // namespace

void DrawBezier(std::FILE* file)
{
    Picture picture(file, 640, 400);
    DrawFlattened(picture, 10, 5);
    DrawSplit(picture, 330, 5);
    DrawClipped(picture, 10, 190);
    DrawLocated(picture, 330, 190);
}
