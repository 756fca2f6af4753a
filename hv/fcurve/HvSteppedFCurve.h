// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the two stepped kinds of curve have in common.

#ifndef HV_FCURVE_HVSTEPPEDFCURVE_H
#define HV_FCURVE_HVSTEPPEDFCURVE_H

#include <hv/fcurve/HvSingleValueFCurve.h>

template <class T>
struct CFCSingleValueKey;
template <class T, class K>
class CFCKeyStoreA;
template <class T, class K, class S>
class CFCSingleValueImpl;

/// The implementation of a stepped curve of value type T.
template <class T>
using CFCSteppedImpl =
    CFCSingleValueImpl<T, CFCSingleValueKey<T>, CFCKeyStoreA<T, CFCSingleValueKey<T>>>;

/// A curve that holds the value of its left key up to the next and jumps at each key; before the
/// first key it holds its left value. T is bool or int; see HvBooleanFCurve and HvIntegerFCurve.
/// Nobody uses this base by name.
///
/// The left value of a key is the value of the key before it, at the first key the curve's left
/// value; only in KeyInfo it is the key's own. The left value follows the first key when that is
/// made, and keeps what the curve was there when the head is removed; it never changes against the
/// lock of the first key's value.
///
/// Values go in and out as double. CreateKey refuses what is no value of the kind; elsewhere the
/// number is converted. There are no segment kinds, tangents and clamping values. The constraints
/// are ParameterLocked, ValueLocked and, for both, AllLocked. The extrapolation is constant, cycle
/// or relative cycle; the linear one, which an archive may carry, gives 0 outside the keys.
template <class T>
class HV_API HvSteppedFCurve : public HvSingleValueFCurve<CFCSteppedImpl<T>> {
public:
    using typename HvBaseFCurve::KeyConstraint;
    using typename HvBaseFCurve::KeySide;

    // Values.

    int GetKeyValue(double parameter, KeySide side, double& value, double tolerance) const override;
    int SetKeyValue(double parameter, KeySide side, double value, double tolerance) override;
    unsigned int GetKeys(HvDoubleArray& parameters, HvDoubleArray& leftValues,
                         HvDoubleArray& rightValues, int selectedOnly) const override;
    int MirrorValues() override;
    int MirrorParameters() override;

    // Evaluating.

    double EvalNoLock(double parameter, int clamp) const override;
    unsigned int EvalSequence(double from, double to, double step, double tolerance,
                              HvDoubleArray& parameters, HvDoubleArray& values,
                              int clamp) const override;
    /// The largest of the left value and all keys' values; without keys the value when no keys.
    double GetValueUpperBound(int clamp) const override;
    /// The smallest of them.
    double GetValueLowerBound(int clamp) const override;
    /// Nothing; 0, without a lock.
    int SetClampingValues(double lower, double upper) override;
    /// The largest range of doubles; 1, without a lock.
    int GetClampingValues(double& lower, double& upper) const override;
    /// 0: a stepped curve has no inverse.
    int EvalInverse(double value, double& parameter, int flag) const override;
    bool IsBijective() const override;

    // Constraints.

    int SetConstraint(double& parameter, KeyConstraint constraint, int on,
                      double tolerance) override;
    int GetConstraint(double& parameter, KeyConstraint constraint, int& on,
                      double tolerance) const override;
    int GetConstraintByIndex(unsigned int index, KeyConstraint constraint, int& on) const override;

    // Saving.

    unsigned int GetBufferSize() const override;
    unsigned int WriteToBuffer(void* buffer) const override;
    unsigned int ReadFromBufferBody(void const* body) override;
    /// The same through a reader, which stays in its bounds and steps over what was used. 0 also,
    /// and the reader then fails, for a body that does not hold what it claims.
    unsigned int ReadArchiveBody(HvByteReader& body);

protected:
    /// A curve without keys.
    explicit HvSteppedFCurve(T whenNoKeys);
    /// Copies keys, fields and user data.
    HvSteppedFCurve(HvSteppedFCurve const& other);
    /// The stretch of `source` from `from` to `to`.
    HvSteppedFCurve(HvSteppedFCurve const& source, double from, double to);
    /// Copies keys, fields and user data; all or nothing.
    HvSteppedFCurve& operator=(HvSteppedFCurve const& other);

    using HvSingleValueFCurve<CFCSteppedImpl<T>>::impl_;
};

extern template class HV_API HvFCurveShell<CFCSteppedImpl<bool>>;
extern template class HV_API HvFCurveShell<CFCSteppedImpl<int>>;
extern template class HV_API HvSingleValueFCurve<CFCSteppedImpl<bool>>;
extern template class HV_API HvSingleValueFCurve<CFCSteppedImpl<int>>;
extern template class HV_API HvSteppedFCurve<bool>;
extern template class HV_API HvSteppedFCurve<int>;

#endif
