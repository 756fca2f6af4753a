// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Where a polyline turns a corner, and which way it goes elsewhere, in spite of noise.

#ifndef HV_BEZIER_INTERNAL_FIT_DIRECTIONS_H
#define HV_BEZIER_INTERNAL_FIT_DIRECTIONS_H

#include <hv/foundation/HvAltDynArray.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvPoint2fArray.h>
#include <hv/foundation/HvULongArray.h>

#include <cstdint>

/// Asks a polyline of distinct neighbouring points about its directions. Noise of a tolerance makes
/// the steps between close points point anywhere, so directions are taken over a reach of some
/// tolerances, or one step where the steps are longer. A closed polyline repeats its first point at
/// its end and is asked across it.
class HvFitDirections {
public:
    HvFitDirections(HvPoint2fArray const& points, HvDoubleArray const& lengths, bool isClosed,
                    double cornerCosSquared, double tolerance);

    /// Appends the inner corners in ascending order; whether a closed polyline turns a corner where
    /// it closes.
    ///
    /// The sharpest corners are taken first. With noise a corner has several points that pass for
    /// it: what is near one that is taken already is dropped, and what is not so near must be a
    /// corner without the points beyond it.
    bool FindCorners(HvULongArray& corners) const;
    /// The unit direction at point `at`, from the points `from` to `to` around it or the closest of
    /// them.
    HvPoint2<double> TangentAt(unsigned int at, unsigned int from, unsigned int to) const;
    /// Of some points up to `at`, not before `from`, the one that is least off the line of the
    /// points around it: noise at a place that a curve must pass spoils the curve.
    unsigned int CalmestUpTo(unsigned int at, unsigned int from) const;
    /// The direction where a closed polyline closes.
    HvPoint2<double> TangentAtSeam() const;

private:
    /// Steps that lead out of the reach before and after a point.
    struct Reach {
        std::int64_t before = 1;
        std::int64_t after = 1;
    };
    /// Sums over points around one, seen from it, for their parabola over the length: the powers of
    /// the length, and their products with the points.
    struct Moments {
        double s[5] = {};
        HvPoint2<double> d[3];
    };

    /// A point that may be a corner, and the range of those that it is judged by.
    struct Candidate {
        enum State {
            Open,
            Clipped,
            Dropped,
            Taken
        };

        std::int64_t at;
        std::int64_t from;
        std::int64_t to;
        double sharpness;
        State state;
    };
    using Candidates = HvAltDynArray<Candidate>;

    HvPoint2<double> Point(std::int64_t i) const;
    double Length(std::int64_t i) const;
    void TakeAround(Candidates& candidates, std::int64_t k, std::int64_t direction,
                    std::int64_t corner) const;
    bool IsAboutReach(HvPoint2<double> const& chord) const;
    bool IsClearlyNoTurn(HvPoint2<double> const& before, HvPoint2<double> const& after) const;
    bool IsGroupWithoutTurn(std::int64_t first, Reach& reach) const;
    double Sharpness(std::int64_t at, std::int64_t from, std::int64_t to, Reach& reach) const;
    double Straightness(std::int64_t from, std::int64_t to) const;
    std::int64_t StepsInReach(std::int64_t at, std::int64_t direction, std::int64_t most) const;
    template <class Visit>
    std::int64_t VisitSide(std::int64_t at, std::int64_t direction, std::int64_t steps,
                           Visit const& visit) const;
    HvPoint2<double> Direction(std::int64_t at, std::int64_t direction, std::int64_t steps) const;
    Moments MomentsAround(std::int64_t at, std::int64_t before, std::int64_t after) const;
    double Unrest(unsigned int at) const;
    HvPoint2<double> Tangent(std::int64_t at, std::int64_t before, std::int64_t after) const;

    HvPoint2fArray const& points_;
    HvDoubleArray const& lengths_;
    bool isClosed_;
    /// Steps of the polyline, which is the period of a closed one.
    std::int64_t steps_;
    double cornerCosSquared_;
    double squaredReach_;
};

#endif
