// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Curves from their archives.
//
// An archive is a length of four bytes, low byte first, and a body of as many bytes. A curve writes
// its own, always of the newest version (HvBaseFCurve::WriteToBuffer), and reads every version
// (HvBaseFCurve::ReadFromBufferBody); the functions here make the curve too. docs/archive.md tells
// the bytes.

#ifndef HV_FCURVE_HVFCURVEARCHIVE_H
#define HV_FCURVE_HVFCURVEARCHIVE_H

#include <hv/foundation/HvArchiveFault.h>
#include <hv/platform/HvExport.h>

#include <cstddef>

class HvBaseFCurve;

/// Bytes of the length that stands before a body: 4.
HV_API unsigned int HvBaseFCurve_GetBufferBodyLengthSize();

/// The kind of the curve in a body, as HvBaseFCurve::GetKind returns it; 0 when it is none. Bodies
/// of the versions below 256 tell no kind: they are of standard curves. Reads 4 bytes of such a
/// body, 8 of another. A null pointer gives 0.
HV_API int HvBaseFCurve_GetKindFromBufferBody(void const* body);

/// Makes the curve of an archive whose length ends at `body`; the caller vouches for the bytes.
/// Bytes that come from outside are read by HvBaseFCurve_CreateFromBuffer.
///
/// @param curve  takes the new curve, which the caller owns; untouched when the result is 0.
/// @return       bytes of the body used; 0 when either pointer is null or the bytes are no archive.
///
/// Not promised: that they are as many as the length tells. For a standard curve of the newest
/// version they are four fewer.
HV_API unsigned int HvBaseFCurve_CreateFromBufferBody(void const* body, HvBaseFCurve** curve);

/// Makes the curve of an archive that may be damaged or hostile.
///
/// @param buffer  the archive from its length on; no byte beyond `size` is read, and no more memory
///                is taken than a curve of that many bytes can need.
/// @param size    bytes at `buffer`; there may be more than the archive has, so that one archive
///                can stand behind another.
/// @param curve   takes the new curve, which the caller owns; null when the result is 0.
/// @return        bytes of the archive, its length included; 0 when a pointer is null, `size` is
///                less than the archive's length tells, the body claims more than that length, or
///                it is no archive. A length greater than the body needs is accepted.
///
/// The numbers are not judged: keys out of order, unknown kinds and extrapolation methods come as
/// they stand, and the curve lives with them; only what is not finite becomes 0.
HV_API unsigned int HvBaseFCurve_CreateFromBuffer(void const* buffer, std::size_t size,
                                                  HvBaseFCurve** curve);

/// The same, and tells where and why the bytes were refused. `fault` is written only when bytes
/// were: not when a pointer is null.
HV_API unsigned int HvBaseFCurve_CreateFromBuffer(void const* buffer, std::size_t size,
                                                  HvBaseFCurve** curve, HvArchiveFault& fault);

#endif
