// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The key of stepped and raw curves.

#ifndef HV_FCURVE_CFCSINGLEVALUEKEY_H
#define HV_FCURVE_CFCSINGLEVALUEKEY_H

/// A key with one value; T is bool, int or double.
template <class T>
struct CFCSingleValueKey {
    double parameter;    ///< where the key stands
    T value;             ///< what the curve is there
    unsigned char flag;  ///< on raw keys the selection, non-zero for selected; on stepped keys 0
};

#endif
