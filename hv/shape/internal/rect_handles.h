// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Dragging the handles of a rectangle: skew and scale of its three points.

#ifndef HV_SHAPE_INTERNAL_RECT_HANDLES_H
#define HV_SHAPE_INTERNAL_RECT_HANDLES_H

#include <hv/shape/HvParallelogram2f.h>

/// The handle that lies opposite, seen from the centre; 4 for the centre itself.
unsigned int HvRectHandle_Opposite(unsigned int handle);

/// Moves the side or corner side that `handle` stands for by `offset`; the opposite side stays. The
/// centre moves nothing.
void HvRectHandle_Skew(HvParallelogram2f& rect, unsigned int handle, HvPoint2<float> const& offset);

/// Stretches the rectangle along its sides so that the line of `handle` comes to lie on `to` while
/// the line of `anchor` stays: a midpoint stretches across its side, a corner across both sides
/// that meet in it.
///
/// @return  false, with `rect` as it was, for the centre, for a rectangle that is or would become
///          degenerate, and for an anchor on the line of the handle itself.
bool HvRectHandle_Stretch(HvParallelogram2f& rect, unsigned int handle, HvPoint2<float> const& to,
                          HvPoint2<float> const& anchor);

/// Scales the rectangle about `center` by one factor, so that `handle` comes to lie where `to`
/// falls on the line through both.
///
/// @return  false, with `rect` as it was, for a factor that is not above 0, for a rectangle that is
///          or would become degenerate, and for a centre on the handle itself.
bool HvRectHandle_Scale(HvParallelogram2f& rect, unsigned int handle, HvPoint2<float> const& to,
                        HvPoint2<float> const& center);

#endif
