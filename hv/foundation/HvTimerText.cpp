// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The texts of the timers.

#include <hv/foundation/HvTimerText.h>

#include <hv/foundation/HvMemory.h>

#include <cstring>

namespace {

// Bytes of a text with its zero byte: enough for any name that somebody gives a measurement.
constexpr std::size_t kTextBytes = 256;

}  // namespace

HvTimerText::HvTimerText()
    : text_(static_cast<char*>(HvAllocate(kTextBytes))), capacity_(kTextBytes)
{
}

HvTimerText::~HvTimerText()
{
    HvFree(text_);
}

void HvTimerText::SetCut(char const* text) noexcept
{
    std::size_t length = 0;
    if (text != nullptr) {
        while (length < kTextBytes - 1 && text[length] != '\0') {
            ++length;
        }
        std::memmove(text_, text, length);
    }
    text_[length] = '\0';
}

void HvTimerText::SetPath(char const* folder, char const* name)
{
    std::size_t const folderLength = std::strlen(folder);
    std::size_t const nameLength = std::strlen(name);
    std::size_t const size = folderLength + nameLength + 1;
    if (size > capacity_) {
        char* const longer = static_cast<char*>(HvAllocate(size));
        HvFree(text_);
        text_ = longer;
        capacity_ = size;
    }
    std::memcpy(text_, folder, folderLength);
    std::memcpy(text_ + folderLength, name, nameLength + 1);
}
