// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The sections on shapes and archives of docs/conventions.md, line by line.

#include <hv/hv.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace {

/// A closed triangle from (0, 0) over (4, 0) and (0, 4), and an open line behind it.
HvPath2f TriangleAndLine()
{
    HvPath2f path(6);
    path.Moveto({0, 0});
    path.Lineto({4, 0});
    path.Lineto({0, 4});
    path.Lineto({0, 0});
    path.Closeto();
    path.Moveto({10, 10});
    path.Lineto({20, 10});
    return path;
}

template <class T>
std::vector<unsigned char> Written(T const& saved)
{
    std::vector<unsigned char> bytes(saved.GetBufferSize());
    saved.WriteToBuffer(bytes.data());
    return bytes;
}

constexpr double kInfinity = std::numeric_limits<double>::infinity();

}  // namespace

TEST(Conventions_shapes, HitsAndOutlinesAreInDeviceSpaceAndExtentsAreNot)
{
    HvGC gc;
    gc.transform.Translate(100, 0, 0);
    HvPath2f const path = TriangleAndLine();
    EXPECT_EQ(path.IsIntersectingExtent(gc, {101, -1, 102, 1}, 0), 1);
    EXPECT_EQ(path.IsIntersectingExtent(gc, {1, -1, 2, 1}, 0), 0);
    HvExtent2<float> extent;
    EXPECT_EQ(path.GetExtent(extent).max.x, 20.0f);
}

TEST(Conventions_shapes, AnyPointOfASubpathStandsForIt)
{
    HvPath2f const path = TriangleAndLine();
    for (unsigned int i = 0; i < path.NumPoints(); ++i) {
        EXPECT_EQ(path.IsSubpathClosed(i), i < 4 ? 1 : 0);
    }
}

TEST(Conventions_shapes, AClosedSubpathStoresItsStartTwice)
{
    HvPath2f const path = TriangleAndLine();
    EXPECT_EQ(path.NumPoints(), 6u);
    EXPECT_EQ(path.GetPoint(0), path.GetPoint(3));
}

TEST(Conventions_shapes, OuterContoursRunCounterClockwiseToTheEye)
{
    HvUByteRaster const pixel(1, 1, 1);
    HvPath2f contour(8);
    HvVectorizer(0, 0).Vectorize(pixel, 1, HvExtent2<float>(), contour);
    ASSERT_EQ(contour.NumPoints(), 5u);
    // Down first, where y runs down.
    EXPECT_EQ(contour.GetPoint(0), HvPoint2<float>(0, 0));
    EXPECT_EQ(contour.GetPoint(1), HvPoint2<float>(0, 1));
}

TEST(Conventions_archives, ALengthStandsBeforeTheBodyLowByteFirst)
{
    std::vector<unsigned char> const bytes = Written(HvIntegerFCurve(0));
    std::size_t const body = bytes.size() - 4;
    ASSERT_LT(body, 256u);
    EXPECT_EQ(bytes[0], body);
    EXPECT_EQ(bytes[1] + bytes[2] + bytes[3], 0);
}

TEST(Conventions_archives, NotFiniteIsZeroInCurvesAndMotionPathsAndStaysInShapes)
{
    // The clamping values are the one number of a curve that may be infinite.
    HvStdFCurve curve(3, HvBaseFCurve::LinearSegment);
    ASSERT_EQ(curve.SetClampingValues(-kInfinity, kInfinity), 1);
    HvBaseFCurve* read = nullptr;
    std::vector<unsigned char> bytes = Written(curve);
    ASSERT_NE(HvBaseFCurve_CreateFromBuffer(bytes.data(), bytes.size(), &read), 0u);
    double low = 1;
    double high = 1;
    read->GetClampingValues(low, high);
    EXPECT_EQ(low, 0);
    EXPECT_EQ(high, 0);
    delete read;

    HvMotionPath3d const path({kInfinity, 0, 0}, {1, 0, 0}, 0, 1);
    bytes = Written(path);
    HvMotionPath3d* again = nullptr;
    ASSERT_NE(HvMotionPath3d_CreateFromBuffer(bytes.data(), bytes.size(), &again), 0u);
    HvPoint3<double> p;
    again->GetControlPoint(0, p);
    EXPECT_EQ(p.x, 0);
    delete again;

    HvPath2f shape(1);
    shape.Moveto({std::numeric_limits<float>::infinity(), 0});
    bytes = Written(shape);
    HvShape2f* copy = nullptr;
    ASSERT_NE(HvShape2f_CreateFromBuffer(bytes.data(), bytes.size(), &copy), 0u);
    EXPECT_TRUE(std::isinf(copy->GetPoint(0).x));
    delete copy;
}
