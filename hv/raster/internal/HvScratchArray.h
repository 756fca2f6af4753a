// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Working storage of one call.

#ifndef HV_RASTER_INTERNAL_HVSCRATCHARRAY_H
#define HV_RASTER_INTERNAL_HVSCRATCHARRAY_H

#include <hv/foundation/HvMemory.h>

#include <cstddef>
#include <cstdint>
#include <new>
#include <type_traits>

/// A fixed number of plain elements, zero-filled, that goes with its scope.
template <class T>
class HvScratchArray {
    static_assert(std::is_trivially_copyable<T>::value, "elements start as zeroed bytes");

public:
    /// Throws std::bad_alloc when there is no memory.
    explicit HvScratchArray(std::size_t count) : data_(static_cast<T*>(HvAllocate(Bytes(count)))) {}
    HvScratchArray(HvScratchArray const&) = delete;
    HvScratchArray& operator=(HvScratchArray const&) = delete;
    ~HvScratchArray() { HvFree(data_); }

    T* Data() { return data_; }
    T const* Data() const { return data_; }
    T& operator[](std::size_t i) { return data_[i]; }
    T const& operator[](std::size_t i) const { return data_[i]; }

private:
    static std::size_t Bytes(std::size_t count)
    {
        if (count > PTRDIFF_MAX / sizeof(T)) {
            throw std::bad_alloc();
        }
        return count * sizeof(T);
    }

    T* data_;
};

#endif
