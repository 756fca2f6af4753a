// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The slot of a virtual operation, where it can be told.

#ifndef TESTS_SHAPE_SLOT_OF_H
#define TESTS_SHAPE_SLOT_OF_H

#include <cstddef>
#include <cstdint>
#include <cstring>

/// The slot of a virtual operation: a pointer to it holds 1 + its offset in the virtual table, in
/// bytes (Itanium C++ ABI, 2.3).
template <class Operation>
std::size_t SlotOf(Operation operation)
{
    std::uintptr_t word = 0;
    std::memcpy(&word, &operation, sizeof word);
    return (word - 1) / sizeof(void*);
}

#endif
