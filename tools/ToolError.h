// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What goes wrong in a command.

#ifndef HV_TOOLS_TOOLERROR_H
#define HV_TOOLS_TOOLERROR_H

#include <stdexcept>

/// A fault of the input or of the arguments, told in one line that names the place. It ends the
/// command with exit code 2.
class ToolError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

#endif
