// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Polygons as fills are given them, and generators of difficult ones.

#ifndef TESTS_SUPPORT_RANDOM_POLYGONS_H
#define TESTS_SUPPORT_RANDOM_POLYGONS_H

#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPointTagArray.h>

#include <cmath>
#include <random>
#include <vector>

/// Closed polygons one after the other.
struct PolygonList {
    HvPoint2dArray points;
    HvPointTagArray tags;

    /// Appends a polygon and closes it.
    void Add(std::vector<HvPoint2<double>> const& corners)
    {
        for (auto const& corner : corners) {
            tags.Add(corners.data() == &corner ? HvPointTagStart : HvPointTagInner);
            points.Add(corner);
        }
        if (!corners.empty()) {
            tags.Add(HvPointTagEnd);
            points.Add(corners.front());
        }
    }

    HvExtent2<float> Extent() const
    {
        HvExtent2<float> extent;
        for (auto const& point : points) {
            extent.Augment(HvPoint2<float>(point));
        }
        return extent;
    }
};

/// Polygons of all kinds in and around a square of side `size`: corners anywhere, on whole, half,
/// quarter and eighth numbers, so that they lie on scanlines and on one another; spikes, repeated
/// corners, holes, polygons of one and two corners.
class RandomPolygons {
public:
    explicit RandomPolygons(unsigned int seed) : engine_(seed) {}

    /// A whole number of [low, high].
    int Pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(engine_); }
    double PickReal(double low, double high)
    {
        return std::uniform_real_distribution<double>(low, high)(engine_);
    }

    PolygonList Next(double size)
    {
        PolygonList list;
        double const step = Pick(0, 2) == 0 ? 0.0 : std::ldexp(1.0, -Pick(0, 4));
        double const margin = Pick(0, 1) == 0 ? 0.0 : size * PickReal(0.0, 1.5);
        int const polygons = Pick(1, 3);
        for (int i = 0; i < polygons; ++i) {
            std::vector<HvPoint2<double>> corners;
            int const count = Pick(0, 9) == 0 ? Pick(1, 2) : Pick(3, 14);
            for (int k = 0; k < count; ++k) {
                corners.push_back(Corner(corners, -margin, size + margin, step));
            }
            list.Add(corners);
            if (Pick(0, 3) == 0) {
                list.Add(Shrunk(corners));
            }
        }
        return list;
    }

private:
    HvPoint2<double> Corner(std::vector<HvPoint2<double>> const& before, double low, double high,
                            double step)
    {
        auto const coordinate = [&] {
            double const value = PickReal(low, high);
            return step == 0.0 ? value : std::floor(value / step) * step;
        };
        HvPoint2<double> corner(coordinate(), coordinate());
        if (!before.empty()) {
            switch (Pick(0, 9)) {
            case 0:
                corner = before.back();
                break;
            case 1:
                corner =
                    before[static_cast<std::size_t>(Pick(0, static_cast<int>(before.size()) - 1))];
                break;
            case 2:
                corner.y = before.back().y;
                break;
            case 3:
                corner.x = before.back().x;
                break;
            case 4:  // a sliver
                corner = before.back() + HvPoint2<double>(PickReal(-1e-9, 1e-9), 0.0);
                break;
            default:
                break;
            }
        }
        return corner;
    }

    /// The polygon drawn towards its first corner, in the other direction: a hole by winding.
    static std::vector<HvPoint2<double>> Shrunk(std::vector<HvPoint2<double>> const& corners)
    {
        std::vector<HvPoint2<double>> hole;
        for (auto corner = corners.rbegin(); corner != corners.rend(); ++corner) {
            hole.push_back(corners.front() * 0.5 + *corner * 0.5);
        }
        return hole;
    }

    std::mt19937 engine_;
};

#endif
