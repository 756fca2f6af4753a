// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The work of the curve stretcher, as far as it is the same for every kind of curve.

#ifndef HV_FCURVE_INTERNAL_HVFCURVESTRETCHERIMPL_H
#define HV_FCURVE_INTERNAL_HVFCURVESTRETCHERIMPL_H

#include <hv/fcurve/internal/stretch_plan.h>
#include <hv/foundation/HvMemory.h>

/// A kind takes part by deriving from this, or, where its keys can be dragged like those of the
/// others, as CFCCurveStretcher of its curve. Takes no locks: the tool holds both.
class HvFCurveStretcherImpl : public HvAllocated {
public:
    using Step = HvStretchPlan::Step;

    /// The stretcher for the kind of the curve; null for a kind that the tools do not know, and for
    /// values that cannot be dragged.
    static HvFCurveStretcherImpl* Create(HvBaseFCurve& curve, HvStretchRequest const& request,
                                         HvDoubleArray const& listed);

    HvFCurveStretcherImpl(HvBaseFCurve& curve, HvStretchRequest const& request,
                          HvDoubleArray const& listed);
    virtual ~HvFCurveStretcherImpl() = default;
    HvFCurveStretcherImpl(HvFCurveStretcherImpl const&) = delete;
    HvFCurveStretcherImpl& operator=(HvFCurveStretcherImpl const&) = delete;

    HvBaseFCurve& EditedCurve() const { return curve_; }
    HvStretchPlan const& Plan() const { return plan_; }
    /// The step that a drag by `translation` comes to; false when that is NaN.
    bool Limit(HvPoint2<double> const& translation, Step& step) const;
    /// The translation of a step: its amount on the axis of the handle.
    HvPoint2<double> TranslationOf(Step const& step) const;

    /// Carries out a step on a curve that is not read-only, as HvFCurveStretcher::Update tells.
    virtual int Stretch(Step const& step, double viewLeft, double viewRight, HvDoubleArray& before,
                        HvDoubleArray& after, HvExtent2<double>& invalid) = 0;
    /// Gives the keys their user data back; again, does nothing.
    virtual void Finalize() = 0;

private:
    HvBaseFCurve& curve_;
    HvStretchPlan plan_;
};

#endif
