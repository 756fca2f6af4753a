// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A picture of a stroke and its fit.

#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvPoint2fArray.h>
#include <tools/number_text.h>
#include <tools/plot/NiceTicks.h>
#include <tools/plot/SvgWriter.h>
#include <tools/plot/plot_style.h>
#include <tools/plot/stroke_plot.h>
#include <tools/plot/stroke_ribbon.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

using Point = HvPoint2<double>;

// The picture's width and the edges of the field, in pixels; the field's height follows the stroke.
constexpr double kWidth = 860;
constexpr double kLeastLeft = 64;
constexpr double kRight = kWidth - 28;
constexpr double kTop = 92;
constexpr double kBelowField = 64;
constexpr double kLeastFieldHeight = 220;
constexpr double kMostFieldHeight = 760;
constexpr double kLegendLine = kTop - 14;

// The field of the profile below that one.
constexpr double kProfileGap = 74;
constexpr double kProfileHeight = 110;
constexpr int kProfileTicks = 4;
/// Space above the largest width, as a share of it.
constexpr double kProfileHeadroom = 0.12;
/// The largest width, as the path is drawn.
constexpr double kRibbonPixels = 18;
/// Widths below this count as none: an axis has no room for them.
constexpr double kLeastWidth = 1e-12;
/// The longest stretch of the path that is drawn with evenly changing width.
constexpr double kRibbonStep = 5;

constexpr double kPointRadius = 2;
constexpr double kNodeRadius = 4.5;
constexpr double kHandleRadius = 2.6;
/// Greatest distance of the drawn polyline from the path, in pixels.
constexpr double kFlattenPixels = 0.05;
/// Space around the stroke, as a share of its extent.
constexpr double kMargin = 0.06;
/// Pixels for a tick of an axis.
constexpr double kPixelsPerTick = 70;
/// More points than this tell nothing more, and make the file heavy.
constexpr std::size_t kMostPoints = 20000;
/// More nodes than this are drawn without their handles.
constexpr unsigned int kMostHandles = 400;

constexpr char kMoreStyle[] =
    ".point { fill: #dc2626; fill-opacity: 0.75; }\n"
    ".thin { stroke: #d97706; stroke-width: 1; stroke-opacity: 0.7; }\n"
    ".ribbon { fill: #bfdbfe; }\n"
    ".narrow { fill: none; stroke: #2563eb; stroke-width: 1.2; }\n"
    ".profile { fill: none; stroke: #2563eb; stroke-width: 1.8; stroke-linejoin: round; }\n"
    ".grip { fill: #ffffff; stroke: #d97706; stroke-width: 1.2; }\n";

/// The part of the plane that the field shows.
struct View {
    Point low;
    Point high;

    double Width() const { return high.x - low.x; }
    double Height() const { return high.y - low.y; }

    void Include(Point const& p)
    {
        low = {std::min(low.x, p.x), std::min(low.y, p.y)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y)};
    }
};

/// The outline of a fit, within some distance.
std::vector<Point> OutlineOf(HvPath2f const& path, double within)
{
    HvPoint2fArray line(256);
    path.FlattenSubpath(0, within, line);
    std::vector<Point> points;
    for (HvPoint2<float> const& p : line) {
        points.emplace_back(p);
    }
    return points;
}

/// All that is to be seen, handles too, with a margin, widened to a shape that fits a page.
View ViewOf(StrokeDocument const& stroke, StrokeFit const& fit)
{
    Point const first(stroke.points.front().place);
    View view = {first, first};
    for (StrokePoint const& point : stroke.points) {
        view.Include(Point(point.place));
    }
    HvExtent2<double> extent;
    fit.path.GetExtent(extent);
    view.Include(extent.min);
    view.Include(extent.max);
    constexpr double kFieldWidth = kRight - kLeastLeft;
    double const least = view.Width() * kLeastFieldHeight / kFieldWidth;
    double const most = view.Height() * kFieldWidth / kMostFieldHeight;
    double const moreHeight = std::max(0.0, least - view.Height()) / 2;
    double const moreWidth = std::max(0.0, most - view.Width()) / 2;
    view.low = view.low - Point(moreWidth, moreHeight);
    view.high = view.high + Point(moreWidth, moreHeight);
    PlotStyle_Pad(view.low.x, view.high.x, kMargin);
    PlotStyle_Pad(view.low.y, view.high.y, kMargin);
    return view;
}

double FieldHeight(View const& view)
{
    return std::clamp((kRight - kLeastLeft) * view.Height() / view.Width(), kLeastFieldHeight,
                      kMostFieldHeight);
}

int TicksAlong(double pixels)
{
    return std::max(2, static_cast<int>(std::clamp(pixels / kPixelsPerTick, 2.0, 20.0)));
}

/// The widths of a stroke, and the curve through them.
struct Profile {
    std::vector<double> const& widths;
    HvRawFCurve const& curve;
    double largest;  ///< 1 where there is none to speak of
};

/// One picture in the making.
class StrokePlot {
public:
    StrokePlot(StrokeDocument const& stroke, StrokeFit const& fit, Profile const* profile,
               StrokePlotLabels const& labels)
        : stroke_(stroke), fit_(fit), profile_(profile), labels_(labels),
          view_(ViewOf(stroke, fit)), bottom_(kTop + FieldHeight(view_)),
          height_(bottom_ + (profile == nullptr ? 0 : kProfileGap + kProfileHeight) + kBelowField),
          across_(view_.low.x, view_.high.x, TicksAlong(kRight - kLeastLeft)),
          down_(view_.low.y, view_.high.y, TicksAlong(bottom_ - kTop)),
          left_(PlotStyle_LeftEdge(down_, kLeastLeft)),
          scale_(std::min((kRight - left_) / view_.Width(), (bottom_ - kTop) / view_.Height())),
          svg_(kWidth, height_, std::string(PlotStyle_Sheet()) + kMoreStyle, labels.title,
               labels.subtitle)
    {
    }

    std::string Draw()
    {
        svg_.Rect("page", 0, 0, kWidth, height_);
        svg_.Rect("field", left_, kTop, kRight - left_, bottom_ - kTop);
        DrawGrid();
        if (profile_ != nullptr) {
            DrawRibbon();
        }
        DrawPath();
        if (HasHandles()) {
            DrawHandles();
        }
        DrawNodes();
        DrawPoints();
        if (profile_ != nullptr) {
            DrawProfile();
        }
        DrawWords();
        return svg_.Finish();
    }

private:
    Point Pixel(Point const& p) const
    {
        Point const middle = (view_.low + view_.high) * 0.5;
        return {(left_ + kRight) / 2 + (p.x - middle.x) * scale_,
                (kTop + bottom_) / 2 + (p.y - middle.y) * scale_};
    }
    Point PixelOf(unsigned int i) const { return Pixel(Point(fit_.path.GetPoint(i))); }

    void DrawGrid()
    {
        for (int i = 0; i < across_.Count(); ++i) {
            double const x = Pixel(Point(across_.Value(i), 0)).x;
            if (x < left_ || x > kRight) {
                continue;  // a long label has moved the left edge
            }
            svg_.Line("grid", Point(x, kTop), Point(x, bottom_));
            svg_.Text("low", Point(x, bottom_ + kPlotLabelGap + 2 * kPlotDigitDrop),
                      across_.Label(i));
        }
        for (int i = 0; i < down_.Count(); ++i) {
            double const y = Pixel(Point(0, down_.Value(i))).y;
            if (y < kTop || y > bottom_) {
                continue;
            }
            svg_.Line("grid", Point(left_, y), Point(kRight, y));
            svg_.Text("side", Point(left_ - kPlotLabelGap, y + kPlotDigitDrop), down_.Label(i));
        }
        svg_.Rect("frame", left_, kTop, kRight - left_, bottom_ - kTop);
    }

    void DrawPath()
    {
        std::vector<Point> line = OutlineOf(fit_.path, kFlattenPixels / scale_);
        std::transform(line.begin(), line.end(), line.begin(),
                       [this](Point const& p) { return Pixel(p); });
        svg_.Polyline(profile_ == nullptr ? "curve" : "narrow", line);
    }

    /// The outline in pixels, with the width at each place.
    std::vector<RibbonPoint> RibbonLine() const
    {
        double const perWidth = kRibbonPixels / profile_->largest;
        std::vector<RibbonPoint> line;
        double walked = 0.0;
        Point before;
        for (Point const& p : OutlineOf(fit_.path, kFlattenPixels / scale_)) {
            double const step = line.empty() ? 0.0 : HvPoint2_LengthAB(before, p);
            double const parts = line.empty() ? 1.0 : std::ceil(step * scale_ / kRibbonStep);
            for (double k = 1.0; k <= parts; ++k) {
                double const share = k / parts;
                Point const at = line.empty() ? p : before + (p - before) * share;
                double const width = profile_->curve.Eval(walked + step * share, 0);
                line.push_back({Pixel(at), std::max(width, 0.0) * perWidth});
            }
            walked += step;
            before = p;
        }
        return line;
    }

    void DrawRibbon()
    {
        std::vector<RibbonPoint> const line = RibbonLine();
        if (line.empty()) {
            return;
        }
        Ribbon const ribbon = Ribbon_Make(line);
        svg_.Polygon("ribbon", ribbon.outline);
        for (RibbonDisc const& disc : ribbon.discs) {
            svg_.Circle("ribbon", disc.centre, disc.radius);
        }
    }

    // The field of the profile.

    double ProfileTop() const { return bottom_ + kProfileGap; }
    Point ProfilePixel(double along, double width) const
    {
        double const length = fit_.length > 0.0 ? fit_.length : 1.0;
        double const most = profile_->largest * (1.0 + kProfileHeadroom);
        return {left_ + along / length * (kRight - left_),
                ProfileTop() + kProfileHeight * (1.0 - width / most)};
    }

    void DrawProfile()
    {
        svg_.Rect("field", left_, ProfileTop(), kRight - left_, kProfileHeight);
        DrawProfileGrid();
        for (std::size_t i = 0; i < stroke_.points.size(); i += PointStride()) {
            svg_.Circle("point", ProfilePixel(fit_.feet[i], profile_->widths[i]), kPointRadius);
        }
        HvDoubleArray along(64);
        HvDoubleArray widths(64);
        HvDoubleArray same(64);
        profile_->curve.GetKeys(along, widths, same, 0);
        std::vector<Point> line;
        for (unsigned int i = 0; i < along.Size(); ++i) {
            line.push_back(ProfilePixel(along[i], widths[i]));
        }
        svg_.Polyline("profile", line);
        svg_.Text("side axis", Point(left_ - kPlotLabelGap, ProfileTop() - 14 + kPlotDigitDrop),
                  "width");
        svg_.Text("low axis", Point((left_ + kRight) / 2, height_ - 18), "length");
    }

    void DrawProfileGrid()
    {
        double const bottom = ProfileTop() + kProfileHeight;
        if (fit_.length > 0.0) {
            NiceTicks const lengths(0.0, fit_.length, TicksAlong(kRight - left_));
            for (int i = 0; i < lengths.Count(); ++i) {
                double const x = ProfilePixel(lengths.Value(i), 0.0).x;
                svg_.Line("grid", Point(x, ProfileTop()), Point(x, bottom));
                svg_.Text("low", Point(x, bottom + kPlotLabelGap + 2 * kPlotDigitDrop),
                          lengths.Label(i));
            }
        }
        NiceTicks const ticks(0.0, profile_->largest, kProfileTicks);
        for (int i = 0; i < ticks.Count(); ++i) {
            double const y = ProfilePixel(0.0, ticks.Value(i)).y;
            svg_.Line("grid", Point(left_, y), Point(kRight, y));
            svg_.Text("side", Point(left_ - kPlotLabelGap, y + kPlotDigitDrop), ticks.Label(i));
        }
        svg_.Rect("frame", left_, ProfileTop(), kRight - left_, kProfileHeight);
    }

    bool HasHandles() const { return fit_.numCurves <= kMostHandles; }

    void DrawHandles()
    {
        for (unsigned int i = 1; i < fit_.path.NumPoints();) {
            unsigned int const end = fit_.path.EndOfSegment(i);
            if (end > i) {
                DrawHandle(i - 1, i);
                DrawHandle(end, end - 1);
            }
            i = end + 1;
        }
    }

    void DrawHandle(unsigned int node, unsigned int handle)
    {
        svg_.Line("thin", PixelOf(node), PixelOf(handle));
        svg_.Circle("grip", PixelOf(handle), kHandleRadius);
    }

    void DrawNodes()
    {
        svg_.Diamond("key", PixelOf(0), kNodeRadius);
        for (unsigned int i = 1; i < fit_.path.NumPoints();) {
            unsigned int const end = fit_.path.EndOfSegment(i);
            svg_.Diamond("key", PixelOf(end), kNodeRadius);
            i = end + 1;
        }
    }

    std::size_t PointStride() const
    {
        return (stroke_.points.size() + kMostPoints - 1) / kMostPoints;
    }

    void DrawPoints()
    {
        for (std::size_t i = 0; i < stroke_.points.size(); i += PointStride()) {
            svg_.Circle("point", Pixel(Point(stroke_.points[i].place)), kPointRadius);
        }
    }

    void DrawWords()
    {
        svg_.Text("title", Point(left_, 36), PlotStyle_Shortened(labels_.title, kPlotLongestTitle));
        svg_.Text("", Point(left_, 58),
                  PlotStyle_Shortened(labels_.subtitle, kPlotLongestSubtitle));
        svg_.Text("low axis", Point((left_ + kRight) / 2, bottom_ + kBelowField - 18), "x");
        svg_.Text("side axis", Point(left_ - kPlotLabelGap, kLegendLine + kPlotDigitDrop), "y");
        DrawLegend();
    }

    /// Samples of what is in the picture, from the right end of the field leftwards.
    void DrawLegend()
    {
        double const y = kLegendLine;
        double x = kRight;
        if (HasHandles()) {
            x -= 42;
            svg_.Line("thin", Point(x - 32, y), Point(x - 12, y));
            svg_.Circle("grip", Point(x - 12, y), kHandleRadius);
            svg_.Text("", Point(x, y + kPlotDigitDrop), "handle");
            x -= 52;
        }
        x -= 30;
        svg_.Diamond("key", Point(x - 12, y), kNodeRadius);
        svg_.Text("", Point(x, y + kPlotDigitDrop), "node");
        std::string const points =
            PointStride() == 1 ? "point" : "every " + NumberText_Counted(PointStride(), "point");
        x -= 38 + static_cast<double>(points.size()) * kPlotDigitWidth * 0.85;
        svg_.Circle("point", Point(x - 10, y), kPointRadius);
        svg_.Text("", Point(x, y + kPlotDigitDrop), points);
    }

    StrokeDocument const& stroke_;
    StrokeFit const& fit_;
    Profile const* const profile_;  ///< null for a stroke without widths
    StrokePlotLabels const& labels_;
    View const view_;
    double const bottom_;
    double const height_;
    NiceTicks const across_;
    NiceTicks const down_;
    double const left_;
    double const scale_;  ///< pixels for each unit of the stroke
    SvgWriter svg_;
};

}  // namespace

std::string StrokePlot_Draw(StrokeDocument const& stroke, StrokeFit const& fit,
                            StrokePlotLabels const& labels)
{
    return StrokePlot(stroke, fit, nullptr, labels).Draw();
}

std::string StrokePlot_Draw(StrokeDocument const& stroke, StrokeFit const& fit,
                            std::vector<double> const& widths, StrokePlotLabels const& labels)
{
    double const largest = *std::max_element(widths.begin(), widths.end());
    Profile const both = {widths, *fit.path.GetPropCurve(0), largest > kLeastWidth ? largest : 1.0};
    return StrokePlot(stroke, fit, &both, labels).Draw();
}
