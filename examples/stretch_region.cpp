// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Stretches a region of a curve by its right side: once the rest of the curve follows, once it
// stays and the region is flipped about a pivot.
//
//     hv_example_stretch_region [FILM [SHEET]]
//
// writes an animated picture, stretch_region.svg unless told otherwise, and the frames at the
// recorded places of the mouse side by side, stretch_region_sheet.svg.

#include "support/EditorFilm.h"

#include <cstdio>

namespace {

using Point = EditorFilm::Point;
using Extent = EditorFilm::Extent;

// A region narrower than this share of itself would press its keys together.
constexpr double kMinimalScale = 0.05;

/// Drags the right side of a region; with `ripple` what lies beyond it keeps its distance.
bool Play(EditorFilm& film, char const* title, Extent region, double pivot, int ripple,
          std::vector<Point> const& mouse)
{
    HvStdFCurve curve = EditorFilm::SampleCurve();
    HvFCurveStretcher stretcher(curve, region, HvDoubleArray(), Extent(), Point(pivot, 0),
                                HvBaseFCurve::RightHandle, ripple, kMinimalScale);
    // As with every tool, a step is told the whole way of the mouse since the button was pressed.
    auto const step = [&](Point way, Extent& invalid, Extent& stretched) {
        HvDoubleArray before, after;
        int limited = 0;
        return stretcher.Update(way, EditorFilm::kViewLeft, EditorFilm::kViewRight, before, after,
                                invalid, stretched, limited);
    };
    return film.Play(curve, title, mouse, step) && stretcher.Finalize() != 0;
}

}  // namespace

int main(int argc, char** argv)
{
    EditorFilm film;
    bool const isPlayed =
        Play(film, "stretcher with ripple: the rest follows", Extent(3, 0, 9.5, 5.5), 3, 1,
             {{0, 0}, {1, 0}, {2, 0}, {3, 0}, {1, 0}, {-2, 0}, {-4, 0}, {0, 0}}) &&
        Play(film, "stretcher: flipped about 5", Extent(3.5, 0, 6.5, 5.5), 5, 0,
             {{0, 0}, {-0.5, 0}, {-1, 0}, {-1.7, 0}, {-2.4, 0}, {-3, 0}, {-4, 0}, {0, 0}});
    if (!isPlayed) {
        std::fprintf(stderr, "stretch_region: the tool refuses\n");
        return 1;
    }
    return film.Write("stretch_region", argc, argv);
}
