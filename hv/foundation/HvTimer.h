// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// HvTimer: a stopwatch over the time of day, with a line in a log file.

#ifndef HV_FOUNDATION_HVTIMER_H
#define HV_FOUNDATION_HVTIMER_H

#include <hv/foundation/HvMemory.h>
#include <hv/foundation/HvTimerText.h>
#include <hv/platform/HvExport.h>

/// Sums the wall-clock milliseconds of any number of stretches and appends the total to a log file.
///
///     HvTimer timer("fill", nullptr);
///     for (Page const& page : pages) {
///         timer.Start();
///         Fill(page);
///         timer.Stop();
///     }
///     timer.Print();  // fill: 1250 milli s
///
/// The time of day can be set while a stretch runs; HvPrecisionTimer reads a clock that cannot.
/// Threads: a timer belongs to one thread; it takes no lock.
class HV_API HvTimer : public HvAllocated {
public:
    /// A stopped timer with the sum 0.
    ///
    /// @param name  what the line of the log begins with, up to 255 bytes; null counts as empty.
    /// @param file  the log file, used as it stands. Null: HvTimer.log after the value of the
    ///              environment variable TEMP, or where that is not set or empty of TMP, and a
    ///              backslash, on every platform; the name alone where both are.
    HvTimer(char const* name, char const* file);
    /// Writes nothing.
    ~HvTimer();
    HvTimer(HvTimer const&) = delete;
    HvTimer& operator=(HvTimer const&) = delete;

    /// Begins a stretch; the sum stays. Does nothing while one runs already.
    void Start();
    /// Ends the stretch and adds it to the sum. Does nothing when none runs.
    void Stop();

    /// Ends the stretch that runs, if any, and appends a line to the log file: name, ": ", the sum
    /// in milliseconds to six significant digits, " milli s". The sum stays, so that a second call
    /// repeats the line. A file that cannot be opened is passed over in silence.
    void Print();

private:
    HvTimerText name_;
    HvTimerText file_;
    int startMilliseconds_ = 0;  // below the second of startSeconds_
    long long startSeconds_ = 0;
    // Of the sum; the milliseconds are never negative, and are not carried into the seconds.
    long long summedMilliseconds_ = 0;
    long long summedSeconds_ = 0;
    bool isRunning_ = false;
};

#endif
