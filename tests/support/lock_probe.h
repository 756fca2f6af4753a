// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Which locks a call on a curve takes, seen from a second thread.

#ifndef TESTS_SUPPORT_LOCK_PROBE_H
#define TESTS_SUPPORT_LOCK_PROBE_H

#include <hv/fcurve/HvBaseFCurve.h>
#include <hv/platform/CActiveDataMultiThreadedRenderingLock.h>
#include <tests/support/wait_probe.h>

#include <thread>

/// The locks that meet in a curve operation.
enum class ProbedLock {
    Access,  ///< the process-wide lock of writers
    Section  ///< the curve's own critical section
};

/// Holds one of the two locks while it lives.
class ProbedLockHolder {
public:
    ProbedLockHolder(HvBaseFCurve const& curve, ProbedLock lock) : curve_(curve), lock_(lock)
    {
        if (lock_ == ProbedLock::Access) {
            CActiveDataMultiThreadedRenderingLock::ADAccessLock();
        } else {
            curve_.AcquireLocks();
        }
    }
    ~ProbedLockHolder() { Release(); }
    ProbedLockHolder(ProbedLockHolder const&) = delete;
    ProbedLockHolder& operator=(ProbedLockHolder const&) = delete;

    void Release()
    {
        if (isHeld_ && lock_ == ProbedLock::Access) {
            CActiveDataMultiThreadedRenderingLock::ADAccessUnlock();
        } else if (isHeld_) {
            curve_.ReleaseLocks();
        }
        isHeld_ = false;
    }

private:
    HvBaseFCurve const& curve_;
    ProbedLock lock_;
    bool isHeld_ = true;
};

/// Whether `call()` waits for `lock` of `curve`, which this thread holds; see WaitProbe_Waits.
template <class Call>
bool LockProbe_Waits(HvBaseFCurve const& curve, ProbedLock lock, bool expected, Call call)
{
    ProbedLockHolder holder(curve, lock);
    return WaitProbe_Waits([&] { holder.Release(); }, expected, call);
}

/// Whether another thread gets both locks at once, as it does when no call left one behind.
inline bool LockProbe_AreBothFree(HvBaseFCurve const& curve)
{
    bool got = false;
    std::thread([&] {
        CActiveDataMultiThreadedRenderingLock::ADAccessLock();
        curve.AcquireLocks();
        got = true;
        curve.ReleaseLocks();
        CActiveDataMultiThreadedRenderingLock::ADAccessUnlock();
    }).join();
    return got;
}

#endif
