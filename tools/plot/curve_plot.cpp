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
/// Middle of the line with the legend and the name of the value axis.
constexpr double kLegendLine = kTop - 14;

constexpr double kKeyRadius = 5.5;
constexpr double kHandleRadius = 3.6;
/// Keys that lie closer together on the average would cover the curve: they are left out, and
/// handles before them.
constexpr double kLeastKeyPixels = 3;
constexpr double kLeastHandlePixels = 10;
/// Gap between the field and its numbers, and between these and the page's edge.
constexpr double kLabelGap = 10;
/// Width of a digit, on the safe side of the fonts in the style sheet.
constexpr double kDigitWidth = 7.8;
/// From the middle of a digit down to its foot.
constexpr double kDigitDrop = 4;

/// Greatest distance of the drawn polyline from the curve, in pixels: none that an eye or a
/// printer sees.
constexpr double kFlattenPixels = 0.05;
/// Space around the keys, as a share of their range.
constexpr double kParameterMargin = 0.06;
constexpr double kValueMargin = 0.09;
/// A tick for some eighty pixels of width and some forty of height.
constexpr int kMostParameterTicks = 11;
constexpr int kMostValueTicks = 9;
/// Bytes of text that the lines above the field have room for.
constexpr std::size_t kLongestTitle = 76;
constexpr std::size_t kLongestSubtitle = 120;

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
    ".jump { fill: none; stroke: #2563eb; stroke-width: 1.6; stroke-dasharray: 6 4; }\n"
    ".arm { stroke: #d97706; stroke-width: 1.3; }\n"
    ".handle { fill: #ffffff; stroke: #d97706; stroke-width: 1.6; }\n"
    ".key { fill: #0f172a; stroke: #ffffff; stroke-width: 1.5; }\n"
    ".left { fill: #ffffff; stroke: #0f172a; stroke-width: 1.5; }\n"
    ".title { font-size: 18px; font-weight: 600; fill: #0f172a; }\n"
    ".low { text-anchor: middle; }\n"
    ".side { text-anchor: end; }\n"
    ".axis { font-weight: 600; fill: #334155; }\n";

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

/// `text` with at most so many bytes or one letter more; the middle is left out of a longer one.
std::string Shortened(std::string const& text, std::size_t most)
{
    if (text.size() <= most) {
        return text;
    }
    // Bytes 10xxxxxx continue a letter of UTF-8: no cut goes before one.
    auto const atLetter = [&text](std::size_t at) {
        while (at < text.size() && (static_cast<unsigned char>(text[at]) & 0xc0) == 0x80) {
            ++at;
        }
        return at;
    };
    std::size_t const half = most / 2;
    return text.substr(0, atLetter(half)) + "..." + text.substr(atLetter(text.size() - half + 3));
}

/// The left edge of a field beside the labels of these ticks.
double LeftEdge(NiceTicks const& ticks)
{
    std::size_t longest = 0;
    for (int i = 0; i < ticks.Count(); ++i) {
        longest = std::max(longest, ticks.Label(i).size());
    }
    return std::max(kLeastLeft, static_cast<double>(longest) * kDigitWidth + 2 * kLabelGap);
}

/// One picture in the making.
class CurvePlot {
public:
    CurvePlot(HvStdFCurve const& curve, CurvePlotRange const& range, CurvePlotLabels const& labels)
        : curve_(curve), range_(range), labels_(labels), keys_(KeysOf(curve)),
          across_(range.from, range.to, kMostParameterTicks),
          up_(range.low, range.high, kMostValueTicks), left_(LeftEdge(up_)),
          svg_(kWidth, kHeight, kStyle, labels.title, labels.subtitle)
    {
        toPixels_.Translate(left_, kTop, 0.0);
        toPixels_.Scale((kRight - left_) / (range.to - range.from),
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
        svg_.Rect("field", left_, kTop, kRight - left_, kBottom - kTop);
        if (keys_.empty()) {
            return;
        }
        double const first = std::clamp(Pixel(keys_.front().parameter, 0).x, left_, kRight);
        double const last = std::clamp(Pixel(keys_.back().parameter, 0).x, left_, kRight);
        svg_.Rect("outside", left_, kTop, first - left_, kBottom - kTop);
        svg_.Rect("outside", last, kTop, kRight - last, kBottom - kTop);
    }

    void DrawGrid()
    {
        for (int i = 0; i < across_.Count(); ++i) {
            double const x = Pixel(across_.Value(i), 0).x;
            svg_.Line("grid", Point(x, kTop), Point(x, kBottom));
            svg_.Text("low", Point(x, kBottom + kLabelGap + 2 * kDigitDrop), across_.Label(i));
        }
        for (int i = 0; i < up_.Count(); ++i) {
            double const y = Pixel(0, up_.Value(i)).y;
            bool const isZero = up_.Value(i) == 0.0;
            svg_.Line(isZero ? "zero" : "grid", Point(left_, y), Point(kRight, y));
            svg_.Text("side", Point(left_ - kLabelGap, y + kDigitDrop), up_.Label(i));
        }
        svg_.Rect("frame", left_, kTop, kRight - left_, kBottom - kTop);
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
        return (kRight - left_) / static_cast<double>(std::max<std::ptrdiff_t>(count, 1));
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
            svg_.Circle("handle", toPixels_.Map(handle), kHandleRadius, Tooltip(handle));
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
        svg_.Text("title", Point(left_, 36), Shortened(labels_.title, kLongestTitle));
        svg_.Text("", Point(left_, 58), Shortened(labels_.subtitle, kLongestSubtitle));
        svg_.Text("low axis", Point((left_ + kRight) / 2, kHeight - 18), labels_.parameterAxis);
        svg_.Text("side axis", Point(left_ - kLabelGap, kLegendLine + kDigitDrop),
                  labels_.valueAxis);
        DrawLegend();
    }

    /// Samples of what is in the picture, from the right end of the field leftwards.
    void DrawLegend()
    {
        double const y = kLegendLine;
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
        if (hasKeys_) {
            x -= 24;
            svg_.Diamond("key", Point(x - 12, y), kKeyRadius);
            svg_.Text("", Point(x, y + kDigitDrop), "key");
            x -= 42;
        }
        x -= 36;
        svg_.Line("curve", Point(x - 34, y), Point(x - 8, y));
        svg_.Text("", Point(x, y + kDigitDrop), "curve");
    }

    HvStdFCurve const& curve_;
    CurvePlotRange const range_;
    CurvePlotLabels const& labels_;
    std::vector<PlotKey> const keys_;
    NiceTicks const across_;
    NiceTicks const up_;
    double const left_;
    SvgWriter svg_;
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
