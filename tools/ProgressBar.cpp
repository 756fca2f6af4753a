// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A progress bar on the terminal.

#include <tools/ProgressBar.h>

#include <algorithm>
#include <cstdio>
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
    : stream_(stream), shown_(shown), label_(std::move(label)), total_(total), start_(Clock::now()),
      next_(start_ + delay)
{
}

ProgressBar::~ProgressBar()
{
    if (drawn_) {
        // Back to the line's start, and erase to its end.
        stream_ << "\r\x1b[K" << std::flush;
    }
}

void ProgressBar::ShowRate(std::string unit)
{
    unit_ = std::move(unit);
}

void ProgressBar::Advance(std::size_t steps)
{
    done_ = std::min(total_, done_ + steps);
    if (shown_ && Clock::now() >= next_) {
        Draw();
        next_ = Clock::now() + kInterval;
    }
}

std::string ProgressBar::Rate() const
{
    double const seconds = std::chrono::duration<double>(Clock::now() - start_).count();
    if (unit_.empty() || done_ == 0 || !(seconds > 0.0)) {
        return "";
    }
    double const rate = static_cast<double>(done_) / seconds;
    // The line may become shorter: what was behind it is erased.
    char text[96];
    std::snprintf(text, sizeof text, ", %.1f %s, %.0f s left\x1b[K", rate, unit_.c_str(),
                  static_cast<double>(total_ - done_) / rate);
    return text;
}

void ProgressBar::Draw()
{
    double const share =
        total_ == 0 ? 1.0 : static_cast<double>(done_) / static_cast<double>(total_);
    std::size_t const filled = static_cast<std::size_t>(share * double(kCells));
    stream_ << "\r" << label_ << " [" << std::string(filled, '#')
            << std::string(kCells - filled, '.') << "] " << static_cast<int>(share * 100.0) << " %"
            << Rate() << std::flush;
    drawn_ = true;
}
