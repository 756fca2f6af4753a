// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Any text, as an animation: it is refused with a message, or becomes a scene whose frames can be
// painted.

#include <fuzz/fuzz_input.h>
#include <hv/foundation/HvMemory.h>
#include <tools/ToolError.h>
#include <tools/play/painting/FramePainter.h>
#include <tools/play/scene/scene_reader.h>

#include <algorithm>
#include <new>
#include <string>

namespace {

constexpr int kSide = 16;
constexpr std::size_t kMostBytes = 8u << 20;  // of one allocation of the library
constexpr std::size_t kMostText = 8192;

int AllowSmall(std::size_t size)
{
    return size <= kMostBytes ? 1 : 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    HvSetAllocationHook(&AllowSmall);
    try {
        LeftOut leftOut;
        Scene const scene = SceneReader_Read(
            Json_Parse(std::string(reinterpret_cast<char const*>(data), std::min(size, kMostText))),
            leftOut);
        FuzzRequire(scene.width > 0.0 && scene.height > 0.0 && scene.frameRate > 0.0);
        FramePainter painter(scene, kSide, kSide);
        Canvas canvas(kSide, kSide);
        for (double const share : {0.0, 0.4}) {
            painter.Paint(scene.firstFrame + share * (scene.endFrame - scene.firstFrame), canvas);
            for (int i = 0; i < kSide * kSide; ++i) {
                std::uint8_t const* const pixel = canvas.Pixel(i % kSide, i / kSide);
                FuzzRequire(std::max({pixel[0], pixel[1], pixel[2]}) <= pixel[3]);
            }
        }
    } catch (ToolError const&) {
    } catch (std::bad_alloc const&) {
    }
    HvSetAllocationHook(nullptr);
    return 0;
}
