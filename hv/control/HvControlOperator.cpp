// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Evaluating and composing driven curves.

#include <hv/control/HvControlOperator.h>

#include <hv/control/internal/HvCurveComposer.h>
#include <hv/control/internal/HvCurvePair.h>
#include <hv/fcurve/HvCurveLock.h>

#include <algorithm>
#include <cmath>

HvControlOperator::HvControlOperator(HvBaseFCurve const& controller, HvBaseFCurve const& driven)
    : controller_(controller), driven_(driven)
{
}

double HvControlOperator::Eval(double t) const
{
    return driven_.Eval(controller_.Eval(t, 0), 0);
}

void HvControlOperator::EvalMany(double const* parameters, unsigned int n, double* values) const
{
    {
        HvCurveLock const lock(controller_);
        for (unsigned int i = 0; i < n; ++i) {
            values[i] = controller_.EvalNoLock(parameters[i], 0);
        }
    }
    HvCurveLock const lock(driven_);
    for (unsigned int i = 0; i < n; ++i) {
        values[i] = driven_.EvalNoLock(values[i], 0);
    }
}

HvStdFCurve* HvControlOperator::Compose(HvBaseFCurve const& controller, HvBaseFCurve const& driven,
                                        double from, double to, double tolerance)
{
    double const first = std::min(from, to);
    double const last = std::max(from, to);
    if (!std::isfinite(from) || !std::isfinite(to) || !std::isfinite(last - first) ||
        !(tolerance > 0)) {
        return nullptr;
    }
    HvCurvePair const pair(controller, driven);
    return HvCurveComposer(pair.Controller(), pair.Driven())
        .Compose(first, last, tolerance)
        .release();
}

HvStdFCurve* HvControlOperator::Compose(double from, double to, double tolerance) const
{
    return Compose(controller_, driven_, from, to, tolerance);
}
