// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Stretching a rectangular region of a curve by one of its sides.

#include <hv/fcurve/HvFCurveStretcher.h>

#include <hv/fcurve/internal/CFCCurveStretcher.h>
#include <hv/foundation/HvDoubleArray.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>

// The part that is the same for every kind of curve.

HvFCurveStretcherImpl* HvFCurveStretcherImpl::Create(HvBaseFCurve& curve,
                                                     HvStretchRequest const& request,
                                                     HvDoubleArray const& listed)
{
    HvFCurveStretcherImpl* const unknown = nullptr;
    return HvCurveKind_Visit(curve, unknown, [&](auto& known) -> HvFCurveStretcherImpl* {
        using Curve = std::decay_t<decltype(known)>;
        if (!request.IsHorizontal() && !HvCurveTool_HasValues(HvCurveToolAccess::ImplOf(known))) {
            return nullptr;
        }
        return new CFCCurveStretcher<Curve>(known, request, listed);
    });
}

HvFCurveStretcherImpl::HvFCurveStretcherImpl(HvBaseFCurve& curve, HvStretchRequest const& request,
                                             HvDoubleArray const& listed)
    : curve_(curve), plan_(curve, request, listed)
{
}

bool HvFCurveStretcherImpl::Limit(HvPoint2<double> const& translation, Step& step) const
{
    double amount = plan_.IsHorizontal() ? translation.x : translation.y;
    if (std::isnan(amount)) {
        return false;
    }
    if (curve_.GetKind() == HvBaseFCurve::Integer && !plan_.IsHorizontal()) {
        constexpr double kLowest = std::numeric_limits<int>::min();
        constexpr double kHighest = std::numeric_limits<int>::max();
        amount = std::floor(std::min(std::max(amount, kLowest), kHighest));
    }
    step = plan_.Limit(amount);
    return true;
}

HvPoint2<double> HvFCurveStretcherImpl::TranslationOf(Step const& step) const
{
    return plan_.IsHorizontal() ? HvPoint2<double>(step.amount, 0)
                                : HvPoint2<double>(0, step.amount);
}

// The tool.

HvFCurveStretcher::HvFCurveStretcher(HvBaseFCurve& curve, HvExtent2<double>& region,
                                     HvDoubleArray const& parameters,
                                     HvExtent2<double> const& limits, HvPoint2<double> const& pivot,
                                     RegionHandle handle, int ripple, double minimalScale)
    : impl_(nullptr)
{
    HvCurveToolLock const lock(curve);
    HvStretchRequest const request{region, limits, pivot, handle, ripple != 0, minimalScale};
    impl_ = HvFCurveStretcherImpl::Create(curve, request, parameters);
}

HvFCurveStretcher::~HvFCurveStretcher()
{
    delete impl_;
}

bool HvFCurveStretcher::IsUsable() const
{
    return impl_ != nullptr && impl_->Plan().IsUsable();
}

int HvFCurveStretcher::Update(HvPoint2<double>& translation, double viewLeft, double viewRight,
                              HvDoubleArray& before, HvDoubleArray& after,
                              HvExtent2<double>& invalid, HvExtent2<double>& region, int& limited)
{
    limited = 0;
    if (!IsUsable()) {
        return 0;
    }
    HvCurveToolLock const lock(impl_->EditedCurve());
    HvStretchPlan::Step step;
    if (impl_->EditedCurve().IsReadOnly() || !impl_->Limit(translation, step) ||
        !impl_->Stretch(step, viewLeft, viewRight, before, after, invalid)) {
        return 0;
    }
    translation = impl_->TranslationOf(step);
    region = impl_->Plan().Stretched(step.share);
    limited = step.limited ? 1 : 0;
    return 1;
}

bool HvFCurveStretcher::ComputeScalingFactorAndTranslationVector(HvPoint2<double>& translation,
                                                                 double& scale)
{
    HvStretchPlan::Step step;
    if (!IsUsable()) {
        translation = HvPoint2<double>();
        scale = step.scale;
        return false;
    }
    HvCurveToolLock const lock(impl_->EditedCurve());
    impl_->Limit(translation, step);
    translation = impl_->TranslationOf(step);
    scale = step.scale;
    return step.limited;
}

int HvFCurveStretcher::Finalize()
{
    if (!IsUsable()) {
        return 0;
    }
    HvCurveToolLock const lock(impl_->EditedCurve());
    impl_->Finalize();
    return 1;
}
