// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The raw curve: construction, and the templates that it shares with other kinds, instantiated.

#include <hv/fcurve/HvRawFCurve.h>
#include <hv/fcurve/internal/CFCBaseImpl.inl>
#include <hv/fcurve/internal/CFCSingleValueImpl.inl>
#include <hv/fcurve/internal/HvFCurveShell.inl>
#include <hv/fcurve/internal/HvRawFCurveImpl.h>
#include <hv/fcurve/internal/HvSingleValueFCurve.inl>
#include <hv/fcurve/internal/HvSingleValueFCurve_axes.inl>
#include <hv/fcurve/internal/HvSingleValueFCurve_keys.inl>
#include <hv/fcurve/internal/HvSingleValueFCurve_pieces.inl>
#include <hv/fcurve/internal/HvSingleValueFCurve_reshape.inl>
#include <hv/fcurve/internal/data_points.h>

#include <cmath>
#include <memory>

template <>
struct CFCSingleValueTraits<HvRawFCurveImpl> {
    using Curve = HvRawFCurve;
    static constexpr HvBaseFCurve::Kind kKind = HvBaseFCurve::Raw;
    static constexpr bool kIsStepped = false;

    static bool IsValue(double number) { return std::isfinite(number); }
    static bool CanHold(double number) { return std::isfinite(number); }
    static double ValueFrom(double number) { return number; }
    static double ValueForNewKey(HvRawFCurveImpl const& impl, double p)
    {
        return impl.EvalPolyline(p);
    }

    static int FillCurveInfo(HvRawFCurveImpl const& impl, HvBaseFCurve::FCurveInfo& info)
    {
        if (info.mask & 0x08) {
            info.defaultSegmentKind = HvBaseFCurve::LinearSegment;
        }
        if (info.mask & 0x10) {
            info.lowerClamp = impl.lowerClamp;
        }
        if (info.mask & 0x20) {
            info.upperClamp = impl.upperClamp;
        }
        return 1;
    }
    static int FillSegmentInfo(HvBaseFCurve::KeyInfo& info)
    {
        if (info.mask & 0x010) {
            info.leftTangentX = 0;
        }
        if (info.mask & 0x020) {
            info.leftTangentY = 0;
        }
        if (info.mask & 0x040) {
            info.rightTangentX = 0;
        }
        if (info.mask & 0x080) {
            info.rightTangentY = 0;
        }
        if (info.mask & 0x100) {
            info.segmentKind = HvBaseFCurve::LinearSegment;
        }
        return 1;
    }
};

template class CFCBaseImpl<double, CFCSingleValueKey<double>, CFCRawStore>;
template class CFCSingleValueImpl<double, CFCSingleValueKey<double>, CFCRawStore>;
template class HvFCurveShell<HvRawFCurveImpl>;
template class HvSingleValueFCurve<HvRawFCurveImpl>;

namespace {

using Impl = std::unique_ptr<HvRawFCurveImpl>;

HvRawFCurveImpl* NewWithOneKey(double x, double y)
{
    Impl impl(new HvRawFCurveImpl(y));
    impl->AppendKey(x, y);
    return impl.release();
}

HvRawFCurveImpl* NewLine(double x0, double y0, double x1, double y1)
{
    Impl impl(NewWithOneKey(x0, y0));
    impl->AppendKey(x1, y1);
    return impl.release();
}

HvRawFCurveImpl* NewFromPoints(HvPoint2dArray const& points, double tolerance)
{
    HvPoint2dArray const usable = CFCDataPoints_Ascending(points);
    Impl impl(new HvRawFCurveImpl(usable.Size() == 0 ? 0 : usable[0].y));
    impl->SetToApproxLinearFitC0(usable, tolerance);
    return impl.release();
}

}  // namespace

HvRawFCurve::HvRawFCurve(double value) : HvSingleValueFCurve(new HvRawFCurveImpl(value)) {}

HvRawFCurve::HvRawFCurve(double x, double y) : HvSingleValueFCurve(NewWithOneKey(x, y)) {}

HvRawFCurve::HvRawFCurve(double x0, double y0, double x1, double y1)
    : HvSingleValueFCurve(NewLine(x0, y0, x1, y1))
{
}

HvRawFCurve::HvRawFCurve(HvPoint2dArray const& points, double tolerance)
    : HvSingleValueFCurve(NewFromPoints(points, tolerance))
{
}

HvRawFCurve::HvRawFCurve(HvRawFCurve const& other) = default;

HvRawFCurve::HvRawFCurve(HvRawFCurve const& curve, double from, double to)
    : HvSingleValueFCurve(curve, from, to)
{
}

HvRawFCurve& HvRawFCurve::operator=(HvRawFCurve const& other) = default;

HvBaseFCurve* HvRawFCurve::SnapShot(double from, double to, ExtrapolationMethod method) const
{
    if (!HvSnapShot_IsInterval(from, to)) {
        return nullptr;
    }
    // The copy is made under this curve's section; what follows concerns the copy alone.
    std::unique_ptr<HvRawFCurve> result(new HvRawFCurve(*this));
    bool const isMade = SnapShotHelper(*result, *result->impl_, from, to, method);
    return isMade ? result.release() : nullptr;
}

int HvRawFCurve::SmoothSequence(double from, double to, double const* kernel,
                                unsigned int kernelSize)
{
    HvCurveWriter const lock(*this);
    if (impl_->readOnly) {
        return 0;
    }
    return impl_->SmoothSequence(from, to, kernel, kernelSize, *this);
}
