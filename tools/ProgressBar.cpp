// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A progress bar on the terminal.

#include <tools/ProgressBar.h>

#include <algorithm>
#include <ostream>
#include <utility>

namespace {

/// Cells between the brackets.
constexpr std::size_t kCells = 32;
/// Time between two drawings: ten a second look smooth and cost nothing.
constexpr auto kInterval = std::chrono::milliseconds(100);

}  // namespace

ProgressBar::ProgressBar(std::ostream& stream, bool shown, std::string label, std::size_t total,
                         Clock::duration delay)
    : stream_(stream), shown_(shown), label_(std::move(label)), total_(total),
      next_(Clock::now() + delay)
{
}

ProgressBar::~ProgressBar()
{
    if (drawn_) {
        // Back to the line's start, and erase to its end.
        stream_ << "\r\x1b[K" << std::flush;
    }
}

void ProgressBar::Advance(std::size_t steps)
{
    done_ = std::min(total_, done_ + steps);
    if (shown_ && Clock::now() >= next_) {
        Draw();
        next_ = Clock::now() + kInterval;
    }
}

void ProgressBar::Draw()
{
    double const share =
        total_ == 0 ? 1.0 : static_cast<double>(done_) / static_cast<double>(total_);
    std::size_t const filled = static_cast<std::size_t>(share * double(kCells));
    stream_ << "\r" << label_ << " [" << std::string(filled, '#')
            << std::string(kCells - filled, '.') << "] " << static_cast<int>(share * 100.0) << " %"
            << std::flush;
    drawn_ = true;
}
