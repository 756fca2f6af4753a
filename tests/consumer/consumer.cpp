// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The smallest user of the library: it links, and its headers agree with its binary.

#include <hv/hv.h>

#include <cstdio>

int main()
{
    HvStdFCurve const line(0, 1, 2, 3, HvBaseFCurve::ConstantSegment,
                           HvBaseFCurve::ConstantSegment);
    HvDoubleArray values;
    for (int i = 0; i < 3; ++i) {
        values.Add(line.Eval(i, 0));
    }
    std::printf("hv consumer: %g %g %g\n", values[0], values[1], values[2]);
    return values.Size() == 3 ? 0 : 1;
}
