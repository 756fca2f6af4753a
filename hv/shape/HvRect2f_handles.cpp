// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The rectangle: dragging its handles.

#include <hv/shape/HvRect2f.h>

#include <hv/shape/HvShapeLock.h>
#include <hv/shape/internal/rect_handles.h>

HvPoint2<float> HvRect2f::CenterFor(unsigned int handle, CenterStyle style) const
{
    switch (style) {
    case RectangleCenter:
        return frame_.Handle(0);
    case OppositeHandle:
        return frame_.Handle(HvRectHandle_Opposite(handle));
    default:
        return HvPoint2<float>();
    }
}

int HvRect2f::HandleTranslate(unsigned int handle, HvPoint2<float> const& to)
{
    HvShapeLock const lock(*this);
    frame_.Translate(to - frame_.Handle(handle));
    return 1;
}

bool HvRect2f::HandleRotate(unsigned int handle, HvPoint2<float> const& to, CenterStyle style)
{
    HvShapeLock const lock(*this);
    HvPoint2<float> const center = CenterFor(handle, style);
    double angle = 0.0;
    if (HvPoint2_AngleInDegrees(frame_.Handle(handle) - center, to - center, angle) == 0) {
        return false;
    }
    Rotate(angle, center);
    return true;
}

int HvRect2f::HandleSkew(unsigned int handle, HvPoint2<float> const& to)
{
    HvShapeLock const lock(*this);
    HvRectHandle_Skew(frame_, handle, to - frame_.Handle(handle));
    return 1;
}

int HvRect2f::HandleSkew(unsigned int handle, HvPoint2<float> const& to, HvPoint2<float> const&)
{
    HvShapeLock const lock(*this);
    if (frame_.IsDegenerate()) {
        return 0;
    }
    HvParallelogram2f skewed(frame_);
    HvRectHandle_Skew(skewed, handle, to - frame_.Handle(handle));
    if (skewed.IsDegenerate()) {
        return 0;
    }
    frame_ = skewed;
    return 1;
}

int HvRect2f::HandleScale(unsigned int handle, HvPoint2<float> const& to, CenterStyle style)
{
    HvShapeLock const lock(*this);
    HvPoint2<float> const center = CenterFor(handle, style);
    bool const isCorner = handle >= 2 && handle <= 8 && handle % 2 == 0;
    bool const isScaled = isCorner ? HvRectHandle_Scale(frame_, handle, to, center)
                                   : HvRectHandle_Stretch(frame_, handle, to, center);
    return isScaled ? 1 : 0;
}

int HvRect2f::HandleScale(unsigned int handle, HvPoint2<float> const& to,
                          HvPoint2<float> const& anchor)
{
    HvShapeLock const lock(*this);
    return HvRectHandle_Stretch(frame_, handle, to, anchor) ? 1 : 0;
}
