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
};

/// Expects that `operation`, run by a second thread, ends while this thread holds what it holds, or
/// that it does not; `release` then lets it go on. What is to end has all the time that a busy
/// machine needs; what is to wait is watched for a moment only.
inline void ExpectWaits(bool expected, std::function<void()> const& operation,
                        std::function<void()> const& release, char const* lock)
{
    std::future<void> const done = std::async(std::launch::async, operation);
    std::chrono::milliseconds const patience(expected ? 15 : 10000);
    bool const waits = done.wait_for(patience) != std::future_status::ready;
    release();
    done.wait();
    EXPECT_EQ(waits, expected) << "for the " << lock;
}

/// Runs `operation` on `curve` twice, while the access lock and while the curve's section is held.
inline void ExpectLocks(HvBaseFCurve const& curve, LocksTaken expected,
                        std::function<void()> const& operation)
{
    using AccessLock = CActiveDataMultiThreadedRenderingLock;
    AccessLock::ADAccessLock();
    ExpectWaits(
        expected.access, operation, [] { AccessLock::ADAccessUnlock(); }, "access lock");
    curve.AcquireLocks();
    ExpectWaits(
        expected.section, operation, [&curve] { curve.ReleaseLocks(); }, "section");
}

constexpr LocksTaken kNoLocks{false, false};
constexpr LocksTaken kReaderLocks{false, true};
constexpr LocksTaken kWriterLocks{true, true};

#endif
