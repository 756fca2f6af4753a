// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A critical section that lives as long as the process.

#ifndef HV_PLATFORM_INTERNAL_STATIC_SECTION_H
#define HV_PLATFORM_INTERNAL_STATIC_SECTION_H

#include <hv/platform/critical_section.h>

#include <type_traits>

/// Returns the one section of `Owner`, a type that serves as its name. It is usable from the first
/// static constructor to the last static destructor: nothing constructs it at run time where the
/// record is our own, and nothing ever destroys it.
template <class Owner>
CRITICAL_SECTION& HvStaticSection_Of()
{
    static_assert(std::is_trivially_destructible<CRITICAL_SECTION>::value,
                  "the section must outlive every static object");
    static CRITICAL_SECTION section;
#if defined(_WIN32)
    static bool const made = (InitializeCriticalSection(&section), true);
    static_cast<void>(made);
#endif
    return section;
}

#endif
