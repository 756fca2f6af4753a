// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The outlines of shapes that are given by numbers.

#include <tools/play/evaluation/shape_outlines.h>

#include <hv/shape/HvOval2f.h>
#include <hv/shape/HvPath2fSink.h>
#include <hv/shape/HvRect2f.h>

#include <algorithm>
#include <cmath>

namespace {

using Point = HvPoint2<double>;

constexpr double kTurn = 6.283185307179586;
/// More points of a star could not be told apart.
constexpr double kMostStarPoints = 1000.0;
/// How far the handles of a quarter of a circle reach, as a share of its radius.
constexpr double kQuarterCircle = 0.5522847498;

HvPoint2<float> Narrow(Point const& p)
{
    return HvPoint2<float>(p);
}

/// Corners in such an order that the paths of rectangles and ovals run clockwise, from the right
/// end and from the middle of the upper side.
HvParallelogram2f BoxOf(Point const& centre, Point const& size)
{
    Point const low = centre - size * 0.5;
    Point const high = centre + size * 0.5;
    return {Narrow(Point(low.x, high.y)), Narrow(low), Narrow(high)};
}

/// The same outline from the same point, run through the other way.
HvPath2f Reversed(HvPath2f const& path)
{
    unsigned int const count = path.NumPoints();
    HvPath2f reversed(count + 1);
    HvPath2fSink sink(reversed);
    if (count == 0) {
        return reversed;
    }
    reversed.Moveto(path.GetPoint(count - 1));
    for (unsigned int end = count - 1; end > 0;) {
        unsigned int const start = path.StartOfSegment(end);
        if (end - start == 3) {
            reversed.Curveto(path.GetPoint(end - 1), path.GetPoint(end - 2), path.GetPoint(start));
        } else {
            reversed.Lineto(path.GetPoint(start));
        }
        end = start;
    }
    if (path.IsSubpathClosed(0) != 0) {
        reversed.Closeto();
    }
    return reversed;
}

HvPath2f Directed(HvPath2f path, bool isReversed)
{
    return isReversed ? Reversed(path) : path;
}

/// A rectangle with corners of quarters of circles, from the end of the upper side.
HvPath2f RoundRect(Point const& centre, Point const& half, double radius)
{
    HvPath2f path(17u);
    // The corners in order, and the directions in which the sides arrive at them.
    Point const corners[] = {
        {half.x, -half.y}, {half.x, half.y}, {-half.x, half.y}, {-half.x, -half.y}};
    Point const arriving[] = {{1, 0}, {0, 1}, {-1, 0}, {0, -1}};
    double const handle = radius * (1.0 - kQuarterCircle);
    path.Moveto(Narrow(centre + corners[0] + Point(0, radius)));
    for (int i = 1; i <= 4; ++i) {
        Point const corner = centre + corners[i % 4];
        Point const in = arriving[i % 4];
        Point const out = arriving[(i + 1) % 4];
        path.Lineto(Narrow(corner - in * radius));
        path.Curveto(Narrow(corner - in * handle), Narrow(corner + out * handle),
                     Narrow(corner + out * radius));
    }
    path.Closeto();
    return path;
}

}  // namespace

HvPath2f ShapeOutline_Of(SceneOutline const& shape, double frame)
{
    return Directed(shape.outline.At(frame), shape.isReversed);
}

HvPath2f ShapeOutline_Of(SceneRect const& shape, double frame)
{
    Point const centre = shape.centre.At(frame);
    Point const size = shape.size.At(frame);
    Point const half(std::fabs(size.x) / 2, std::fabs(size.y) / 2);
    double const radius = std::min({shape.radius.At(frame), half.x, half.y});
    if (radius > 0.0) {
        return Directed(RoundRect(centre, half, radius), shape.isReversed);
    }
    HvParallelogram2f const box = BoxOf(centre, half * 2.0);
    return Directed(HvPath2f(HvRect2f(box.p0, box.p1, box.p2)), shape.isReversed);
}

HvPath2f ShapeOutline_Of(SceneEllipse const& shape, double frame)
{
    HvParallelogram2f const box = BoxOf(shape.centre.At(frame), shape.size.At(frame));
    HvPath2f path(13u);
    HvOval2f(box.p0, box.p1, box.p2).SetupPathRep(path);
    return Directed(std::move(path), shape.isReversed);
}

HvPath2f ShapeOutline_Of(SceneStar const& shape, double frame)
{
    double const wanted = std::floor(shape.numPoints.At(frame));
    int const corners = static_cast<int>(wanted >= 1.0 ? std::min(wanted, kMostStarPoints) : 0.0);
    int const count = shape.isPolygon ? corners : 2 * corners;
    HvPath2f path(static_cast<unsigned int>(3 * count + 1));
    if (count < 3) {
        return path;
    }
    Point const centre = shape.centre.At(frame);
    double const radii[] = {shape.outerRadius.At(frame), shape.innerRadius.At(frame)};
    double const roundness[] = {shape.outerRoundness.At(frame) * 0.01,
                                shape.innerRoundness.At(frame) * 0.01};
    double const start = (shape.rotation.At(frame) - 90.0) / 360.0 * kTurn;
    double const step = kTurn / count * (shape.isReversed ? -1.0 : 1.0);
    // A point, and the handle behind it: the one before it is its mirror image.
    auto const cornerAt = [&](int i, Point& handle) {
        int const ring = shape.isPolygon ? 0 : i % 2;
        double const angle = start + step * (i % count);
        Point const direction(std::cos(angle), std::sin(angle));
        double const reach =
            kTurn * radii[ring] / (shape.isPolygon ? 4 : 2) / count * roundness[ring];
        handle = Point(-direction.y, direction.x) * (shape.isReversed ? -reach : reach);
        return centre + direction * radii[ring];
    };
    Point handle;
    Point corner = cornerAt(0, handle);
    path.Moveto(Narrow(corner));
    for (int i = 1; i <= count; ++i) {
        Point nextHandle;
        Point const next = cornerAt(i, nextHandle);
        path.Curveto(Narrow(corner + handle), Narrow(next - nextHandle), Narrow(next));
        corner = next;
        handle = nextHandle;
    }
    path.Closeto();
    return path;
}
