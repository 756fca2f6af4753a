// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Shapes and strokes: joins and caps, a taper, the handles of an oval.

#include "Picture.h"

namespace {

using Point = HvPoint2<float>;

/// An open path with a corner and a curve.
HvPath2f Hook(float x, float y)
{
    HvPath2f path(6);
    path.Moveto({x, y + 90});
    path.Lineto({x + 45, y + 30});
    path.Lineto({x + 90, y + 90});
    path.Curveto({x + 110, y + 115}, {x + 150, y + 70}, {x + 120, y + 25});
    return path;
}

void DrawStroke(Picture& picture, HvPath2f const& path, HvGC const& gc)
{
    HvPath2f outline(64);
    path.GetStrokeOutline(gc, outline);
    picture.Region(outline, "#b8cce0");
    picture.Outline(outline, kBlue);
    picture.Outline(path, "#222");
}

void DrawHandles(Picture& picture, HvShape2f const& shape, HvPath2f const& outline)
{
    picture.Outline(outline, kBlue);
    for (unsigned int i = 0; i < shape.NumPoints(); ++i) {
        HvPoint2<double> const handle(shape.GetPoint(i));
        char number[2] = {static_cast<char>('0' + i), 0};
        picture.Ring(handle, 3, kRed);
        picture.Text(handle.x + 5, handle.y - 5, number);
    }
}

}  // namespace

void DrawStrokes(std::FILE* file)
{
    Picture picture(file, 620, 350);
    HvGC gc;
    gc.flatness = 0.25;
    gc.strokeWidth = 18;
    gc.miterLimit = 6;
    struct {
        int join;
        int cap;
        char const* title;
    } const styles[] = {{1, 2, "miter, butt"}, {2, 0, "round, round"}, {0, 1, "bevel, square"}};
    float x = 30;
    for (auto const& style : styles) {
        gc.joinStyle = style.join;
        gc.capStyle = style.cap;
        picture.Text(static_cast<double>(x), 20, style.title);
        DrawStroke(picture, Hook(x, 45), gc);
        x += 200;
    }
    picture.Text(30, 200, "tapered");
    gc.taperStroke = 1;
    DrawStroke(picture, Hook(30, 225), gc);

    HvRect2f rect({250, 320}, {370, 330}, {260, 230});
    HvOval2f oval({450, 320}, {570, 330}, {460, 230});
    picture.Text(230, 200, "a rectangle and its handles");
    DrawHandles(picture, rect, HvPath2f(rect));
    picture.Text(430, 200, "an oval and its handles");
    DrawHandles(picture, oval, HvPath2f(oval));
}
