// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Strokes read from tables of numbers: what is taken, and what is refused where.

#include <tools/ToolError.h>
#include <tools/stroke/StrokeDocument.h>

#include <gtest/gtest.h>

#include <string>

namespace {

std::string RefusalOf(std::string const& text)
{
    try {
        StrokeDocument_Parse(text);
    } catch (ToolError const& error) {
        return error.what();
    }
    return "taken";
}

}  // namespace

TEST(StrokeDocument, ReadsTheColumnsInTheirOrder)
{
    StrokeDocument const two = StrokeDocument_Parse("1,2\n3.5,-4e1\n");
    ASSERT_EQ(two.points.size(), 2u);
    EXPECT_EQ(two.points[1].place, HvPoint2<float>(3.5f, -40));
    EXPECT_FALSE(two.hasPressure);
    EXPECT_FALSE(two.hasTime);
    EXPECT_EQ(two.points[1].pressure, 1.0);

    StrokeDocument const three = StrokeDocument_Parse("1,2,0.5\n3,4,0.25");
    EXPECT_TRUE(three.hasPressure);
    EXPECT_FALSE(three.hasTime);
    EXPECT_EQ(three.points[1].pressure, 0.25);

    StrokeDocument const four = StrokeDocument_Parse("1,2,0.5,10\n3,4,0.25,10\n");
    EXPECT_TRUE(four.hasTime);
    EXPECT_EQ(four.points[1].time, 10.0);
}

TEST(StrokeDocument, NamesMayStandInAnyOrder)
{
    StrokeDocument const named =
        StrokeDocument_Parse("tilt,Milliseconds,Y,x\n?,5,2,1\nnone,6,4,3\n");
    ASSERT_EQ(named.points.size(), 2u);
    EXPECT_EQ(named.points[0].place, HvPoint2<float>(1, 2));
    EXPECT_EQ(named.points[1].time, 6.0);
    EXPECT_FALSE(named.hasPressure);
    for (char const* name : {"milliseconds", "seconds", "time", "TIME"}) {
        EXPECT_TRUE(StrokeDocument_Parse("x,y," + std::string(name) + "\n0,0,0\n1,1,1\n").hasTime);
    }
}

TEST(StrokeDocument, PassesOverWhatIsNoPoint)
{
    StrokeDocument const document = StrokeDocument_Parse(
        "\xef\xbb\xbf# a stroke\r\n\r\nx; y \r\n +1 ; -2\r\n# half\r\n3;4\r\n\n");
    ASSERT_EQ(document.points.size(), 2u);
    EXPECT_EQ(document.points[0].place, HvPoint2<float>(1, -2));
}

TEST(StrokeDocument, SemicolonsAndTabsPartColumnsToo)
{
    for (char const* text : {"1;2\n3;4", "1\t2\n3\t4", " 1 , 2 \r\n 3 , 4 \r\n", "1,2\n3;4"}) {
        StrokeDocument const document = StrokeDocument_Parse(text);
        ASSERT_EQ(document.points.size(), 2u) << text;
        EXPECT_EQ(document.points[1].place, HvPoint2<float>(3, 4));
    }
}

TEST(StrokeDocument, RefusalsNameTheLine)
{
    EXPECT_EQ(RefusalOf(""), "a stroke needs two points; there is none");
    EXPECT_EQ(RefusalOf("x,y\n"), "a stroke needs two points; there is none");
    EXPECT_EQ(RefusalOf("x,y\n1,2\n"), "a stroke needs two points; there is one");
    EXPECT_EQ(RefusalOf("x,y\n1,2\n\n3,z\n"), "line 4: \"z\" is no number");
    EXPECT_EQ(RefusalOf("1,2\n3\n"), "line 2: 1 column, not 2");
    EXPECT_EQ(RefusalOf("1,2\n3,4,5\n"), "line 2: 3 columns, not 2");
    EXPECT_EQ(RefusalOf("1\n2\n"), "line 1: 1 column, where x, y, pressure and time fit");
    EXPECT_EQ(RefusalOf("1,2,3,4,5\n"), "line 1: 5 columns, where x, y, pressure and time fit");
    EXPECT_EQ(RefusalOf("x,pressure\n1,2\n"), "line 1: no column y");
    EXPECT_EQ(RefusalOf("y,pressure\n1,2\n"), "line 1: no column x");
    EXPECT_EQ(RefusalOf("x,y,X\n1,2,3\n"), "line 1: two columns for X");
    EXPECT_EQ(RefusalOf("1,2,-0.5\n3,4,1\n"), "line 1: pressure -0.5 is below 0");
    EXPECT_EQ(RefusalOf("1,2,1,10\n3,4,1,9.5\n"), "line 2: time goes back from 10 to 9.5");
    EXPECT_EQ(RefusalOf("1,2\n3,1e19\n"), "line 2: 1e+19 is too far out");
    EXPECT_EQ(RefusalOf("1,2,1e19\n"), "line 1: 1e+19 is too far out");
    for (char const* bad : {"", "nan", "inf", "-inf", "1e999", "0x10", "1 2", "--1", "1.2.3"}) {
        EXPECT_EQ(RefusalOf("1,2\n3," + std::string(bad) + "\n"),
                  "line 2: \"" + std::string(bad) + "\" is no number");
    }
    std::string const longText(1000, 'q');
    EXPECT_LT(RefusalOf("1,2\n3," + longText + "\n").size(), 80u);
}
