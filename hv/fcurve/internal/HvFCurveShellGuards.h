// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The locking frame of the slots that stand over an implementation: the curve's locks, and those of
// keys that it shares with other curves.

#ifndef HV_FCURVE_INTERNAL_HVFCURVESHELLGUARDS_H
#define HV_FCURVE_INTERNAL_HVFCURVESHELLGUARDS_H

#include <hv/fcurve/HvFCurveShell.h>
#include <hv/fcurve/internal/HvCurveGuards.h>

/// What a slot locks inside of the curve's own section: nothing more, unless the keys of the kind
/// are shared with other curves.
template <class Impl>
class HvKeysLock {
public:
    explicit HvKeysLock(Impl const&) {}
};

/// The frame of a reader, with the keys.
template <class Impl>
class HvFCurveShell<Impl>::Reader {
public:
    explicit Reader(HvFCurveShell const& curve) : section_(curve), keys_(*curve.impl_) {}

private:
    HvCurveReader section_;
    HvKeysLock<Impl> keys_;
};

/// The frame of a writer, with the keys.
template <class Impl>
class HvFCurveShell<Impl>::Writer {
public:
    explicit Writer(HvFCurveShell const& curve) : section_(curve), keys_(*curve.impl_) {}

private:
    HvCurveWriter section_;
    HvKeysLock<Impl> keys_;
};

#endif
