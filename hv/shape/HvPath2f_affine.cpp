// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The control points of a path as a whole: their extent, and affine edits.

#include <hv/shape/HvPath2f.h>

#include <hv/foundation/HvExtent2.h>
#include <hv/shape/HvShapeLock.h>
#include <hv/shape/internal/shape_transforms.h>

namespace {

template <class T>
HvExtent2<T>& ExtentOf(HvPoint2fArray const& points, HvExtent2<T>& extent)
{
    extent = HvExtent2<T>();
    for (HvPoint2<float> const& p : points) {
        extent.Augment(HvPoint2<T>(p));
    }
    return extent;
}

}  // namespace

HvExtent2<float>& HvPath2f::GetExtent(HvExtent2<float>& extent) const
{
    HvShapeLock const lock(*this);
    return ExtentOf(points, extent);
}

HvExtent2<double>& HvPath2f::GetExtent(HvExtent2<double>& extent) const
{
    HvShapeLock const lock(*this);
    return ExtentOf(points, extent);
}

HvPath2f& HvPath2f::Translate(HvPoint2<float> const& d)
{
    HvShapeLock const lock(*this);
    HvPoint2<float> const offset = d;  // d may be one of the points
    for (HvPoint2<float>& p : points) {
        p = p + offset;
    }
    return *this;
}

HvPath2f& HvPath2f::Rotate(double degrees, HvPoint2<float> const& center)
{
    HvShapeLock const lock(*this);
    return Transform(HvShapeTransform_Rotation(degrees, center));
}

HvPath2f& HvPath2f::Scale(double sx, double sy, HvPoint2<float> const& center)
{
    HvShapeLock const lock(*this);
    return Transform(HvShapeTransform_Scale(sx, sy, center));
}

HvPath2f& HvPath2f::ShearX(double shear, double y0)
{
    return Transform(HvShapeTransform_ShearX(shear, y0));
}

HvPath2f& HvPath2f::ShearY(double shear, double x0)
{
    return Transform(HvShapeTransform_ShearY(shear, x0));
}

HvPath2f& HvPath2f::Transform(HvTransfo4 const& transform)
{
    HvShapeLock const lock(*this);
    transform.MapInPlace(points.Data(), points.Size());
    return *this;
}
