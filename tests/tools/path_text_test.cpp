// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <tools/svg/path_text.h>

#include <hv/shape/HvPath2f.h>
#include <hv/shape/HvPath2fSink.h>
#include <tools/ToolError.h>
#include <tools/svg/path_data.h>

#include <gtest/gtest.h>

namespace {

using Point = HvPoint2<float>;

HvPath2f Square()
{
    HvPath2f path(0);
    path.Moveto(Point(1, 2));
    path.Lineto(Point(1, 4));
    path.Lineto(Point(3.5f, 4));
    path.Lineto(Point(3.5f, 2));
    path.Lineto(Point(1, 2));
    path.Closeto();
    return path;
}

}  // namespace

TEST(path_text, WritesLinesAlongTheAxesAsOneNumber)
{
    EXPECT_EQ(PathText_Of(Square()), "M1,2V4H3.5V2Z\n");
}

TEST(path_text, WritesEachKindOfSegmentAndALineForEachSubpath)
{
    HvPath2f path(Square());
    path.Moveto(Point(0, 0));
    path.Lineto(Point(1, 1));
    path.Lineto(Point(2, 3));
    path.Curveto(Point(3, 3), Point(4, 4));
    path.Curveto(Point(5, 5), Point(6, 6.25f), Point(-7, 7));
    EXPECT_EQ(PathText_Of(path), "M1,2V4H3.5V2Z\nM0,0L1,1 2,3Q3,3 4,4C5,5 6,6.25 -7,7\n");
}

TEST(path_text, ClosesACurveAfterItsLastPoint)
{
    HvPath2f path(0);
    path.Moveto(Point(0, 0));
    path.Curveto(Point(5, 0), Point(5, 5), Point(0, 0));
    path.Closeto();
    EXPECT_EQ(PathText_Of(path), "M0,0C5,0 5,5 0,0Z\n");
}

TEST(path_text, GivesTheSamePathWhenItIsReadAgain)
{
    HvPath2f path(Square());
    path.Moveto(Point(0.1f, 1e-7f));
    path.Curveto(Point(16777.21f, 6), Point(-6, 6), Point(7, 123.4567f));
    path.Lineto(Point(0.1f, 1e-7f));
    path.Closeto();
    HvPath2f again(0);
    HvPath2fSink sink(again);
    EXPECT_EQ(PathData_Draw(PathText_Of(path), sink), "");
    ASSERT_EQ(again.IsSiblingOf(path), 1);
    for (unsigned int i = 0; i < path.NumPoints(); ++i) {
        EXPECT_FLOAT_EQ(again.GetPoint(i).x, path.GetPoint(i).x);
        EXPECT_FLOAT_EQ(again.GetPoint(i).y, path.GetPoint(i).y);
    }
}

TEST(path_text, IsEmptyForAnEmptyPath)
{
    EXPECT_EQ(PathText_Of(HvPath2f(0u)), "");
}

TEST(path_text, RefusesSegmentsThatSvgHasNot)
{
    HvPath2f path(0);
    path.Moveto(Point(0, 0));
    Point const points[] = {Point(1, 1), Point(2, 2), Point(3, 3), Point(4, 4)};
    path.AltCurveto(points, 4);
    EXPECT_THROW(PathText_Of(path), ToolError);
}
