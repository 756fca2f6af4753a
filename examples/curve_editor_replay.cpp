// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Plays recorded drags of the three tools of a curve editor, and draws what the user saw.
//
//     hv_example_curve_editor_replay [FILM [SHEET]]
//
// writes an animated picture, curve_editor_replay.svg unless told otherwise, and the frames at the
// recorded places of the mouse side by side, curve_editor_replay_sheet.svg: a drag a row.
//
// A tool is made at the press of the button. At every step it is told the whole way of the mouse
// since then, the tangent mover the place of its handle, and changes the curve at once.

#include "support/EditorFilm.h"

#include <cstdio>

namespace {

using Point = EditorFilm::Point;
using Extent = EditorFilm::Extent;

// Six keys with tangents of their own, one of them selected, one with a jump.
HvStdFCurve Curve()
{
    HvStdFCurve curve(0, HvBaseFCurve::CubicSegment);
    for (Point const key :
         {Point(0, 0), Point(2, 3), Point(4, 1), Point(6, 5), Point(9, 3), Point(11, 0)}) {
        double x = key.x;
        curve.CreateKey(x, key.y, HvBaseFCurve::CubicSegment, HvBaseFCurve::CubicSegment);
        curve.SetConstraint(x, HvBaseFCurve::AutomaticTangents, 1, 0);
        curve.SetConstraint(x, HvBaseFCurve::UnlimitedAutoSlope, 1, 0);
    }
    curve.FreezeTangentsInInterval(0.0, 11.0, 1, 1, HvBaseFCurve::AutomaticTangents);
    curve.SetKeyValue(6, HvBaseFCurve::Right, 2, 0);
    curve.SetSelected(1);
    curve.SetKeySelected(4.0, 1);
    return curve;
}

// A key is dragged to its neighbour, where it stops while its value goes on, over it, and back.
bool PlayKeyMover(EditorFilm& film)
{
    HvStdFCurve curve = Curve();
    HvDoubleArray keys;
    keys.Add(4);
    HvFCurveKeyMover mover(curve, keys, Extent(), Extent());
    auto const step = [&](Point way, Extent& invalid, Extent&) {
        HvDoubleArray parameters;
        Extent moved;
        return mover.Update(way, parameters, invalid, moved, EditorFilm::kViewLeft,
                            EditorFilm::kViewRight);
    };
    return film.Play(curve, "key mover: over a neighbour and back",
                     {{0, 0}, {1, 1.5}, {2, 2.5}, {2.6, 3}, {3.7, -0.5}, {2, -2}, {1, -1}, {0, 0}},
                     step) &&
           mover.Finalize() != 0;
}

// The right side of a region is dragged; the pivot of the scale is given.
bool PlayStretcher(EditorFilm& film, char const* title, Extent region, double pivot, int ripple,
                   std::vector<Point> const& mouse)
{
    constexpr double kMinimalScale = 0.05;
    HvStdFCurve curve = Curve();
    HvFCurveStretcher stretcher(curve, region, HvDoubleArray(), Extent(), Point(pivot, 0),
                                HvBaseFCurve::RightHandle, ripple, kMinimalScale);
    auto const step = [&](Point way, Extent& invalid, Extent& stretched) {
        HvDoubleArray before, after;
        int limited = 0;
        return stretcher.Update(way, EditorFilm::kViewLeft, EditorFilm::kViewRight, before, after,
                                invalid, stretched, limited);
    };
    return film.Play(curve, title, mouse, step) && stretcher.Finalize() != 0;
}

// A handle is dragged around its key; the opposite one turns and grows with it, and the handles of
// the neighbours give way.
bool PlayTangentMover(EditorFilm& film)
{
    HvStdFCurve curve = Curve();
    HvStdTgtMover mover(curve, 4, HvBaseFCurve::Left, 0);
    Point const start(4 - 2.0 / 3, 1 - 1.0 / 3);  // where the handle stands
    auto const step = [&](Point handle, Extent& invalid, Extent&) {
        return mover.Update(handle, 1, 1, EditorFilm::kViewScale, invalid);
    };
    return film.Play(curve, "tangent mover: unified handles",
                     {start, {3, 3}, {2, 3}, {1.4, 1}, {2, -2}, {3, -3}, {4.5, -1}, start}, step);
}

}  // namespace

int main(int argc, char** argv)
{
    EditorFilm film;
    bool const isPlayed =
        PlayKeyMover(film) &&
        PlayStretcher(film, "stretcher with ripple: the rest follows", Extent(3, 0, 9.5, 5.5), 3, 1,
                      {{0, 0}, {1, 0}, {2, 0}, {3, 0}, {1, 0}, {-2, 0}, {-4, 0}, {0, 0}}) &&
        PlayStretcher(
            film, "stretcher: flipped about 5", Extent(3.5, 0, 6.5, 5.5), 5, 0,
            {{0, 0}, {-0.5, 0}, {-1, 0}, {-1.7, 0}, {-2.4, 0}, {-3, 0}, {-4, 0}, {0, 0}}) &&
        PlayTangentMover(film);
    if (!isPlayed) {
        std::fprintf(stderr, "curve_editor_replay: a tool refuses\n");
        return 1;
    }
    char const* const name = argc > 1 ? argv[1] : "curve_editor_replay.svg";
    char const* const sheet = argc > 2 ? argv[2] : "curve_editor_replay_sheet.svg";
    if (char const* const failed = film.Write(name, sheet)) {
        std::fprintf(stderr, "curve_editor_replay: cannot write %s\n", failed);
        return 1;
    }
    std::printf("%zu frames in %s\n", film.NumFrames(), name);
    return 0;
}
