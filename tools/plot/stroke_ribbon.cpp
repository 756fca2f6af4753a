// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A line of changing width, as polygons.

#include <tools/plot/stroke_ribbon.h>

namespace {

using Point = HvPoint2<double>;

/// A turn whose cosine is below this has a gap on its outer side that is seen: 20 degrees.
constexpr double kLeastSeenTurnCos = 0.94;

Point Left(Point const& direction)
{
    return {-direction.y, direction.x};
}

}  // namespace

Ribbon Ribbon_Make(std::vector<RibbonPoint> const& line)
{
    Ribbon ribbon;
    std::vector<Point> right;
    Point before;
    RibbonPoint at = line.front();
    bool hasDirection = false;
    for (RibbonPoint const& next : line) {
        double const length = HvPoint2_LengthAB(at.place, next.place);
        if (!(length > 0.0)) {
            continue;
        }
        Point const direction = (next.place - at.place) * (1.0 / length);
        if (!hasDirection || HvPoint2_AdotB(before, direction) < kLeastSeenTurnCos) {
            ribbon.discs.push_back({at.place, at.width / 2});
        }
        // Each step has its own two corners at both of its ends: no miter leaps out at a turn.
        for (RibbonPoint const& end : {at, next}) {
            Point const side = Left(direction) * (end.width / 2);
            ribbon.outline.push_back(end.place + side);
            right.push_back(end.place - side);
        }
        before = direction;
        hasDirection = true;
        at = next;
    }
    ribbon.discs.push_back({at.place, at.width / 2});
    ribbon.outline.insert(ribbon.outline.end(), right.rbegin(), right.rend());
    return ribbon;
}
