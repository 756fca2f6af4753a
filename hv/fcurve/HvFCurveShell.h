// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The slots that are the same in every key-based kind of curve.

#ifndef HV_FCURVE_HVFCURVESHELL_H
#define HV_FCURVE_HVFCURVESHELL_H

#include <hv/fcurve/HvBaseFCurve.h>

/// The shell of a curve: it owns one implementation object, and each slot takes the locks, checks
/// what stands in the way and calls the implementation, which knows nothing of locks. Nobody uses
/// this base by name; what the operations do is told in HvBaseFCurve.
template <class Impl>
class HV_API HvFCurveShell : public HvBaseFCurve {
public:
    ~HvFCurveShell() override;

    int GetKeyParameter(unsigned int index, double& parameter) const override;
    int GetKeyIndex(double parameter, unsigned int& index) const override;
    unsigned int GetNumKeys() const override;
    int IsKeySelected(unsigned int index) const override;
    int IsKeySelected(double parameter) const override;
    int SetKeySelected(unsigned int index, int on) override;
    int SetKeySelected(double parameter, int on) override;
    unsigned int GetKeyParameters(double from, double to, HvDoubleArray& parameters, int openAtFrom,
                                  int openAtTo, int selectedOnly) const override;
    int IsKeyParameter(double parameter, double tolerance) const override;
    unsigned int GetAllKeyParameters(HvDoubleArray& parameters) const override;
    int GetNextKeyParameter(double parameter, double& next, int inclusive) const override;
    int GetPrevKeyParameter(double parameter, double& previous, int inclusive) const override;
    int GetNearestKeyParameter(double parameter, double& nearest) const override;
    int GetNearestKeyParameterInCenteredInterval(double& parameter,
                                                 double tolerance) const override;
    int GetSmallestKeyParameter(double& parameter) const override;
    int IsSmallestKeyParameter(double parameter) const override;
    double GetMinusInfinityVal() const override;
    int GetLargestKeyParameter(double& parameter) const override;
    int IsLargestKeyParameter(double parameter) const override;
    double GetPlusInfinityVal() const override;
    int GetKeyValues(double parameter, double& left, double& right,
                     double tolerance) const override;
    int GetKeyValuesByIndex(unsigned int index, double& left, double& right) const override;
    double Eval(double parameter, int clamp) const override;
    unsigned int Flatten(HvTransfo4 const& transfo, double tolerance, HvPoint2dArray& points,
                         HvPointTagArray& tags, int clamp) const override;
    int FlattenFromTo(HvExtent2<double> const& extent, HvTransfo4 const& transfo, double tolerance,
                      HvPoint2dArray& points, HvPointTagArray& tags, HvBoolArray& flags,
                      int clamp) const override;
    int SetReadOnlyConstraint(int on) override;
    int IsReadOnly() const override;
    int AreAnyValuesLockedInInterval(double from, double to, int openAtFrom,
                                     int openAtTo) const override;
    int AreAnyParametersLockedInInterval(double from, double to, int openAtFrom,
                                         int openAtTo) const override;
    int AreAnyKeysLockedInInterval(double from, double to, int openAtFrom,
                                   int openAtTo) const override;
    ExtrapolationMethod GetExtrapolationMethod() const override;
    double FoldParameter(double parameter) const override;
    int IsDefautlBezierTangentConstraintOn() const override;
    int SetAsTimeFCurve(bool on) override;
    int IsTimeFCurve() const override;
    int IsSelected() const override;
    int SetSelected(int on) override;
    int HasSelectedKeys() const override;
    unsigned long GetDynamicMemSize() const override;

    /// Evaluates at `n` parameters under one lock: values[i] is Eval(parameters[i], clamp), bit for
    /// bit. The two arrays may be the same.
    void EvalMany(double const* parameters, unsigned int n, double* values, int clamp) const;

protected:
    class Reader;
    class Writer;

    /// Takes over `impl`.
    explicit HvFCurveShell(Impl* impl);
    /// Copies the implementation and the user data of `other`, under its lock.
    HvFCurveShell(HvFCurveShell const& other);
    /// Copies keys, fields and user data; all or nothing.
    HvFCurveShell& operator=(HvFCurveShell const& other);

    /// Exchanges implementation and user data with a curve that nobody else knows, under this one's
    /// locks. The implementation comes with its own search hint.
    void TakeOver(HvFCurveShell& other) noexcept;

    /// GetKeys for the kinds that heed `selectedOnly`: without memory the three arrays are emptied
    /// and the result is 0.
    unsigned int CollectKeys(HvDoubleArray& parameters, HvDoubleArray& leftValues,
                             HvDoubleArray& rightValues, int selectedOnly) const;

    Impl* impl_;  ///< the implementation, never null

private:
    friend struct HvCurveToolAccess;

    HvFCurveShell(HvFCurveShell const& other, Reader const& lockOnOther);
};

#endif
