// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Which locks an operation takes, observed by a second thread.

#ifndef TESTS_FCURVE_LOCK_PROBE_H
#define TESTS_FCURVE_LOCK_PROBE_H

#include <hv/fcurve/HvCurveLock.h>
#include <hv/platform/CActiveDataMultiThreadedRenderingLock.h>

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <future>
#include <thread>

/// The locks that an operation waits for.
struct LocksTaken {
    bool access;
    bool section;

    friend bool operator==(LocksTaken const& a, LocksTaken const& b)
    {
        return a.access == b.access && a.section == b.section;
    }
    friend void PrintTo(LocksTaken const& locks, std::ostream* out)
    {
        *out << (locks.access ? "access lock " : "") << (locks.section ? "section" : "");
    }
};

/// Whether `operation`, run by a second thread, does not end while this thread holds what it holds.
/// The answer comes within 20 ms; `release` then lets the operation go on.
inline bool Waits(std::function<void()> const& operation, std::function<void()> const& release)
{
    std::future<void> const done = std::async(std::launch::async, operation);
    bool const waits = done.wait_for(std::chrono::milliseconds(20)) != std::future_status::ready;
    release();
    done.wait();
    return waits;
}

/// Runs `operation` on `curve` twice, while the access lock and while the curve's section is held.
inline LocksTaken LocksTakenBy(HvBaseFCurve const& curve, std::function<void()> const& operation)
{
    using AccessLock = CActiveDataMultiThreadedRenderingLock;
    AccessLock::ADAccessLock();
    bool const access = Waits(operation, [] { AccessLock::ADAccessUnlock(); });
    curve.AcquireLocks();
    bool const section = Waits(operation, [&curve] { curve.ReleaseLocks(); });
    return {access, section};
}

constexpr LocksTaken kNoLocks{false, false};
constexpr LocksTaken kReaderLocks{false, true};
constexpr LocksTaken kWriterLocks{true, true};

#endif
