// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Raw curves for tests: short ways to build one and to see all of it.

#ifndef TESTS_FCURVE_RAW_TEST_SUPPORT_H
#define TESTS_FCURVE_RAW_TEST_SUPPORT_H

#include <hv/fcurve/HvRawFCurve.h>
#include <hv/fcurve/internal/HvRawFCurveImpl.h>
#include <tests/fcurve/stepped_test_support.h>

/// A raw curve whose implementation a test may reach.
class OpenRaw : public HvRawFCurve {
public:
    using HvRawFCurve::HvRawFCurve;
    OpenRaw(double whenNoKeys, std::initializer_list<std::pair<double, double>> keys)
        : HvRawFCurve(whenNoKeys)
    {
        for (auto const& key : keys) {
            this->impl_->AppendKey(key.first, key.second);
        }
    }

    HvRawFCurveImpl& Impl() { return *this->impl_; }
    double EvalLeft(double x) const { return this->impl_->EvalLeftUsingExtrapolationMethod(x); }
    double WhenNoKeys() const { return this->impl_->valueWhenNoKeys; }
    double LowerClamp() const { return this->impl_->lowerClamp; }
    double UpperClamp() const { return this->impl_->upperClamp; }
};

/// A polyline that rises, falls and rises.
inline OpenRaw Zigzag()
{
    return OpenRaw(7, {{1, 10}, {2, 30}, {3, 0}, {4, 40}});
}

#endif
