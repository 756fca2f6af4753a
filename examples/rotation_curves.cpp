// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Draws angles of rotations over time: what the numbers of a key do, and what angles cannot show.
//
//     hv_example_rotation_curves [FILE]     writes the picture, rotation_curves.svg by default
//
// Every line is flattened by the library; where an angle jumps, which is told by a flag of 0 on the
// vertex where the jump starts, the line is drawn dashed.

#include <hv/hv.h>

#include <cstdio>
#include <vector>

namespace {

constexpr double kDegree = 0.017453292519943295;
constexpr double kWidth = 290;
constexpr double kHeight = 150;
constexpr char const* kColours[] = {"#2060a0", "#c04020", "#208040"};

HvQuatKey Key(double time, double x, double y, double z, float tension = 0, float continuity = 0,
              float bias = 0, int spins = 0)
{
    HvPoint3<double> const angles(x * kDegree, y * kDegree, z * kDegree);
    return HvQuatKey(time, angles, tension, continuity, bias, spins);
}

/// Draws one component of a rotation over [0, 4], values from `low` to `high`, into a panel at
/// (left, top), with a dot on each key.
void Draw(std::FILE* file, std::vector<HvQuatKey> const& keys, unsigned int component, double left,
          double top, double low, double high, char const* colour)
{
    HvQuatFCurve curve(component);
    curve.GetQuatCurve()->SetKeys(keys.data(), static_cast<unsigned int>(keys.size()));
    HvTransfo4 panel;
    panel.Translate(left, top + kHeight, 0).Scale(kWidth / 4, -kHeight / (high - low), 1);
    panel.Translate(0, -low, 0);

    HvPoint2dArray points;
    HvPointTagArray tags;
    HvBoolArray flags;
    curve.FlattenFromTo(HvExtent2<double>(0, low, 4, high), panel, 0.05, points, tags, flags, 0);
    for (unsigned int i = 0; i + 1 < points.Size(); ++i) {
        // Two runs that meet in a jump both have the flag 0 there; between runs nothing is drawn.
        if (tags[i] != HvPointTagEnd) {
            char const* const dash = flags[i] ? "" : " stroke-dasharray='3 4' stroke-width='0.8'";
            std::fprintf(file, "<path d='M%.2f %.2fL%.2f %.2f' stroke='%s'%s/>\n", points[i].x,
                         points[i].y, points[i + 1].x, points[i + 1].y, colour, dash);
        }
    }
    HvDoubleArray times, lefts, rights;
    curve.GetKeys(times, lefts, rights, 0);
    for (unsigned int i = 0; i < times.Size(); ++i) {
        HvPoint2<double> const p = panel.Map(HvPoint2<double>(times[i], rights[i]));
        std::fprintf(file, "<circle cx='%.2f' cy='%.2f' r='3' fill='%s' stroke='none'/>\n", p.x,
                     p.y, colour);
    }
}

void Frame(std::FILE* file, double left, double top, char const* label)
{
    std::fprintf(file,
                 "<rect x='%g' y='%g' width='%g' height='%g' stroke='#bbb' stroke-width='1'/>\n"
                 "<text x='%g' y='%g' fill='#222' stroke='none'>%s</text>\n",
                 left, top, kWidth, kHeight, left, top - 7, label);
}

}  // namespace

int main(int argc, char** argv)
{
    char const* const name = argc > 1 ? argv[1] : "rotation_curves.svg";
    std::FILE* const file = std::fopen(name, "w");
    if (file == nullptr) {
        std::fprintf(stderr, "rotation_curves: cannot write %s\n", name);
        return 1;
    }
    std::fprintf(file, "<svg xmlns='http://www.w3.org/2000/svg' width='660' height='590' "
                       "font-family='sans-serif' font-size='13' fill='none' stroke-width='1.8'>\n"
                       "<rect width='660' height='590' fill='white'/>\n");

    // The middle key's tension, continuity or bias is -1, 0 and 1.
    Frame(file, 20, 30, "tension: 0 blue, 1 red, -1 green");
    Frame(file, 340, 30, "continuity: 0 blue, 1 red, -1 green");
    Frame(file, 20, 220, "bias: 0 blue, 1 red, -1 green");
    float const numbers[] = {0, 1, -1};
    for (int i = 0; i < 3; ++i) {
        float const n = numbers[i];
        HvQuatKey const start = Key(0, 0, 0, 0);
        HvQuatKey const end = Key(4, 0, 0, 60);
        Draw(file, {start, Key(2, 0, 0, 90, n), end}, 2, 20, 30, -20, 130, kColours[i]);
        Draw(file, {start, Key(2, 0, 0, 90, 0, n), end}, 2, 340, 30, -20, 130, kColours[i]);
        Draw(file, {start, Key(2, 0, 0, 90, 0, 0, n), end}, 2, 20, 220, -20, 130, kColours[i]);
    }

    Frame(file, 340, 220, "spins: 0 blue, 1 red");
    Draw(file, {Key(0, 0, 0, 10), Key(4, 0, 0, 70)}, 2, 340, 220, -200, 260, kColours[0]);
    Draw(file, {Key(0, 0, 0, 10, 0, 0, 0, 1), Key(4, 0, 0, 70)}, 2, 340, 220, -200, 260,
         kColours[1]);

    // The middle angle passes 90 degrees, a little beside the pole.
    Frame(file, 20, 410, "gimbal lock: x blue, y red, z green");
    for (unsigned int c = 0; c < 3; ++c) {
        Draw(file, {Key(0, 0, 60, 0), Key(4, 175, 60, 180)}, c, 20, 410, -40, 220, kColours[c]);
    }

    // The same four rotations, written with two windings.
    Frame(file, 340, 410, "keys 0, 170, 340, 510 blue; 0, 170, -20, 150 red");
    Draw(file, {Key(0, 0, 0, 0), Key(1.3, 0, 0, 170), Key(2.6, 0, 0, 340), Key(3.9, 0, 0, 510)}, 2,
         340, 410, -150, 530, kColours[0]);
    Draw(file, {Key(0, 0, 0, 0), Key(1.3, 0, 0, 170), Key(2.6, 0, 0, -20), Key(3.9, 0, 0, 150)}, 2,
         340, 410, -150, 530, kColours[1]);

    std::fprintf(file, "</svg>\n");
    return std::fclose(file) == 0 ? 0 : 1;
}
