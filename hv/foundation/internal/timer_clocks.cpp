// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The platform's clocks.

#include <hv/foundation/internal/timer_clocks.h>

#include <hv/platform/performance_counter.h>

#include <chrono>

namespace {

HvTimeOfDay PlatformTimeOfDay()
{
    using namespace std::chrono;
    auto const now = system_clock::now().time_since_epoch();
    auto const wholeSeconds = floor<seconds>(now);
    auto const rest = floor<milliseconds>(now - wholeSeconds);
    return HvTimeOfDay{wholeSeconds.count(), static_cast<int>(rest.count())};
}

bool PlatformCounterFrequency(long long& countsPerSecond)
{
    LARGE_INTEGER frequency;
    if (QueryPerformanceFrequency(&frequency) == 0) {
        return false;
    }
    countsPerSecond = frequency.QuadPart;
    return true;
}

bool PlatformCounter(long long& count)
{
    LARGE_INTEGER now;
    if (QueryPerformanceCounter(&now) == 0) {
        return false;
    }
    count = now.QuadPart;
    return true;
}

HvTimerClocks clocks{&PlatformTimeOfDay, &PlatformCounterFrequency, &PlatformCounter};

}  // namespace

HvTimerClocks& HvTimerClocks_Current()
{
    return clocks;
}
