// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Any text, as an animation: it is refused with a message, or becomes a scene whose frames can be
// painted.

#include <fuzz/fuzz_picture.h>
#include <tools/play/painting/FramePainter.h>
#include <tools/play/scene/scene_reader.h>

namespace {

constexpr int kSide = 16;
constexpr std::size_t kMostText = 8192;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    FuzzDocument_Run([data, size] {
        LeftOut leftOut;
        Scene const scene = SceneReader_Read(Json_Parse(FuzzText(data, size, kMostText)), leftOut);
        FuzzRequire(scene.width > 0.0 && scene.height > 0.0 && scene.frameRate > 0.0);
        FramePainter painter(scene, kSide, kSide);
        Canvas canvas(kSide, kSide);
        // The last two are painted from what was kept.
        for (double const share : {0.0, 0.4, 0.4, 0.4}) {
            painter.Paint(scene.firstFrame + share * (scene.endFrame - scene.firstFrame), canvas);
            FuzzRequirePremultiplied(canvas);
        }
    });
    return 0;
}
