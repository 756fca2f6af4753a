// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The page of strokes that were built from the points of a pen.

#include "PicturePage.h"

#include <hv/foundation/saturate.h>
#include <hv/pathbuild/HvBezierFitPathBuilder.h>
#include <hv/pathbuild/HvCubicPathBuilder.h>
#include <hv/pathbuild/HvLinearPathBuilder.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvPath2f.h>

#include <cmath>
#include <memory>

namespace {

using Point = HvPoint2<float>;
using Points = std::vector<Point>;

constexpr int kSide = 84;
/// Asked for samples after so many points: all at once.
constexpr unsigned int kAtOnce = 1000;

struct Stroke {
    char const* name;
    Points points;
};

// The strokes are made of sums and products alone, which are the same on every machine.

Point At(double x, double y)
{
    return Point(static_cast<float>(x), static_cast<float>(y));
}

/// Two arches of a wave.
Points Wave()
{
    Points points;
    for (int i = 0; i <= 34; ++i) {
        double const u = (i % 17) / 8.5 - 1.0;
        double const arch = 28.0 * (1.0 - u * u);
        points.push_back(At(8 + 2 * i, i < 17 ? 42 - arch : 42 + arch));
    }
    return points;
}

/// A sharp corner between two straight runs.
Points Corner()
{
    Points points;
    for (int i = 0; i <= 24; ++i) {
        points.push_back(i <= 12 ? At(10 + 5 * i, 68 - 4 * i) : At(70 - 5 * (i - 12), 20));
    }
    return points;
}

/// A whole turn, and a bit more.
Points Loop()
{
    Points points;
    for (int i = -20; i <= 24; ++i) {
        double const t = i / 8.0;  // the tangent of half the angle
        double const d = 1.0 + t * t;
        points.push_back(At(42 + 30 * 2 * t / d, 42 + 30 * (1 - t * t) / d));
    }
    return points;
}

/// A few points, far apart.
Points Sparse()
{
    return {{8, 70}, {24, 14}, {40, 66}, {56, 20}, {76, 62}};
}

/// A straight line under a shaking hand.
Points Shaky()
{
    Points points;
    unsigned int noise = 1;
    for (int i = 0; i <= 34; ++i) {
        noise = noise * 1664525u + 1013904223u;
        points.push_back(At(8 + 2 * i, 20 + i + (noise >> 28) * 0.25));
    }
    return points;
}

/// Short steps, a jump, short steps.
Points Jump()
{
    Points points;
    for (int i = 0; i < 9; ++i) {
        points.push_back(At(8 + 2 * i, 24 - 0.25 * i * i));
    }
    for (int i = 0; i < 9; ++i) {
        points.push_back(At(60 + 2 * i, 60 + 0.25 * i * i));
    }
    return points;
}

enum class Kind {
    Linear,
    Cubic,
    Fit
};

std::unique_ptr<HvBasePathBuilder> MakeBuilder(Kind kind, HvGC const& gc, HvPath2f& path)
{
    switch (kind) {
    case Kind::Linear:
        return std::make_unique<HvLinearPathBuilder>(gc, &path);
    case Kind::Cubic:
        return std::make_unique<HvCubicPathBuilder>(gc, &path);
    default:
        return std::make_unique<HvBezierFitPathBuilder>(gc, &path, 40.0, 20.0, 1.0, 4u);
    }
}

/// Draws a stroke live, its samples as white pixels on the grey line of its path.
void DrawStroke(Points const& points, Kind kind, unsigned int every, int closed,
                HvUByteRaster& cell)
{
    HvGC gc;
    gc.sampleSpacing = 4.0;
    gc.flatness = 0.25;
    HvPath2f path(16u);
    std::unique_ptr<HvBasePathBuilder> const builder = MakeBuilder(kind, gc, path);
    Points samples;
    auto const keep = [&samples](HvPoint2fArray const* added) {
        samples.insert(samples.end(), added->begin(), added->end());
    };
    builder->StartSubpath(points[0]);
    for (unsigned int i = 1; i + 1 < points.size(); ++i) {
        builder->AddInputPoint(points[i], 0);
        if (i % every == 0) {
            keep(builder->GetTrailingSamples());
        }
    }
    keep(builder->EndSubpath(points.back(), closed));

    HvPath2f outline(1u);
    gc.strokeWidth = 2.0;
    gc.capStyle = 0;
    gc.joinStyle = 2;
    path.GetStrokeOutline(gc, outline);
    gc.maxCoverage = 0.5;
    outline.AAFill(gc, cell, nullptr);
    for (Point const& p : samples) {
        int const x = HvSaturate_To<int>(std::floor(p.x));
        int const y = HvSaturate_To<int>(std::floor(p.y));
        if (x >= 0 && y >= 0 && x < kSide && y < kSide) {
            cell.data[y * cell.width + x] = 255;
        }
    }
}

}  // namespace

PicturePage PenPage()
{
    struct Way {
        char const* name;
        Kind kind;
        unsigned int every;
        int closed;
    };
    Way const ways[] = {
        {"lines", Kind::Linear, kAtOnce, 0},    {"cubics, every 5 points", Kind::Cubic, 5, 0},
        {"fit, every point", Kind::Fit, 1, 0},  {"fit, every 5 points", Kind::Fit, 5, 0},
        {"fit at once", Kind::Fit, kAtOnce, 0}, {"fit at once, closed", Kind::Fit, kAtOnce, 1}};
    Stroke const strokes[] = {{"wave", Wave()},     {"corner", Corner()}, {"loop", Loop()},
                              {"sparse", Sparse()}, {"shaky", Shaky()},   {"jump", Jump()}};
    PicturePage page("pen_strokes", 6, 6, kSide);
    for (Stroke const& stroke : strokes) {
        for (Way const& way : ways) {
            page.Add(std::string(stroke.name) + ", " + way.name, [&](HvUByteRaster& cell) {
                DrawStroke(stroke.points, way.kind, way.every, way.closed, cell);
            });
        }
    }
    return page;
}
