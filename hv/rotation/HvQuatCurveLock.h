// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Several calls on a shared quaternion curve under its lock.

#ifndef HV_ROTATION_HVQUATCURVELOCK_H
#define HV_ROTATION_HVQUATCURVELOCK_H

#include <hv/rotation/HvQuatCurve.h>

/// Holds the lock of a quaternion curve from its construction to the end of its scope, also when an
/// exception ends it. The curve must outlive the guard: do not drop the last reference inside.
class HvQuatCurveLock {
public:
    /// Enters the lock of `curve`.
    explicit HvQuatCurveLock(HvQuatCurve const& curve) : curve_(curve) { curve_.AcquireLock(); }
    ~HvQuatCurveLock() { curve_.ReleaseLock(); }
    HvQuatCurveLock(HvQuatCurveLock const&) = delete;
    HvQuatCurveLock& operator=(HvQuatCurveLock const&) = delete;

private:
    HvQuatCurve const& curve_;
};

#endif
