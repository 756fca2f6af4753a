// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The stopwatch over the time of day.

#include <hv/foundation/HvTimer.h>

#include <hv/foundation/internal/timer_clocks.h>
#include <hv/foundation/internal/timer_log.h>

#include <ostream>

namespace {

constexpr int kMillisecondsPerSecond = 1000;

}  // namespace

HvTimer::HvTimer(char const* name, char const* file)
{
    name_.SetCut(name);
    HvTimerLog_SetFile(file_, file, "\\HvTimer.log");
}

HvTimer::~HvTimer() = default;

void HvTimer::Start()
{
    if (isRunning_) {
        return;
    }
    HvTimeOfDay const now = HvTimerClocks_Current().timeOfDay();
    startSeconds_ = now.seconds;
    startMilliseconds_ = now.milliseconds;
    isRunning_ = true;
}

void HvTimer::Stop()
{
    if (!isRunning_) {
        return;
    }
    HvTimeOfDay const now = HvTimerClocks_Current().timeOfDay();
    summedSeconds_ += now.seconds - startSeconds_;
    summedMilliseconds_ += now.milliseconds - startMilliseconds_;
    // A stretch across a second's change may bring fewer milliseconds than it takes, less than a
    // second of them: one borrowed second covers them.
    if (summedMilliseconds_ < 0) {
        summedSeconds_ -= 1;
        summedMilliseconds_ += kMillisecondsPerSecond;
    }
    isRunning_ = false;
}

void HvTimer::Print()
{
    Stop();
    double const total =
        static_cast<double>(summedSeconds_ * kMillisecondsPerSecond + summedMilliseconds_);
    HvTimerLog log(file_.Text());
    HvTimerLine(log.rdbuf()) << name_.Text() << ": " << total << " milli s" << std::endl;
}
