// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Drags the handle of a key around it; the opposite one turns and grows with it, and the handles of
// the neighbours give way, so that the curve never turns back in time.
//
//     hv_example_drag_handle [FILM [SHEET]]
//
// writes an animated picture, drag_handle.svg unless told otherwise, and the frames at the recorded
// places of the mouse side by side, drag_handle_sheet.svg.

#include "support/EditorFilm.h"

#include <cstdio>

using Point = EditorFilm::Point;
using Extent = EditorFilm::Extent;

int main(int argc, char** argv)
{
    HvStdFCurve curve = EditorFilm::SampleCurve();
    HvStdTgtMover mover(curve, 4, HvBaseFCurve::Left, 0);

    // The handle follows the mouse; lengths are judged as the view shows them. The two ones unify
    // both handles, in direction and in length.
    auto const step = [&](Point handle, Extent& invalid, Extent&) {
        return mover.Update(handle, 1, 1, EditorFilm::kViewScale, invalid);
    };
    Point const start(4 - 2.0 / 3, 1 - 1.0 / 3);  // where the handle stands
    EditorFilm film;
    if (!film.Play(curve, "tangent mover: unified handles",
                   {start, {3, 3}, {2, 3}, {1.4, 1}, {2, -2}, {3, -3}, {4.5, -1}, start}, step)) {
        std::fprintf(stderr, "drag_handle: the tool refuses\n");
        return 1;
    }
    return film.Write("drag_handle", argc, argv);
}
