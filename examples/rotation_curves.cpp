// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Draws angles of rotations over time: what the numbers of a key do, and what angles cannot show.
//
//     hv_example_rotation_curves [FILE]     writes the picture, rotation_curves.svg by default
//
// Every line is flattened by the library; where an angle jumps it is dashed.

#include "support/CurvePanel.h"

#include <vector>

namespace {

constexpr double kDegree = 0.017453292519943295;
constexpr char const* kColours[] = {"#2060a0", "#c04020", "#208040"};

HvQuatKey Key(double time, double x, double y, double z, float tension = 0, float continuity = 0,
              float bias = 0, int spins = 0)
{
    HvPoint3<double> const angles(x * kDegree, y * kDegree, z * kDegree);
    return HvQuatKey(time, angles, tension, continuity, bias, spins);
}

/// Draws an angle of a rotation: 0 around x, 1 around y, 2 around z.
void Draw(CurvePanel& panel, std::vector<HvQuatKey> const& keys, unsigned int component, int colour)
{
    HvQuatFCurve curve(component);
    curve.GetQuatCurve()->SetKeys(keys.data(), static_cast<unsigned int>(keys.size()));
    panel.Draw(curve, kColours[colour]);
}

}  // namespace

int main(int argc, char** argv)
{
    SvgPage page(argc > 1 ? argv[1] : "rotation_curves.svg", 660, 590,
                 "font-family='sans-serif' font-size='13' fill='none' stroke-width='1.8'");
    auto const panel = [&page](double left, double top, double low, double high,
                               char const* title) {
        return CurvePanel(page, {0, low, 4, high}, {left, top}, {290, 150}, title);
    };

    // The middle key's tension, continuity or bias is -1, 0 and 1.
    CurvePanel tension = panel(20, 30, -20, 130, "tension: 0 blue, 1 red, -1 green");
    CurvePanel continuity = panel(340, 30, -20, 130, "continuity: 0 blue, 1 red, -1 green");
    CurvePanel bias = panel(20, 220, -20, 130, "bias: 0 blue, 1 red, -1 green");
    float const numbers[] = {0, 1, -1};
    for (int i = 0; i < 3; ++i) {
        float const n = numbers[i];
        HvQuatKey const start = Key(0, 0, 0, 0);
        HvQuatKey const end = Key(4, 0, 0, 60);
        Draw(tension, {start, Key(2, 0, 0, 90, n), end}, 2, i);
        Draw(continuity, {start, Key(2, 0, 0, 90, 0, n), end}, 2, i);
        Draw(bias, {start, Key(2, 0, 0, 90, 0, 0, n), end}, 2, i);
    }

    CurvePanel spins = panel(340, 220, -200, 260, "spins: 0 blue, 1 red");
    Draw(spins, {Key(0, 0, 0, 10), Key(4, 0, 0, 70)}, 2, 0);
    Draw(spins, {Key(0, 0, 0, 10, 0, 0, 0, 1), Key(4, 0, 0, 70)}, 2, 1);

    // The middle angle passes 90 degrees, a little beside the pole.
    CurvePanel lock = panel(20, 410, -40, 220, "gimbal lock: x blue, y red, z green");
    for (unsigned int c = 0; c < 3; ++c) {
        Draw(lock, {Key(0, 0, 60, 0), Key(4, 175, 60, 180)}, c, static_cast<int>(c));
    }

    // The same four rotations, written with two windings.
    CurvePanel windings =
        panel(340, 410, -150, 530, "keys 0, 170, 340, 510 blue; 0, 170, -20, 150 red");
    Draw(windings, {Key(0, 0, 0, 0), Key(1.3, 0, 0, 170), Key(2.6, 0, 0, 340), Key(3.9, 0, 0, 510)},
         2, 0);
    Draw(windings, {Key(0, 0, 0, 0), Key(1.3, 0, 0, 170), Key(2.6, 0, 0, -20), Key(3.9, 0, 0, 150)},
         2, 1);
    return page.Close("rotation_curves") ? 0 : 1;
}
