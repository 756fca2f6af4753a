// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Numbers as text, the same under every locale.

#ifndef HV_TOOLS_NUMBER_TEXT_H
#define HV_TOOLS_NUMBER_TEXT_H

#include <cstddef>
#include <string>

/// The shortest text that reads back as exactly `value`.
std::string NumberText_Exact(double value);

/// `value` with at most `digits` significant digits, without trailing zeros.
std::string NumberText_Rounded(double value, int digits);

/// `value` with `decimals` digits after the point; "-0" loses its sign.
std::string NumberText_Fixed(double value, int decimals);

/// "1 key", "2 keys".
std::string NumberText_Counted(std::size_t count, std::string const& what);

#endif
