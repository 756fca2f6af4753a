// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The quaternion curve kind: evaluating.

#include <hv/fcurve/HvQuatFCurve.h>
#include <hv/fcurve/internal/HvQuatFCurveImpl.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/array_capacity.h>
#include <hv/foundation/saturate.h>

#include <algorithm>
#include <cmath>

namespace {

/// The farthest that an angle goes from the line between its keys: half a turn, and what rounding
/// adds to it.
constexpr double kFarthestFromKeysDegrees = 180.0 + 1e-6;

}  // namespace

double HvQuatFCurve::EvalNoLock(double parameter, int) const
{
    HvKeysLock<HvQuatFCurveImpl> const keys(*impl_);
    return impl_->Eval(parameter);
}

unsigned int HvQuatFCurve::EvalSequence(double from, double to, double step, double,
                                        HvDoubleArray& parameters, HvDoubleArray& values, int) const
{
    if (!(from <= to || from > to)) {
        return 0;  // an end is not a number
    }
    Reader const lock(*this);
    // More samples than the arrays can hold are refused before the first.
    double const samples = from < to && from + step > from ? (to - from) / step : 0;
    unsigned int const room = HvArrayCapacity_GrownSize(HvSaturate_To<unsigned int>(samples), 2);
    parameters.Reserve(HvArrayCapacity_GrownSize(parameters.Size(), room));
    values.Reserve(HvArrayCapacity_GrownSize(values.Size(), room));
    unsigned int const before = values.Size();
    auto const add = [&](double p) {
        parameters.Add(p);
        values.Add(impl_->Eval(p));
    };
    if (from == to) {
        add(from);
    }
    for (double p = from; p < to;) {
        add(p);
        double const next = p + step;
        if (!(next > p)) {
            break;
        }
        p = next;
    }
    add(to);
    return values.Size() - before;
}

double HvQuatFCurve::GetValueUpperBound(int) const
{
    Reader const lock(*this);
    double bound = impl_->RightValueOf(0);
    for (unsigned int i = 1; i < impl_->NumKeys(); ++i) {
        bound = std::max(bound, impl_->RightValueOf(i));
    }
    return impl_->NumKeys() < 2 ? bound : bound + kFarthestFromKeysDegrees;
}

double HvQuatFCurve::GetValueLowerBound(int) const
{
    Reader const lock(*this);
    double bound = impl_->RightValueOf(0);
    for (unsigned int i = 1; i < impl_->NumKeys(); ++i) {
        bound = std::min(bound, impl_->RightValueOf(i));
    }
    return impl_->NumKeys() < 2 ? bound : bound - kFarthestFromKeysDegrees;
}

int HvQuatFCurve::EvalInverse(double, double&, int) const
{
    HvCurveReader const lock(*this);
    return 0;
}

bool HvQuatFCurve::IsBijective() const
{
    HvCurveReader const lock(*this);
    return false;
}
