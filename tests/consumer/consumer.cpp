// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The smallest user of the library: it links, and its headers agree with its binary.

#include <hv/hv.h>

#include <cstdio>

int main()
{
    HvDoubleArray values;
    for (int i = 1; i <= 3; ++i) {
        values.Add(i);
    }
    std::printf("hv consumer: %g %g %g\n", values[0], values[1], values[2]);
    return values.Size() == 3 ? 0 : 1;
}
