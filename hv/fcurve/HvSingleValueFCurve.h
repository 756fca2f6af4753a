// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the kinds of curve have in common whose keys hold one value: boolean, integer and raw.

#ifndef HV_FCURVE_HVSINGLEVALUEFCURVE_H
#define HV_FCURVE_HVSINGLEVALUEFCURVE_H

#include <hv/fcurve/HvFCurveShell.h>

template <class Impl>
struct CFCSingleValueTraits;

/// The slots that stepped and raw curves share: making, moving and removing keys, pieces of the
/// curve, infos and settings. Impl is the implementation of the kind. Nobody uses this base by
/// name; what differs between the kinds is told in HvSteppedFCurve and HvRawFCurve.
template <class Impl>
class HV_API HvSingleValueFCurve : public HvFCurveShell<Impl> {
public:
    using typename HvBaseFCurve::ExtrapolationMethod;
    using typename HvBaseFCurve::FCurveInfo;
    using typename HvBaseFCurve::KeyConstraint;
    using typename HvBaseFCurve::KeyInfo;
    using typename HvBaseFCurve::Kind;
    using typename HvBaseFCurve::RegionHandle;

    HvBaseFCurve const* QueryFCurveKind(Kind kind) const override;
    Kind GetKind() const override;
    HvBaseFCurve* Clone() const override;
    int Set(HvBaseFCurve const& other) override;

    // Infos.

    int GetFCurveInfo(FCurveInfo* info) const override;
    int GetKeyInfoFromIndex(unsigned int index, KeyInfo* info) const override;
    int GetKeyInfoFromParameter(double parameter, KeyInfo* info) const override;

    // Keys.

    int CreateKey(double parameter, double value) override;
    int MergeAndCreateKey(double from, double to, double parameter, double value, int openAtFrom,
                          int openAtTo, int keepKeyData) override;
    int CreateNonModifyingKey(double parameter, int ignoreExtrapolation) override;
    int MergeAndCreateNonModifyingKey(double from, double to, double parameter, int openAtFrom,
                                      int openAtTo, int keepKeyData,
                                      int ignoreExtrapolation) override;
    int RemoveKey(double parameter, double tolerance) override;
    int RemoveKeys(double from, double to, int openAtFrom, int openAtTo) override;
    int SetValueWhenNoKeys(double value) override;

    // Pieces of the curve.

    int Cut(double from, double to, HvBaseFCurve& removed) override;
    int RemoveTail(double parameter) override;
    int RemoveHead(double parameter) override;
    int Append(HvBaseFCurve const& other) override;
    int Paste(HvBaseFCurve const& other, double from, double to) override;

    // The axes.

    int ShiftParameters(double offset) override;
    int ScaleParameterAxis(double scale) override;
    int MirrorParameters() override;

    // Reshaping.

    int ScaleAndOffsetParameters(double from, double to, double pivot, double scale, double offset,
                                 int rippleLeft, int rippleRight, RegionHandle handle,
                                 int selectedOnly) override;
    int ResampleSequence(double from, double to, double step, int keepExisting,
                         int ignoreExtrapolation) override;
    unsigned int ReduceNumKeys(double from, double to, double tolerance) override;

    // Constraints and settings.

    /// 1 for ParameterLocked, ValueLocked and AllLocked.
    int IsConstraintSupported(KeyConstraint constraint) const override;
    int SetExtrapolationMethod(ExtrapolationMethod method) override;
    int SetDefaultBezierTangentConstraint(bool on) override;

protected:
    /// Takes over `impl`.
    explicit HvSingleValueFCurve(Impl* impl);
    /// Copies keys, fields and user data.
    HvSingleValueFCurve(HvSingleValueFCurve const& other);
    /// The stretch of `source` from `from` to `to`.
    HvSingleValueFCurve(HvSingleValueFCurve const& source, double from, double to);
    /// Copies keys, fields and user data; all or nothing.
    HvSingleValueFCurve& operator=(HvSingleValueFCurve const& other);

    /// Swaps keys, fields and user data, for edits that run on a copy.
    void ExchangeContents(HvSingleValueFCurve& other) noexcept;

    using HvFCurveShell<Impl>::impl_;

private:
    using Traits = CFCSingleValueTraits<Impl>;

    int AreAnyLocked(double from, double to, int openAtFrom, int openAtTo) const;
    void Unlock(unsigned int first, unsigned int end);
    void TrimTo(double from, double to);
    int FillKeyInfo(unsigned int index, KeyInfo& info) const;
};

#endif
