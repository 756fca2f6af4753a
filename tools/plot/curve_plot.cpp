// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A picture of a curve.

#include <hv/foundation/HvBoolArray.h>
#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/rotation/HvTransfo4.h>
#include <tools/ToolError.h>
#include <tools/number_text.h>
#include <tools/plot/PlotField.h>
#include <tools/plot/curve_plot.h>
#include <tools/plot/plot_style.h>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace {

using Point = HvPoint2<double>;

// The picture's size and the edges of the field that holds the curve, in pixels. Its left edge
// leaves room for the numbers.
constexpr double kWidth = 960;
constexpr double kHeight = 520;
constexpr double kLeastLeft = 72;
constexpr double kRight = kWidth - 28;
constexpr double kTop = 92;
constexpr double kBottom = kHeight - 64;

/// Keys that lie closer together on the average would cover the curve: they are left out, and
/// handles before them.
constexpr double kLeastKeyPixels = 3;
constexpr double kLeastHandlePixels = 10;

/// Greatest distance of the drawn polyline from the curve, in pixels: none that an eye or a
/// printer sees.
constexpr double kFlattenPixels = 0.05;
/// Space around the keys, as a share of their range.
constexpr double kParameterMargin = 0.06;
constexpr double kValueMargin = 0.09;
/// A tick for some eighty pixels of width and some forty of height.
constexpr int kMostParameterTicks = 11;
constexpr int kMostValueTicks = 9;

/// What the library tells of a key.
struct PlotKey {
    double parameter;
    Point left;   ///< where the curve arrives
    Point right;  ///< where it leaves
    Point leftHandle;
    Point rightHandle;
    bool hasLeftHandle;
    bool hasRightHandle;
};

std::vector<PlotKey> KeysOf(HvStdFCurve const& curve)
{
    std::vector<PlotKey> keys(curve.GetNumKeys());
    bool afterCubic = false;
    for (unsigned int i = 0; i < keys.size(); ++i) {
        HvBaseFCurve::KeyInfo info = {};
        info.mask = 0x1fe;  // parameter, values, tangents, kind
        curve.GetKeyInfoFromIndex(i, &info);
        PlotKey& key = keys[i];
        key.parameter = info.parameter;
        key.left = Point(info.parameter, info.leftValue);
        key.right = Point(info.parameter, info.rightValue);
        key.leftHandle = key.left + Point(info.leftTangentX, info.leftTangentY);
        key.rightHandle = key.right + Point(info.rightTangentX, info.rightTangentY);
        bool const beforeCubic =
            info.segmentKind == HvBaseFCurve::CubicSegment && i + 1 < keys.size();
        // Only cubic segments use handles, and one of no length shows nothing.
        key.hasLeftHandle = afterCubic && key.leftHandle != key.left;
        key.hasRightHandle = beforeCubic && key.rightHandle != key.right;
        afterCubic = beforeCubic;
    }
    return keys;
}

/// One picture in the making.
class CurvePlot {
public:
    CurvePlot(HvStdFCurve const& curve, CurvePlotRange const& range, CurvePlotLabels const& labels)
        : curve_(curve), range_(range), labels_(labels), keys_(KeysOf(curve)),
          across_(range.from, range.to, kMostParameterTicks),
          up_(range.low, range.high, kMostValueTicks), box_{PlotStyle_LeftEdge(up_, kLeastLeft),
                                                            kTop, kRight, kBottom},
          svg_(kWidth, kHeight, PlotStyle_Sheet(), labels.title, labels.subtitle),
          field_(svg_, box_, across_, up_)
    {
        toPixels_.Translate(box_.left, box_.top, 0.0);
        toPixels_.Scale(box_.Width() / (range.to - range.from),
                        -box_.Height() / (range.high - range.low), 1.0);
        toPixels_.Translate(-range.from, -range.high, 0.0);
    }

    std::string Draw()
    {
        svg_.Rect("page", 0, 0, kWidth, kHeight);
        field_.DrawGround();
        DrawOutside();
        field_.DrawGrid([this](Point const& p) { return toPixels_.Map(p); }, "zero");
        DrawCurve();
        DrawHandles();
        DrawKeys();
        DrawWords();
        return svg_.Finish();
    }

private:
    bool IsShown(Point const& p) const
    {
        return range_.from <= p.x && p.x <= range_.to && range_.low <= p.y && p.y <= range_.high;
    }

    /// Shades what lies before the first key and behind the last.
    void DrawOutside()
    {
        if (keys_.empty()) {
            return;
        }
        auto const edge = [this](PlotKey const& key) {
            return std::clamp(toPixels_.Map(Point(key.parameter, 0)).x, box_.left, box_.right);
        };
        double const first = edge(keys_.front());
        double const last = edge(keys_.back());
        svg_.Rect("outside", box_.left, box_.top, first - box_.left, box_.Height());
        svg_.Rect("outside", last, box_.top, box_.right - last, box_.Height());
    }

    /// The polyline that the library gives, cut where a run ends and where an edge is a jump.
    void DrawCurve()
    {
        HvPoint2dArray points;
        HvPointTagArray tags;
        HvBoolArray flags;
        HvExtent2<double> const extent(range_.from, range_.low, range_.to, range_.high);
        if (curve_.FlattenFromTo(extent, toPixels_, kFlattenPixels, points, tags, flags, 0) == 0) {
            throw ToolError("out of memory while drawing");
        }
        std::vector<Point> run;
        bool runIsJump = false;
        for (unsigned int i = 0; i + 1 < points.Size(); ++i) {
            if (tags[i] == HvPointTagEnd) {
                FinishRun(run, runIsJump);
                continue;
            }
            bool const isJump = !flags[i];
            if (!run.empty() && isJump != runIsJump) {
                FinishRun(run, runIsJump);
            }
            if (run.empty()) {
                run.push_back(points[i]);
                runIsJump = isJump;
            }
            run.push_back(points[i + 1]);
        }
        FinishRun(run, runIsJump);
    }

    void FinishRun(std::vector<Point>& run, bool isJump)
    {
        if (!run.empty()) {
            svg_.Polyline(isJump ? "jump" : "curve", run);
            run.clear();
        }
        hasJumps_ = hasJumps_ || isJump;
    }

    /// Average distance of the keys that the field shows.
    double KeyPixels() const
    {
        auto const isShown = [this](PlotKey const& key) {
            return range_.from <= key.parameter && key.parameter <= range_.to;
        };
        auto const count = std::count_if(keys_.begin(), keys_.end(), isShown);
        return box_.Width() / static_cast<double>(std::max<std::ptrdiff_t>(count, 1));
    }

    void DrawHandles()
    {
        if (KeyPixels() < kLeastHandlePixels) {
            return;
        }
        for (PlotKey const& key : keys_) {
            if (key.hasLeftHandle) {
                DrawHandle(key.left, key.leftHandle);
            }
            if (key.hasRightHandle) {
                DrawHandle(key.right, key.rightHandle);
            }
        }
    }

    void DrawHandle(Point const& key, Point const& handle)
    {
        if (IsShown(key) && IsShown(handle)) {
            hasHandles_ = true;
            svg_.Line("arm", toPixels_.Map(key), toPixels_.Map(handle));
            svg_.Circle("handle", toPixels_.Map(handle), kPlotHandleRadius, Tooltip(handle));
        }
    }

    void DrawKeys()
    {
        if (KeyPixels() < kLeastKeyPixels) {
            return;
        }
        hasKeys_ = !keys_.empty();
        for (PlotKey const& key : keys_) {
            if (key.left != key.right && IsShown(key.left)) {
                svg_.Diamond("left", toPixels_.Map(key.left), kPlotKeyRadius - 1,
                             Tooltip(key.left));
            }
            if (IsShown(key.right)) {
                svg_.Diamond("key", toPixels_.Map(key.right), kPlotKeyRadius, Tooltip(key.right));
            }
        }
    }

    std::string Tooltip(Point const& p) const
    {
        return labels_.parameterAxis + " " + NumberText_Rounded(p.x, 8) + ": " +
               NumberText_Rounded(p.y, 8);
    }

    void DrawWords()
    {
        field_.DrawTitles(labels_.title, kPlotLongestTitle, labels_.subtitle, kPlotLongestSubtitle);
        field_.DrawAxisNames(labels_.parameterAxis, labels_.valueAxis);
        PlotLegend legend(svg_, box_);
        if (hasHandles_) {
            legend.AddHandle("tangent", 56);
        }
        if (hasJumps_) {
            legend.AddLine("jump", "jump", 34);
        }
        if (hasKeys_) {
            legend.AddKey("key", 24);
        }
        legend.AddLine("curve", "curve", 40);
    }

    HvStdFCurve const& curve_;
    CurvePlotRange const range_;
    CurvePlotLabels const& labels_;
    std::vector<PlotKey> const keys_;
    NiceTicks const across_;
    NiceTicks const up_;
    PlotBox const box_;
    SvgWriter svg_;
    PlotField field_;
    HvTransfo4 toPixels_;
    bool hasKeys_ = false;
    bool hasJumps_ = false;
    bool hasHandles_ = false;
};

void Include(CurvePlotRange& range, Point const& p)
{
    range.from = std::min(range.from, p.x);
    range.to = std::max(range.to, p.x);
    range.low = std::min(range.low, p.y);
    range.high = std::max(range.high, p.y);
}

}  // namespace

CurvePlotRange CurvePlot_WholeRange(HvStdFCurve const& curve)
{
    std::vector<PlotKey> const keys = KeysOf(curve);
    double const value = keys.empty() ? curve.Eval(0.0, 0) : keys.front().left.y;
    double const start = keys.empty() ? 0.0 : keys.front().parameter;
    CurvePlotRange range = {start, start, value, value};
    for (PlotKey const& key : keys) {
        Include(range, key.left);
        Include(range, key.right);
        if (key.hasLeftHandle) {
            Include(range, key.leftHandle);
        }
        if (key.hasRightHandle) {
            Include(range, key.rightHandle);
        }
    }
    PlotStyle_Pad(range.from, range.to, kParameterMargin);
    PlotStyle_Pad(range.low, range.high, kValueMargin);
    return range;
}

std::string CurvePlot_Draw(HvStdFCurve const& curve, CurvePlotRange const& range,
                           CurvePlotLabels const& labels)
{
    return CurvePlot(curve, range, labels).Draw();
}
