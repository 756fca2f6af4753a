// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Shapes from their archives.
//
// A shape writes itself (HvShape2f::WriteToBuffer) and reads what it wrote
// (HvShape2f::ReadFromBufferBody); the functions here make the shape too, of whichever kind it is.
// HvShapeArchive.h tells what all kinds begin with, docs/shape_archive.md the bytes.

#ifndef HV_PATHBUILD_HVSHAPEFACTORY_H
#define HV_PATHBUILD_HVSHAPEFACTORY_H

#include <hv/foundation/HvArchiveFault.h>
#include <hv/platform/HvExport.h>

#include <cstddef>

class HvShape2f;

/// Makes the shape of an archive whose length ends at `body`; the caller vouches for the bytes.
/// Bytes that come from outside are read by HvShape2f_CreateFromBuffer.
///
/// @param consumed  takes what the shape's ReadFromBufferBody returned: the bytes of the body, but
///                  for four for each curve of a path with a property. 0 when there is no shape.
/// @return          the new shape, which the caller owns; null for an unknown kind, for a body that
///                  the kind refuses, and without memory. Nothing is thrown.
HV_API HvShape2f* HvShape2f_CreateFromBufferBody(void const* body, unsigned int& consumed);

/// Makes the shape of an archive that may be damaged or hostile.
///
/// @param buffer  the archive from its length on; no byte beyond `size` is read, and no more memory
///                is taken than a shape of that many bytes can need.
/// @param size    bytes at `buffer`; there may be more than the archive has, so that one archive
///                can stand behind another.
/// @param shape   takes the new shape, which the caller owns; null when the result is 0.
/// @return        bytes of the archive, its length included; 0 when a pointer is null, `size` is
///                less than the archive's length tells, the body claims more than that length, or
///                it is no archive. A length greater than the body needs is accepted.
///
/// Coordinates are not judged. The structure is: roles that make up no segments, and property
/// curves that belong to no subpath or stand out of order, are refused.
HV_API unsigned int HvShape2f_CreateFromBuffer(void const* buffer, std::size_t size,
                                               HvShape2f** shape);

/// The same, and tells where and why the bytes were refused. `fault` is written only when bytes
/// were: not when a pointer is null.
HV_API unsigned int HvShape2f_CreateFromBuffer(void const* buffer, std::size_t size,
                                               HvShape2f** shape, HvArchiveFault& fault);

#endif
