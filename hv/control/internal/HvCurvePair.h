// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// HvCurvePair: two curves copied at one moment.

#ifndef HV_CONTROL_INTERNAL_HVCURVEPAIR_H
#define HV_CONTROL_INTERNAL_HVCURVEPAIR_H

#include <hv/control/internal/HvCurvePieces.h>
#include <hv/platform/CActiveDataMultiThreadedRenderingLock.h>

/// Holds the process-wide lock of writers for its life. Who takes it before a curve's section
/// cannot meet another in the opposite order: all who enter two sections hold it.
class HvAccessLock {
public:
    HvAccessLock() { CActiveDataMultiThreadedRenderingLock::ADAccessLock(); }
    ~HvAccessLock() { CActiveDataMultiThreadedRenderingLock::ADAccessUnlock(); }
    HvAccessLock(HvAccessLock const&) = delete;
    HvAccessLock& operator=(HvAccessLock const&) = delete;
};

/// The pieces of a controller and a driven curve as they were together at one moment. The curves
/// are copied under the locks that HvControlOperator tells, and read with the locks released.
class HvCurvePair {
public:
    HvCurvePair(HvBaseFCurve const& controller, HvBaseFCurve const& driven);

    HvCurvePieces const& Controller() const { return controller_; }
    HvCurvePieces const& Driven() const { return driven_; }

private:
    struct Copies;
    explicit HvCurvePair(Copies copies);

    HvCurvePieces controller_;
    HvCurvePieces driven_;
};

#endif
