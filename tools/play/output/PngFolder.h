// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Frames as PNG files of a folder.

#ifndef HV_TOOLS_PLAY_OUTPUT_PNGFOLDER_H
#define HV_TOOLS_PLAY_OUTPUT_PNGFOLDER_H

#include <tools/play/output/FrameOutput.h>

/// frame_0000.png, frame_0001.png, ...; the folder is made when it is missing.
class PngFolder : public FrameOutput {
public:
    /// Throws ToolError when a file is there already and `isForced` does not allow to write over
    /// it.
    PngFolder(std::string folder, std::size_t numFrames, bool isForced);

    EncodedFrame Encode(Canvas const& canvas, std::size_t number) const override;
    void Take(EncodedFrame const& frame, std::size_t number) override;
    void Close() override {}

private:
    std::string PathOf(std::size_t number) const;

    std::string folder_;
};

#endif
