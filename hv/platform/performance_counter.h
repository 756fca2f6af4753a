// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The performance counter: a clock that only goes forward.

#ifndef HV_PLATFORM_PERFORMANCE_COUNTER_H
#define HV_PLATFORM_PERFORMANCE_COUNTER_H

#include <hv/platform/HvExport.h>

#if defined(_WIN32)

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#else

/// A 64-bit count in the record that the counter's functions fill.
struct LARGE_INTEGER {
    long long QuadPart;  ///< the count, or the counts of a second
};

/// Stores how many counts make a second: 1,000,000,000. Returns 1.
/// Threads: any.
HV_API int QueryPerformanceFrequency(LARGE_INTEGER* frequency);

/// Stores the count of this moment, in nanoseconds from an unnamed start; it never goes back and is
/// not set with the time of day. Returns 1, or 0 with `*count` as it was when there is no clock.
/// Threads: any; the counts of all threads are of one clock.
HV_API int QueryPerformanceCounter(LARGE_INTEGER* count);

#endif

#endif
