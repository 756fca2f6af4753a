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
#include <tools/plot/NiceTicks.h>
#include <tools/plot/SvgWriter.h>
#include <tools/plot/curve_plot.h>

#include <algorithm>
#include <vector>

namespace {

using Point = HvPoint2<double>;

// The picture's size and the edges of the field that holds the curve, in pixels.
constexpr double kWidth = 960;
constexpr double kHeight = 520;
constexpr double kLeft = 84;
constexpr double kRight = kWidth - 28;
constexpr double kTop = 84;
constexpr double kBottom = kHeight - 64;

constexpr double kKeyRadius = 5.5;
constexpr double kHandleRadius = 3.6;
/// Gap between the field and its numbers.
constexpr double kLabelGap = 10;
/// From the middle of a digit down to its foot.
constexpr double kDigitDrop = 4;

/// Greatest distance of the drawn polyline from the curve, in pixels: none that an eye or a
/// printer sees.
constexpr double kFlattenPixels = 0.05;
/// Space around the keys, as a share of their range.
constexpr double kParameterMargin = 0.06;
constexpr double kValueMargin = 0.09;
/// A tick for some ninety pixels of width and some fifty of height.
constexpr int kMostParameterTicks = 11;
constexpr int kMostValueTicks = 8;

constexpr char kStyle[] =
    "text { font-family: Inter, 'Segoe UI', 'DejaVu Sans', Helvetica, Arial, sans-serif; "
    "font-size: 12px; fill: #475569; }\n"
    ".page { fill: #ffffff; }\n"
    ".field { fill: #ffffff; }\n"
    ".outside { fill: #f1f5f9; }\n"
    ".frame { fill: none; stroke: #cbd5e1; }\n"
    ".grid { stroke: #e2e8f0; }\n"
    ".zero { stroke: #94a3b8; }\n"
    ".curve { fill: none; stroke: #2563eb; stroke-width: 2.5; stroke-linecap: round; "
    "stroke-linejoin: round; }\n"
    ".jump { fill: none; stroke: #2563eb; stroke-width: 1.5; stroke-dasharray: 2 5; "
    "stroke-linecap: round; }\n"
    ".arm { stroke: #d97706; stroke-width: 1.3; }\n"
    ".handle { fill: #ffffff; stroke: #d97706; stroke-width: 1.6; }\n"
    ".key { fill: #0f172a; stroke: #ffffff; stroke-width: 1.5; }\n"
    ".left { fill: #ffffff; stroke: #0f172a; stroke-width: 1.5; }\n"
    ".title { font-size: 18px; font-weight: 600; fill: #0f172a; }\n"
    ".axis { font-size: 12.5px; text-anchor: middle; fill: #334155; }\n"
    ".low { text-anchor: middle; }\n"
    ".side { text-anchor: end; }\n";

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
          svg_(kWidth, kHeight, kStyle, labels.title, labels.subtitle)
    {
        toPixels_.Translate(kLeft, kTop, 0.0);
        toPixels_.Scale((kRight - kLeft) / (range.to - range.from),
                        -(kBottom - kTop) / (range.high - range.low), 1.0);
        toPixels_.Translate(-range.from, -range.high, 0.0);
    }

    std::string Draw()
    {
        svg_.Rect("page", 0, 0, kWidth, kHeight);
        DrawField();
        DrawGrid();
        DrawCurve();
        DrawHandles();
        DrawKeys();
        DrawWords();
        return svg_.Finish();
    }

private:
    Point Pixel(double parameter, double value) const
    {
        return toPixels_.Map(Point(parameter, value));
    }

    bool IsShown(Point const& p) const
    {
        return range_.from <= p.x && p.x <= range_.to && range_.low <= p.y && p.y <= range_.high;
    }

    void DrawField()
    {
        svg_.Rect("field", kLeft, kTop, kRight - kLeft, kBottom - kTop);
        if (keys_.empty()) {
            return;
        }
        double const first = std::clamp(Pixel(keys_.front().parameter, 0).x, kLeft, kRight);
        double const last = std::clamp(Pixel(keys_.back().parameter, 0).x, kLeft, kRight);
        svg_.Rect("outside", kLeft, kTop, first - kLeft, kBottom - kTop);
        svg_.Rect("outside", last, kTop, kRight - last, kBottom - kTop);
    }

    void DrawGrid()
    {
        NiceTicks const across(range_.from, range_.to, kMostParameterTicks);
        for (int i = 0; i < across.Count(); ++i) {
            double const x = Pixel(across.Value(i), 0).x;
            svg_.Line("grid", Point(x, kTop), Point(x, kBottom));
            svg_.Text("low", Point(x, kBottom + kLabelGap + 2 * kDigitDrop), across.Label(i));
        }
        NiceTicks const up(range_.low, range_.high, kMostValueTicks);
        for (int i = 0; i < up.Count(); ++i) {
            double const y = Pixel(0, up.Value(i)).y;
            bool const isZero = up.Value(i) == 0.0;
            svg_.Line(isZero ? "zero" : "grid", Point(kLeft, y), Point(kRight, y));
            svg_.Text("side", Point(kLeft - kLabelGap, y + kDigitDrop), up.Label(i));
        }
        svg_.Rect("frame", kLeft, kTop, kRight - kLeft, kBottom - kTop);
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

    void DrawHandles()
    {
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
            svg_.Circle("handle", toPixels_.Map(handle), kHandleRadius, Tooltip(handle));
        }
    }

    void DrawKeys()
    {
        for (PlotKey const& key : keys_) {
            if (key.left != key.right && IsShown(key.left)) {
                svg_.Diamond("left", toPixels_.Map(key.left), kKeyRadius - 1, Tooltip(key.left));
            }
            if (IsShown(key.right)) {
                svg_.Diamond("key", toPixels_.Map(key.right), kKeyRadius, Tooltip(key.right));
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
        svg_.Text("title", Point(kLeft, 36), labels_.title);
        svg_.Text("", Point(kLeft, 58), labels_.subtitle);
        svg_.Text("axis", Point((kLeft + kRight) / 2, kHeight - 18), labels_.parameterAxis);
        svg_.VerticalText("axis", Point(24, (kTop + kBottom) / 2), labels_.valueAxis);
        DrawLegend();
    }

    /// Samples of what is in the picture, from the right end of the field leftwards.
    void DrawLegend()
    {
        double const y = kTop - kLabelGap - kDigitDrop;
        double x = kRight;
        if (hasHandles_) {
            x -= 56;
            svg_.Line("arm", Point(x - 32, y), Point(x - 12, y));
            svg_.Circle("handle", Point(x - 12, y), kHandleRadius);
            svg_.Text("", Point(x, y + kDigitDrop), "tangent");
            x -= 56;
        }
        if (hasJumps_) {
            x -= 34;
            svg_.Line("jump", Point(x - 34, y), Point(x - 8, y));
            svg_.Text("", Point(x, y + kDigitDrop), "jump");
            x -= 56;
        }
        x -= 24;
        svg_.Diamond("key", Point(x - 12, y), kKeyRadius);
        svg_.Text("", Point(x, y + kDigitDrop), "key");
        x -= 78;
        svg_.Line("curve", Point(x - 34, y), Point(x - 8, y));
        svg_.Text("", Point(x, y + kDigitDrop), "curve");
    }

    HvStdFCurve const& curve_;
    CurvePlotRange const range_;
    CurvePlotLabels const& labels_;
    std::vector<PlotKey> const keys_;
    SvgWriter svg_;
    HvTransfo4 toPixels_;
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

/// Opens a range of an axis, and adds a margin on both ends.
void Pad(double& low, double& high, double share)
{
    NiceTicks_Widen(low, high);
    double const margin = (high - low) * share;
    low -= margin;
    high += margin;
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
    Pad(range.from, range.to, kParameterMargin);
    Pad(range.low, range.high, kValueMargin);
    return range;
}

std::string CurvePlot_Draw(HvStdFCurve const& curve, CurvePlotRange const& range,
                           CurvePlotLabels const& labels)
{
    return CurvePlot(curve, range, labels).Draw();
}
