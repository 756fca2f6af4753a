// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The log files of the timers.

#include <hv/foundation/internal/timer_log.h>

#include <cstdlib>
#include <locale>

HvTimerLine::HvTimerLine(std::streambuf* buffer) : std::ostream(buffer)
{
    imbue(std::locale::classic());
}

void HvTimerLog_SetFile(HvTimerText& text, char const* file, char const* defaultFile)
{
    if (file != nullptr) {
        text.SetPath("", file);
        return;
    }
    for (char const* variable : {"TEMP", "TMP"}) {
        char const* const folder = std::getenv(variable);
        if (folder != nullptr && *folder != '\0') {
            text.SetPath(folder, defaultFile);
            return;
        }
    }
    text.SetPath("", defaultFile + 1);
}
