// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Draws a stroke while the pen moves: curves are fitted to the points as they arrive, and at every
// frame the application gets the samples that are new.
//
//     hv_example_live_stroke [FILE]     writes the picture, live_stroke.svg unless told otherwise
//
// An application would set its brush down at the samples. Here each frame's samples are dots, in
// two colours in turn, and the path that has been built by the end is the line below them.

#include <hv/hv.h>

#include <cmath>
#include <cstdio>

// Where the pen is at time t, in milliseconds: a rising row of loops.
HvPoint2<float> Pen(int t)
{
    double const turn = 0.022 * t;
    return HvPoint2<float>(
        HvPoint2<double>(90 + 0.3 * t - 50 * std::cos(turn), 190 - 0.06 * t + 70 * std::sin(turn)));
}

int main(int argc, char** argv)
{
    char const* const name = argc > 1 ? argv[1] : "live_stroke.svg";
    std::FILE* const file = std::fopen(name, "w");
    if (file == nullptr) {
        std::fprintf(stderr, "live_stroke: cannot write %s\n", name);
        return 1;
    }
    std::fprintf(file, "<svg xmlns='http://www.w3.org/2000/svg' width='640' height='280'>\n"
                       "<rect width='640' height='280' fill='white'/>\n");

    HvGC gc;
    gc.sampleSpacing = 6;
    HvPath2f path(64);
    // Steps from 40 units on are bridged, those above 10 subdivided; the fit is within 0.5.
    HvBezierFitPathBuilder builder(gc, &path, 40, 10, 0.5, 4);

    int frames = 0;
    unsigned int count = 0;
    auto const draw = [&](HvPoint2fArray const* samples) {
        for (HvPoint2<float> const& p : *samples) {
            std::fprintf(file, "<circle cx='%.2f' cy='%.2f' r='2.4' fill='%s'/>\n", double(p.x),
                         double(p.y), frames % 2 == 0 ? "#2060a0" : "#e08020");
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

    HvPoint2fArray line;
    path.FlattenSubpath(0, 0.1, line);
    std::fprintf(file, "<path d='");
    for (unsigned int i = 0; i < line.Size(); ++i) {
        std::fprintf(file, "%c%.2f %.2f", i == 0 ? 'M' : 'L', double(line[i].x), double(line[i].y));
    }
    std::fprintf(file, "' fill='none' stroke='#a0a8b0'/>\n</svg>\n");
    std::printf("%d points in %d frames: %u curves, %u samples\n", end / 4 + 1, frames,
                path.NumSegments(), count);
    return std::fclose(file) == 0 ? 0 : 1;
}
