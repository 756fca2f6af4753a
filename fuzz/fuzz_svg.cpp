// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Any text is refused as an SVG document, or is one that can be painted: the pixels are
// premultiplied by their alpha, and each shape is told once.

#include <fuzz/fuzz_picture.h>
#include <tools/svg/svg_painter.h>

namespace {

constexpr int kSide = 24;
constexpr std::size_t kMostText = 4096;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    FuzzDocument_Run([data, size] {
        SvgDocument const document = SvgDocument_Parse(FuzzText(data, size, kMostText));
        FuzzRequire(document.width > 0.0 && document.height > 0.0);
        Canvas canvas(kSide, kSide);
        SvgPaintOptions options;
        options.scale = kSide / std::max(document.width, document.height);
        options.softRadius = static_cast<double>(size % 3);
        std::size_t shapes = 0;
        SvgPainter_Paint(document, options, canvas, [&shapes] { ++shapes; });
        FuzzRequire(shapes == SvgPainter_NumShapes(document));
        FuzzRequirePremultiplied(canvas);
    });
    return 0;
}
