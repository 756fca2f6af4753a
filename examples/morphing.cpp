// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Draws the ways from one outline to another, each in seven steps.
//
//     hv_example_morphing [FILE]     writes the picture, morphing.svg by default
//
// The first row blends places, the second directions and steps, which bends where the first one
// would shrink. In the third the ends of the outline travel on roads, drawn thin.

#include "support/SvgPage.h"
#include "support/outlines.h"

#include <cmath>

namespace {

constexpr int kSteps = 7;
constexpr double kCell = 130;  // a picture's share of the row, in pixels

using Outline = HvPath2fProp1d;
using Morph = int (HvMorpher::*)(double, Outline&) const;

/// A row of pictures, each `apart` pixels right of the one before.
void DrawRow(SvgPage& page, double y, double apart, HvMorpher const& morpher, Morph morph)
{
    for (int i = 0; i < kSteps; ++i) {
        double const t = static_cast<double>(i) / (kSteps - 1);
        Outline between(0u);
        (morpher.*morph)(t, between);
        bool const isEnd = i == 0 || i == kSteps - 1;
        page.Path(between, {kCell / 2 + apart * i, y},
                  isEnd ? "stroke='#2060a0' stroke-width='3'" : "stroke='#c04020'");
    }
}

}  // namespace

int main(int argc, char** argv)
{
    SvgPage page(argc > 1 ? argv[1] : "morphing.svg", 910, 580, "fill='none'");
    HvGC gc;
    gc.minPointGap = 1.0;

    Outline star =
        Drawn(10, [](double u) { return Polar(std::fmod(10 * u, 2) < 0.5 ? 55 : 22, u); });
    star.CloseSubpath(0);
    Outline const circle(HvPath2f(HvOval2f({0, 0}, 100, 100)));
    DrawRow(page, 75, kCell, HvMorpher(&star, &circle, gc), &HvMorpher::LinearMorph);

    // Directions are blended as angles from 0 to a full circle: these do not pass its end.
    Outline const line = Drawn(1, [](double u) { return HvPoint2<double>(55 - 110 * u, 0); });
    Outline const ring = Drawn(90, [](double u) { return Polar(45, (350 * u - 85) / 360); });
    DrawRow(page, 200, kCell, HvMorpher(&line, &ring, gc), &HvMorpher::TurtleMorph);

    Outline const wave = Drawn(80, [](double u) {
        return HvPoint2<double>(110 * u - 55, 25 * std::sin(12.566370614359172 * u));
    });
    // From a wave on the left to a bow on the right, over a low and a high road.
    Outline bow = Drawn(40, [](double u) { return Polar(60, 0.5 * u - 0.25); });
    bow.Translate({720, 0});
    HvPath2f low(0);
    low.Moveto({-55, 0});
    low.Curveto({150, 200}, {500, 250}, {720, -60});
    HvPath2f high(0);
    high.Moveto({55, 0});
    high.Curveto({200, -150}, {500, -100}, {720, 60});
    page.Path(low, {kCell / 2, 400}, "stroke='#bbb'");
    page.Path(high, {kCell / 2, 400}, "stroke='#bbb'");
    HvMorpher travelling(&wave, &bow, gc);
    travelling.SetMotionPath(0, 0, &low);
    travelling.SetMotionPath(80, 40, &high);
    DrawRow(page, 400, 0, travelling, &HvMorpher::LinearMotionPathMorph);
    return page.Close("morphing") ? 0 : 1;
}
