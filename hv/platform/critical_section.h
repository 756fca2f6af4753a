// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// CRITICAL_SECTION: recursive mutual exclusion on a small embedded record.

#ifndef HV_PLATFORM_CRITICAL_SECTION_H
#define HV_PLATFORM_CRITICAL_SECTION_H

#include <hv/platform/HvExport.h>

#if defined(_WIN32)

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#else

#include <atomic>
#include <cstdint>

/// Recursive lock of 16 bytes, made to be embedded in each of a million objects. It lies still: no
/// copy, no move. Its fields are for the functions below alone.
///
/// Entering or leaving a section that nobody else wants is one atomic exchange; entering again, as
/// its owner, and leaving that inner entry touches no other core's memory. A thread that meets a
/// held section looks again for a moment and is then parked until a leave wakes it. Neither order
/// of arrival nor fairness is promised. No function here throws or changes errno.
struct CRITICAL_SECTION {
    std::atomic<std::uint32_t> state{0};   ///< 0 free, 1 held, 2 held and perhaps waited for
    std::uint32_t reentries = 0;           ///< entries of the owner beyond its first; owner's alone
    std::atomic<std::uintptr_t> owner{0};  ///< identity of the holding thread, 0 for none
};

/// Makes `section` free. A record with static storage is free even without this call.
HV_API void InitializeCriticalSection(CRITICAL_SECTION* section);

/// Enters `section`, waiting while another thread is inside. The owner may enter again, up to 2^32
/// entries; each wants its own leave.
HV_API void EnterCriticalSection(CRITICAL_SECTION* section);

/// Enters `section` if that needs no waiting: 1 when it is entered now (also once more by its
/// owner), 0 when another thread holds it.
HV_API int TryEnterCriticalSection(CRITICAL_SECTION* section);

/// Takes back one entry of the calling thread, which must be inside; the last one frees the section
/// and wakes one waiting thread.
HV_API void LeaveCriticalSection(CRITICAL_SECTION* section);

/// Ends the life of `section`, which must be free; it holds no resource outside of itself, and
/// InitializeCriticalSection may begin it anew.
HV_API void DeleteCriticalSection(CRITICAL_SECTION* section);

#endif

#endif
