// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Positions on a motion path at times.

#include <hv/foundation/polyline_eval.h>
#include <hv/foundation/saturate.h>
#include <hv/motionpath/HvMotionPath3d.h>
#include <hv/motionpath/internal/HvMotionPath3dImpl.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>

namespace {

/// A segment shorter than this has no direction to travel: the object rests at its start.
constexpr double kLeastLength = 1e-7;

/// Samples that a sequence may have at most; throws std::bad_alloc where no array holds them.
unsigned int MostSamples(double first, double last, double step)
{
    // Not the quotient of the difference, which may overflow where the quotients do not. Two more:
    // the sample at `first`, and one that rounding may bring down to `last`.
    double const count = std::floor(last / step - first / step) + 2.0;
    if (!(count <= static_cast<double>(kHvArrayMaxCapacity))) {
        throw std::bad_alloc();
    }
    return HvSaturate_To<unsigned int>(count);
}

}  // namespace

int IsInEXtent(HvPoint3<double> const& a, double radius, HvPoint3<double> const& b)
{
    return radius >= std::fabs(a.x - b.x) && radius >= std::fabs(a.y - b.y) &&
                   radius >= std::fabs(a.z - b.z)
               ? 1
               : 0;
}

// Finding.

unsigned int HvMotionPath3dImpl::LocateTimeValue(double t, int& exact) const
{
    exact = 0;
    if (std::isnan(t)) {
        return 0;
    }
    auto const above = std::upper_bound(times.begin(), times.end(), t);
    unsigned int const r = static_cast<unsigned int>(above - times.begin());
    exact = r > 0 && times[r - 1] == t ? 1 : 0;
    return r;
}

void HvMotionPath3dImpl::GetBracketingIndices(double t, unsigned int& left, int& leftValid,
                                              unsigned int& right, int& rightValid) const
{
    leftValid = rightValid = NumNodes() == 0 ? 0 : 1;
    if (NumNodes() == 0) {
        return;
    }
    int exact;
    unsigned int const r = LocateTimeValue(t, exact);
    if (r == 0) {
        right = 0;
        leftValid = 0;
    } else if (exact != 0) {
        left = right = 3 * r - 3;
    } else if (r == NumNodes()) {
        left = NumPoints() - 1;
        rightValid = 0;
    } else {
        left = 3 * r - 3;
        right = 3 * r;
    }
}

int HvMotionPath3dImpl::GetNodeIndexFromInitialTime(double t, double tolerance,
                                                    unsigned int& point) const
{
    if (NumNodes() == 0) {
        return 0;
    }
    int exact;
    unsigned int const r = LocateTimeValue(t, exact);
    bool const nearLeft = r > 0 && (exact != 0 || times[r - 1] >= t - tolerance);
    bool const nearRight = exact == 0 && r < NumNodes() && t + tolerance > times[r];
    if (!nearLeft && !nearRight) {
        return 0;
    }
    bool const takesRight = nearRight && (!nearLeft || t - times[r - 1] > times[r] - t);
    point = takesRight ? 3 * r : 3 * r - 3;
    return 1;
}

int HvMotionPath3dImpl::GetClosestControlPointIndex(Point const& p, double radius,
                                                    unsigned int& point) const
{
    double best = std::numeric_limits<double>::max();
    int found = 0;
    for (unsigned int i = 0; i < NumPoints(); ++i) {
        if (IsInEXtent(p, radius, points[i]) == 0) {
            continue;
        }
        double const distance = HvPoint3_SquaredLengthAB(p, points[i]);
        if (distance < best) {
            best = distance;
            point = i;
            found = 1;
        }
    }
    return found;
}

// Evaluating.

void HvMotionPath3dImpl::Eval(double t, double tolerance, HvSegmentPolylines& lines,
                              Point& out) const
{
    if (NumNodes() == 0) {
        return;
    }
    int exact;
    unsigned int const r = LocateTimeValue(t, exact);
    if (r == 0) {
        out = points[0];
        return;
    }
    unsigned int const s = 3 * r - 3;
    if (exact != 0 || r == NumNodes() || tangents[r - 1].right == HvMotionPath3d::TangentStep) {
        out = points[s];  // at a node, behind the last one, or held
        return;
    }
    if (IsLine(r - 1)) {
        double const u = (t - times[r - 1]) / (times[r] - times[r - 1]);
        out = (points[s + 3] - points[s]) * u + points[s];
        return;
    }
    EvalOnCubic(s, t, tolerance, lines, out);
}

void HvMotionPath3dImpl::EvalSequence(double first, double last, double step, double tolerance,
                                      HvPoint3dArray& out) const
{
    if (!(step > 0.0) || !(first <= last) || NumNodes() == 0) {
        return;
    }
    unsigned int const before = out.Size();
    unsigned int const most = MostSamples(first, last, step);
    out.Reserve(HvArrayCapacity_GrownSize(before, most));
    try {
        Point p;
        for (unsigned int i = 0; i < most; ++i) {
            // The first time stands alone: 0 times an infinite step would be NaN.
            double const t = i == 0 ? first : first + i * step;
            if (t > last) {
                break;
            }
            Eval(t, tolerance, p);
            out.Add(p);
        }
    } catch (...) {
        out.Chop(before);
        throw;
    }
}

int HvMotionPath3dImpl::EvalOnCubic(unsigned int s, double t, double tolerance,
                                    HvSegmentPolylines& lines, Point& out) const
{
    double const length = lines.Length(points, s / 3, tolerance);
    if (std::fabs(length) < kLeastLength) {
        out = points[s];
        return 0;
    }
    double const distance = DistanceAlong(s / 3, t, length, tolerance, lines);
    HvSegmentPolyline const& line = lines.Polyline(points, s / 3, tolerance);
    HvPoint3dArraySingleComponent_ComputePosition(line.points, line.chord, distance, out);
    return 1;
}

// The distance travelled d(t) is the cubic polynomial with d(t0) = 0, d'(t0) = v0, d(t1) = L and
// d'(t1) = v1. With time counted from t0, h = 1 / (t1 - t0) and the mean speed m = L h:
//
//     d = v0 s + h (3 m - 2 v0 - v1) s^2 + h^2 (v0 + v1 - 2 m) s^3,    s = t - t0
//
// Counted from 0 the coefficients would cancel more and more digits the later the segment comes.

double HvMotionPath3dImpl::DistanceAlong(unsigned int segment, double t, double length,
                                         double tolerance, HvSegmentPolylines& lines) const
{
    TangentInfo const start = tangents[segment].right;
    TangentInfo const end = tangents[segment + 1].left;
    double const duration = times[segment + 1] - times[segment];
    double const since = t - times[segment];
    if (start == HvMotionPath3d::TangentLinear && end == HvMotionPath3d::TangentLinear) {
        return length * (since / duration);
    }
    double const h = 1.0 / duration;
    double const m = length * h;
    // Linear at the start alone is no even speed: only a linear end, or two of them, count.
    double const v0 =
        start == HvMotionPath3d::TangentStop ? 0.0 : NodeSpeed(segment, tolerance, lines);
    double v1 = 0.0;
    if (end == HvMotionPath3d::TangentLinear) {
        v1 = m;
    } else if (end != HvMotionPath3d::TangentStop) {
        v1 = NodeSpeed(segment + 1, tolerance, lines);
    }
    double const c2 = h * (3.0 * m - 2.0 * v0 - v1);
    double const c3 = h * h * (v0 + v1 - 2.0 * m);
    return std::clamp(((c3 * since + c2) * since + v0) * since, 0.0, length);
}

/// The speed through a node: the mean over the two segments that meet there, 0 at the path's ends.
double HvMotionPath3dImpl::NodeSpeed(unsigned int node, double tolerance,
                                     HvSegmentPolylines& lines) const
{
    if (node == 0 || node + 1 == NumNodes()) {
        return 0.0;
    }
    double const length =
        lines.Length(points, node - 1, tolerance) + lines.Length(points, node, tolerance);
    return length / (times[node + 1] - times[node - 1]);
}

// The path.

void HvMotionPath3d::GetBracketingIndices(double t, double, unsigned int& left, int& leftValid,
                                          unsigned int& right, int& rightValid, int) const
{
    CXQCriticalSectionLock const lock(section);
    impl->GetBracketingIndices(t, left, leftValid, right, rightValid);
}

int HvMotionPath3d::GetNodeIndexFromInitialTime(double t, double tolerance,
                                                unsigned int& point) const
{
    CXQCriticalSectionLock const lock(section);
    return impl->GetNodeIndexFromInitialTime(t, tolerance, point);
}

int HvMotionPath3d::GetClosestControlPointIndex(HvPoint3<double> const& p, double radius,
                                                unsigned int& point) const
{
    CXQCriticalSectionLock const lock(section);
    return impl->GetClosestControlPointIndex(p, radius, point);
}

void HvMotionPath3d::Eval(double t, double tolerance, HvPoint3<double>& out, int) const
{
    CXQCriticalSectionLock const lock(section);
    impl->Eval(t, tolerance, out);
}

void HvMotionPath3d::EvalSequence(double first, double last, double step, double tolerance,
                                  HvPoint3dArray& out, int) const
{
    CXQCriticalSectionLock const lock(section);
    impl->EvalSequence(first, last, step, tolerance, out);
}
