// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The Python module.

#include "bindings.h"

PYBIND11_MODULE(hv, module)
{
    module.doc() = "Geometry and animation mathematics: function curves, paths, motion paths.";
    BindCurve(module);
    BindPath(module);
    BindMotionPath(module);
}
