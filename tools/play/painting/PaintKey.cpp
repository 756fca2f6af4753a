// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// All that coverage depends on, as bytes.

#include <tools/play/painting/PaintKey.h>

#include <cstddef>

void PaintKey::Add(std::initializer_list<double> numbers)
{
    bytes_.append(reinterpret_cast<char const*>(numbers.begin()), numbers.size() * sizeof(double));
}

void PaintKey::Add(HvPath2f const& path)
{
    std::size_t const size = bytes_.size();
    bytes_.resize(size + path.GetBufferSize());
    path.WriteToBuffer(&bytes_[size]);
}
