// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The performance counter over the monotonic clock.

#if !defined(_WIN32)

#include <hv/platform/performance_counter.h>

#include <ctime>

namespace {

constexpr long long kNanosecondsPerSecond = 1000000000;

}  // namespace

int QueryPerformanceFrequency(LARGE_INTEGER* frequency)
{
    frequency->QuadPart = kNanosecondsPerSecond;
    return 1;
}

int QueryPerformanceCounter(LARGE_INTEGER* count)
{
    timespec now;
    if (clock_gettime(CLOCK_MONOTONIC, &now) != 0) {
        return 0;
    }
    count->QuadPart = static_cast<long long>(now.tv_sec) * kNanosecondsPerSecond + now.tv_nsec;
    return 1;
}

#endif
