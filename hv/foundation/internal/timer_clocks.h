// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The clocks that the timers read, in one place where a test can put its own.

#ifndef HV_FOUNDATION_INTERNAL_TIMER_CLOCKS_H
#define HV_FOUNDATION_INTERNAL_TIMER_CLOCKS_H

/// A moment of the wall clock.
struct HvTimeOfDay {
    long long seconds;
    int milliseconds;  ///< 0 to 999
};

/// The clocks, each as a function.
struct HvTimerClocks {
    HvTimeOfDay (*timeOfDay)();
    /// Stores the counts of a second; false, with the argument as it was, where there is no
    /// counter.
    bool (*counterFrequency)(long long& countsPerSecond);
    /// Stores the count of this moment; false, with the argument as it was, where there is none.
    bool (*counter)(long long& count);
};

/// The clocks in use: those of the platform, until somebody assigns others. Threads: assign while
/// no timer is in use.
HvTimerClocks& HvTimerClocks_Current();

#endif
