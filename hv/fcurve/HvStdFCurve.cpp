// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Life of the standard curve: construction, copies, sections.

#include <hv/fcurve/HvStdFCurve.h>
#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <hv/fcurve/internal/data_points.h>
#include <hv/foundation/HvPoint2dArray.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

using FSKind = HvBaseFCurve::FSKind;
using Impl = std::unique_ptr<HvStdFCurveImpl>;

/// A kind that the curve knows; what is none of them becomes cubic.
FSKind KnownKind(FSKind kind)
{
    bool const isKnown =
        kind >= HvBaseFCurve::ConstantSegment && kind <= HvBaseFCurve::CubicSegment;
    return isKnown ? kind : HvBaseFCurve::CubicSegment;
}

Impl NewImpl(double valueWhenNoKeys)
{
    return Impl(new HvStdFCurveImpl(valueWhenNoKeys, HvBaseFCurve::CubicSegment));
}

/// Ends a construction: the kinds of the outer spans, the first one last of all.
HvStdFCurveImpl* Finished(Impl impl, FSKind first, FSKind last)
{
    if (impl->NumKeys() != 0) {
        impl->keys[impl->NumKeys() - 1].segmentKind = static_cast<unsigned char>(KnownKind(last));
    }
    impl->defaultSegmentKind = KnownKind(first);
    return impl.release();
}

HvStdFCurveImpl* NewWithoutKeys(double value, FSKind kind)
{
    return Finished(NewImpl(value), kind, kind);
}

HvStdFCurveImpl* NewWithOneKey(double x, double leftValue, double rightValue, FSKind first,
                               FSKind last)
{
    Impl impl = NewImpl(leftValue);
    CFCStdKey key(x, leftValue, last);
    key.rightValue = rightValue;
    key.rightHandle.y = rightValue;
    impl->AppendKey(key);
    return Finished(std::move(impl), first, last);
}

HvStdFCurveImpl* NewLine(double x0, double y0, double x1, double y1, FSKind first, FSKind last)
{
    Impl impl = NewImpl(y0);
    impl->AppendKey(CFCStdKey(x0, y0, HvBaseFCurve::LinearSegment));
    impl->AppendKey(CFCStdKey(x1, y1, last));
    return Finished(std::move(impl), first, last);
}

HvStdFCurveImpl* NewCubic(HvPoint2<double> const& P0, HvPoint2<double> const& P1,
                          HvPoint2<double> const& P2, HvPoint2<double> const& P3, FSKind first,
                          FSKind last)
{
    Impl impl = NewImpl(P0.y);
    CFCStdKey start(P0.x, P0.y, HvBaseFCurve::CubicSegment);
    start.rightHandle = P1;
    impl->AppendKey(start);
    CFCStdKey end(P3.x, P3.y, last);
    end.leftHandle = P2;
    impl->AppendKey(end);
    return Finished(std::move(impl), first, last);
}

HvStdFCurveImpl* NewFromPoints(HvPoint2dArray const& points, HvStdFCurve::DPMethod method,
                               double tolerance, FSKind first, FSKind last)
{
    HvPoint2dArray const kept = CFCDataPoints_Ascending(points);
    Impl impl = NewImpl(kept.Size() == 0 ? 0 : kept[0].y);
    if (kept.Size() != 0) {
        switch (method) {
        case HvStdFCurve::InterpCatmullRom:
            impl->SetToInterpCatmullRom(kept);
            break;
        case HvStdFCurve::InterpCubicC2:
            impl->SetToInterpCubicC2(kept);
            break;
        case HvStdFCurve::ApproxLinearFitC0:
            impl->SetToApproxLinearFitC0(kept, tolerance);
            break;
        case HvStdFCurve::ApproxCubicFitG1:
            impl->SetToApproxCubicFitG1(kept, tolerance);
            break;
        }
    }
    return Finished(std::move(impl), first, last);
}

/// Fixes the handles of the key at x, or of the two keys around it.
void FixHandlesAround(HvStdFCurveImpl& impl, double x)
{
    int exact = 0;
    unsigned int const count = impl.LocateParameter(x, exact);
    if (count > 0) {
        impl.FixKeyHandles(count - 1);
    }
    if (exact == 0 && count < impl.NumKeys()) {
        impl.FixKeyHandles(count);
    }
}

bool IsInKeyRange(HvStdFCurveImpl const& impl, double x)
{
    return impl.NumKeys() != 0 && impl.FirstParameter() <= x && x <= impl.LastParameter();
}

}  // namespace

HvStdFCurveImpl::HvStdFCurveImpl(double value, FSKind kind) : CFCBaseImpl(value)
{
    defaultSegmentKind = kind;
}

HvStdFCurve::HvStdFCurve(double value, FSKind kind) : HvFCurveShell(NewWithoutKeys(value, kind)) {}

HvStdFCurve::HvStdFCurve(double x, double leftValue, double rightValue, FSKind first, FSKind last)
    : HvFCurveShell(NewWithOneKey(x, leftValue, rightValue, first, last))
{
}

HvStdFCurve::HvStdFCurve(double x0, double y0, double x1, double y1, FSKind first, FSKind last)
    : HvFCurveShell(NewLine(x0, y0, x1, y1, first, last))
{
}

HvStdFCurve::HvStdFCurve(HvPoint2<double> const& P0, HvPoint2<double> const& P1,
                         HvPoint2<double> const& P2, HvPoint2<double> const& P3, FSKind first,
                         FSKind last)
    : HvFCurveShell(NewCubic(P0, P1, P2, P3, first, last))
{
}

HvStdFCurve::HvStdFCurve(HvPoint2dArray const& points, DPMethod method, double tolerance,
                         FSKind first, FSKind last)
    : HvFCurveShell(NewFromPoints(points, method, tolerance, first, last))
{
}

HvStdFCurve::HvStdFCurve(HvStdFCurve const& other) : HvFCurveShell(other) {}

HvStdFCurve::HvStdFCurve(HvStdFCurve const& curve, double from, double to) : HvFCurveShell(curve)
{
    double const start = std::min(from, to);
    double const end = std::max(from, to);

    // Nothing that guards the curve's keys against editing may keep it from being copied in part:
    // the copy is trimmed writable and without locks on the keys that go or become its ends.
    unsigned char const wasReadOnly = impl_->readOnly;
    constexpr unsigned short kLocks =
        CFCKeyConstraint::kParameterLocked | CFCKeyConstraint::kValueLocked;
    unsigned short locksAtStart = 0;
    unsigned short locksAtEnd = 0;
    for (CFCStdKey& key : impl_->keys) {
        auto const locks = static_cast<unsigned short>(key.constraints.word & kLocks);
        if (key.parameter == start) {
            locksAtStart = locks;
        }
        if (key.parameter == end) {
            locksAtEnd = locks;
        }
        if (!(start < key.parameter && key.parameter < end)) {
            key.constraints.Clear(kLocks);
        }
    }
    impl_->readOnly = 0;
    if (IsInKeyRange(*impl_, start)) {
        FixHandlesAround(*impl_, start);
        HvStdFCurve::RemoveHead(start);
    }
    if (IsInKeyRange(*impl_, end)) {
        FixHandlesAround(*impl_, end);
        HvStdFCurve::RemoveTail(end);
    }
    for (CFCStdKey& key : impl_->keys) {
        key.constraints.Set(key.parameter == start ? locksAtStart
                            : key.parameter == end ? locksAtEnd
                                                   : 0);
    }
    impl_->readOnly = wasReadOnly;
}

HvStdFCurve& HvStdFCurve::operator=(HvStdFCurve const& other)
{
    HvFCurveShell::operator=(other);
    return *this;
}

HvBaseFCurve const* HvStdFCurve::QueryFCurveKind(Kind kind) const
{
    HvCurveReader const lock(*this);
    return kind == Standard ? this : nullptr;
}

HvBaseFCurve::Kind HvStdFCurve::GetKind() const
{
    return Standard;
}

HvBaseFCurve* HvStdFCurve::Clone() const
{
    return new HvStdFCurve(*this);
}

int HvStdFCurve::Set(HvBaseFCurve const& other)
{
    HvBaseFCurve const* const same = other.QueryFCurveKind(Standard);
    if (same == nullptr) {
        return 0;
    }
    *this = *static_cast<HvStdFCurve const*>(same);
    return 1;
}
