// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What a reader of archives says of one that it refuses.

#ifndef HV_FOUNDATION_HVARCHIVEFAULT_H
#define HV_FOUNDATION_HVARCHIVEFAULT_H

#include <cstddef>

/// Where and why an archive was refused.
struct HvArchiveFault {
    std::size_t place = 0;         ///< bytes from the start of the buffer
    char const* reason = nullptr;  ///< half a sentence, never freed; null when nothing was refused
};

#endif
