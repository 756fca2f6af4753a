// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The locking frame of every curve operation, written once: a slot's body names its guard first.

#ifndef HV_FCURVE_INTERNAL_HVCURVEGUARDS_H
#define HV_FCURVE_INTERNAL_HVCURVEGUARDS_H

#include <hv/fcurve/HvBaseFCurve.h>
#include <hv/platform/CActiveDataMultiThreadedRenderingLock.h>

/// The frame of a reader: the curve's critical section.
class HvCurveReader {
public:
    explicit HvCurveReader(HvBaseFCurve const& curve) : section_(curve.section_)
    {
        EnterCriticalSection(&section_);
    }
    ~HvCurveReader() { LeaveCriticalSection(&section_); }
    HvCurveReader(HvCurveReader const&) = delete;
    HvCurveReader& operator=(HvCurveReader const&) = delete;

private:
    CRITICAL_SECTION& section_;
};

/// The process-wide lock that writers take first.
class HvAccessGuard {
public:
    HvAccessGuard() { CActiveDataMultiThreadedRenderingLock::ADAccessLock(); }
    ~HvAccessGuard() { CActiveDataMultiThreadedRenderingLock::ADAccessUnlock(); }
    HvAccessGuard(HvAccessGuard const&) = delete;
    HvAccessGuard& operator=(HvAccessGuard const&) = delete;
};

/// The frame of a writer: the access lock, then the critical section; released in reverse.
class HvCurveWriter {
public:
    explicit HvCurveWriter(HvBaseFCurve const& curve) : section_(curve) {}

private:
    HvAccessGuard access_;
    HvCurveReader section_;
};

#endif
