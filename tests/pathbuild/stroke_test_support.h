// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the tests of the path builders share.

#ifndef TESTS_PATHBUILD_STROKE_TEST_SUPPORT_H
#define TESTS_PATHBUILD_STROKE_TEST_SUPPORT_H

#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvPoint2fArray.h>
#include <hv/foundation/polyline_length.h>
#include <hv/pathbuild/HvBezierFitPathBuilder.h>
#include <hv/pathbuild/HvCubicPathBuilder.h>
#include <hv/pathbuild/HvLinearPathBuilder.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvPath2f.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <ostream>
#include <vector>

using StrokePoint = HvPoint2<float>;

template <class T>
std::ostream& operator<<(std::ostream& stream, HvPoint2<T> const& p)
{
    return stream << "(" << p.x << ", " << p.y << ")";
}

/// A builder that shows its fields and steps.
template <class Builder>
class OpenBuilder : public Builder {
public:
    using Builder::Builder;
    using Builder::firstSamples;
    using Builder::input;
    using Builder::needMoveto;
    using Builder::path;
    using Builder::processedIndex;
    using Builder::sampleRemainder;
    using Builder::samples;
    using Builder::SmoothInput;
    using Builder::subpathStart;
};

class OpenLinear : public OpenBuilder<HvLinearPathBuilder> {
public:
    using HvLinearPathBuilder::direction;
    using HvLinearPathBuilder::hasPending;
    using HvLinearPathBuilder::pending;
    using OpenBuilder::OpenBuilder;
};

using OpenCubic = OpenBuilder<HvCubicPathBuilder>;

class OpenFit : public OpenBuilder<HvBezierFitPathBuilder> {
public:
    using HvBezierFitPathBuilder::chordLengths;
    using HvBezierFitPathBuilder::corners;
    using HvBezierFitPathBuilder::polyline;
    using OpenBuilder::OpenBuilder;
};

/// A point that is not a number, or not finite.
inline constexpr float kNoNumber = std::numeric_limits<float>::quiet_NaN();
inline constexpr float kInfinite = std::numeric_limits<float>::infinity();

inline HvPoint2fArray Points(std::vector<StrokePoint> const& points)
{
    HvPoint2fArray array(static_cast<unsigned int>(points.size()));
    for (StrokePoint const& p : points) {
        array.Add(p);
    }
    return array;
}

inline std::vector<StrokePoint> ToVector(HvPoint2fArray const& points)
{
    return std::vector<StrokePoint>(points.begin(), points.end());
}

inline std::vector<StrokePoint> PointsOf(HvPath2f const& path)
{
    std::vector<StrokePoint> points(path.NumPoints());
    for (unsigned int i = 0; i < points.size(); ++i) {
        points[i] = path.GetPoint(i);
    }
    return points;
}

/// The degrees of the segments of a path of one subpath.
inline std::vector<unsigned int> DegreesOf(HvPath2f const& path)
{
    std::vector<unsigned int> degrees;
    for (unsigned int i = 1; i < path.NumPoints(); i = path.EndOfSegment(i) + 1) {
        degrees.push_back(path.GetDegree(i));
    }
    return degrees;
}

/// The nodes of a path of one subpath, in order.
inline std::vector<StrokePoint> NodesOf(HvPath2f const& path)
{
    std::vector<StrokePoint> nodes;
    if (path.NumPoints() != 0) {
        nodes.push_back(path.GetPoint(0));
    }
    for (unsigned int i = 1; i < path.NumPoints(); i = path.EndOfSegment(i) + 1) {
        nodes.push_back(path.GetPoint(path.EndOfSegment(i)));
    }
    return nodes;
}

inline HvDoubleArray ChordOf(HvPoint2fArray const& points)
{
    HvDoubleArray chord(4);
    HvPoint2fArraySingleComponent_ComputeChordLength(points, chord);
    return chord;
}

inline void ExpectPoints(std::vector<StrokePoint> const& actual,
                         std::vector<StrokePoint> const& expected, double tolerance)
{
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i) {
        EXPECT_NEAR(actual[i].x, expected[i].x, tolerance) << "x of point " << i;
        EXPECT_NEAR(actual[i].y, expected[i].y, tolerance) << "y of point " << i;
    }
}

template <class T>
void ExpectDirection(HvPoint2<T> const& actual, double x, double y, double tolerance = 1e-6)
{
    EXPECT_NEAR(actual.x, x, tolerance);
    EXPECT_NEAR(actual.y, y, tolerance);
}

/// Distance of a point from a polyline.
inline double DistanceFrom(std::vector<StrokePoint> const& line, StrokePoint const& p)
{
    double least = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i + 1 < line.size(); ++i) {
        double const ax = line[i].x;
        double const ay = line[i].y;
        double const dx = double(line[i + 1].x) - ax;
        double const dy = double(line[i + 1].y) - ay;
        double const squared = dx * dx + dy * dy;
        double const share =
            squared > 0.0
                ? std::clamp(((double(p.x) - ax) * dx + (double(p.y) - ay) * dy) / squared, 0.0,
                             1.0)
                : 0.0;
        least = std::min(least,
                         std::hypot(ax + share * dx - double(p.x), ay + share * dy - double(p.y)));
    }
    return least;
}

#endif
