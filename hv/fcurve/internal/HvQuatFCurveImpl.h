// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The quaternion curve kind below its own locks: one component of a curve that others may share.

#ifndef HV_FCURVE_INTERNAL_HVQUATFCURVEIMPL_H
#define HV_FCURVE_INTERNAL_HVQUATFCURVEIMPL_H

#include <hv/fcurve/CFCKeyConstraint.h>
#include <hv/fcurve/HvBaseFCurve.h>
#include <hv/fcurve/internal/CFCBaseImpl.h>
#include <hv/fcurve/internal/HvFCurveShellGuards.h>
#include <hv/foundation/HvMemory.h>
#include <hv/foundation/dynamic_mem_size.h>
#include <hv/rotation/HvQuatCurve.h>
#include <hv/rotation/HvQuatCurveLock.h>

/// What the shell asks of an implementation, answered from the shared curve. The caller holds the
/// curve's lock. Indices that it gives are below the number of keys, but nothing is read out of
/// bounds for others, nor of keys in disorder.
class HvQuatFCurveImpl : public HvAllocated {
public:
    using Store = HvQuatFCurveImpl;
    /// The locks that a key of a rotation knows.
    static constexpr unsigned short kEveryLock =
        CFCKeyConstraint::kValueLocked | CFCKeyConstraint::kParameterLocked;
    /// Components are 0 to 2: x, y and z.
    static constexpr unsigned int kNumComponents = 3;

    unsigned int component;
    unsigned char defaultBezierTangentConstraint = 0;
    unsigned char timeCurve = 1;

    /// Shows `shared`, as one more owner; null is a new curve.
    HvQuatFCurveImpl(HvQuatCurve* shared, unsigned int shown);
    /// Shows a copy of the curve that `other` shows.
    HvQuatFCurveImpl(HvQuatFCurveImpl const& other);
    HvQuatFCurveImpl& operator=(HvQuatFCurveImpl const&) = delete;
    ~HvQuatFCurveImpl();
    /// Exchanges fields and what the two shown curves hold; each side keeps its curve.
    void Swap(HvQuatFCurveImpl& other) noexcept;

    /// The shown curve; always the same one.
    HvQuatCurve& Curve() const { return *curve_; }
    /// Whether the component is one of the three, so that its values can be set.
    bool HasComponent() const { return component < kNumComponents; }

    // Fields that belong to the shown curve.

    double ValueWhenNoKeys() const { return curve_->GetValueWhenNoKeys(component); }
    HvBaseFCurve::ExtrapolationMethod Method() const
    {
        return static_cast<HvBaseFCurve::ExtrapolationMethod>(curve_->GetExtrapolationMethod());
    }
    bool IsReadOnly() const { return curve_->IsReadOnly() != 0; }
    void SetReadOnly(bool on) { curve_->SetReadOnlyConstraint(on ? 1 : 0); }
    bool IsCurveSelected() const { return curve_->IsSelected() != 0; }
    void SetCurveSelected(bool on) { curve_->SetSelected(on ? 1 : 0); }

    // Keys.

    unsigned int NumKeys() const { return curve_->GetNumKeys(); }
    double Parameter(unsigned int i) const { return curve_->GetKeyTime(i); }
    double FirstParameter() const { return Parameter(0); }
    double LastParameter() const { return Parameter(NumKeys() - 1); }
    double LeftValueOf(unsigned int i) const { return curve_->GetKeyValue(i, component); }
    double RightValueOf(unsigned int i) const { return curve_->GetKeyValue(i, component); }
    bool IsSelected(unsigned int i) const { return curve_->GetKey(i).selected != 0; }
    void SetSelected(unsigned int i, bool on) { curve_->SetKeySelected(i, on ? 1 : 0); }
    unsigned short ConstraintWord(unsigned int i) const { return curve_->GetConstraintData(i); }
    void SetConstraintWord(unsigned int i, unsigned short word)
    {
        curve_->SetConstraintData(i, word);
    }

    /// The angle that the curve keeps for key i, radians.
    double AngleOf(unsigned int i) const;
    /// Set the angle of key i, whatever its locks; in radians, or in degrees.
    void SetAngle(unsigned int i, double radians);
    void SetValue(unsigned int i, double degrees);

    // Finding keys; see CFCBaseImpl.

    unsigned int LocateParameter(double p, int& exact) const;
    unsigned int GetNearestKeyIndex(double p) const;
    int GetKeyIndicesInClosedInterval(double lo, double hi, unsigned int& first,
                                      unsigned int& last) const;
    int GetKeyIndicesInInterval(double lo, double hi, unsigned int& first, unsigned int& last,
                                int openAtLo, int openAtHi) const;
    int FindKey(double p, double tolerance, unsigned int& index) const;
    int HasConstraintInInterval(unsigned short bits, bool all, double from, double to,
                                int openAtFrom, int openAtTo) const;

    // Evaluating.

    bool Cycles() const;
    double FoldParameter(double p) const;
    /// The value at p, snapped to a key.
    double Eval(double p) const;
    /// All three angles at p, radians; outside the keys those of the end key.
    HvPoint3<double> AnglesHeldAt(double p) const;

    // Extents to redraw.

    /// How many neighbours on each side a key's change reaches: the path through a neighbour
    /// depends on it, and so does the segment beyond.
    static constexpr unsigned int kExtentReach = 2;
    /// No angle goes farther from the line between its keys, or outside of them from the end key's,
    /// than half a turn; half a turn more is what HvQuatCurve::GetKeyExtent allows for.
    static constexpr double kExtentMarginDegrees = 360.0;
    /// Augments by the keys `first` to `last` themselves with that margin.
    void AugmentByKeys(unsigned int first, unsigned int last, HvExtent2<double>& extent) const;

    // Flattening; see HvQuatFCurve::FlattenFromTo.

    unsigned int Flatten(HvTransfo4 const& transfo, double tolerance, HvPoint2dArray& points,
                         HvPointTagArray& tags, int clamp) const;
    void FlattenFromTo(HvExtent2<double> const& extent, HvTransfo4 const& transfo, double tolerance,
                       HvPoint2dArray& points, HvPointTagArray& tags, HvBoolArray& flags) const;

private:
    HvQuatCurve* const curve_;
};

/// The lock of the shown curve, which orders the calls of all that show it.
template <>
class HvKeysLock<HvQuatFCurveImpl> {
public:
    explicit HvKeysLock(HvQuatFCurveImpl const& impl) : lock_(impl.Curve()) {}

private:
    HvQuatCurveLock lock_;
};

/// Each of those that share a curve counts it.
template <>
struct XQDynamicMemRule<HvQuatFCurveImpl, CXQMemBaseType> {
    static unsigned long Get(HvQuatFCurveImpl const& impl)
    {
        return sizeof(HvQuatCurve) + impl.Curve().GetDynamicMemSize();
    }
};

#endif
