// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// One function for each change of an archive's layout, named for its kind and the date of the
// change. A reader of a body calls those that its version has, in the order of the file.
//
// Each reads from `body`, which may have an end, into an implementation without keys and the curve
// that owns it, and returns the bytes used. On bytes that are not what they should be it returns 0
// and sets `ok` to false, and the curve holds no more than what is good to be destroyed.

#ifndef HV_FCURVE_INTERNAL_CURVE_ARCHIVE_READERS_H
#define HV_FCURVE_INTERNAL_CURVE_ARCHIVE_READERS_H

#include <hv/fcurve/HvRawFCurve.h>
#include <hv/fcurve/HvStdFCurve.h>
#include <hv/fcurve/internal/CFCSingleValueImpl.h>
#include <hv/fcurve/internal/HvRawFCurveImpl.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <hv/foundation/byte_codec.h>

#include <cstdint>

// Stepped curves: what follows the identifier, without the user data.

/// Version 257: keys with constraint words of one byte.
unsigned int SetFromHvBooleanFCurve980121ArchiveBuffer(CFCBooleanImpl& impl, HvByteReader& body,
                                                       bool& ok);
/// Version 258: words of two bytes.
unsigned int SetFromHvBooleanFCurve_010221_Buffer(CFCBooleanImpl& impl, HvByteReader& body,
                                                  bool& ok);
/// Version 257: keys with constraint words of one byte.
unsigned int SetFromHvIntegerFCurve980121ArchiveBuffer(CFCIntegerImpl& impl, HvByteReader& body,
                                                       bool& ok);
/// Version 258: words of two bytes.
unsigned int SetFromHvIntegerFCurve_010221_Buffer(CFCIntegerImpl& impl, HvByteReader& body,
                                                  bool& ok);

// Standard curves.

/// From version 259: extrapolation, read only, private bytes and user data.
unsigned int SetFromHvStdFCurve_980508_Buffer(HvByteReader& body, HvStdFCurveImpl& impl,
                                              HvStdFCurve& curve, bool& ok);
/// From version 261: constraint words of two bytes.
unsigned int SetFromHvStdFCurve_010221_Buffer(HvByteReader& body, HvStdFCurveImpl& impl,
                                              HvStdFCurve& curve, bool& ok);
/// From version 262: the default Bezier tangent constraint. No handle is rewritten for it.
unsigned int SetFromHvStdFCurve_020305_Buffer(HvByteReader& body, HvStdFCurveImpl& impl,
                                              HvStdFCurve& curve, bool& ok);
/// From version 264: the time curve flag.
unsigned int SetFromHvStdFCurve_050118_Buffer(HvByteReader& body, HvStdFCurveImpl& impl,
                                              HvStdFCurve& curve, bool& ok);

/// A whole body of a standard curve, whatever its version, migrated to what the newest would hold.
unsigned int HvStdArchive_Read(HvByteReader& body, HvStdFCurveImpl& impl, HvStdFCurve& curve,
                               bool& ok);
/// Makes what an archive of an older `version` held mean the same today.
void HvStdArchive_Migrate(HvStdFCurveImpl& impl, std::uint32_t version);

// Raw curves.

/// From version 258: extrapolation, read only and user data.
unsigned int SetFromHvRawFCurve_980508_Buffer(HvByteReader& body, HvRawFCurveImpl& impl,
                                              HvRawFCurve& curve, bool& ok);
/// From version 259: fields, keys and constraint marker.
unsigned int SetFromHvRawFCurve_010221_Buffer(HvByteReader& body, HvRawFCurveImpl& impl,
                                              HvRawFCurve& curve, bool& ok);
/// From version 264: the time curve flag.
unsigned int SetFromHvRawFCurve_050118_Buffer(HvByteReader& body, HvRawFCurveImpl& impl,
                                              HvRawFCurve& curve, bool& ok);

/// A whole body of a raw curve, whatever its version.
unsigned int HvRawArchive_Read(HvByteReader& body, HvRawFCurveImpl& impl, HvRawFCurve& curve,
                               bool& ok);

#endif
