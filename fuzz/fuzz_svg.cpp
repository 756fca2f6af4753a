// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Any text is refused as an SVG document, or is one that can be painted: the pixels are
// premultiplied by their alpha, and each shape is told once.

#include <fuzz/fuzz_input.h>
#include <hv/foundation/HvMemory.h>
#include <tools/ToolError.h>
#include <tools/svg/svg_painter.h>

#include <algorithm>
#include <new>
#include <string>

namespace {

constexpr int kSide = 24;
constexpr std::size_t kMostBytes = 8u << 20;  // of one allocation of the library
constexpr std::size_t kMostText = 4096;

int AllowSmall(std::size_t size)
{
    return size <= kMostBytes ? 1 : 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    HvSetAllocationHook(&AllowSmall);
    try {
        SvgDocument const document = SvgDocument_Parse(
            std::string(reinterpret_cast<char const*>(data), std::min(size, kMostText)));
        FuzzRequire(document.width > 0.0 && document.height > 0.0);
        Canvas canvas(kSide, kSide);
        SvgPaintOptions options;
        options.scale = kSide / std::max(document.width, document.height);
        options.softRadius = static_cast<double>(size % 3);
        std::size_t shapes = 0;
        SvgPainter_Paint(document, options, canvas, [&shapes] { ++shapes; });
        FuzzRequire(shapes == SvgPainter_NumShapes(document));
        for (int i = 0; i < kSide * kSide; ++i) {
            std::uint8_t const* const pixel = canvas.Pixel(i % kSide, i / kSide);
            FuzzRequire(std::max({pixel[0], pixel[1], pixel[2]}) <= pixel[3]);
        }
    } catch (ToolError const&) {
    } catch (std::bad_alloc const&) {
    }
    HvSetAllocationHook(nullptr);
    return 0;
}
