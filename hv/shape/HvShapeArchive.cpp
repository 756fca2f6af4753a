// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The layout that the archives of all shapes share.

#include <hv/shape/HvShapeArchive.h>

#include <hv/shape/internal/shape_archive.h>

unsigned int HvShape2f_GetBufferBodyLengthSize()
{
    return kHvShapeLengthBytes;
}

HvShape2f::Kind HvShape2f_GetKindFromBufferBody(void const* body)
{
    if (body == nullptr) {
        return HvShape2f::NoShape;
    }
    HvByteReader reader = HvByteReader::Unbounded(body);
    unsigned int const kind = reader.ReadUInt16();
    return kind >= HvShape2f::Path && kind <= HvShape2f::PathProp1d
               ? static_cast<HvShape2f::Kind>(kind)
               : HvShape2f::NoShape;
}
