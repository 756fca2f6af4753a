// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Points to fit, chains of cubics as a sink takes them, and an independent measure of both.

#ifndef HV_TESTS_BEZIER_FIT_TEST_SUPPORT_H
#define HV_TESTS_BEZIER_FIT_TEST_SUPPORT_H

#include <hv/bezier/HvBezierSink.h>
#include <hv/bezier/HvBezierTool.h>
#include <hv/foundation/HvDoubleArray.h>

#include "cubic_test_support.h"

#include <algorithm>
#include <string>
#include <vector>

using FitPoint = HvPoint2<float>;

/// The squared cosine of 25 degrees.
constexpr double kCorner = 0.82139380484;
constexpr double kTwoPi = 6.283185307179586;

inline HvPoint2fArray ArrayOf(std::vector<FitPoint> const& points)
{
    HvPoint2fArray array;
    for (FitPoint const& p : points) {
        array.Add(p);
    }
    return array;
}

inline FitPoint ToFloat(Point2 const& p)
{
    return FitPoint(p);
}

/// The length of the polyline up to each point.
inline HvDoubleArray LengthsOf(HvPoint2fArray const& points)
{
    HvDoubleArray lengths;
    for (unsigned int i = 0; i < points.Size(); ++i) {
        lengths.Add(i == 0 ? 0.0
                           : lengths[i - 1] + Length(Point2(points[i]) - Point2(points[i - 1])));
    }
    return lengths;
}

/// What a fit drew: the letters of its operations, and the points of one chain.
struct FittedChain : HvBezierSink {
    std::string calls;
    std::vector<FitPoint> points;

    void Moveto(FitPoint const& p) override
    {
        calls += 'M';
        points.push_back(p);
    }
    void Lineto(FitPoint const& p) override
    {
        calls += 'L';
        points.push_back(p);
    }
    void Curveto(FitPoint const& c1, FitPoint const& c2, FitPoint const& p) override
    {
        calls += 'C';
        points.insert(points.end(), {c1, c2, p});
    }
    int Closeto() override
    {
        calls += 'Z';
        return points.front() == points.back() ? 1 : 0;
    }

    std::size_t Segments() const { return points.size() / 3; }
    std::vector<Point2> Cubic(std::size_t i) const
    {
        std::vector<Point2> cubic;
        for (std::size_t k = 3 * i; k <= 3 * i + 3; ++k) {
            cubic.emplace_back(points[k]);
        }
        return cubic;
    }
};

/// The distance of a point from a cubic: of many places those that are nearer than their
/// neighbours, and a search around each.
inline double DistanceFrom(Point2 const* cubic, Point2 const& p)
{
    constexpr int kPlaces = 64;
    auto const at = [&](double u) {
        double const v = 1 - u;
        return Length(cubic[0] * (v * v * v) + cubic[1] * (3 * u * v * v) +
                      cubic[2] * (3 * u * u * v) + cubic[3] * (u * u * u) - p);
    };
    double distances[kPlaces + 1];
    for (int k = 0; k <= kPlaces; ++k) {
        distances[k] = at(double(k) / kPlaces);
    }
    double least = std::min(distances[0], distances[kPlaces]);
    for (int k = 0; k <= kPlaces; ++k) {
        int const before = std::max(k - 1, 0);
        int const after = std::min(k + 1, kPlaces);
        if (distances[k] > distances[before] || distances[k] > distances[after]) {
            continue;
        }
        double low = double(before) / kPlaces;
        double high = double(after) / kPlaces;
        for (int step = 0; step < 40; ++step) {
            double const a = low + (high - low) / 3;
            double const b = high - (high - low) / 3;
            (at(a) < at(b) ? high : low) = at(a) < at(b) ? b : a;
        }
        least = std::min(least, at(0.5 * (low + high)));
    }
    return least;
}

/// The greatest distance of a point from the chain.
inline double ErrorOf(FittedChain const& chain, HvPoint2fArray const& points)
{
    double worst = 0.0;
    for (FitPoint const& p : points) {
        double least = kInfinity;
        for (std::size_t i = 0; i < chain.Segments(); ++i) {
            std::vector<Point2> const cubic = chain.Cubic(i);
            // The curve lies in the box of its controls.
            double out = 0.0;
            for (auto const axis : {&Point2::x, &Point2::y}) {
                double const at = Point2(p).*axis;
                auto const [low, high] =
                    std::minmax({cubic[0].*axis, cubic[1].*axis, cubic[2].*axis, cubic[3].*axis});
                out = std::max({out, low - at, at - high});
            }
            if (out < least) {
                least = std::min(least, DistanceFrom(cubic.data(), Point2(p)));
            }
        }
        worst = least <= worst ? worst : least;
    }
    return worst;
}

/// How much more than the tolerance the measure above may give: rounding of doubles in both.
inline double Slack(HvPoint2fArray const& points)
{
    double greatest = 0.0;
    for (FitPoint const& p : points) {
        greatest = std::max({greatest, std::fabs(double(p.x)), std::fabs(double(p.y))});
    }
    return 1e-13 * greatest + 1e-300;
}

#endif
