// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Renders the frames of a scene by several threads that share its curves, while another thread
// edits one of them.
//
// Every call on a curve or path is whole by itself: a reader sees it before or after an edit, never
// in between. What belongs to a frame and takes several calls is read under one lock.

#include <hv/hv.h>

#include <atomic>
#include <cstdio>
#include <thread>
#include <vector>

namespace {

constexpr unsigned int kFrames = 20000;
constexpr unsigned int kThreads = 4;

/// A disc that turns on its way; `shift` moves both ends of the way.
struct Scene {
    HvStdFCurve angle{0, 0, 1, 360, HvBaseFCurve::LinearSegment, HvBaseFCurve::LinearSegment};
    HvStdFCurve shift{0, 0, 1, 0, HvBaseFCurve::LinearSegment, HvBaseFCurve::LinearSegment};
    HvMotionPath3d way;
};

double TimeOf(unsigned int frame)
{
    return static_cast<double>(frame) / kFrames;
}

/// Stands for painting. False when the frame saw half of an edit.
bool Render(Scene const& scene, unsigned int frame, double& picture)
{
    HvPoint3<double> place;
    scene.way.Eval(TimeOf(frame), 0.01, place, 0);
    picture = scene.angle.Eval(TimeOf(frame), 0) + place.x;
    HvCurveLock const both(scene.shift);
    return scene.shift.EvalNoLock(0, 0) == scene.shift.EvalNoLock(1, 0);
}

}  // namespace

int main()
{
    Scene scene;
    scene.way.Moveto({0, 0, 0}, 0);
    scene.way.Curveto({10, 0, 0}, {20, 30, 0}, {40, 30, 0}, 1);

    std::vector<double> pictures(kFrames);
    std::atomic<unsigned int> next{0}, torn{0};
    std::vector<std::thread> renderers;
    for (unsigned int i = 0; i < kThreads; ++i) {
        renderers.emplace_back([&] {
            for (unsigned int frame = next++; frame < kFrames; frame = next++) {
                torn += Render(scene, frame, pictures[frame]) ? 0 : 1;
            }
        });
    }
    // The editor moves both keys to and fro, by one call.
    for (int i = 0; next < kFrames; ++i) {
        scene.shift.ScaleAndShiftValues(1, i % 2 == 0 ? 5 : -5);
    }
    for (std::thread& renderer : renderers) {
        renderer.join();
    }

    unsigned int different = 0;
    for (unsigned int frame = 0; frame < kFrames; ++frame) {
        double alone = 0;
        Render(scene, frame, alone);
        different += alone == pictures[frame] ? 0 : 1;
    }
    std::printf(
        "%u frames by %u threads: %u differ from those of one thread, %u saw half an edit\n",
        kFrames, kThreads, different, torn.load());
    return different == 0 && torn == 0 ? 0 : 1;
}
