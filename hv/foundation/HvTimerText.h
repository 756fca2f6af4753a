// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// HvTimerText: a text that a timer owns.

#ifndef HV_FOUNDATION_HVTIMERTEXT_H
#define HV_FOUNDATION_HVTIMERTEXT_H

#include <hv/platform/HvExport.h>

#include <cstddef>

/// A text in a block of 256 bytes, so that a timer that is renamed while it measures allocates
/// nothing. Only names of files grow beyond the block: half of such a name is another file's.
///
/// Threads: none of its own; it belongs to the thread of its timer.
class HV_API HvTimerText {
public:
    /// An empty text.
    HvTimerText();
    ~HvTimerText();
    HvTimerText(HvTimerText const&) = delete;
    HvTimerText& operator=(HvTimerText const&) = delete;

    /// Copies the first 255 bytes of `text`; null counts as empty. Never fails.
    void SetCut(char const* text) noexcept;
    /// Copies the text of `folder`, then that of `name`, whole. Throws std::bad_alloc, and the text
    /// is then as it was, when they do not fit the block and a longer one is not to be had.
    void SetPath(char const* folder, char const* name);

    /// The text, ended by a zero byte; valid until it is set again.
    char const* Text() const { return text_; }

private:
    char* text_;  // never null
    std::size_t capacity_;
};

#endif
