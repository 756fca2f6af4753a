// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the entries that read a document of the tool and paint it share.

#ifndef HV_FUZZ_FUZZ_PICTURE_H
#define HV_FUZZ_FUZZ_PICTURE_H

#include <fuzz/fuzz_input.h>
#include <hv/foundation/HvMemory.h>
#include <tools/ToolError.h>
#include <tools/paint/Canvas.h>

#include <algorithm>
#include <new>
#include <string>

/// The input as a text of at most `most` bytes.
inline std::string FuzzText(std::uint8_t const* data, std::size_t size, std::size_t most)
{
    return std::string(reinterpret_cast<char const*>(data), std::min(size, most));
}

/// Runs read(), in which the library is given no memory beyond 8 MiB at a time: it may refuse its
/// document, and it may run out of memory.
template <class Read>
void FuzzDocument_Run(Read const& read)
{
    HvSetAllocationHook([](std::size_t size) { return size <= (8u << 20) ? 1 : 0; });
    try {
        read();
    } catch (ToolError const&) {
    } catch (std::bad_alloc const&) {
    }
    HvSetAllocationHook(nullptr);
}

/// Every pixel is premultiplied by its alpha.
inline void FuzzRequirePremultiplied(Canvas const& canvas)
{
    for (int y = 0; y < canvas.Height(); ++y) {
        for (int x = 0; x < canvas.Width(); ++x) {
            std::uint8_t const* const pixel = canvas.Pixel(x, y);
            FuzzRequire(std::max({pixel[0], pixel[1], pixel[2]}) <= pixel[3]);
        }
    }
}

#endif
