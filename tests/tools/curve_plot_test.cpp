// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The picture of a curve: what is in it, and where.

#include <tools/plot/curve_plot.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using Point = HvPoint2<double>;

std::string Draw(HvStdFCurve const& curve)
{
    return CurvePlot_Draw(curve, CurvePlot_WholeRange(curve),
                          {"title", "subtitle", "frame", "value"});
}

/// How often `part` occurs in `text`.
int Count(std::string const& text, std::string const& part)
{
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

/// The occurrences in the field of the curve, the sample in the legend left out.
int InField(std::string const& svg, std::string const& element, std::string const& cls)
{
    return Count(svg, "<" + element + " class=\"" + cls + "\"");
}

HvStdFCurve Cubic()
{
    return HvStdFCurve(Point(0, 0), Point(3, 0), Point(7, 10), Point(10, 10),
                       HvBaseFCurve::ConstantSegment, HvBaseFCurve::ConstantSegment);
}

}  // namespace

TEST(curve_plot, WholeRangeHoldsKeysAndHandlesWithAMargin)
{
    HvStdFCurve const curve(Point(0, 0), Point(3, -20), Point(7, 40), Point(10, 10),
                            HvBaseFCurve::ConstantSegment, HvBaseFCurve::ConstantSegment);
    CurvePlotRange const range = CurvePlot_WholeRange(curve);
    EXPECT_LT(range.from, 0);
    EXPECT_GT(range.from, -2);
    EXPECT_GT(range.to, 10);
    EXPECT_LT(range.to, 12);
    EXPECT_LT(range.low, -20);
    EXPECT_GT(range.low, -30);
    EXPECT_GT(range.high, 40);
    EXPECT_LT(range.high, 50);
}

TEST(curve_plot, FlatCurveHasARangeAllTheSame)
{
    HvStdFCurve const one(5, 7, 7, HvBaseFCurve::ConstantSegment, HvBaseFCurve::ConstantSegment);
    CurvePlotRange const range = CurvePlot_WholeRange(one);
    EXPECT_LT(range.from, 5);
    EXPECT_GT(range.to, 5);
    EXPECT_LT(range.low, 7);
    EXPECT_GT(range.high, 7);
    HvStdFCurve const none(0, HvBaseFCurve::ConstantSegment);
    EXPECT_LT(CurvePlot_WholeRange(none).low, 0);
    EXPECT_EQ(InField(Draw(none), "polyline", "curve"), 1);
    EXPECT_EQ(InField(Draw(one), "polyline", "curve"), 1);
}

TEST(curve_plot, ShowsCurveKeysHandlesAndAxes)
{
    std::string const svg = Draw(Cubic());
    EXPECT_EQ(InField(svg, "polyline", "curve"), 1);
    EXPECT_EQ(InField(svg, "polyline", "jump"), 0);
    // Two keys, two handles with their arms, and a sample of each in the legend.
    EXPECT_EQ(InField(svg, "polygon", "key"), 3);
    EXPECT_EQ(InField(svg, "circle", "handle"), 3);
    EXPECT_EQ(InField(svg, "line", "arm"), 3);
    EXPECT_GE(InField(svg, "line", "grid"), 8);
    EXPECT_EQ(InField(svg, "line", "zero"), 1);
    EXPECT_NE(svg.find(">frame</text>"), std::string::npos);
    EXPECT_NE(svg.find(">value</text>"), std::string::npos);
    EXPECT_NE(svg.find("frame 10: 10"), std::string::npos);
    EXPECT_EQ(svg.find("nan"), std::string::npos);
    EXPECT_EQ(svg.find("inf"), std::string::npos);
}

TEST(curve_plot, DashesJumpsAndMarksBothSides)
{
    HvStdFCurve curve(0, 1, 1, HvBaseFCurve::ConstantSegment, HvBaseFCurve::ConstantSegment);
    ASSERT_EQ(curve.AppendConstantSegment(Point(10, 5)), 1);
    std::string const svg = Draw(curve);
    EXPECT_EQ(InField(svg, "polyline", "jump"), 1);
    EXPECT_EQ(InField(svg, "polyline", "curve"), 2);
    EXPECT_EQ(InField(svg, "polygon", "left"), 1);
    EXPECT_EQ(InField(svg, "circle", "handle"), 0);
    EXPECT_NE(svg.find(">jump</text>"), std::string::npos);
    EXPECT_EQ(svg.find(">tangent</text>"), std::string::npos);
}

TEST(curve_plot, ShowsOnlyWhatLiesInTheRange)
{
    std::string const svg = CurvePlot_Draw(Cubic(), {-5, 5, -1, 11}, {"t", "s", "frame", "value"});
    // The key at 0 and its handle; the legend's samples.
    EXPECT_EQ(InField(svg, "polygon", "key"), 2);
    EXPECT_EQ(InField(svg, "circle", "handle"), 2);
}

TEST(curve_plot, CurveThatLeavesTheFieldIsInterrupted)
{
    HvStdFCurve curve(0, 0, 10, 10, HvBaseFCurve::ConstantSegment, HvBaseFCurve::ConstantSegment);
    ASSERT_EQ(curve.AppendLinearSegment(Point(20, 0)), 1);
    std::string const svg = CurvePlot_Draw(curve, {0, 20, -1, 5}, {"t", "s", "frame", "value"});
    EXPECT_EQ(InField(svg, "polyline", "curve"), 2);
    EXPECT_EQ(InField(svg, "polyline", "jump"), 0);
}

TEST(curve_plot, CrowdedKeysAndHandlesAreLeftOut)
{
    HvStdFCurve curve = Cubic();
    auto const extend = [&curve](int keys) {
        for (int i = static_cast<int>(curve.GetNumKeys()); i < keys; ++i) {
            double const x = 10.0 * i;
            ASSERT_EQ(
                curve.AppendBezierCubicSegment(Point(x - 7, 10), Point(x - 3, i), Point(x, i)), 1);
        }
    };
    // The field is some 850 pixels wide.
    extend(70);
    EXPECT_EQ(InField(Draw(curve), "polygon", "key"), 70 + 1);
    EXPECT_GT(InField(Draw(curve), "circle", "handle"), 70);
    extend(150);
    EXPECT_EQ(InField(Draw(curve), "polygon", "key"), 150 + 1);
    EXPECT_EQ(InField(Draw(curve), "circle", "handle"), 0);
    extend(400);
    EXPECT_EQ(InField(Draw(curve), "polygon", "key"), 0);
    EXPECT_EQ(InField(Draw(curve), "polyline", "curve"), 1);
}

TEST(curve_plot, LongWordsAreShortenedInTheMiddle)
{
    std::string name;
    for (int i = 0; i < 100; ++i) {
        name += "\xc3\xa9";  // a letter of two bytes, which no cut may part
    }
    std::string const svg = CurvePlot_Draw(Cubic(), CurvePlot_WholeRange(Cubic()),
                                           {"start " + name + " end", "s", "frame", "value"});
    std::size_t const at = svg.find("<text class=\"title\"");
    std::string const text = svg.substr(at, svg.find("</text>", at) - at);
    EXPECT_LT(text.size(), 130u);
    EXPECT_NE(text.find("start \xc3\xa9"), std::string::npos);
    EXPECT_NE(text.find("\xc3\xa9...\xc3\xa9"), std::string::npos);
    EXPECT_NE(text.find("\xc3\xa9 end"), std::string::npos);
}

TEST(curve_plot, EveryRangeOfNumbersIsDrawn)
{
    for (double scale : {1e-100, 1e-12, 1.0, 1e12, 1e100}) {
        for (double offset : {0.0, 1e15}) {
            HvStdFCurve const curve(Point(0, offset), Point(scale / 3, offset),
                                    Point(scale / 2, offset + scale), Point(scale, offset + scale),
                                    HvBaseFCurve::ConstantSegment, HvBaseFCurve::ConstantSegment);
            std::string const svg = Draw(curve);
            EXPECT_EQ(svg.find("nan"), std::string::npos);
            EXPECT_EQ(svg.find("inf"), std::string::npos);
            EXPECT_GE(InField(svg, "polyline", "curve"), 1);
        }
    }
}
