// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A cubic cut into steps: what flattening a curve and locating a point on it share.

#ifndef HV_BEZIER_INTERNAL_CUBIC_STEPS_H
#define HV_BEZIER_INTERNAL_CUBIC_STEPS_H

#include <hv/bezier/internal/flattening_rule.h>
#include <hv/foundation/HvPoint2.h>
#include <hv/foundation/HvPoint3.h>

#include <cmath>

// A metric says what differs between the plane and space: the length of a vector and its distance
// from the direction of a chord.

/// The plane.
struct HvPlaneMetric {
    using Point = HvPoint2<double>;

    static double Length(Point const& v) { return std::hypot(v.x, v.y); }
    static double DistanceFromChord(Point const& v, Point const& chord, double chordLength)
    {
        return std::fabs(v.x * chord.y - v.y * chord.x) / chordLength;
    }
};

/// Space. Its lengths are roots of sums of squares, which is what decides near a digit's border.
struct HvSpaceMetric {
    using Point = HvPoint3<double>;

    static double Dot(Point const& a, Point const& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
    static double Length(Point const& v) { return std::sqrt(Dot(v, v)); }
    static double DistanceFromChord(Point const& v, Point const& chord, double chordLength)
    {
        double const along = Dot(v, chord) / (chordLength * chordLength);
        return Length(chord * along - v);
    }
};

/// The differences of the control points of a cubic.
template <class Metric>
struct HvCubicDifferences {
    using Point = typename Metric::Point;

    Point first;   ///< Q1 - Q0
    Point second;  ///< second difference at Q0
    Point next;    ///< second difference at Q1

    explicit HvCubicDifferences(Point const* cubic)
    {
        Point const middle = cubic[2] - cubic[1];
        first = cubic[1] - cubic[0];
        second = middle - first;
        next = (cubic[3] - cubic[2]) - middle;
    }
};

/// What a whole cubic and a tolerance decide.
template <class Metric>
struct HvCubicPlan {
    unsigned int levels;  ///< as HvFlattening_Levels gives them
    double coefficient;   ///< c of the doublings

    HvCubicPlan(typename Metric::Point const* cubic, double tolerance)
    {
        double const inverse = 1.0 / tolerance;
        HvCubicDifferences<Metric> const d(cubic);
        levels = HvFlattening_Levels(Metric::Length(d.next - d.second) * inverse);
        coefficient = 0.75 * inverse;
    }
};

/// The points of a cubic at equal steps of its parameter, by forward differences: after the set-up
/// each point costs additions only.
template <class Metric>
class HvCubicSteps {
public:
    using Point = typename Metric::Point;

    explicit HvCubicSteps(Point const* cubic) : cubic_(cubic), differences_(cubic) {}

    /// How often the step count is to be doubled: from the larger distance of the two second
    /// differences across the chord, or, where the ends meet, from the distance of the inner
    /// control points from the start.
    unsigned int Doublings(double coefficient) const
    {
        Point const chord = cubic_[3] - cubic_[0];
        double const length = Metric::Length(chord);
        double a;
        double b;
        if (length != 0.0) {
            a = Metric::DistanceFromChord(differences_.second, chord, length);
            b = Metric::DistanceFromChord(differences_.next, chord, length);
        } else {
            a = Metric::Length(differences_.first);
            b = Metric::Length(cubic_[2] - cubic_[0]);
        }
        double const deviation = a > b ? a : b;
        return deviation > 0.0 ? HvFlattening_Doublings(coefficient * deviation) : 0;
    }

    /// Stands at the start of the cubic, ready for 2^`doublings` steps; at most 63 doublings.
    void Start(unsigned int doublings)
    {
        // Powers of two far inside the exponent range: the products are what ldexp gives.
        double const step = std::ldexp(1.0, -static_cast<int>(doublings));
        double const step2 = step * step;
        double const step3 = step2 * step;
        Point const a = differences_.second * 3.0 * step2;
        Point const f = differences_.first * 3.0 * step;
        third_ = (differences_.next - differences_.second) * 6.0 * step3;
        secondStep_ = a * 2.0 + third_;
        firstStep_ = a + f + third_ * 0.16666666666666666;
        point_ = cubic_[0];
    }

    /// Takes one step and gives the point reached.
    Point const& Next()
    {
        point_ = point_ + firstStep_;
        firstStep_ = firstStep_ + secondStep_;
        secondStep_ = secondStep_ + third_;
        return point_;
    }

private:
    Point const* cubic_;
    HvCubicDifferences<Metric> differences_;
    Point point_;
    Point firstStep_;
    Point secondStep_;
    Point third_;
};

#endif
