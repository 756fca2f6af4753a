// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A view on a world, with pan and zoom.

#include <hv/shape/HvIsoView.h>

#include <algorithm>
#include <cmath>

namespace {

bool IsFinite(HvTransfo4 const& transform)
{
    double const* const m = transform.GetMatrixPtr();
    return std::all_of(m, m + 16, [](double element) { return std::isfinite(element); });
}

/// Sets `inverse` to that of `transform`; false, with `inverse` as it was, when there is none.
bool Invert(HvTransfo4 const& transform, HvTransfo4& inverse)
{
    HvTransfo4 result;
    if (transform.Inverse(result) == 0 || !IsFinite(transform) || !IsFinite(result)) {
        return false;
    }
    inverse = result;
    return true;
}

double DiagonalLength(HvTransfo4 const& transform)
{
    return HvPoint2_LengthAB(transform.Map(HvPoint2<double>(0.0, 0.0)),
                             transform.Map(HvPoint2<double>(1.0, 1.0)));
}

}  // namespace

HvIsoView::HvIsoView(double viewWidth, double pixelX, double viewHeight, double pixelY,
                     double pixelZ)
    : width_(viewWidth), height_(viewHeight)
{
    double const x0 = -viewWidth * pixelX * 0.5;
    double const y0 = -viewHeight * pixelY * 0.5;
    viewToWorld_.SetTo4PointTransform(
        HvPoint3<double>(x0, y0, 0.0), HvPoint3<double>(x0 + pixelX, y0, 0.0),
        HvPoint3<double>(x0, y0 + pixelY, 0.0), HvPoint3<double>(x0, y0, pixelZ));
    Invert(viewToWorld_, worldToView_);
}

int HvIsoView::IsValid() const
{
    return width_ >= 0.0 && height_ >= 0.0 && viewToWorld_.IsSingular() == 0 &&
                   worldToView_.IsSingular() == 0
               ? 1
               : 0;
}

template <class Change>
void HvIsoView::ChangeViewToWorld(Change change)
{
    HvTransfo4 const saved = viewToWorld_;
    change(viewToWorld_);
    if (!Invert(viewToWorld_, worldToView_)) {
        viewToWorld_ = saved;
    }
}

void HvIsoView::Pan(HvPoint2<double> const& offset)
{
    ChangeViewToWorld([&](HvTransfo4& transform) { transform.Translate(offset, 0.0); });
}

void HvIsoView::Zoom(double sx, double sy, double sz, HvPoint2<double> const& center)
{
    ChangeViewToWorld([&](HvTransfo4& transform) {
        transform.Scale(sx, sy, sz, HvPoint3<double>(center.x, center.y, 0.0));
    });
}

void HvIsoView::SetFromExtent(HvExtent2<double> const& extent)
{
    if (width_ == 0.0 || height_ == 0.0) {
        return;
    }
    double const a = width_ / (extent.max.x - extent.min.x);
    double const b = height_ / (extent.max.y - extent.min.y);
    double const scale = std::min(a, b);
    ChangeViewToWorld([&](HvTransfo4& transform) {
        transform.Translate(extent.min, 0.0);
        transform.Scale(1.0 / scale);
    });
}

double HvIsoView::GetWorldUnitVectorLengthInView() const
{
    return DiagonalLength(worldToView_);
}

double HvIsoView::GetViewUnitVectorLengthInWorld() const
{
    return DiagonalLength(viewToWorld_);
}

HvExtent2<double>& HvIsoView::GetViewExtentInViewCS(HvExtent2<double>& extent) const
{
    extent = HvExtent2<double>(std::min(0.0, width_), std::min(0.0, height_), std::max(0.0, width_),
                               std::max(0.0, height_));
    return extent;
}

HvExtent2<double>& HvIsoView::GetViewExtentInWorldCS(HvExtent2<double>& extent) const
{
    viewToWorld_.MapInPlace(GetViewExtentInViewCS(extent));
    return extent;
}
