// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Several calls on a curve under one lock.

#ifndef HV_FCURVE_HVCURVELOCK_H
#define HV_FCURVE_HVCURVELOCK_H

#include <hv/fcurve/HvBaseFCurve.h>

/// Holds a curve's critical section for the life of the guard, through AcquireLocks and
/// ReleaseLocks. Inside, EvalNoLock and all other calls on the curve are safe from this thread. A
/// writer called inside takes the process-wide access lock after the section: hold one curve at a
/// time around writers, or the order of locks is turned round.
class HvCurveLock {
public:
    /// Enters the section of `curve`, which must outlive the lock.
    explicit HvCurveLock(HvBaseFCurve const& curve) : curve_(curve) { curve_.AcquireLocks(); }
    ~HvCurveLock() { curve_.ReleaseLocks(); }
    HvCurveLock(HvCurveLock const&) = delete;
    HvCurveLock& operator=(HvCurveLock const&) = delete;

private:
    HvBaseFCurve const& curve_;
};

#endif
