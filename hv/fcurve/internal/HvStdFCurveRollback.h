// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// All or nothing for an edit of a standard curve that may find out late that it cannot be done.

#ifndef HV_FCURVE_INTERNAL_HVSTDFCURVEROLLBACK_H
#define HV_FCURVE_INTERNAL_HVSTDFCURVEROLLBACK_H

#include <hv/fcurve/HvStdFCurve.h>

/// Copies the curve, and gives it back its keys, fields and user data unless Commit is reached:
/// after a late refusal, and when an exception passes. Giving back takes no memory.
class HvStdFCurve::Rollback {
public:
    explicit Rollback(HvStdFCurve& curve) : curve_(curve), before_(curve), armed_(true) {}
    ~Rollback()
    {
        if (armed_) {
            curve_.ExchangeContents(before_);
        }
    }
    Rollback(Rollback const&) = delete;
    Rollback& operator=(Rollback const&) = delete;

    /// The curve as it was.
    HvStdFCurve const& Before() const { return before_; }
    /// Keeps what was done; returns 1, the result of the edit.
    int Commit()
    {
        armed_ = false;
        return 1;
    }

private:
    HvStdFCurve& curve_;
    HvStdFCurve before_;
    bool armed_;
};

#endif
