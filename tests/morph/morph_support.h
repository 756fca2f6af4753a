// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Outlines for morphs, and how far two of them are apart.

#ifndef TESTS_MORPH_MORPH_SUPPORT_H
#define TESTS_MORPH_MORPH_SUPPORT_H

#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPoint2fArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/pathbuild/HvPath2fProp1d.h>
#include <hv/shape/HvGC.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <vector>

using Points = std::initializer_list<HvPoint2<float>>;

/// A context whose samples are `spacing` apart.
inline HvGC SpacedContext(double spacing)
{
    HvGC gc;
    gc.minPointGap = spacing;
    gc.propFlatness = 1e-6;
    return gc;
}

inline void AddPolyline(HvPath2f& path, Points points)
{
    bool isFirst = true;
    for (HvPoint2<float> const& point : points) {
        isFirst ? path.Moveto(point) : path.Lineto(point);
        isFirst = false;
    }
}

inline HvPath2fProp1d Polyline(Points points)
{
    HvPath2fProp1d path(0);
    AddPolyline(path, points);
    return path;
}

inline HvPath2fProp1d ClosedPolyline(Points points)
{
    HvPath2fProp1d path = Polyline(points);
    path.Lineto(*points.begin());
    path.Closeto();
    return path;
}

/// A closed circle of four cubics.
inline HvPath2fProp1d Circle(float x, float y, float r)
{
    float const h = 0.5522847f * r;
    HvPath2fProp1d path(0);
    path.Moveto({x + r, y});
    path.Curveto({x + r, y + h}, {x + h, y + r}, {x, y + r});
    path.Curveto({x - h, y + r}, {x - r, y + h}, {x - r, y});
    path.Curveto({x - r, y - h}, {x - h, y - r}, {x, y - r});
    path.Curveto({x + h, y - r}, {x + r, y - h}, {x + r, y});
    path.Closeto();
    return path;
}

/// The points of an outline, close to each other.
inline std::vector<HvPoint2<double>> DensePoints(HvPath2f const& path)
{
    HvPoint2fArray points;
    HvPointTagArray tags;
    path.AltFlatten(0.01, points, tags);
    std::vector<HvPoint2<double>> dense;
    for (unsigned int i = 0; i + 1 < points.Size(); ++i) {
        HvPoint2<double> const a(points[i]);
        HvPoint2<double> const b(points[i + 1]);
        if (tags[i] == HvPointTagEnd) {
            continue;
        }
        constexpr int kParts = 8;
        for (int k = 0; k <= kParts; ++k) {
            dense.push_back(a + (b - a) * (static_cast<double>(k) / kParts));
        }
    }
    return dense;
}

/// The greatest distance of a point of one outline from the other (directed Hausdorff distance).
inline double GreatestDistance(HvPath2f const& from, HvPath2f const& to)
{
    std::vector<HvPoint2<double>> const targets = DensePoints(to);
    double greatest = 0;
    for (HvPoint2<double> const& p : DensePoints(from)) {
        double least = HUGE_VAL;
        for (HvPoint2<double> const& q : targets) {
            least = std::min(least, std::hypot(p.x - q.x, p.y - q.y));
        }
        greatest = std::max(greatest, least);
    }
    return greatest;
}

/// Whether two paths have the same points and the same structure, to the last bit.
inline bool AreSame(HvPath2f const& a, HvPath2f const& b)
{
    std::vector<unsigned char> first(a.GetBufferSize());
    std::vector<unsigned char> second(b.GetBufferSize());
    a.WriteToBuffer(first.data());
    b.WriteToBuffer(second.data());
    return first == second;
}

inline HvPoint2<float> LastPoint(HvPath2f const& path)
{
    return path.GetPoint(path.NumPoints() - 1);
}

#endif
