// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Draws what fitted curves do: tolerance, corners, curves through all points, splines.
//
//     hv_example_fitting [FILE]     writes the picture, fitting.svg by default
//
// Points are grey, curves coloured, and where two cubics join there is a ring.

#include <hv/hv.h>

#include <cmath>
#include <cstdio>
#include <random>

namespace {

using Point = HvPoint2<float>;

constexpr double kCornerCosSquared = 0.82;  // a turn by 25 degrees is a corner
constexpr char const* kBlue = "#2060a0";
constexpr char const* kRed = "#c04020";

/// Writes what a fit draws as one path of the picture.
class SvgSink : public HvBezierSink {
public:
    explicit SvgSink(std::FILE* file) : file_(file) {}

    void Begin(char const* colour)
    {
        joints_.Chop(0);
        colour_ = colour;
        std::fprintf(file_, "<path stroke='%s' d='", colour);
    }
    /// Ends the path, with a ring on every joint; returns the number of cubics.
    unsigned int End()
    {
        std::fprintf(file_, "'/>\n");
        for (Point const& p : joints_) {
            std::fprintf(file_, "<circle cx='%.2f' cy='%.2f' r='3.2' stroke='%s'/>\n", p.x, p.y,
                         colour_);
        }
        return joints_.Size() - 1;
    }

    void Moveto(Point const& p) override
    {
        std::fprintf(file_, "M%.2f %.2f", p.x, p.y);
        joints_.Add(p);
    }
    void Lineto(Point const& p) override { Curveto(p, p, p); }
    void Curveto(Point const& c1, Point const& c2, Point const& p) override
    {
        std::fprintf(file_, "C%.2f %.2f %.2f %.2f %.2f %.2f", c1.x, c1.y, c2.x, c2.y, p.x, p.y);
        joints_.Add(p);
    }
    int Closeto() override
    {
        std::fprintf(file_, "Z");
        return 1;
    }

private:
    std::FILE* file_;
    char const* colour_ = kBlue;
    HvPoint2fArray joints_;
};

/// Even noise of one unit to each side, the same on every machine.
double Noise()
{
    static std::mt19937 engine(7);
    return static_cast<double>(engine()) / 2147483648.0 - 1.0;
}

void AddNoisy(HvPoint2fArray& points, double x, double y, double noise)
{
    double const dx = noise * Noise();
    points.Add(Point(HvPoint2<double>(x + dx, y + noise * Noise())));
}

void DrawPoints(std::FILE* file, HvPoint2fArray const& points, double radius)
{
    for (Point const& p : points) {
        std::fprintf(file, "<circle cx='%.2f' cy='%.2f' r='%g' fill='#aaa' stroke='none'/>\n", p.x,
                     p.y, radius);
    }
}

void Label(std::FILE* file, double x, double y, char const* text)
{
    std::fprintf(file, "<text x='%g' y='%g' fill='#222' stroke='none'>%s</text>\n", x, y, text);
}

/// One stroke, with noise of 1, within tolerances of 1.2 and 2.5.
void DrawTolerances(std::FILE* file, SvgSink& sink)
{
    HvPoint2fArray stroke;
    for (int i = 0; i <= 300; ++i) {
        double const t = i / 300.0;
        AddNoisy(stroke, 30 + 270 * t, 110 - 60 * std::sin(7 * t) * (1.1 - 0.5 * t), 1);
    }
    DrawPoints(file, stroke, 1);
    HvBezierTool tool;
    char text[80];
    sink.Begin(kBlue);
    tool.OpenFit(stroke, kCornerCosSquared, 3, 1.2, 0, sink, 0);
    unsigned int const fine = sink.End();
    sink.Begin(kRed);
    tool.OpenFit(stroke, kCornerCosSquared, 3, 2.5, 0, sink, 0);
    std::snprintf(text, sizeof text, "within 1.2 blue: %u cubics; within 2.5 red: %u", fine,
                  sink.End());
    Label(file, 20, 22, text);
}

/// The outline of a star with noise of 1, within 3.
void DrawCorners(std::FILE* file, SvgSink& sink)
{
    HvPoint2fArray star;
    HvPoint2<double> corners[10];
    for (int i = 0; i < 10; ++i) {
        double const radius = i % 2 == 0 ? 80 : 38;
        double const angle = 0.6283185307179586 * i - 1.5707963267948966;
        corners[i] = {500 + radius * std::cos(angle), 120 + radius * std::sin(angle)};
    }
    for (int i = 0; i < 10; ++i) {
        HvPoint2<double> const side = corners[(i + 1) % 10] - corners[i];
        for (int k = 0; k < 40; ++k) {
            HvPoint2<double> const p = corners[i] + side * (k / 40.0);
            AddNoisy(star, p.x, p.y, 1);
        }
    }
    DrawPoints(file, star, 1);
    HvBezierTool tool;
    char text[80];
    sink.Begin(kBlue);
    tool.ClosedFit(star, kCornerCosSquared, 3, 3, 0, sink);
    std::snprintf(text, sizeof text, "corners are kept: %u cubics", sink.End());
    Label(file, 345, 22, text);
}

/// A few points far apart, and the closed curve through them.
void DrawCatmullRom(std::FILE* file, SvgSink& sink)
{
    HvPoint2fArray points;
    for (Point const& p : {Point(40, 330), Point(70, 250), Point(150, 262), Point(158, 275),
                           Point(190, 255), Point(290, 270), Point(200, 345), Point(195, 375)}) {
        points.Add(p);
    }
    HvBezierTool tool;
    sink.Begin(kBlue);
    tool.ClosedCatmullRomFit(points, sink);
    sink.End();
    DrawPoints(file, points, 2);
    Label(file, 20, 232, "through every point: Catmull-Rom");
}

/// A spiral as a spline, with its knots.
void DrawSpline(std::FILE* file, SvgSink& sink)
{
    HvPoint2dArray spiral;
    HvPoint2fArray shown;
    for (int i = 0; i <= 400; ++i) {
        double const angle = 0.04 * i;
        double const radius = 4 + 5.3 * angle;
        spiral.Add(500 + radius * std::cos(angle), 320 + 0.9 * radius * std::sin(angle));
        shown.Add(Point(spiral[static_cast<unsigned int>(i)]));
    }
    DrawPoints(file, shown, 1);
    HvSpline2d spline;
    spline.OpenFit(spiral, 0.5, HvSpline2d::ContinuousDerivative);
    char text[80];
    sink.Begin(kRed);
    spline.Draw(sink, 0);
    sink.End();
    std::snprintf(text, sizeof text, "a spline over the length: %u knots", spline.NumKnots());
    Label(file, 345, 232, text);
}

}  // namespace

int main(int argc, char** argv)
{
    char const* const name = argc > 1 ? argv[1] : "fitting.svg";
    std::FILE* const file = std::fopen(name, "w");
    if (file == nullptr) {
        std::fprintf(stderr, "fitting: cannot write %s\n", name);
        return 1;
    }
    std::fprintf(file, "<svg xmlns='http://www.w3.org/2000/svg' width='660' height='430' "
                       "font-family='sans-serif' font-size='13' fill='none' stroke-width='1.6'>\n"
                       "<rect width='660' height='430' fill='white'/>\n");
    SvgSink sink(file);
    DrawTolerances(file, sink);
    DrawCorners(file, sink);
    DrawCatmullRom(file, sink);
    DrawSpline(file, sink);
    std::fprintf(file, "</svg>\n");
    return std::fclose(file) == 0 ? 0 : 1;
}
