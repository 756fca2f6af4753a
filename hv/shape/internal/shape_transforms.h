// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The transforms of the affine edits, which each class applies to its own points.

#ifndef HV_SHAPE_INTERNAL_SHAPE_TRANSFORMS_H
#define HV_SHAPE_INTERNAL_SHAPE_TRANSFORMS_H

#include <hv/foundation/HvPoint2.h>
#include <hv/foundation/HvPoint3.h>
#include <hv/rotation/HvTransfo4.h>

/// HvShape2f::Rotate: about the axis through `center`, counter-clockwise.
inline HvTransfo4 HvShapeTransform_Rotation(double degrees, HvPoint2<float> const& center)
{
    HvTransfo4 transform;
    transform.Rotate(degrees, HvPoint3<float>(center.x, center.y, 0.0F),
                     HvPoint3<float>(center.x, center.y, 1.0F));
    return transform;
}

/// HvShape2f::Scale.
inline HvTransfo4 HvShapeTransform_Scale(double sx, double sy, HvPoint2<float> const& center)
{
    HvTransfo4 transform;
    transform.Scale(sx, sy, 1.0, HvPoint3<float>(center.x, center.y, 0.0F));
    return transform;
}

/// HvShape2f::ShearX. `y0` stands in the first coordinate of the fixed point, as hosts expect from
/// shapes that they saved; so it cancels out.
inline HvTransfo4 HvShapeTransform_ShearX(double shear, double y0)
{
    HvTransfo4 transform;
    transform.ShearXZ(shear, 0.0, HvPoint3<double>(y0, 0.0, 0.0));
    return transform;
}

/// HvShape2f::ShearY.
inline HvTransfo4 HvShapeTransform_ShearY(double shear, double x0)
{
    HvTransfo4 transform;
    transform.ShearYZ(shear, 0.0, HvPoint3<double>(x0, 0.0, 0.0));
    return transform;
}

#endif
