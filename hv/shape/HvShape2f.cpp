// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What all shapes share: the lock, which is never copied.

#include <hv/shape/HvShape2f.h>

#include <hv/shape/HvShapeLock.h>

HvShape2f::HvShape2f(HvShape2f const& other) : HvAllocated()
{
    HvShapeSection const wait(other);
}

HvShape2f& HvShape2f::operator=(HvShape2f const& other)
{
    HvShapeLock const lock(*this);
    if (this != &other) {
        HvShapeSection const wait(other);
    }
    return *this;
}

HvShape2f::~HvShape2f() = default;
