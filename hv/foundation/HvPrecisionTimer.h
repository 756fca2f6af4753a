// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// HvPrecisionTimer: a stopwatch over the hardware's performance counter.

#ifndef HV_FOUNDATION_HVPRECISIONTIMER_H
#define HV_FOUNDATION_HVPRECISIONTIMER_H

#include <hv/foundation/HvMemory.h>
#include <hv/foundation/HvTimerText.h>
#include <hv/platform/HvExport.h>

#include <iosfwd>
#include <memory>

class HvTimerLog;

/// Measures one stretch of time to the counter's resolution and writes it, in a unit of choice, to
/// a log file or to the standard output.
///
/// Threads: a timer belongs to one thread and takes no lock; the counter's frequency is one value
/// of the process, which any number of timers may renew at once.
class HV_API HvPrecisionTimer : public HvAllocated {
public:
    /// The unit of results. Any other value is written as " ms" but counts seconds.
    enum Hv_Timer_Unit : int {
        Seconds = 1,       ///< " s"
        Milliseconds = 2,  ///< " ms"
        Microseconds = 4,  ///< " us"
        Nanoseconds = 8,   ///< " ns"
        Picoseconds = 16   ///< " ps"
    };

    /// Where results go. Any other value writes nothing.
    enum Hv_Timer_Out : int {
        LogFile = 2,        ///< the end of the log file, open from the naming of the file on
        StandardOutput = 4  ///< std::cout's buffer
    };

    /// A timer with both counts at 0. Writes the warning when the hardware has no counter.
    ///
    /// @param name              what lines without a label begin with; see SetName.
    /// @param file              the log file; see SetOutputFile.
    /// @param writeNameAndUnit  see WriteNameAndUnit.
    HvPrecisionTimer(char const* name, char const* file, Hv_Timer_Out output, Hv_Timer_Unit unit,
                     bool writeNameAndUnit);
    /// Closes the log file.
    ~HvPrecisionTimer();
    HvPrecisionTimer(HvPrecisionTimer const&) = delete;
    HvPrecisionTimer& operator=(HvPrecisionTimer const&) = delete;

    /// Takes up to 255 bytes of `name`; null counts as empty.
    void SetName(char const* name);
    /// Sets the unit in which times are told.
    void SetUnit(Hv_Timer_Unit unit);
    /// Takes `file` as it stands. Null: HvHPTimer.log after the value of the environment variable
    /// TEMP, or where that is not set or empty of TMP, and a backslash, on every platform; the name
    /// alone where both are. With the output LogFile the file that was open is closed and this one
    /// opened at its end; one that cannot be opened swallows what is written.
    /// std::bad_alloc leaves a timer that has no file open, or its old one.
    void SetOutputFile(char const* file);
    /// Whether the unit is written behind the value.
    void WriteNameAndUnit(bool on);

    /// Reads the counter into the start count.
    void Start();
    /// Reads the counter into the stop count.
    void Stop();

    /// The time from the start count to the stop count in the unit of the timer; 0 where no counter
    /// was ever found.
    double ComputeResult() const;
    /// Writes a line: `label`, or the timer's name when it is null, ": ", the result to six
    /// significant digits and, when the name and the unit are to be written, the unit's text.
    void OutputResults(char const* label);
    /// Writes "Hardware does not support performance timer" on a line of its own.
    void OutputWarning();
    /// Sets both counts to 0 and asks for the counter's frequency. Returns whether there is a
    /// counter.
    bool InitCounter();

private:
    /// The buffer that lines go to; null for none.
    std::streambuf* OutputBuffer() const;

    long long startCount_ = 0;
    long long stopCount_ = 0;
    std::unique_ptr<HvTimerLog> log_;
    HvTimerText name_;
    HvTimerText unitText_;
    HvTimerText file_;
    Hv_Timer_Unit unit_;
    Hv_Timer_Out output_;
    [[maybe_unused]] bool reserved_ = false;
    bool hasCounter_ = false;
    bool writeNameAndUnit_;
};

#endif
