// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The shell and the shared implementation of standard curves, instantiated. Not among it:
// the standard curve's own evaluation, in HvStdFCurve_eval.cpp, and the flattening of all kinds.

#include <hv/fcurve/HvStdFCurve.h>
#include <hv/fcurve/internal/CFCBaseImpl.inl>
#include <hv/fcurve/internal/HvFCurveShell.inl>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>

template class CFCBaseImpl<double, CFCStdKey, CFCStdStore>;
template class HvFCurveShell<HvStdFCurveImpl>;
