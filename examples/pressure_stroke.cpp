// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Builds a path that carries the pressure of a pen, and draws it large and small.
//
//     hv_example_pressure_stroke [FILE]     writes the picture, pressure_stroke.svg by default
//
// The path is as wide as its property tells. Drawn smaller it needs fewer curves and fewer keys:
// each of the small pictures is the simplest level of which nobody sees that it is one.

#include "support/SvgPage.h"

#include <cmath>

namespace {

/// Where the pen is at time t, from 0 to 1, and how wide its line.
HvPoint2<float> Pen(double t)
{
    double const turn = 25 * t;
    return HvPoint2<float>(HvPoint2<double>(75 + 430 * t - 45 * std::cos(turn),
                                            140 - 30 * t + (85 - 45 * t) * std::sin(turn)));
}

double Width(double t)
{
    return 1.5 + 9 * std::pow(std::sin(12.5 * t + 0.6), 2) * (1.2 - t);
}

/// Draws a path `scale` times as large, a piece of line for each of its flattened steps.
void Draw(SvgPage& page, HvPath2fProp1d const& path, double scale, HvPoint2<double> const& origin)
{
    HvGC gc;
    gc.flatness = 0.1 / scale;
    gc.propFlatness = 0.1 / scale;
    HvPoint2fArray points;
    HvPointTagArray tags;
    HvDoubleArray widths;
    path.Flatten(gc, points, tags, widths);
    for (unsigned int i = 1; i < points.Size(); ++i) {
        page.Print("<path stroke='#2060a0' stroke-width='%.2f' d='M%.2f %.2fL%.2f %.2f'/>\n",
                   0.5 * scale * (widths[i - 1] + widths[i]), origin.x + scale * points[i - 1].x,
                   origin.y + scale * points[i - 1].y, origin.x + scale * points[i].x,
                   origin.y + scale * points[i].y);
    }
}

}  // namespace

int main(int argc, char** argv)
{
    SvgPage page(argc > 1 ? argv[1] : "pressure_stroke.svg", 760, 270,
                 "font-family='sans-serif' font-size='13' stroke-linecap='round'");
    HvGC gc;
    HvPath2fProp1d path(64);
    // Steps from 40 units on are bridged, those above 10 subdivided; the outline is fitted within
    // 0.5 units, the width within 0.2.
    HvBezierFitPathPropBuilder builder(gc, &path, 40, 10, 0.5, 4, 0.2);
    constexpr int kPoints = 400;
    builder.StartSubpath(Pen(0), Width(0));
    for (int i = 1; i < kPoints; ++i) {
        builder.AddInputPoint(Pen(double(i) / kPoints), Width(double(i) / kPoints), 0);
    }
    builder.EndSubpath(Pen(1), Width(1), 0);

    // The width of a pixel in units of the path, and where the picture stands.
    HvMipPath2fProp1d const levels(path, 0.25, 0.1);
    double const pictures[][3] = {{1, 0, 0}, {4, 570, 60}, {16, 630, 185}};
    for (auto const& [unitsPerPixel, x, y] : pictures) {
        HvMipPath2fProp1d::LevelPath const level =
            levels.Level(levels.LevelForScale(unitsPerPixel));
        Draw(page, *level, 1 / unitsPerPixel, {x, y});
        char text[80];
        std::snprintf(text, sizeof text, "1 to %g: %u curves, %u keys", unitsPerPixel,
                      level->NumSegments(), level->GetPropCurve(0)->GetNumKeys());
        page.Text({x == 0 ? 40.0 : 580.0, x == 0 ? 255.0 : y + 76}, text);
    }
    return page.Close("pressure_stroke") ? 0 : 1;
}
