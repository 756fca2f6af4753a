// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The path: made of a rectangle or an oval.

#include <hv/shape/HvPath2f.h>

#include <hv/shape/HvOval2f.h>
#include <hv/shape/HvRect2f.h>
#include <hv/shape/internal/oval_outline.h>

HvPath2f::HvPath2f(HvRect2f const& rect) : HvPath2f(8)
{
    HvPoint2<float> handles[HvParallelogram2f::kHandles];
    rect.GetPoints(0, HvParallelogram2f::kHandles - 1, handles);
    HvPoint2<float> const corners[] = {handles[2], handles[4], handles[6], handles[8], handles[2]};
    unsigned int const size = 5;
    AppendPolylines(corners, &size, 1);
}

HvPath2f::HvPath2f(HvOval2f const& oval) : HvPath2f(16)
{
    HvOvalHandles handles;
    oval.GetPoints(1, 8, handles);
    HvOvalOutline outline;
    HvOvalOutline_Get<float>(handles, outline);
    HvOvalOutline_AppendTo(*this, outline);
}
