// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What a curve editor shows while the mouse drags, frame by frame.

#include "EditorFilm.h"

#include <cstdio>
#include <fstream>
#include <sstream>

namespace {

using Point = EditorFilm::Point;
using Extent = EditorFilm::Extent;

constexpr double kFlatness = 0.2;  // pixels

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
    Extent const view(EditorFilm::kViewLeft, EditorFilm::kViewBottom, EditorFilm::kViewRight,
                      EditorFilm::kViewTop);
    HvPoint2dArray points;
    HvPointTagArray tags;
    HvBoolArray flags;
    curve.FlattenFromTo(view, panel, kFlatness, points, tags, flags, 0);
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

}  // namespace

HvStdFCurve EditorFilm::SampleCurve()
{
    HvStdFCurve curve(0, HvBaseFCurve::CubicSegment);
    for (Point const key :
         {Point(0, 0), Point(2, 3), Point(4, 1), Point(6, 5), Point(9, 3), Point(11, 0)}) {
        double x = key.x;
        curve.CreateKey(x, key.y, HvBaseFCurve::CubicSegment, HvBaseFCurve::CubicSegment);
        curve.SetConstraint(x, HvBaseFCurve::AutomaticTangents, 1, 0);
        curve.SetConstraint(x, HvBaseFCurve::UnlimitedAutoSlope, 1, 0);
    }
    curve.FreezeTangentsInInterval(0.0, 11.0, 1, 1, HvBaseFCurve::AutomaticTangents);
    curve.SetKeyValue(6, HvBaseFCurve::Right, 2, 0);
    curve.SetSelected(1);
    curve.SetKeySelected(4.0, 1);
    return curve;
}

void EditorFilm::AddFrame(HvStdFCurve const& curve, char const* title, Extent const& invalid,
                          Extent const& region)
{
    HvTransfo4 panel;
    panel.Scale(kWidth / (kViewRight - kViewLeft), -kHeight / (kViewTop - kViewBottom), 1)
        .Translate(-kViewLeft, -kViewTop, 0);
    std::ostringstream out;
    out << "<rect width='400' height='240' fill='white' stroke='#ccc'/>\n";
    DrawExtent(out, panel, invalid, "fill='#fff6cc'");
    out << "<g fill='none'>\n";
    DrawExtent(out, panel, region, "stroke='#30a050' stroke-dasharray='6 3'");
    DrawCurve(out, panel, curve);
    DrawKeys(out, panel, curve);
    out << "</g>\n<text x='8' y='230'>" << title << "</text>\n";
    frames_.push_back(out.str());
}

std::string EditorFilm::Film() const
{
    std::ostringstream out;
    double const count = static_cast<double>(frames_.size());
    out << "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 400 240' width='800' height='480'"
           " font-family='sans-serif' font-size='13'>\n";
    for (unsigned i = 0; i < frames_.size(); ++i) {
        out << "<g visibility='" << (i == 0 ? "visible" : "hidden")
            << "'><animate attributeName='visibility' values='hidden;visible;hidden' keyTimes='0;"
            << i / count << ';' << (i + 1) / count << "' calcMode='discrete' dur='" << count / 10
            << "s' repeatCount='indefinite'/>\n"
            << frames_[i] << "</g>\n";
    }
    out << "</svg>\n";
    return out.str();
}

std::string EditorFilm::Sheet() const
{
    std::ostringstream out;
    out << "<svg xmlns='http://www.w3.org/2000/svg' width='1600' height='"
        << 120 * ((frames_.size() / kStepsBetween + 7) / 8)
        << "' font-family='sans-serif' font-size='13'>\n";
    for (unsigned i = 0; i * kStepsBetween < frames_.size(); ++i) {
        out << "<svg x='" << i % 8 * 200 << "' y='" << i / 8 * 120
            << "' width='200' height='120' viewBox='0 0 400 240'>\n"
            << frames_[i * kStepsBetween] << "</svg>\n";
    }
    out << "</svg>\n";
    return out.str();
}

int EditorFilm::Write(char const* example, int argc, char** argv) const
{
    std::string const film = argc > 1 ? argv[1] : example + std::string(".svg");
    std::string const sheet = argc > 2 ? argv[2] : example + std::string("_sheet.svg");
    bool const isFilmWritten = bool(std::ofstream(film) << Film() << std::flush);
    if (isFilmWritten && std::ofstream(sheet) << Sheet() << std::flush) {
        std::printf("%zu frames in %s\n", frames_.size(), film.c_str());
        return 0;
    }
    std::fprintf(stderr, "%s: cannot write %s\n", example, (isFilmWritten ? sheet : film).c_str());
    return 1;
}
