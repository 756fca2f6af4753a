// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The quaternion function curve: one angle of a rotation over time.

#ifndef HV_FCURVE_HVQUATFCURVE_H
#define HV_FCURVE_HVQUATFCURVE_H

#include <hv/fcurve/HvFCurveShell.h>

class HvByteReader;
class HvQuatCurve;
class HvQuatFCurveImpl;

extern template class HV_API HvFCurveShell<HvQuatFCurveImpl>;

/// One component (0 = x, 1 = y, 2 = z) of a rotation over time, in degrees, as a function curve.
/// Three such curves may show the three components of one HvQuatCurve: an edit through one of them
/// is seen by the others, because keys, locks, selection, read-only flag, extrapolation and value
/// when no keys are those of the shared curve. What is set per object: the component, the user
/// data, the time curve flag and the default Bezier tangent flag, which has no effect.
///
/// **Rotations.** A key holds all three angles. What makes a key sets the other two components to
/// what the rotation has there; what moves or removes one moves or removes it for all three. Under
/// a key mover or a stretcher a key keeps everything but its parameter and, where values are
/// dragged, the angle of this component. The values between keys are those of HvQuatCurve::Eval:
/// the rotation moves on the quaternion sphere, and each angle follows the line between its two
/// keys within half a turn. So an angle may jump by a turn inside a segment with spins, and swings
/// fast where the middle angle passes 90 degrees. A spline of rotations depends on two keys on
/// either side and cannot be cut without a trace: a key made to leave the curve as it is
/// (CreateNonModifyingKey, RemoveHead, RemoveTail, Cut, Paste, ResampleSequence, ReduceNumKeys, a
/// part turned round by ScaleAndOffsetParameters) holds exactly the rotation that was there, but
/// between it and the keys around the curve may change a little. New keys have tension, continuity,
/// bias and spins 0.
///
/// **Slots without a meaning for a rotation** refuse with 0: SetClampingValues, EvalInverse,
/// IsBijective, linear extrapolation through SetExtrapolationMethod (an HvQuatCurve can have it),
/// all constraints but ParameterLocked, ValueLocked and AllLocked. Infos tell no default segment
/// kind, clamps, tangents or segment kind. Those that set values refuse when the component is above
/// 2; reading, such a component is z.
///
/// **Copies** own a copy of the shown curve. Assigning, Set and ReadFromBufferBody fill the shown
/// curve, so that those who share it see the new rotation; the component is copied too.
///
/// **User data** belong to this object. They follow the keys through edits made through it; edits
/// made through others that show the same curve leave them where they are.
///
/// **Locks.** Inside its own locks, as HvBaseFCurve tells them, every operation holds the lock of
/// the shown curve; operations with a second curve take that curve's section before either. Those
/// that take no lock of the curve still hold that of the shown one. Any threads may call any of the
/// curves that share one; AcquireLocks of one does not keep the others out, HvQuatCurveLock does.
///
/// See HvBaseFCurve for results and arguments.
class HV_API HvQuatFCurve : public HvFCurveShell<HvQuatFCurveImpl> {
public:
    // Life.

    /// Shows a component of a new rotation without keys, all angles 0.
    explicit HvQuatFCurve(unsigned int component);
    /// Shows a component of `curve`, taking a reference on it for its own life. Null makes a new
    /// one.
    HvQuatFCurve(HvQuatCurve* curve, unsigned int component);
    /// Makes a rotation of its own with the keys of that which `other` shows.
    HvQuatFCurve(HvQuatFCurve const& other);
    /// All or nothing.
    HvQuatFCurve& operator=(HvQuatFCurve const& other);
    using HvBaseFCurve::operator=;

    /// The component shown.
    unsigned int GetComponent() const;
    /// The curve shown; it lives as long as this object. Hold its lock around calls on it.
    HvQuatCurve* GetQuatCurve() const;

    HvBaseFCurve const* QueryFCurveKind(Kind kind) const override;
    Kind GetKind() const override;
    HvBaseFCurve* Clone() const override;
    int Set(HvBaseFCurve const& other) override;
    /// A copy with all keys, which evaluates as this curve does from `from` to `to`. It
    /// extrapolates by `method`, when that is one, unless the interval goes beyond the keys, of
    /// which there are two or more: keys of a spline cannot stand for what an extrapolation gives,
    /// so there it goes on as this curve. Null for an interval or values at its ends that are not
    /// finite.
    HvBaseFCurve* SnapShot(double from, double to, ExtrapolationMethod method) const override;

    // Infos.

    int GetFCurveInfo(FCurveInfo* info) const override;
    int GetKeyInfoFromIndex(unsigned int index, KeyInfo* info) const override;
    int GetKeyInfoFromParameter(double parameter, KeyInfo* info) const override;

    // Keys.

    /// Sets this component of the key at exactly `parameter`, or makes a key there.
    int CreateKey(double parameter, double value) override;
    /// The key holds `value` and the other two angles that the curve had at `parameter`. With
    /// `keepKeyData` it takes over tension, continuity, bias and spins too.
    int MergeAndCreateKey(double from, double to, double parameter, double value, int openAtFrom,
                          int openAtTo, int keepKeyData) override;
    int CreateNonModifyingKey(double parameter, int ignoreExtrapolation) override;
    int MergeAndCreateNonModifyingKey(double from, double to, double parameter, int openAtFrom,
                                      int openAtTo, int keepKeyData,
                                      int ignoreExtrapolation) override;
    int RemoveKey(double parameter, double tolerance) override;
    int RemoveKeys(double from, double to, int openAtFrom, int openAtTo) override;

    // Values.

    int SetValueWhenNoKeys(double value) override;
    /// The key's value on either side; 0 for a side other than Left and Right.
    int GetKeyValue(double parameter, KeySide side, double& value, double tolerance) const override;
    /// Sets the key's one value, whichever of the two sides is named.
    int SetKeyValue(double parameter, KeySide side, double value, double tolerance) override;
    unsigned int GetKeys(HvDoubleArray& parameters, HvDoubleArray& leftValues,
                         HvDoubleArray& rightValues, int selectedOnly) const override;
    // The next three change this component of all keys and of the value when no keys. Refused when
    // a value is locked or would not be finite.
    int ShiftValues(double offset) override;
    int ScaleAndShiftValues(double scale, double offset) override;
    /// Mirrors about the middle of the keys' range; a curve without keys stays as it is.
    int MirrorValues() override;
    /// Smooths this component of the keys.
    int SmoothSequence(double from, double to, double const* kernel,
                       unsigned int kernelSize) override;

    // Pieces of the curve: whole rotations, whatever component the other curve shows. A curve of
    // another rotation order is refused.

    /// What `removed` held before is lost. Refused when both show one rotation.
    int Cut(double from, double to, HvBaseFCurve& removed) override;
    int RemoveTail(double parameter) override;
    int RemoveHead(double parameter) override;
    /// The key where the two meet takes angles and spins of the other curve's first key.
    int Append(HvBaseFCurve const& other) override;
    int Paste(HvBaseFCurve const& other, double from, double to) override;

    // The axis and whole stretches.

    int ShiftParameters(double offset) override;
    /// Refuses a scale below 1e-12.
    int ScaleParameterAxis(double scale) override;
    /// Biases change their sign, and the spins of a segment stay with it.
    int MirrorParameters() override;
    int ScaleAndOffsetParameters(double from, double to, double pivot, double scale, double offset,
                                 int rippleLeft, int rippleRight, RegionHandle handle,
                                 int selectedOnly) override;
    int ResampleSequence(double from, double to, double step, int keepExisting,
                         int ignoreExtrapolation) override;
    /// Looks at all three components: at the keys that go and half way to their neighbours each
    /// stays within `tolerance` times the largest range that one of them has between `from` and
    /// `to`. A key that is locked or has tension, continuity, bias or spins stays.
    unsigned int ReduceNumKeys(double from, double to, double tolerance) override;

    // Evaluating.

    /// HvQuatCurve::Eval of the component, at a key within 1e-12 for the key.
    double EvalNoLock(double parameter, int clamp) const override;
    /// Samples the curve itself: `tolerance` has no effect.
    unsigned int EvalSequence(double from, double to, double step, double tolerance,
                              HvDoubleArray& parameters, HvDoubleArray& values,
                              int clamp) const override;
    /// The largest value of a key and, between two keys or more, half a turn.
    double GetValueUpperBound(int clamp) const override;
    double GetValueLowerBound(int clamp) const override;
    /// 0, without a lock: an angle is not clamped.
    int SetClampingValues(double lower, double upper) override;
    /// The largest range of doubles; 1, without a lock.
    int GetClampingValues(double& lower, double& upper) const override;
    /// 0: one angle of a rotation takes a value any number of times.
    int EvalInverse(double value, double& parameter, int flag) const override;
    /// False, as above.
    bool IsBijective() const override;

    // Constraints and settings.

    int SetConstraint(double& parameter, KeyConstraint constraint, int on,
                      double tolerance) override;
    int GetConstraint(double& parameter, KeyConstraint constraint, int& on,
                      double tolerance) const override;
    int GetConstraintByIndex(unsigned int index, KeyConstraint constraint, int& on) const override;
    /// 1 for ParameterLocked, ValueLocked and AllLocked.
    int IsConstraintSupported(KeyConstraint constraint) const override;
    /// Refuses the linear one.
    int SetExtrapolationMethod(ExtrapolationMethod method) override;
    /// A stored flag without effect; works on a read-only curve too.
    int SetDefaultBezierTangentConstraint(bool on) override;

    // Saving.

    unsigned int GetBufferSize() const override;
    unsigned int WriteToBuffer(void* buffer) const override;
    unsigned int ReadFromBufferBody(void const* body) override;
    /// The same through a reader, which stays in its bounds and steps over what was used. 0 also,
    /// and the reader then fails, for a body that does not hold what it claims.
    unsigned int ReadArchiveBody(HvByteReader& body);

private:
    friend struct HvCurveRescale;

    int AreAnyLocked(double from, double to, int openAtFrom, int openAtTo) const;
    int SetOrCreateKey(double parameter, double value);
    int MergeAt(double from, double to, double parameter, double const* value, int openAtFrom,
                int openAtTo, int keepKeyData);
    int FillKeyInfo(unsigned int index, KeyInfo& info) const;
    template <class Map>
    int MapValues(Map const& map);
    template <class Edit>
    int MoveParameters(Edit const& edit);
    int MirrorKeys(HvQuatCurve& work, unsigned int first, unsigned int last);
    int MirrorStretch(double from, double to);
    void Exchange(HvQuatFCurve& other) noexcept;
    void DropUserDataOfGoneKeys(HvQuatCurve const& keys);
    void Unlock(double from, double to, int openAtFrom, int openAtTo);
};

#endif
