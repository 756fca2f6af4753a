// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The program hv.

#include <tools/tool.h>

#include <iostream>
#include <unistd.h>

int main(int argc, char** argv)
{
    return HvTool_Run(argc, argv, {std::cout, std::cerr, isatty(STDERR_FILENO) != 0});
}
