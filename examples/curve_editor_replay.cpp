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
// since then, the tangent mover the place of its handle, and changes the curve at once. Yellow is
// what it asks to be drawn anew.

#include <hv/hv.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

using Point = HvPoint2<double>;
using Extent = HvExtent2<double>;
using Frames = std::vector<std::string>;

constexpr int kWidth = 400;
constexpr int kHeight = 240;
constexpr double kFlatness = 0.2;      // pixels
constexpr unsigned kStepsBetween = 3;  // mouse steps from one recorded place to the next
Extent const kView(-1, -3.5, 13, 6.5);
// What the view multiplies y by, against x: lengths and angles of handles are judged by eye.
constexpr double kViewScale = (kHeight / 10.0) / (kWidth / 14.0);

// Six keys with tangents of their own, one of them selected, one with a jump.
HvStdFCurve Curve()
{
    HvStdFCurve curve(0, HvBaseFCurve::CubicSegment);
    double const keys[][2] = {{0, 0}, {2, 3}, {4, 1}, {6, 5}, {9, 3}, {11, 0}};
    for (auto const& key : keys) {
        double x = key[0];
        curve.CreateKey(x, key[1], HvBaseFCurve::CubicSegment, HvBaseFCurve::CubicSegment);
        curve.SetConstraint(x, HvBaseFCurve::AutomaticTangents, 1, 0);
        curve.SetConstraint(x, HvBaseFCurve::UnlimitedAutoSlope, 1, 0);
    }
    curve.FreezeTangentsInInterval(0.0, 11.0, 1, 1, HvBaseFCurve::AutomaticTangents);
    curve.SetKeyValue(6, HvBaseFCurve::Right, 2, 0);
    curve.SetSelected(1);
    curve.SetKeySelected(4.0, 1);
    return curve;
}

void DrawExtent(std::ostream& out, HvTransfo4 const& panel, Extent const& extent, char const* look)
{
    if (extent.state != Extent::Ordinary) {
        return;
    }
    Extent const r = panel.Map(extent);
    out << "<rect x='" << r.min.x << "' y='" << r.min.y << "' width='" << r.max.x - r.min.x
        << "' height='" << r.max.y - r.min.y << "' " << look << "/>\n";
}

// The curve over the whole view, extrapolation included; its jumps dashed.
void DrawCurve(std::ostream& out, HvTransfo4 const& panel, HvStdFCurve const& curve)
{
    HvPoint2dArray points;
    HvPointTagArray tags;
    HvBoolArray flags;
    curve.FlattenFromTo(kView, panel, kFlatness, points, tags, flags, 0);
    std::ostringstream jumps;
    out << "<path stroke='#2060a0' stroke-width='2' d='";
    for (unsigned i = 0; i + 1 < points.Size(); ++i) {
        if (tags[i] != HvPointTagEnd) {
            (flags[i] != 0 ? out : jumps) << 'M' << points[i].x << ' ' << points[i].y << 'L'
                                          << points[i + 1].x << ' ' << points[i + 1].y;
        }
    }
    out << "'/>\n<path stroke='#2060a0' stroke-dasharray='3' d='" << jumps.str() << "'/>\n";
}

void DrawKeys(std::ostream& out, HvTransfo4 const& panel, HvStdFCurve const& curve)
{
    for (unsigned i = 0; i < curve.GetNumKeys(); ++i) {
        double x = 0;
        double values[2];
        Point handles[2];
        curve.GetKeyParameter(i, x);
        curve.GetKeyValuesByIndex(i, values[0], values[1]);
        curve.GetEvaluatedKeyTgtHandlesByIndex(i, handles[0], handles[1]);
        for (int side = 0; side < 2; ++side) {
            Point const a = panel.Map(Point(x, values[side]));
            Point const b = panel.Map(Point(x, values[side]) + handles[side]);
            out << "<path d='M" << a.x << ' ' << a.y << 'L' << b.x << ' ' << b.y
                << "' stroke='#999'/><circle cx='" << b.x << "' cy='" << b.y
                << "' r='2.5' fill='#999'/><rect x='" << a.x - 4 << "' y='" << a.y - 4
                << "' width='8' height='8' stroke='black' fill='"
                << (curve.IsKeySelected(i) != 0 ? "#e04020" : "white") << "'/>\n";
        }
    }
}

// What the editor shows.
std::string Draw(HvStdFCurve const& curve, char const* title, Extent const& invalid,
                 Extent const& region)
{
    HvTransfo4 panel;
    panel.Scale(kWidth / (kView.max.x - kView.min.x), -kHeight / (kView.max.y - kView.min.y), 1)
        .Translate(-kView.min.x, -kView.max.y, 0);
    std::ostringstream out;
    out << "<rect width='400' height='240' fill='white' stroke='#ccc'/>\n";
    DrawExtent(out, panel, invalid, "fill='#fff6cc'");
    out << "<g fill='none'>\n";
    DrawExtent(out, panel, region, "stroke='#30a050' stroke-dasharray='6 3'");
    DrawCurve(out, panel, curve);
    DrawKeys(out, panel, curve);
    out << "</g>\n<text x='8' y='230'>" << title << "</text>\n";
    return out.str();
}

// Takes a step for each place of the mouse, recorded or on the way to the next, and keeps what is
// seen after it. `step(mouse, invalid, region)` gives what its tool has answered.
template <class Step>
bool Play(HvStdFCurve const& curve, char const* title, std::vector<Point> const& mouse,
          Frames& frames, Step step)
{
    Extent region;
    for (std::size_t k = 0; k < mouse.size(); ++k) {
        Point const next = mouse[k + 1 < mouse.size() ? k + 1 : k];
        for (unsigned part = 0; part < kStepsBetween; ++part) {
            Extent invalid;
            if (step(mouse[k] + (next - mouse[k]) * (double(part) / kStepsBetween), invalid,
                     region) == 0) {
                return false;
            }
            frames.push_back(Draw(curve, title, invalid, region));
        }
    }
    return true;
}

// A key is dragged to its neighbour, where it stops while its value goes on, over it, and back.
bool PlayKeyMover(Frames& frames)
{
    HvStdFCurve curve = Curve();
    HvDoubleArray keys;
    keys.Add(4);
    HvFCurveKeyMover mover(curve, keys, Extent(), Extent());
    std::vector<Point> const mouse = {{0, 0},      {1, 1.5}, {2, 2.5}, {2.6, 3},
                                      {3.7, -0.5}, {2, -2},  {1, -1},  {0, 0}};
    return Play(curve, "key mover: over a neighbour and back", mouse, frames,
                [&](Point way, Extent& invalid, Extent&) {
                    HvDoubleArray parameters;
                    Extent moved;
                    return mover.Update(way, parameters, invalid, moved, kView.min.x, kView.max.x);
                }) &&
           mover.Finalize() != 0;
}

// The right side of a region is dragged; the pivot of the scale is given.
bool PlayStretcher(Frames& frames, char const* title, Extent region, double pivot, int ripple,
                   std::vector<Point> const& mouse)
{
    HvStdFCurve curve = Curve();
    constexpr double kMinimalScale = 0.05;
    HvFCurveStretcher stretcher(curve, region, HvDoubleArray(), Extent(), Point(pivot, 0),
                                HvBaseFCurve::RightHandle, ripple, kMinimalScale);
    return Play(curve, title, mouse, frames,
                [&](Point way, Extent& invalid, Extent& stretched) {
                    HvDoubleArray before;
                    HvDoubleArray after;
                    int limited = 0;
                    return stretcher.Update(way, kView.min.x, kView.max.x, before, after, invalid,
                                            stretched, limited);
                }) &&
           stretcher.Finalize() != 0;
}

// A handle is dragged around its key; the opposite one turns and grows with it, and the handles of
// the neighbours give way.
bool PlayTangentMover(Frames& frames)
{
    HvStdFCurve curve = Curve();
    HvStdTgtMover mover(curve, 4, HvBaseFCurve::Left, 0);
    Point const start(4 - 2.0 / 3, 1 - 1.0 / 3);  // where the handle stands
    std::vector<Point> const mouse = {start,   {3, 3},  {2, 3},    {1.4, 1},
                                      {2, -2}, {3, -3}, {4.5, -1}, start};
    return Play(curve, "tangent mover: unified handles", mouse, frames,
                [&](Point handle, Extent& invalid, Extent&) {
                    return mover.Update(handle, 1, 1, kViewScale, invalid);
                });
}

// Shows one frame after another, for a tenth of a second each, for ever.
std::string Film(Frames const& frames)
{
    std::ostringstream out;
    double const count = static_cast<double>(frames.size());
    out << "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 400 240' width='800' height='480'"
           " font-family='sans-serif' font-size='13'>\n";
    for (unsigned i = 0; i < frames.size(); ++i) {
        out << "<g visibility='" << (i == 0 ? "visible" : "hidden")
            << "'><animate attributeName='visibility' values='hidden;visible;hidden' keyTimes='0;"
            << i / count << ';' << (i + 1) / count << "' calcMode='discrete' dur='" << count / 10
            << "s' repeatCount='indefinite'/>\n"
            << frames[i] << "</g>\n";
    }
    out << "</svg>\n";
    return out.str();
}

// The frames at the recorded places, eight in a row.
std::string Sheet(Frames const& frames)
{
    std::ostringstream out;
    out << "<svg xmlns='http://www.w3.org/2000/svg' width='1600' height='480'"
           " font-family='sans-serif' font-size='13'>\n";
    for (unsigned i = 0; i * kStepsBetween < frames.size(); ++i) {
        out << "<svg x='" << i % 8 * 200 << "' y='" << i / 8 * 120
            << "' width='200' height='120' viewBox='0 0 400 240'>\n"
            << frames[i * kStepsBetween] << "</svg>\n";
    }
    out << "</svg>\n";
    return out.str();
}

}  // namespace

int main(int argc, char** argv)
{
    Frames frames;
    bool const isPlayed =
        PlayKeyMover(frames) &&
        PlayStretcher(frames, "stretcher with ripple: the rest follows", Extent(3, 0, 9.5, 5.5), 3,
                      1, {{0, 0}, {1, 0}, {2, 0}, {3, 0}, {1, 0}, {-2, 0}, {-4, 0}, {0, 0}}) &&
        PlayStretcher(
            frames, "stretcher: flipped about 5", Extent(3.5, 0, 6.5, 5.5), 5, 0,
            {{0, 0}, {-0.5, 0}, {-1, 0}, {-1.7, 0}, {-2.4, 0}, {-3, 0}, {-4, 0}, {0, 0}}) &&
        PlayTangentMover(frames);
    if (!isPlayed) {
        std::fprintf(stderr, "curve_editor_replay: a tool refuses\n");
        return 1;
    }

    char const* const film = argc > 1 ? argv[1] : "curve_editor_replay.svg";
    char const* const sheet = argc > 2 ? argv[2] : "curve_editor_replay_sheet.svg";
    for (auto const& [name, text] :
         {std::pair(film, Film(frames)), std::pair(sheet, Sheet(frames))}) {
        if (!(std::ofstream(name) << text << std::flush)) {
            std::fprintf(stderr, "curve_editor_replay: cannot write %s\n", name);
            return 1;
        }
    }
    std::printf("%zu frames in %s\n", frames.size(), film);
    return 0;
}
