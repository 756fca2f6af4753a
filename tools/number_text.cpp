// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Numbers as text.

#include <tools/number_text.h>

#include <charconv>
#include <cmath>

namespace {

/// Room for the longest fixed form of a double: 309 digits before the point, and what we ask for
/// behind it.
constexpr int kLongestNumber = 400;

template <class... Format>
std::string Text(double value, Format... format)
{
    char text[kLongestNumber];
    std::to_chars_result const end = std::to_chars(text, text + kLongestNumber, value, format...);
    return std::string(text, end.ptr);
}

}  // namespace

std::string NumberText_Exact(double value)
{
    return Text(value);
}

std::string NumberText_Rounded(double value, int digits)
{
    return Text(value, std::chars_format::general, digits);
}

std::string NumberText_Fixed(double value, int decimals)
{
    std::string const text = Text(value, std::chars_format::fixed, decimals);
    bool const isMinusZero =
        text[0] == '-' && text.find_first_of("123456789in") == std::string::npos;
    return isMinusZero ? text.substr(1) : text;
}

std::string NumberText_Counted(std::size_t count, std::string const& what)
{
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}
