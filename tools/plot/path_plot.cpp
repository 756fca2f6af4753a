// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A picture of a motion path.

#include <hv/bezier/HvBezierTool_flatten.h>
#include <tools/ToolError.h>
#include <tools/number_text.h>
#include <tools/plot/PlotField.h>
#include <tools/plot/path_plot.h>
#include <tools/plot/plot_style.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

using Point = HvPoint2<double>;
using Place = HvPoint3<double>;

// The picture's size and the edges of the field that holds the path, in pixels.
constexpr double kWidth = 760;
constexpr double kHeight = 720;
constexpr double kLeastLeft = 64;
constexpr double kRight = kWidth - 28;
constexpr double kTop = 92;
constexpr double kBottom = kHeight - 64;

/// Half the length of a tick across the path.
constexpr double kTickReach = 6;
/// The direction of travel at a tick is taken over this share of a step to both sides.
constexpr double kDirectionShare = 1e-3;
/// A dot for a tick where the object stands still.
constexpr double kDotRadius = 2.2;
/// Labels of nodes keep this distance from each other.
constexpr double kLeastLabelPixels = 26;
/// A way shorter than this has no direction for a tick to stand across.
constexpr double kLeastWayPixels = 1e-6;
/// Greatest distance of the drawn polyline from the path, in pixels.
constexpr double kFlattenPixels = 0.05;
/// Space around the path, as a share of its extent.
constexpr double kMargin = 0.1;
constexpr int kMostTicksAcross = 9;
constexpr int kMostTimeTicks = 130;
constexpr double kMostDrawnTicks = 10000;

constexpr char kMoreStyle[] =
    ".tick { stroke: #0f766e; stroke-width: 1.8; stroke-linecap: round; }\n"
    ".dot { fill: #0f766e; }\n"
    ".time { fill: #0f172a; font-weight: 600; stroke: #ffffff; stroke-width: 3; "
    "paint-order: stroke; }\n";

Point Projected(Place const& p, HvMotionPath3d::Projection plane)
{
    switch (plane) {
    case HvMotionPath3d::ProjectionXZ:
        return {p.x, p.z};
    case HvMotionPath3d::ProjectionYZ:
        return {p.y, p.z};
    default:
        return {p.x, p.y};
    }
}

char const* AxisName(HvMotionPath3d::Projection plane, int axis)
{
    constexpr char const* kNames[3][2] = {{"x", "y"}, {"x", "z"}, {"y", "z"}};
    return kNames[plane][axis];
}

std::vector<Place> PlacesOf(HvMotionPath3d const& path)
{
    std::vector<Place> places(path.NumPoints());
    for (unsigned int i = 0; i < places.size(); ++i) {
        path.GetControlPoint(i, places[i]);
    }
    return places;
}

/// The part of the plane that the field shows.
struct View {
    Point low;
    Point high;
};

/// All points with a margin, widened to the shape of the field so that both axes have one scale.
View ViewOf(std::vector<Place> const& places, HvMotionPath3d::Projection plane)
{
    Point const first = Projected(places.front(), plane);
    View view = {first, first};
    for (Place const& place : places) {
        Point const p = Projected(place, plane);
        view.low = {std::min(view.low.x, p.x), std::min(view.low.y, p.y)};
        view.high = {std::max(view.high.x, p.x), std::max(view.high.y, p.y)};
    }
    constexpr double kShape = (kRight - kLeastLeft) / (kBottom - kTop);
    double const width = view.high.x - view.low.x;
    double const height = view.high.y - view.low.y;
    double const moreWidth = std::max(0.0, height * kShape - width) / 2;
    double const moreHeight = std::max(0.0, width / kShape - height) / 2;
    view.low = view.low - Point(moreWidth, moreHeight);
    view.high = view.high + Point(moreWidth, moreHeight);
    PlotStyle_Pad(view.low.x, view.high.x, kMargin);
    PlotStyle_Pad(view.low.y, view.high.y, kMargin);
    return view;
}

/// One picture in the making.
class PathPlot {
public:
    PathPlot(HvMotionPath3d const& path, HvMotionPath3d::Projection plane, double tickStep,
             PathPlotLabels const& labels)
        : path_(path), plane_(plane), tickStep_(tickStep), labels_(labels), places_(PlacesOf(path)),
          view_(ViewOf(places_, plane)), across_(view_.low.x, view_.high.x, kMostTicksAcross),
          down_(view_.low.y, view_.high.y, kMostTicksAcross), box_{PlotStyle_LeftEdge(down_,
                                                                                      kLeastLeft),
                                                                   kTop, kRight, kBottom},
          scale_(std::min(box_.Width() / (view_.high.x - view_.low.x),
                          box_.Height() / (view_.high.y - view_.low.y))),
          svg_(kWidth, kHeight, std::string(PlotStyle_Sheet()) + kMoreStyle, labels.title,
               labels.subtitle),
          field_(svg_, box_, across_, down_)
    {
    }

    std::string Draw()
    {
        svg_.Rect("page", 0, 0, kWidth, kHeight);
        field_.DrawGround();
        field_.DrawGrid([this](Point const& p) { return Pixel(p); }, "grid");
        DrawHandles();
        DrawPath();
        DrawTicks();
        DrawNodes();
        DrawWords();
        return svg_.Finish();
    }

private:
    Point Pixel(Point const& p) const
    {
        Point const middle = (view_.low + view_.high) * 0.5;
        return {(box_.left + box_.right) / 2 + (p.x - middle.x) * scale_,
                (box_.top + box_.bottom) / 2 + (p.y - middle.y) * scale_};
    }
    Point Pixel(Place const& p) const { return Pixel(Projected(p, plane_)); }

    bool IsHeld(unsigned int node) const
    {
        HvMotionPath3d::TangentInfo rule = HvMotionPath3d::TangentFree;
        path_.GetRightTangentInfo(node, rule);
        return rule == HvMotionPath3d::TangentStep;
    }

    void DrawPath()
    {
        for (unsigned int i = 0; i + 3 < places_.size(); i += 3) {
            bool const isHeld = IsHeld(i);
            hasHeld_ = hasHeld_ || isHeld;
            HvPoint3dArray flat;
            HvBezierTool_FlattenCubic3d(places_.data() + i, kFlattenPixels / scale_, &flat, 0);
            std::vector<Point> line;
            for (Place const& p : flat) {
                line.push_back(Pixel(p));
            }
            svg_.Polyline(isHeld ? "jump" : "curve", line);
        }
    }

    void DrawHandles()
    {
        for (unsigned int i = 0; i + 3 < places_.size(); i += 3) {
            if (!IsHeld(i)) {
                DrawHandle(places_[i], places_[i + 1]);
                DrawHandle(places_[i + 3], places_[i + 2]);
            }
        }
    }

    void DrawHandle(Place const& node, Place const& handle)
    {
        if (node != handle) {
            hasHandles_ = true;
            svg_.Line("arm", Pixel(node), Pixel(handle));
            svg_.Circle("handle", Pixel(handle), kPlotHandleRadius);
        }
    }

    /// Where the object is at even times.
    void DrawTicks()
    {
        double const first = std::ceil(path_.GetFirstTime(0) / tickStep_) * tickStep_;
        double const steps = std::floor((path_.GetLastTime(0) - first) / tickStep_);
        if (!(steps < kMostDrawnTicks)) {
            throw ToolError("ticks every " + NumberText_Rounded(tickStep_, 6) +
                            " would be more than ten thousand");
        }
        if (!(steps >= 0.0)) {
            return;
        }
        HvPoint3dArray places;
        HvUByteArray kinds;
        HvDoubleArray times;
        HvULongArray nodes;
        path_.Render(first, first + steps * tickStep_, static_cast<unsigned int>(steps) + 1, places,
                     kinds, times, nodes);
        for (unsigned int i = 0; i < places.Size(); ++i) {
            DrawTick(Pixel(places[i]), times[i]);
        }
    }

    void DrawTick(Point const& at, double time)
    {
        double const share = kDirectionShare * tickStep_;
        Point const way = PixelAt(time + share) - PixelAt(time - share);
        double const length = HvPoint2_Length(way);
        if (length < kLeastWayPixels) {
            svg_.Circle("dot", at, kDotRadius, Tooltip(time));
            return;
        }
        double const reach = kTickReach / length;
        Point const side(-way.y * reach, way.x * reach);
        svg_.Line("tick", at - side, at + side);
    }

    Point PixelAt(double time) const
    {
        Place place;
        path_.Eval(time, kFlattenPixels / scale_, place, 0);
        return Pixel(place);
    }

    std::string Tooltip(double time) const
    {
        return labels_.timeUnit + " " + NumberText_Rounded(time, 8);
    }

    void DrawNodes()
    {
        std::vector<Point> labelled;
        for (unsigned int i = 0; i < places_.size(); i += 3) {
            Place place;
            double time = 0;
            path_.GetNode(i, place, time);
            Point const at = Pixel(place);
            svg_.Diamond("key", at, kPlotKeyRadius, Tooltip(time));
            bool const isFree =
                std::none_of(labelled.begin(), labelled.end(), [&at](Point const& other) {
                    return HvPoint2_LengthAB(at, other) < kLeastLabelPixels;
                });
            if (isFree) {
                svg_.Text("time", at + Point(kPlotKeyRadius + 4, -kPlotKeyRadius - 3),
                          NumberText_Rounded(time, 6));
                labelled.push_back(at);
            }
        }
    }

    void DrawWords()
    {
        field_.DrawTitles(labels_.title, kPlotLongestTitle - 20, labels_.subtitle,
                          kPlotLongestSubtitle - 20);
        field_.DrawAxisNames(AxisName(plane_, 0), AxisName(plane_, 1));
        PlotLegend legend(svg_, box_);
        if (hasHandles_) {
            legend.AddHandle("handle", 42);
        }
        if (hasHeld_) {
            legend.AddLine("jump", "held", 22);
        }
        legend.AddKey("node", 26);
        std::string const tick = tickStep_ == 1.0 ? "every " + labels_.timeUnit
                                                  : "every " + NumberText_Rounded(tickStep_, 6) +
                                                        " " + labels_.timeUnit + "s";
        double const width = static_cast<double>(tick.size()) * kPlotDigitWidth * 0.85;
        legend.Add(tick, width, 0, [this](Point const& at) {
            Point const middle = at - Point(12, 0);
            svg_.Line("tick", middle - Point(0, kTickReach), middle + Point(0, kTickReach));
        });
    }

    HvMotionPath3d const& path_;
    HvMotionPath3d::Projection const plane_;
    double const tickStep_;
    PathPlotLabels const& labels_;
    std::vector<Place> const places_;
    View const view_;
    NiceTicks const across_;
    NiceTicks const down_;
    PlotBox const box_;
    double const scale_;  ///< pixels for each unit of the path
    SvgWriter svg_;
    PlotField field_;
    bool hasHandles_ = false;
    bool hasHeld_ = false;
};

}  // namespace

double PathPlot_TickStep(HvMotionPath3d const& path)
{
    double first = path.GetFirstTime(0);
    double last = path.GetLastTime(0);
    NiceTicks_Widen(first, last);
    return NiceTicks(first, last, kMostTimeTicks).Step();
}

std::string PathPlot_Draw(HvMotionPath3d const& path, HvMotionPath3d::Projection plane,
                          double tickStep, PathPlotLabels const& labels)
{
    return PathPlot(path, plane, tickStep, labels).Draw();
}
