// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The shell and the shared implementation of standard curves, instantiated. Evaluation is not among
// it: the standard curve's own stands in HvStdFCurve_eval.cpp.

#include <hv/fcurve/HvStdFCurve.h>
#include <hv/fcurve/internal/CFCBaseImpl.inl>
#include <hv/fcurve/internal/CFCBaseImpl_flatten_pending.inl>
#include <hv/fcurve/internal/HvFCurveShell.inl>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>

template class CFCBaseImpl<double, CFCStdKey, CFCStdStore>;
template class HvFCurveShell<HvStdFCurveImpl>;
