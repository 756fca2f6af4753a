// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Numbers in the attributes of SVG.

#ifndef HV_TOOLS_SVG_NUMBERSCANNER_H
#define HV_TOOLS_SVG_NUMBERSCANNER_H

#include <cstddef>
#include <string>

/// Reads numbers, flags and letters that stand one behind another, parted by white space, commas or
/// nothing where none is needed: "1.5.5-2" holds three numbers. The text outlives the scanner.
class NumberScanner {
public:
    explicit NumberScanner(std::string const& text) : text_(text) {}

    /// Steps over white space.
    void SkipSpace();
    /// Steps over white space and one comma in it.
    void SkipSeparator();
    bool IsAtEnd() const { return at_ == text_.size(); }
    /// Characters read so far.
    std::size_t Place() const { return at_; }
    /// The next character, which stays; 0 at the end.
    char Peek() const { return IsAtEnd() ? '\0' : text_[at_]; }
    /// The next character.
    char Take() { return IsAtEnd() ? '\0' : text_[at_++]; }

    /// Whether a number can start here.
    bool IsAtNumber() const;
    /// Reads a number after a separator; false, with nothing read, when there is none or it is
    /// beyond what a float holds.
    bool ReadNumber(double& value);
    /// Reads a single 0 or 1 after a separator.
    bool ReadFlag(bool& value);

private:
    std::string const& text_;
    std::size_t at_ = 0;
};

#endif
