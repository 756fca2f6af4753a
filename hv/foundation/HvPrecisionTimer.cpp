// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The stopwatch over the performance counter.

#include <hv/foundation/HvPrecisionTimer.h>

#include <hv/foundation/internal/timer_clocks.h>
#include <hv/foundation/internal/timer_log.h>

#include <atomic>
#include <iostream>

namespace {

// Counts of a second; 0 until a counter was found. The only state of the process that timers share:
// atomic, because timers of several threads store it.
std::atomic<long long> countsPerSecond{0};

// The text and the factor of a unit are told apart on purpose: they differ on unknown units, which
// show as milliseconds but count seconds.

char const* UnitText(HvPrecisionTimer::Hv_Timer_Unit unit)
{
    switch (unit) {
    case HvPrecisionTimer::Seconds:
        return " s";
    case HvPrecisionTimer::Milliseconds:
        return " ms";
    case HvPrecisionTimer::Microseconds:
        return " us";
    case HvPrecisionTimer::Nanoseconds:
        return " ns";
    case HvPrecisionTimer::Picoseconds:
        return " ps";
    }
    return " ms";
}

double UnitsPerSecond(HvPrecisionTimer::Hv_Timer_Unit unit)
{
    switch (unit) {
    case HvPrecisionTimer::Seconds:
        return 1;
    case HvPrecisionTimer::Milliseconds:
        return 1000;
    case HvPrecisionTimer::Microseconds:
        return 1e6;
    case HvPrecisionTimer::Nanoseconds:
        return 1e9;
    case HvPrecisionTimer::Picoseconds:
        return 1e12;
    }
    return 1;
}

}  // namespace

HvPrecisionTimer::HvPrecisionTimer(char const* name, char const* file, Hv_Timer_Out output,
                                   Hv_Timer_Unit unit, bool writeNameAndUnit)
    : unit_(unit), output_(output), writeNameAndUnit_(writeNameAndUnit)
{
    name_.SetCut(name);
    SetOutputFile(file);
    unitText_.SetCut(UnitText(unit));
    hasCounter_ = InitCounter();
    if (!hasCounter_) {
        OutputWarning();
    }
}

HvPrecisionTimer::~HvPrecisionTimer() = default;

void HvPrecisionTimer::SetName(char const* name)
{
    name_.SetCut(name);
}

void HvPrecisionTimer::SetUnit(Hv_Timer_Unit unit)
{
    unit_ = unit;
    unitText_.SetCut(UnitText(unit));
}

void HvPrecisionTimer::SetOutputFile(char const* file)
{
    HvTimerLog_SetFile(file_, file, "\\HvHPTimer.log");
    if (output_ == LogFile) {
        log_.reset();
        log_.reset(new HvTimerLog(file_.Text()));
    }
}

void HvPrecisionTimer::WriteNameAndUnit(bool on)
{
    writeNameAndUnit_ = on;
}

void HvPrecisionTimer::Start()
{
    HvTimerClocks_Current().counter(startCount_);
}

void HvPrecisionTimer::Stop()
{
    HvTimerClocks_Current().counter(stopCount_);
}

double HvPrecisionTimer::ComputeResult() const
{
    long long const frequency = countsPerSecond.load(std::memory_order_relaxed);
    if (frequency <= 0) {
        return 0;
    }
    return static_cast<double>(stopCount_ - startCount_) / static_cast<double>(frequency) *
           UnitsPerSecond(unit_);
}

void HvPrecisionTimer::OutputResults(char const* label)
{
    HvTimerLine line(OutputBuffer());
    line << (label != nullptr ? label : name_.Text()) << ": " << ComputeResult();
    if (writeNameAndUnit_) {
        line << unitText_.Text();
    }
    line << std::endl;
}

void HvPrecisionTimer::OutputWarning()
{
    HvTimerLine(OutputBuffer()) << "Hardware does not support performance timer" << std::endl;
}

bool HvPrecisionTimer::InitCounter()
{
    startCount_ = 0;
    stopCount_ = 0;
    long long frequency = 0;
    if (!HvTimerClocks_Current().counterFrequency(frequency)) {
        return false;
    }
    countsPerSecond.store(frequency, std::memory_order_relaxed);
    return true;
}

std::streambuf* HvPrecisionTimer::OutputBuffer() const
{
    switch (output_) {
    case LogFile:
        return log_ != nullptr ? log_->rdbuf() : nullptr;
    case StandardOutput:
        return std::cout.rdbuf();
    }
    return nullptr;
}
