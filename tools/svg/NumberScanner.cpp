// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Numbers in the attributes of SVG.

#include <tools/svg/NumberScanner.h>

#include <charconv>
#include <cmath>
#include <limits>

namespace {

bool IsSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

}  // namespace

void NumberScanner::SkipSpace()
{
    while (IsSpace(Peek())) {
        ++at_;
    }
}

void NumberScanner::SkipSeparator()
{
    SkipSpace();
    if (Peek() == ',') {
        ++at_;
        SkipSpace();
    }
}

bool NumberScanner::IsAtNumber() const
{
    char const c = Peek();
    return IsDigit(c) || c == '.' || c == '-' || c == '+';
}

bool NumberScanner::ReadNumber(double& value)
{
    std::size_t const start = at_;
    SkipSeparator();
    if (Peek() == '+') {
        ++at_;  // from_chars knows no plus sign
    }
    double read = 0.0;
    char const* const end = text_.data() + text_.size();
    // "inf" and "nan" are numbers to from_chars, not to SVG.
    bool const isNumber = IsAtNumber();
    auto const [stop, error] = std::from_chars(text_.data() + at_, end, read);
    if (!isNumber || error != std::errc() ||
        !(std::fabs(read) <= std::numeric_limits<float>::max())) {
        at_ = start;
        return false;
    }
    at_ = static_cast<std::size_t>(stop - text_.data());
    value = read;
    return true;
}

bool NumberScanner::ReadFlag(bool& value)
{
    std::size_t const start = at_;
    SkipSeparator();
    char const c = Take();
    if (c != '0' && c != '1') {
        at_ = start;
        return false;
    }
    value = c == '1';
    return true;
}
