// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Evaluation of stepped curves. Included by the source files of the boolean and the integer curve.

#ifndef HV_FCURVE_INTERNAL_CFCBASEIMPL_STEPPED_INL
#define HV_FCURVE_INTERNAL_CFCBASEIMPL_STEPPED_INL

#include <hv/fcurve/internal/CFCBaseImpl.h>
#include <hv/fcurve/internal/relative_fold.h>
#include <hv/fcurve/internal/stepped_value.h>

template <class T, class K, class S>
T CFCBaseImpl<T, K, S>::EvalRightUsingExtrapolationMethod(double p) const
{
    unsigned int const n = NumKeys();
    if (n == 0) {
        return valueWhenNoKeys;
    }
    T const first = this->keys[0].value;
    T const last = this->keys[n - 1].value;
    int exact;
    switch (extrapolation) {
    case HvBaseFCurve::LinearExtrapolation: {
        // No setter takes this method here, but an archive may carry it.
        unsigned int const r = LocateParameter(p, exact);
        bool const outside = r == 0 || (r == n && !exact);
        return outside ? T() : this->keys[r - 1].value;
    }
    case HvBaseFCurve::CycleExtrapolation: {
        unsigned int const r = LocateParameter(FoldParameter(p), exact);
        if (exact && n >= 2 && r == n) {
            return first;
        }
        return r == 0 ? this->leftValue : this->keys[r - 1].value;
    }
    case HvBaseFCurve::RelativeCycleExtrapolation: {
        long long const offset = CFCSteppedValue_Offset(first, last);
        CFCRelativeFold fold{p, 0};
        if (n >= 2) {
            fold = CFCRelativeFold_EndsAtLast(p, FirstParameter(), LastParameter());
        }
        unsigned int const r = LocateParameter(fold.parameter, exact);
        if (!exact && (r == 0 || r == n)) {
            return r == 0 ? this->leftValue : last;
        }
        bool const atEnd = exact && n >= 2 && r == n;
        long long const value = atEnd ? first + offset : this->keys[r - 1].value;
        return CFCSteppedValue_Narrow<T>(value + fold.cycle * offset);
    }
    default: {
        unsigned int const r = LocateParameter(p, exact);
        return r == 0 ? this->leftValue : this->keys[r - 1].value;
    }
    }
}

template <class T, class K, class S>
double CFCBaseImpl<T, K, S>::EvalLeftUsingExtrapolationMethod(double p) const
{
    unsigned int const n = NumKeys();
    if (n == 0) {
        return static_cast<double>(valueWhenNoKeys);
    }
    T const last = this->keys[n - 1].value;
    int exact;
    // The value just before the place that LocateParameter found.
    auto const valueBefore = [&](unsigned int r) {
        return r == 0  ? this->leftValue
               : exact ? this->LeftValueOf(r - 1)
                       : this->keys[r - 1].value;
    };
    switch (extrapolation) {
    case HvBaseFCurve::LinearExtrapolation: {
        unsigned int const r = LocateParameter(p, exact);
        bool const outside = !exact && (r == 0 || r == n);
        return outside ? 0 : static_cast<double>(valueBefore(r));
    }
    case HvBaseFCurve::CycleExtrapolation: {
        unsigned int const r = LocateParameter(FoldParameter(p), exact);
        bool const atStart = exact && n >= 2 && r == 1;
        return static_cast<double>(atStart ? this->LeftValueOf(n - 1) : valueBefore(r));
    }
    case HvBaseFCurve::RelativeCycleExtrapolation: {
        long long const offset = CFCSteppedValue_Offset(this->leftValue, last);
        CFCRelativeFold fold{p, 0};
        if (n >= 2) {
            fold = CFCRelativeFold_StartsAtFirst(p, FirstParameter(), LastParameter());
        }
        unsigned int const r = LocateParameter(fold.parameter, exact);
        if (!exact && (r == 0 || r == n)) {
            return static_cast<double>(r == 0 ? this->leftValue : last);
        }
        bool const atStart = exact && n >= 2 && r == 1;
        long long const value = atStart ? last - offset : valueBefore(r);
        return static_cast<double>(CFCSteppedValue_Narrow<T>(value + fold.cycle * offset));
    }
    default:
        return static_cast<double>(valueBefore(LocateParameter(p, exact)));
    }
}

#endif
