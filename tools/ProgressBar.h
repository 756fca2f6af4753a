// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A progress bar on the terminal.

#ifndef HV_TOOLS_PROGRESSBAR_H
#define HV_TOOLS_PROGRESSBAR_H

#include <chrono>
#include <cstddef>
#include <iosfwd>
#include <string>

/// Shows how much of some work is done, on one line that vanishes with the object. Work that ends
/// quickly shows nothing.
class ProgressBar {
public:
    using Clock = std::chrono::steady_clock;

    /// @param shown  whether anything is shown at all: whether `stream` is a terminal.
    /// @param total  the steps of the work; 0 counts as done.
    /// @param delay  how long work stays silent.
    ProgressBar(std::ostream& stream, bool shown, std::string label, std::size_t total,
                Clock::duration delay = std::chrono::milliseconds(300));
    ~ProgressBar();
    ProgressBar(ProgressBar const&) = delete;
    ProgressBar& operator=(ProgressBar const&) = delete;

    /// Also shows how many steps a second are done, under the name `unit`, and the time left.
    void ShowRate(std::string unit);

    /// Counts further steps as done.
    void Advance(std::size_t steps);

private:
    void Draw();
    std::string Rate() const;

    std::ostream& stream_;
    bool shown_;
    bool drawn_ = false;
    std::string label_;
    std::string unit_;
    std::size_t total_;
    std::size_t done_ = 0;
    Clock::time_point start_;
    Clock::time_point next_;
};

#endif
