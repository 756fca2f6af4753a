// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// All that coverage depends on, as bytes.

#ifndef HV_TOOLS_PLAY_PAINTING_PAINTKEY_H
#define HV_TOOLS_PLAY_PAINTING_PAINTKEY_H

#include <hv/shape/HvPath2f.h>

#include <initializer_list>
#include <string>

/// Equal bytes are the same coverage: numbers to the bit, paths as they are saved.
class PaintKey {
public:
    void Clear() { bytes_.clear(); }
    void Add(std::initializer_list<double> numbers);
    void Add(HvPath2f const& path);

    std::string const& Bytes() const { return bytes_; }

private:
    std::string bytes_;
};

#endif
