// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// HvControlOperator: a curve driven by another.

#ifndef HV_CONTROL_HVCONTROLOPERATOR_H
#define HV_CONTROL_HVCONTROLOPERATOR_H

#include <hv/foundation/HvMemory.h>
#include <hv/platform/HvExport.h>

class HvBaseFCurve;
class HvStdFCurve;

/// Drives a curve by another: a controller c tells for a time t where to look in the driven curve
/// d, whose value there, d(c(t)), is the result. A car's position over time and a wheel's angle
/// over the position make the wheel's angle over time. Both may be curves of any kind; both go on
/// outside their keys as their extrapolation says, and neither is clamped. At a jump of c or d the
/// right-hand value counts.
///
/// **Locks.** No operation changes the two curves, and none holds both for longer than a copy. Eval
/// and EvalMany enter c's critical section, leave it, and enter d's, so that any number of threads
/// can evaluate any chains of curves. Compose and AdjustTangents copy both curves at one moment:
/// they take the process-wide access lock first, as writers do, then both sections, that of the
/// lower address first, and work on the copies with all locks released. They must not be called
/// while holding a curve through AcquireLocks.
class HV_API HvControlOperator : public HvAllocated {
public:
    /// An operator on two curves, which may be one and the same. They must live as long as it.
    HvControlOperator(HvBaseFCurve const& controller, HvBaseFCurve const& driven);

    /// The value d(c(t)). Allocates nothing.
    double Eval(double t) const;
    /// values[i] is Eval(parameters[i]) for i below `n`, under one lock of each curve. The two
    /// arrays may be the same. Allocates nothing.
    void EvalMany(double const* parameters, unsigned int n, double* values) const;

    /// A new standard curve r(t) = d(c(t)) on [from, to], owned by the caller; the two ends may be
    /// given in either order. Outside of them it is constant.
    ///
    /// @param tolerance  greatest difference of r from d(c(t)), in the unit of d's values; above 0.
    ///                   Differences that rounding makes are not told from none.
    /// @return           null when an end or the tolerance is not a number, an end is infinite, the
    ///                   tolerance is not above 0, or a value on the way is not finite.
    ///
    /// Keys stand at c's keys, where c turns, where its value crosses a key of d, and where the
    /// tolerance asks for more; not where c turns or crosses while d's value stays. Stepped curves
    /// give constant segments, lines give lines, a line and a cubic give the cubic itself; two
    /// cubics are fitted, with tangents by the chain rule. Jumps are kept as left and right values.
    /// At single points where d(c(t)) is on neither side what it is at t, r has the right-hand
    /// limit; parameters within 1e-12 of each other are not told apart, and near a jump of d
    /// evaluation finds c's value to 1e-9 of its segment only.
    ///
    /// Throws std::bad_alloc, before it walks through them, when cycles have more pieces than an
    /// array holds. Cost: c's keys, and for each stretch between two keys of the result some dozens
    /// of evaluations in constant time.
    static HvStdFCurve* Compose(HvBaseFCurve const& controller, HvBaseFCurve const& driven,
                                double from, double to, double tolerance);
    /// The same of the operator's curves.
    HvStdFCurve* Compose(double from, double to, double tolerance) const;

    /// Turns the tangents of the keys of `curve` in the closed interval from `from` to `to`, or
    /// from `to` to `from`, into the slope of d(c(t)) on their side. Returns the number of keys
    /// whose tangents were set.
    ///
    /// A handle keeps its length along the parameter axis, or gets a third of its span when it has
    /// none; it is shortened as far as its segment needs. Only handles of cubic segments are
    /// turned, and none towards an upright slope. Constraints hold: a key whose tangents are locked
    /// in direction or length, or derived by FlatTangents, ZeroLengthTangents, LinearTangents or
    /// AutomaticTangents, stays as it is; locked continuity turns both handles into the direction
    /// half way between the slopes of both sides, and locked continuity of lengths gives both the
    /// length of the shorter one. A read-only curve stays as it is.
    ///
    /// `curve` may be one of the operator's own. Locks: as Compose, and then those of a writer of
    /// `curve` for the whole change. std::bad_alloc leaves the curve as it was.
    unsigned int AdjustTangents(HvStdFCurve& curve, double from, double to) const;

private:
    HvBaseFCurve const& controller_;
    HvBaseFCurve const& driven_;
};

#endif
