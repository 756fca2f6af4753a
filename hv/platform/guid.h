// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// _GUID: a sixteen-byte identifier.

#ifndef HV_PLATFORM_GUID_H
#define HV_PLATFORM_GUID_H

#if defined(_WIN32)

#include <guiddef.h>

#else

/// Identifies a client's data among those of others, by sixteen bytes chosen once and for ever.
/// Each of the first three fields is a number, stored in the byte order of the machine.
struct _GUID {
    unsigned int Data1;      ///< the first four bytes, as a number
    unsigned short Data2;    ///< the next two
    unsigned short Data3;    ///< the next two
    unsigned char Data4[8];  ///< the last eight, in order
};

#endif

static_assert(sizeof(_GUID) == 16, "an identifier is sixteen bytes without a gap");

#endif
