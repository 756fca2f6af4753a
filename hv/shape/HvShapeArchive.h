// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The layout that the archives of all shapes share.

#ifndef HV_SHAPE_HVSHAPEARCHIVE_H
#define HV_SHAPE_HVSHAPEARCHIVE_H

#include <hv/platform/HvExport.h>
#include <hv/shape/HvShape2f.h>

// A written shape is a body behind its length, all numbers low byte first:
//
//     offset  size
//     0       4     length of the body
//     4       1     kind (HvShape2f::Kind); the body begins here
//     5       3     zero
//     8             the data of the class
//
// A body is read by its own kind and size; the length serves those who step over it, and the
// readers that are given the size of the buffer.

/// The bytes of the length in front of a body: 4.
HV_API unsigned int HvShape2f_GetBufferBodyLengthSize();

/// The kind of a body, which must have two readable bytes: they are read as one number, and
/// HvShape2f::NoShape stands for all but 1 to 4. NoShape for null.
HV_API HvShape2f::Kind HvShape2f_GetKindFromBufferBody(void const* body);

#endif
