// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Dropping keys of the standard curve that add nothing.
//
// The keys of the interval fall into runs of one segment kind; the key where the kind changes
// belongs to both runs and stays. The tolerance of a run is a share of the range of its values.
//
// In a cubic run a stretch of keys is replaced by the one segment that removing them gives: the
// outer handles keep their directions and grow with the span. How far it reaches is found from each
// kept key by doubling the stretch while it fits and halving back when it does not, so that a
// stretch of m keys costs O(m log m) evaluations and the whole run O(n log n). That a longer
// stretch fits does not follow from a shorter one; what is looked at at last does fit.

#include <hv/fcurve/HvStdFCurve.h>

#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <hv/fcurve/internal/HvStdFCurveRollback.h>
#include <hv/fcurve/internal/reduce_lines.h>
#include <hv/fcurve/internal/std_edit_checks.h>
#include <hv/foundation/HvBoolArray.h>
#include <hv/foundation/HvDoubleArray.h>

#include <algorithm>
#include <cmath>

namespace {

using Point = HvPoint2<double>;

/// `key` plus `vector` lengthened by `factor`; a handle without a direction stays on its key.
Point Lengthened(Point const& key, Point const& vector, double factor)
{
    return kHvGeometryTolerance > HvPoint2_Length(vector) ? key : key + vector * factor;
}

/// The reduction of one run of cubic segments.
class CubicRun {
public:
    CubicRun(HvStdFCurveImpl& curve, unsigned int first, unsigned int last, double tolerance,
             HvBoolArray& dropped)
        : curve_(curve), first_(first), last_(last), tolerance_(tolerance), dropped_(dropped),
          middles_(last - first)
    {
        for (unsigned int k = first; k < last; ++k) {
            middles_.Add(curve.EvalJustAfterIndex(Middle(k), k));
        }
    }

    void Reduce()
    {
        for (unsigned int a = first_; a < last_;) {
            unsigned int const b = FurthestFitting(a);
            if (b > a + 1) {
                Replace(a, b);
            }
            a = b;
        }
    }

private:
    double Middle(unsigned int k) const
    {
        return 0.5 * curve_.Parameter(k) + 0.5 * curve_.Parameter(k + 1);
    }

    unsigned int FurthestFitting(unsigned int a) const
    {
        // Past a key that is locked no stretch may reach; it is looked for as far as is needed.
        unsigned int limit = a + 1;
        auto const reach = [&](unsigned int b) {
            while (limit < b && limit < last_ &&
                   !curve_.keys[limit].constraints.HasAny(kHvReduceLocks)) {
                ++limit;
            }
            return std::min(b, limit);
        };
        unsigned int fits = a + 1;
        unsigned int tooFar = 0;
        for (unsigned int length = 2; tooFar == 0; length *= 2) {
            unsigned int const b = reach(length < last_ - a ? a + length : last_);
            if (b == fits) {
                return fits;
            }
            if (Fits(a, b)) {
                fits = b;
            } else {
                tooFar = b;
            }
        }
        while (tooFar - fits > 1) {
            unsigned int const middle = fits + (tooFar - fits) / 2;
            (Fits(a, middle) ? fits : tooFar) = middle;
        }
        return fits;
    }

    /// The control points of the one segment from key a to key b.
    void Join(unsigned int a, unsigned int b, Point* P) const
    {
        double const span = curve_.Parameter(b) - curve_.Parameter(a);
        P[0] = curve_.RightPoint(a);
        P[3] = curve_.LeftPoint(b);
        P[1] = Lengthened(P[0], curve_.GetEvaluatedRightTgt(a) - P[0],
                          span / (curve_.Parameter(a + 1) - curve_.Parameter(a)));
        P[2] = Lengthened(P[3], curve_.GetEvaluatedLeftTgt(b) - P[3],
                          span / (curve_.Parameter(b) - curve_.Parameter(b - 1)));
        RegularizeBezierCubicPoints(P);
    }

    /// Whether the one segment keeps within the tolerance at the keys between, with both their
    /// values, and half way between them.
    bool Fits(unsigned int a, unsigned int b) const
    {
        Point P[4];
        Join(a, b, P);
        auto const isNear = [&](double x, double lower, double upper) {
            double const t = FindCubicParameter(x, P[0].x, P[1].x, P[2].x, P[3].x);
            double const y = EvalCubicAt(t, P[0].y, P[1].y, P[2].y, P[3].y);
            return std::fabs(y - lower) <= tolerance_ && std::fabs(y - upper) <= tolerance_;
        };
        for (unsigned int k = a; k < b; ++k) {
            double const middle = middles_[k - first_];
            CFCStdKey const& key = curve_.keys[k];
            if (!isNear(Middle(k), middle, middle) ||
                (k != a && !isNear(key.parameter, key.leftValue, key.rightValue))) {
                return false;
            }
        }
        return true;
    }

    void Replace(unsigned int a, unsigned int b)
    {
        Point P[4];
        Join(a, b, P);
        // Handles that follow the neighbours would follow other ones afterwards.
        curve_.FixKeyHandles(a);
        curve_.FixKeyHandles(b);
        curve_.keys[a].rightHandle = P[1];
        curve_.keys[b].leftHandle = P[2];
        std::fill(dropped_.begin() + a + 1, dropped_.begin() + b, 1);
    }

    HvStdFCurveImpl& curve_;
    unsigned int first_;
    unsigned int last_;
    double tolerance_;
    HvBoolArray& dropped_;
    HvDoubleArray middles_;  ///< the curve's values half way between the keys of the run
};

}  // namespace

/// Replaces stretches of keys in the cubic runs from key i to key j; returns how many keys went.
unsigned int HvStdFCurveImpl::ReduceCubicRuns(unsigned int i, unsigned int j, double tolerance,
                                              HvBaseFCurve& curve)
{
    HvBoolArray dropped(0, NumKeys());
    HvReduce_ForEachRun(*this, i, j, [&](unsigned int first, unsigned int last) {
        if (SegmentKind(first) == HvBaseFCurve::CubicSegment) {
            double const allowed = tolerance * HvReduce_ValueRange(*this, first, last);
            CubicRun(*this, first, last, allowed, dropped).Reduce();
        }
    });
    return HvReduce_RemoveMarkedKeys(*this, dropped, curve);
}

unsigned int HvStdFCurveImpl::ReduceNumKeys(double from, double to, double tolerance,
                                            HvBaseFCurve& curve)
{
    if (NumKeys() == 0 || !CanHoldParameter(from) || !CanHoldParameter(to) || !(from <= to) ||
        !(tolerance >= 0) || !HvStdEdit_AreFinite(EvalInsideKeys(from), EvalInsideKeys(to))) {
        return 0;
    }
    unsigned int const before = NumKeys();
    unsigned int i = 0;
    unsigned int j = 0;
    CreateNonModifyingKey(from, i, curve);
    CreateNonModifyingKey(to, j, curve);

    // Cubic runs first: what their end keys evaluate to depends on the keys of the runs beside
    // them.
    j -= ReduceCubicRuns(i, j, tolerance, curve);
    Store::ReduceNumKeys(i, j, tolerance, curve);
    return before > NumKeys() ? before - NumKeys() : 0;
}

unsigned int HvStdFCurveImpl::ReduceNumKeys(double tolerance, HvBaseFCurve& curve)
{
    return NumKeys() == 0 ? 0 : ReduceNumKeys(FirstParameter(), LastParameter(), tolerance, curve);
}

unsigned int HvStdFCurve::ReduceNumKeys(double from, double to, double tolerance)
{
    HvCurveWriter const guard(*this);
    if (impl_->readOnly) {
        return 0;
    }
    Rollback rollback(*this);
    unsigned int const removed = impl_->ReduceNumKeys(from, to, tolerance, *this);
    rollback.Commit();
    return removed;
}

unsigned int HvStdFCurve::ReduceNumKeys(double tolerance)
{
    HvCurveWriter const guard(*this);
    if (impl_->readOnly) {
        return 0;
    }
    Rollback rollback(*this);
    unsigned int const removed = impl_->ReduceNumKeys(tolerance, *this);
    rollback.Commit();
    return removed;
}
