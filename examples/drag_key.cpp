// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Drags a key of a curve to its neighbour, where it stops while its value goes on, over it, and
// back, after which the curve is as it was.
//
//     hv_example_drag_key [FILM [SHEET]]
//
// writes an animated picture, drag_key.svg unless told otherwise, and the frames at the recorded
// places of the mouse side by side, drag_key_sheet.svg.

#include "support/EditorFilm.h"

#include <cstdio>

using Point = EditorFilm::Point;
using Extent = EditorFilm::Extent;

int main(int argc, char** argv)
{
    HvStdFCurve curve = EditorFilm::SampleCurve();
    HvStdFCurve const before(curve);

    // The tool is made at the press of the button. An extent would hold the keys within limits;
    // an empty one leaves them free.
    HvDoubleArray keys;
    keys.Add(4);
    HvFCurveKeyMover mover(curve, keys, Extent(), Extent());

    // At every step it is told the whole way of the mouse since then, and changes the curve at
    // once. What has to be drawn anew comes back in `invalid`, and the parameters at which the
    // dragged keys now are in `parameters`.
    auto const step = [&](Point way, Extent& invalid, Extent&) {
        HvDoubleArray parameters;
        Extent moved;
        return mover.Update(way, parameters, invalid, moved, EditorFilm::kViewLeft,
                            EditorFilm::kViewRight);
    };
    EditorFilm film;
    bool const isPlayed = film.Play(
        curve, "key mover: over a neighbour and back",
        {{0, 0}, {1, 1.5}, {2, 2.5}, {2.6, 3}, {3.7, -0.5}, {2, -2}, {1, -1}, {0, 0}}, step);
    // At the release of the button the keys get back what a host has attached to them.
    if (!isPlayed || mover.Finalize() == 0) {
        std::fprintf(stderr, "drag_key: the tool refuses\n");
        return 1;
    }
    for (double const time : {1.0, 3.0, 5.0, 8.0}) {
        if (curve.Eval(time, 0) != before.Eval(time, 0)) {
            std::fprintf(stderr, "drag_key: the curve is another one at %g\n", time);
            return 1;
        }
    }
    return film.Write("drag_key", argc, argv);
}
