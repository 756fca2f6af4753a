// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The log files of the timers: which one, and how a line is written.

#ifndef HV_FOUNDATION_INTERNAL_TIMER_LOG_H
#define HV_FOUNDATION_INTERNAL_TIMER_LOG_H

#include <hv/foundation/HvMemory.h>
#include <hv/foundation/HvTimerText.h>

#include <fstream>
#include <ostream>

/// A log file open at its end. Where it cannot be opened, all that is written to it is lost.
class HvTimerLog : public HvAllocated, public std::ofstream {
public:
    explicit HvTimerLog(char const* file) : std::ofstream(file, std::ios_base::app) {}
};

/// A stream of plain formats for one line into `buffer`, which may be null: the line reads the same
/// whatever the host's locale, and however its own streams are set.
class HvTimerLine : public std::ostream {
public:
    explicit HvTimerLine(std::streambuf* buffer);
};

/// Sets `text` to `file`, or when that is null to the folder that the environment names, TEMP
/// before TMP, with `defaultFile` behind it, which begins with a backslash; that is left out where
/// there is no folder. Elsewhere than on Windows this makes a file beside the folder, whose name
/// begins with the folder's. Throws std::bad_alloc with `text` as it was.
void HvTimerLog_SetFile(HvTimerText& text, char const* file, char const* defaultFile);

#endif
