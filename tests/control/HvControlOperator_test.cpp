// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Composition, against evaluation of one curve after the other.

#include "control_test_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>

TEST(HvControlOperator_random, IsWithinToleranceEverywhere)
{
    unsigned int const seeds = std::getenv("N") ? unsigned(atoi(std::getenv("N"))) : 300;
    unsigned keys = 0;
    for (unsigned int seed = 0; seed < seeds; ++seed) {
        CurveMaker make(seed);
        CurvePtr const c = make.Any(6, -2, 8, -3, 7);
        CurvePtr const d = make.Any(6, -2, 6, -5, 5);
        double const tolerance = std::pow(10, -make.Real(1, 7));
        StdPtr const r = Compose(*c, *d, -5, 12, tolerance);
        ASSERT_NE(r, nullptr) << seed;
        keys += r->GetNumKeys();
        HvControlOperator const op(*c, *d);
        int const n = 3000;
        double worst = 0, at = 0;
        int bad = 0;
        for (int k = 0; k <= n; ++k) {
            double const t = -5 + 17.0 * k / n;
            double const e = std::fabs(r->Eval(t, 0) - op.Eval(t));
            if (!(e <= tolerance)) ++bad;
            if (!(e <= worst)) { worst = e; at = t; }
        }
        EXPECT_LE(worst, tolerance * 1.0) << seed << " at " << at << " bad " << bad << " kinds " << c->GetKind() << " " << d->GetKind() << " ext " << c->GetExtrapolationMethod() << d->GetExtrapolationMethod() << " c(t) " << c->Eval(at, 0) << " r " << r->Eval(at, 0) << " d " << op.Eval(at) << " keys " << r->GetNumKeys();
    }
    std::cout << keys << " keys\n";
}
