// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Many frames painted by several threads.

#ifndef HV_TOOLS_PLAY_OUTPUT_FRAME_RUN_H
#define HV_TOOLS_PLAY_OUTPUT_FRAME_RUN_H

#include <tools/play/output/FrameOutput.h>
#include <tools/play/scene/Scene.h>

#include <cstddef>
#include <functional>

/// Which frames are painted, and how large.
struct FrameRun {
    int width = 0;
    int height = 0;
    double firstFrame = 0.0;
    double step = 1.0;  ///< frames of the document from one to the next
    std::size_t numFrames = 0;
    unsigned int numThreads = 1;
};

/// Paints the frames and hands them to `output`, in order. All threads read the one scene.
/// `advance` is called after each frame, by one thread at a time. The first fault of a thread ends
/// all and is thrown.
void FrameRun_Paint(Scene const& scene, FrameRun const& run, FrameOutput& output,
                    std::function<void()> const& advance);

#endif
