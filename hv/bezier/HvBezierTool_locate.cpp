// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The point of a cubic nearest to a given point.

#include <hv/bezier/HvBezierTool_locate.h>

#include <hv/bezier/cubic_split.h>
#include <hv/bezier/internal/cubic_steps.h>

#include <algorithm>

namespace {

bool IsInRange(double value, double a, double b, double c, double d, double reach)
{
    return value >= std::min({a, b, c, d}) - reach && std::max({a, b, c, d}) + reach >= value;
}

/// Whether a point lies in the control points' box, grown by `reach` on every side; NaN does not.
bool IsNearControls(HvPoint2<double> const& p, HvPoint2<double> const* c, double reach)
{
    return IsInRange(p.x, c[0].x, c[1].x, c[2].x, c[3].x, reach) &&
           IsInRange(p.y, c[0].y, c[1].y, c[2].y, c[3].y, reach);
}

bool IsNearControls(HvPoint3<double> const& p, HvPoint3<double> const* c, double reach)
{
    return IsInRange(p.x, c[0].x, c[1].x, c[2].x, c[3].x, reach) &&
           IsInRange(p.y, c[0].y, c[1].y, c[2].y, c[3].y, reach) &&
           IsInRange(p.z, c[0].z, c[1].z, c[2].z, c[3].z, reach);
}

bool FindClosest(HvPoint2<double> const& p, HvPoint2<double> const& a, HvPoint2<double> const& b,
                 double limit, double& squaredDistance, double& parameter)
{
    return HvPoint2_FindClosestPointOnLineSegment(p, a, b, limit, squaredDistance, parameter) != 0;
}

/// The same in space: a segment shorter than the general tolerance is its start, and the parameter
/// is clamped to the segment.
bool FindClosest(HvPoint3<double> const& p, HvPoint3<double> const& a, HvPoint3<double> const& b,
                 double limit, double& squaredDistance, double& parameter)
{
    HvPoint3<double> const ab = b - a;
    double const squaredLength = HvPoint3_SquaredLength(ab);
    double const along =
        kHvGeometryTolerance > squaredLength ? 0.0 : HvSpaceMetric::Dot(ab, p - a) / squaredLength;
    // A NaN passes on: its distance is NaN too, which is never nearer than another.
    double const u = along <= 0.0 ? 0.0 : along >= 1.0 ? 1.0 : along;
    HvPoint3<double> const closest = u == 1.0 ? b : a + ab * u;
    double const d = HvPoint3_SquaredLengthAB(closest, p);
    if (d > limit) {
        return false;
    }
    squaredDistance = d;
    parameter = u;
    return true;
}

/// The walk over the polyline of a cubic: as in flattening, but each step is a segment to measure.
template <class Metric>
class Locator {
public:
    using Point = typename Metric::Point;

    /// @param reach  margin of the control boxes, and at the same time the limit of the squared
    ///               distance from a segment.
    Locator(Point const& point, double reach) : point_(point), reach_(reach) {}

    /// Whether something was found and no piece had more steps than are walked.
    bool Locate(Point const* cubic, double tolerance)
    {
        HvCubicPlan<Metric> const plan(cubic, tolerance);
        coefficient_ = plan.coefficient;
        squaredDistance_ = 2.0 * reach_;
        if (plan.levels < 2) {
            Leaf(cubic, 0.0, 1.0);
        } else {
            Halves(cubic, plan.levels - 1, 0.0, 1.0);
        }
        return found_ && !refused_;
    }

    double SquaredDistance() const { return squaredDistance_; }
    double Parameter() const { return parameter_; }

private:
    void Halves(Point const* cubic, unsigned int depth, double t0, double t1)
    {
        Point halves[7];
        HvCubic_Halve(cubic, halves);
        double const middle = (t1 - t0) * 0.5 + t0;
        Half(halves, depth - 1, t0, middle);
        Half(halves + 3, depth - 1, middle, t1);
    }

    /// The pieces at the end of the halving are walked without a look at their boxes.
    void Half(Point const* cubic, unsigned int depth, double t0, double t1)
    {
        if (depth == 0) {
            Leaf(cubic, t0, t1);
        } else if (IsNearControls(point_, cubic, reach_)) {
            Halves(cubic, depth, t0, t1);
        }
    }

    void Leaf(Point const* cubic, double t0, double t1)
    {
        HvCubicSteps<Metric> steps(cubic);
        unsigned int const doublings = steps.Doublings(coefficient_);
        std::uint64_t const count = HvFlattening_Steps(doublings);
        if (refused_ || count > kHvArrayMaxCapacity) {
            refused_ = true;
            return;
        }
        double const dt = (t1 - t0) / static_cast<double>(count);
        steps.Start(doublings);
        Point from = cubic[0];
        for (std::uint64_t i = 1; i <= count; ++i) {
            Point const to = steps.Next();
            double d = 0.0;
            double u = 0.0;
            if (FindClosest(point_, from, to, reach_, d, u) && squaredDistance_ > d) {
                parameter_ = (static_cast<double>(i) + u - 1.0) * dt + t0;
                squaredDistance_ = d;
                found_ = true;
            }
            from = to;
        }
    }

    Point point_;
    double reach_;
    double coefficient_ = 0.0;
    double squaredDistance_ = 0.0;
    double parameter_ = 0.0;
    bool found_ = false;
    bool refused_ = false;
};

template <class Metric>
int LocatePoint(typename Metric::Point const* cubic, double tolerance,
                typename Metric::Point const& point, double maxSquaredDistance,
                double& squaredDistance, double& parameter)
{
    // The square of one length and another squared length: hosts have tuned their limits to this
    // reach, although it serves as a plain margin too.
    double const reach = tolerance * tolerance + maxSquaredDistance;
    if (!IsNearControls(point, cubic, reach)) {
        return 0;
    }
    Locator<Metric> locator(point, reach);
    if (!locator.Locate(cubic, tolerance) || locator.SquaredDistance() > maxSquaredDistance) {
        return 0;
    }
    squaredDistance = locator.SquaredDistance();
    parameter = locator.Parameter();
    return 1;
}

}  // namespace

int HvBezierTool_LocatePoint2d(HvPoint2<double> const* cubic, double tolerance,
                               HvPoint2<double> const& point, double maxSquaredDistance,
                               double& squaredDistance, double& parameter)
{
    return LocatePoint<HvPlaneMetric>(cubic, tolerance, point, maxSquaredDistance, squaredDistance,
                                      parameter);
}

int HvBezierTool_LocatePoint2f(HvPoint2<float> const* cubic, double tolerance,
                               HvPoint2<float> const& point, double maxSquaredDistance,
                               double& squaredDistance, double& parameter)
{
    HvPoint2<double> wide[4];
    std::transform(cubic, cubic + 4, wide,
                   [](HvPoint2<float> const& p) { return HvPoint2<double>(p); });
    return HvBezierTool_LocatePoint2d(wide, tolerance, HvPoint2<double>(point), maxSquaredDistance,
                                      squaredDistance, parameter);
}

int HvBezierTool_LocatePoint3d(HvPoint3<double> const* cubic, double tolerance,
                               HvPoint3<double> const& point, double maxSquaredDistance,
                               double& squaredDistance, double& parameter)
{
    return LocatePoint<HvSpaceMetric>(cubic, tolerance, point, maxSquaredDistance, squaredDistance,
                                      parameter);
}
