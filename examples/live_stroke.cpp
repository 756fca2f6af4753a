// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Draws a stroke while the pen moves: curves are fitted to the points as they arrive, and at every
// frame the application gets the samples that are new.
//
//     hv_example_live_stroke [FILE]     writes the picture, live_stroke.svg unless told otherwise
//
// An application would set its brush down at the samples. Here each frame's samples are dots, in
// two colours in turn, and the path that has been built by the end is the line below them.

#include "support/SvgPage.h"

#include <cmath>

// Where the pen is at time t, in milliseconds: a rising row of loops.
HvPoint2<float> Pen(int t)
{
    double const turn = 0.022 * t;
    return HvPoint2<float>(
        HvPoint2<double>(90 + 0.3 * t - 50 * std::cos(turn), 190 - 0.06 * t + 70 * std::sin(turn)));
}

int main(int argc, char** argv)
{
    SvgPage page(argc > 1 ? argv[1] : "live_stroke.svg", 640, 280, "fill='none'");
    HvGC gc;
    gc.sampleSpacing = 6;
    HvPath2f path(64);
    // Steps from 40 units on are bridged, those above 10 subdivided; the fit is within 0.5.
    HvBezierFitPathBuilder builder(gc, &path, 40, 10, 0.5, 4);

    int frames = 0;
    unsigned int count = 0;
    auto const draw = [&](HvPoint2fArray const* samples) {
        for (HvPoint2<float> const& p : *samples) {
            page.Dot({double(p.x), double(p.y)}, 2.4, frames % 2 == 0 ? "#2060a0" : "#e08020");
        }
        count += samples->Size();
        ++frames;
    };
    int const end = 1600;
    builder.StartSubpath(Pen(0));
    for (int t = 4; t < end; t += 4) {
        builder.AddInputPoint(Pen(t), 0);
        if (t % 64 == 0) {
            draw(builder.GetTrailingSamples());
        }
    }
    draw(builder.EndSubpath(Pen(end), 0));

    page.Path(path, {0, 0}, "stroke='#a0a8b0'");
    std::printf("%d points in %d frames: %u curves, %u samples\n", end / 4 + 1, frames,
                path.NumSegments(), count);
    return page.Close("live_stroke") ? 0 : 1;
}
