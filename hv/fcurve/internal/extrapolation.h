// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Evaluating curves over real values, standard and raw: the four extrapolations with their right
// and left twins.

#ifndef HV_FCURVE_INTERNAL_EXTRAPOLATION_H
#define HV_FCURVE_INTERNAL_EXTRAPOLATION_H

#include <hv/fcurve/internal/CFCBaseImpl.h>
#include <hv/fcurve/internal/relative_fold.h>

/// Where a parameter lies among the keys, as LocateParameter tells it.
struct CFCLocation {
    unsigned int count;  ///< keys whose parameter is not above the one located
    bool exact;          ///< the last of them stands at the parameter
};

template <class Curve>
CFCLocation CFCLocation_Find(Curve const& curve, double x)
{
    int exact = 0;
    unsigned int const count = curve.LocateParameter(x, exact);
    return {count, exact != 0};
}

/// Snaps x to a key and locates it, in one search.
template <class Curve>
CFCLocation CFCLocation_FindSnapped(Curve const& curve, double& x)
{
    CFCLocation const at = CFCLocation_Find(curve, x);
    unsigned int nearest = 0;
    if (curve.FindKeyBeside(x, kKeySnapParameter, at.count, at.exact, nearest) == 0) {
        return at;
    }
    x = curve.Parameter(nearest);
    return {nearest + 1, true};
}

/// The line of the segment after key i, continued to x.
template <class Curve>
double CFCChord_Eval(Curve const& curve, unsigned int i, double x)
{
    double const p = curve.Parameter(i);
    double const y = curve.RightValueOf(i);
    return (x - p) * (curve.LeftValueOf(i + 1) - y) / (curve.Parameter(i + 1) - p) + y;
}

// The twins say which value a key gives, and which end the border of a cycle belongs to: the right
// twin finds the first key at the end of a cycle, the left twin the last at its start. They differ
// on purpose in the offset of a relative cycle too, which the right twin measures from the first
// right value, the left twin from the first left value.

struct CFCRightTwin {
    template <class Curve>
    static double Value(Curve const& curve, unsigned int i)
    {
        return curve.RightValueOf(i);
    }
    template <class Curve>
    static unsigned int KeyOfCycle(Curve const& curve, unsigned int i)
    {
        return i + 1 == curve.NumKeys() ? 0 : i;
    }
    static CFCRelativeFold Fold(double x, double first, double last)
    {
        return CFCRelativeFold_EndsAtLast(x, first, last);
    }
    template <class Curve>
    static double CycleOffset(Curve const& curve)
    {
        return curve.RightValueOf(curve.NumKeys() - 1) - curve.RightValueOf(0);
    }
    /// The value of key i in the key range; the border key that a twin passes on to the other end
    /// of the range brings one cycle's offset along.
    template <class Curve>
    static double KeyInRelativeCycle(Curve const& curve, unsigned int i, double offset)
    {
        return i + 1 == curve.NumKeys() ? offset + curve.RightValueOf(0) : curve.RightValueOf(i);
    }
};

struct CFCLeftTwin {
    template <class Curve>
    static double Value(Curve const& curve, unsigned int i)
    {
        return curve.LeftValueOf(i);
    }
    template <class Curve>
    static unsigned int KeyOfCycle(Curve const& curve, unsigned int i)
    {
        return i == 0 ? curve.NumKeys() - 1 : i;
    }
    static CFCRelativeFold Fold(double x, double first, double last)
    {
        return CFCRelativeFold_StartsAtFirst(x, first, last);
    }
    template <class Curve>
    static double CycleOffset(Curve const& curve)
    {
        return curve.RightValueOf(curve.NumKeys() - 1) - curve.LeftValueOf(0);
    }
    template <class Curve>
    static double KeyInRelativeCycle(Curve const& curve, unsigned int i, double offset)
    {
        return i == 0 ? -offset + curve.RightValueOf(curve.NumKeys() - 1) : curve.LeftValueOf(i);
    }
};

/// Evaluates a curve with keys. Ends says how linear extrapolation continues two or more keys:
/// `AfterLastKey(curve, x)` and `BeforeFirstKey(curve, x)`.
template <class Curve, class Twin, class Ends>
struct CFCExtrapolation {
    /// The value at x, which stands at `at` among the keys.
    static double EvalAt(Curve const& curve, double x, CFCLocation at)
    {
        switch (curve.extrapolation) {
        case HvBaseFCurve::LinearExtrapolation:
            return EvalLinear(curve, x, at);
        case HvBaseFCurve::CycleExtrapolation:
            return EvalCycle(curve, x, at);
        case HvBaseFCurve::RelativeCycleExtrapolation:
            return EvalRelativeCycle(curve, x, at);
        default:
            return EvalConstant(curve, x, at);
        }
    }

    /// The value at x; without keys the value when no keys.
    static double Eval(Curve const& curve, double x)
    {
        return curve.NumKeys() == 0 ? curve.valueWhenNoKeys
                                    : EvalAt(curve, x, CFCLocation_Find(curve, x));
    }

    static double EvalConstant(Curve const& curve, double x, CFCLocation at)
    {
        if (at.exact) {
            return Twin::Value(curve, at.count - 1);
        }
        if (at.count == curve.NumKeys()) {
            return curve.RightValueOf(at.count - 1);
        }
        return at.count == 0 ? curve.LeftValueOf(0) : curve.EvalJustAfterIndex(x, at.count - 1);
    }

    static double EvalLinear(Curve const& curve, double x, CFCLocation at)
    {
        if (!at.exact && curve.NumKeys() > 1) {
            if (at.count == curve.NumKeys()) {
                return Ends::AfterLastKey(curve, x);
            }
            if (at.count == 0) {
                return Ends::BeforeFirstKey(curve, x);
            }
        }
        return EvalConstant(curve, x, at);
    }

private:
    static double EvalCycle(Curve const& curve, double x, CFCLocation at)
    {
        if (curve.NumKeys() > 1) {
            x = curve.FoldIntoKeyRange(x);
            at = CFCLocation_FindSnapped(curve, x);
            if (at.exact) {
                return Twin::Value(curve, Twin::KeyOfCycle(curve, at.count - 1));
            }
        }
        return EvalConstant(curve, x, at);
    }

    static double EvalRelativeCycle(Curve const& curve, double x, CFCLocation at)
    {
        unsigned int const numKeys = curve.NumKeys();
        if (numKeys == 1) {
            return EvalConstant(curve, x, at);
        }
        CFCRelativeFold const fold = Twin::Fold(x, curve.FirstParameter(), curve.LastParameter());
        double const offset = Twin::CycleOffset(curve);
        double const rise = fold.cycle * offset;
        at = CFCLocation_Find(curve, fold.parameter);
        if (at.exact) {
            return rise + Twin::KeyInRelativeCycle(curve, at.count - 1, offset);
        }
        if (at.count == 0) {
            return curve.LeftValueOf(0);  // the folded parameter is no number
        }
        return rise + curve.EvalJustAfterIndex(fold.parameter, at.count - 1);
    }
};

#endif
