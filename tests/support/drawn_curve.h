// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A curve as a view draws it, to see where two pictures differ.

#ifndef TESTS_SUPPORT_DRAWN_CURVE_H
#define TESTS_SUPPORT_DRAWN_CURVE_H

#include <hv/fcurve/HvBaseFCurve.h>
#include <hv/foundation/HvBoolArray.h>
#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvPoint2.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/rotation/HvTransfo4.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

/// The edges of the flattened curve over [left, right], jumps included, extrapolation too. A curve
/// that cycles too often in there is not drawn, and differs from nothing.
class DrawnCurve {
public:
    using Point = HvPoint2<double>;

    DrawnCurve(HvBaseFCurve const& curve, double left, double right)
    {
        // The angles of a rotation swing over hundreds of degrees, and are slow to draw.
        bool const isRotation = curve.GetKind() == HvBaseFCurve::Quaternion;
        if (Cycles(curve, right - left) > (isRotation ? 4 : kMostCycles)) {
            return;
        }
        flatness_ = isRotation ? 0.1 : 1e-3;
        constexpr double kEverywhere = std::numeric_limits<double>::max();
        HvPoint2dArray points;
        HvPointTagArray tags;
        HvBoolArray flags;
        curve.FlattenFromTo({left, -kEverywhere, right, kEverywhere}, HvTransfo4(), flatness_,
                            points, tags, flags, 0);
        // A rotation that turns a million times in the view is not drawn either.
        isDrawn_ = !isRotation || points.Size() != 0;
        for (unsigned int i = 0; i + 1 < points.Size(); ++i) {
            if (tags[i] != HvPointTagEnd) {
                edges_.push_back({points[i], points[i + 1]});
            }
        }
    }

    /// Whether a point outside `extent` is drawn here and not in `other`; `where` becomes the
    /// first. Each edge is asked at its start and on its way.
    bool DiffersOutside(HvExtent2<double> const& extent, DrawnCurve const& other,
                        Point& where) const
    {
        constexpr int kPlaces = 3;
        if (!isDrawn_ || !other.isDrawn_) {
            return false;
        }
        for (Edge const& edge : edges_) {
            for (int k = 0; k < kPlaces; ++k) {
                where = edge.from + (edge.to - edge.from) * (double(k) / kPlaces);
                if (!extent.Contains(where) && !other.Shows(where)) {
                    return true;
                }
            }
        }
        return false;
    }

private:
    struct Edge {
        Point from;
        Point to;
    };

    static constexpr double kMostCycles = 1000;
    /// Two polylines within the flatness of one curve are within twice that of each other; the rest
    /// is for the rounding of values that an extrapolation carries far away.
    double Reach() const { return 2.5 * flatness_; }

    /// How often the keys of a curve that cycles fit into a width.
    static double Cycles(HvBaseFCurve const& curve, double width)
    {
        double first = 0;
        double last = 0;
        HvBaseFCurve::ExtrapolationMethod const method = curve.GetExtrapolationMethod();
        bool const doesCycle = method == HvBaseFCurve::CycleExtrapolation ||
                               method == HvBaseFCurve::RelativeCycleExtrapolation;
        if (!doesCycle || curve.GetNumKeys() < 2) {
            return 0;
        }
        curve.GetKeyParameter(0, first);
        curve.GetKeyParameter(curve.GetNumKeys() - 1, last);
        return width / (last - first);
    }

    bool Shows(Point const& P) const
    {
        auto edge =
            std::lower_bound(edges_.begin(), edges_.end(), P.x - Reach(),
                             [](Edge const& candidate, double x) { return candidate.to.x < x; });
        for (; edge != edges_.end() && edge->from.x <= P.x + Reach(); ++edge) {
            if (Distance(P, *edge) <= Reach()) {
                return true;
            }
        }
        return false;
    }

    static double Distance(Point const& P, Edge const& edge)
    {
        Point const way = edge.to - edge.from;
        Point const toP = P - edge.from;
        double const squared = way.x * way.x + way.y * way.y;
        double const t = squared > 0 ? (toP.x * way.x + toP.y * way.y) / squared : 0;
        return HvPoint2_Length(toP - way * std::min(1.0, std::max(0.0, t)));
    }

    bool isDrawn_ = false;
    double flatness_ = 0;
    std::vector<Edge> edges_;
};

#endif
