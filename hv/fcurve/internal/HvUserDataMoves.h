// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The user data of keys that move, carried along.

#ifndef HV_FCURVE_INTERNAL_HVUSERDATAMOVES_H
#define HV_FCURVE_INTERNAL_HVUSERDATAMOVES_H

#include <hv/fcurve/HvBaseFCurve.h>
#include <hv/foundation/HvDoubleArray.h>

/// Collects the moves of keys that have user data, in the order of the keys, to carry them out at
/// once. Costs nothing on a curve without user data.
class HvUserDataMoves {
public:
    explicit HvUserDataMoves(HvBaseFCurve& curve)
        : curve_(curve), hasUserData_(curve.HasUserData() != 0)
    {
    }

    void Add(double from, double to)
    {
        if (hasUserData_ && from != to && curve_.HasUserData(from)) {
            from_.Add(from);
            to_.Add(to);
        }
    }
    /// 1 when all sets stand at their new parameters.
    int Apply() { return from_.Size() == 0 ? 1 : curve_.MoveKeyUserDataTail(from_, to_); }

private:
    HvBaseFCurve& curve_;
    bool hasUserData_;
    HvDoubleArray from_;
    HvDoubleArray to_;
};

#endif
