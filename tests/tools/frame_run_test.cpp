// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Frames painted by several threads that read one scene.

#include "play_documents.h"

#include <tools/files.h>
#include <tools/play/output/frame_run.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

/// Keeps the pixels of the frames.
class Memory : public FrameOutput {
public:
    EncodedFrame Encode(Canvas const& canvas, std::size_t) const override
    {
        std::vector<std::uint8_t> const pixels = canvas.StraightPixels();
        return {std::string(pixels.begin(), pixels.end()), canvas.Box()};
    }
    void Take(EncodedFrame const& frame, std::size_t number) override
    {
        EXPECT_EQ(number, frames.size()) << "in order";
        frames.push_back(frame.png);
    }
    void Close() override { isClosed = true; }

    std::vector<std::string> frames;
    bool isClosed = false;
};

}  // namespace

TEST(FrameRun_threads, FourPaintTheBytesThatOnePaints)
{
    // Curves, eased and held, a motion path, a blend of outlines, a trim, masks and a composition.
    Scene const scene = PlayScene(File_Read(HV_PLAY_SCENE));
    FrameRun run{64, 48, scene.firstFrame, 2.5, 24, 1};
    Memory one;
    FrameRun_Paint(scene, run, one, [] {});
    run.numThreads = 4;
    Memory four;
    std::size_t advanced = 0;
    FrameRun_Paint(scene, run, four, [&advanced] { ++advanced; });
    EXPECT_EQ(one.frames.size(), 24u);
    EXPECT_TRUE(one.frames == four.frames);
    EXPECT_FALSE(one.frames.front() == one.frames.back());
    EXPECT_TRUE(four.isClosed);
    EXPECT_EQ(advanced, 24u);
}
