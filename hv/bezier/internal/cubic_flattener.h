// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The flattening of a cubic, once for the plane and space and for every kind of output.

#ifndef HV_BEZIER_INTERNAL_CUBIC_FLATTENER_H
#define HV_BEZIER_INTERNAL_CUBIC_FLATTENER_H

#include <hv/bezier/cubic_split.h>
#include <hv/bezier/internal/cubic_steps.h>

#include <algorithm>
#include <cstdint>

/// Greatest number of doublings in a piece of a cubic of the plane in double: 1024 steps. The float
/// and the space forms have no such limit.
constexpr unsigned int kHvPlaneMaxDoublings = 10;

/// Walks the interior points of the polyline of a cubic, in order of the parameter, into a sink:
///
///     static constexpr unsigned int kMaxDoublings;   greatest number of doublings in a piece
///     bool Misses(Point const* cubic) const;         1: nothing of this piece is wanted
///     void Expect(std::uint64_t points);             about as many points follow
///     void Add(Point const& point);
///
/// The walk ends with every exception of the sink.
template <class Metric, class Sink>
class HvCubicFlattener {
public:
    using Point = typename Metric::Point;

    explicit HvCubicFlattener(Sink& sink) : sink_(sink) {}

    void Walk(Point const* cubic, double tolerance)
    {
        HvCubicPlan<Metric> const plan(cubic, tolerance);
        coefficient_ = plan.coefficient;
        Piece(cubic, plan.levels < 2 ? 0 : plan.levels - 1);
    }

private:
    void Piece(Point const* cubic, unsigned int depth)
    {
        if (sink_.Misses(cubic)) {
            return;
        }
        if (depth == 0) {
            Leaf(cubic);
            return;
        }
        Point halves[7];
        HvCubic_Halve(cubic, halves);
        Piece(halves, depth - 1);
        sink_.Add(halves[3]);
        Piece(halves + 3, depth - 1);
    }

    void Leaf(Point const* cubic)
    {
        HvCubicSteps<Metric> steps(cubic);
        unsigned int const doublings = std::min(steps.Doublings(coefficient_), Sink::kMaxDoublings);
        if (doublings == 0) {
            return;
        }
        std::uint64_t const count = HvFlattening_Steps(doublings);
        sink_.Expect(count);
        steps.Start(doublings);
        for (std::uint64_t i = 1; i < count; ++i) {
            sink_.Add(steps.Next());
        }
    }

    Sink& sink_;
    double coefficient_ = 0.0;
};

#endif
