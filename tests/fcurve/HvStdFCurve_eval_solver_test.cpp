// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The solver of curve parameters, to the last bit: what it answers within its tolerance is part of
// every value of a cubic segment, and the same on every machine.

#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cmath>

namespace {

/// The control x of a segment and the place looked for.
struct Case {
    double x, x0, x1, x2, x3;
};

/// The solver as it is documented, step after step.
class Steps {
public:
    explicit Steps(Case const& c)
        : x_(c.x), first_(c.x0), last_(c.x3), cubic_(3 * c.x1 + c.x3 - 3 * c.x2 - c.x0),
          square_(3 * (c.x0 - 2 * c.x1 + c.x2)), linear_(3 * (c.x1 - c.x0))
    {
    }

    double Solve()
    {
        if (x_ - first_ < 1e-20) {
            return 0;
        }
        if (last_ - x_ < 1e-20) {
            return 1;
        }
        LookAt(0.5);
        partner_ = height_ < 0 ? 1 : 0;
        while (Step() >= 1e-9) {
            LookAt(t_);
            if (height_ == 0) {
                break;
            }
            double& border = height_ < 0 ? below_ : above_;
            partner_ = height_ < 0 ? above_ : below_;
            border = t_;
        }
        return t_;
    }

private:
    /// Moves t by Newton's step when it stays in the bracket, otherwise half way to the partner;
    /// returns how far.
    double Step()
    {
        double const atBelow = (below_ - t_) * slope_ + height_;
        double const atAbove = (above_ - t_) * slope_ + height_;
        double const step = atBelow * atAbove < 0 ? height_ / slope_ : (t_ - partner_) * 0.5;
        t_ = t_ - step;
        return std::fabs(step);
    }
    void LookAt(double t)
    {
        t_ = t;
        height_ = ((cubic_ * t + square_) * t + linear_) * t + (first_ - x_);
        slope_ = (3 * cubic_ * t + 2 * square_) * t + linear_;
    }

    double x_, first_, last_;
    double cubic_, square_, linear_;
    double t_ = 0, height_ = 0, slope_ = 0;
    double below_ = 0, above_ = 1, partner_ = 0;  ///< the bracket, and its end beyond the root
};

double Solved(Case const& c)
{
    return FindCubicParameter(c.x, c.x0, c.x1, c.x2, c.x3);
}

}  // namespace

TEST(HvStdFCurve_eval_solver, TakesTheDocumentedSteps)
{
    EXPECT_TRUE(rc::check("the answer is that of the steps, bit for bit", [] {
        double const x0 = PickInRange(-1000, 1000) / 24.0;
        double const span = PickInRange(1, 100000) / 1000.0;
        auto const inside = [&] { return x0 + span * PickInRange(-200, 1201) / 1000.0; };
        Case const c{inside(), x0, inside(), inside(), x0 + span};
        RC_ASSERT(Solved(c) == Steps(c).Solve());
    }));
}

TEST(HvStdFCurve_eval_solver, TakesTheDocumentedStepsWhereTheyAreMany)
{
    Case const cases[] = {
        // Roots of higher order, whose Newton steps shrink slowly.
        {0.5, 0, 0.5, 0.5, 1},
        {1e-12, 0, 0, 0, 1},
        {1 - 1e-12, 0, 1, 1, 1},
        {0.5 + 1e-13, 0, 0.5, 0.5, 1},
        // A handle on the place looked for, close beside a key of a far longer segment.
        {13.65, 13.6, 13.65, 13.65, 4.2e10},
        {-385685.949763001, -385685.94976300292, -385685.949763001, -385685.94976300292, 8.7e10},
        {3.3e10, 6.1e-7, 3.3e10, 3.3e10, 3.3e10 + 1},
        // Segments that turn back, with three roots.
        {0.5, 0, 2, -1, 1},
        {0.25, 0, 3, -2, 1},
        {0.75, 0, 3, -2, 1},
        // All but level in the middle, from where the first step halves the way, to either side.
        {0.3, 0, 0.9, 0.1, 1},
        {0.7, 0, 0.9, 0.1, 1},
        // The first Newton step goes to an end, and is not taken.
        {0.125, 0, 0.5, 0.5, 1},
        {0.875, 0, 0.5, 0.5, 1},
    };
    for (Case const& c : cases) {
        EXPECT_EQ(Solved(c), Steps(c).Solve()) << c.x;
    }
}

TEST(HvStdFCurve_eval_solver, EndsReachAsFarAsTheirTolerance)
{
    double const least = 1e-20;
    double const below = std::nextafter(least, 0);
    // A segment from 0 whose x(t) = 3t - 3t^2 + t^3 rises at once, and its mirror up to 0.
    EXPECT_EQ(FindCubicParameter(below, 0, 1, 1, 1), 0);
    EXPECT_GT(FindCubicParameter(least, 0, 1, 1, 1), 0);
    EXPECT_EQ(FindCubicParameter(-below, -1, -1, -1, 0), 1);
    EXPECT_LT(FindCubicParameter(-least, -1, -1, -1, 0), 1);
    EXPECT_GT(FindCubicParameter(1.5e-20, 0, 1, 1, 1), 0);
}
