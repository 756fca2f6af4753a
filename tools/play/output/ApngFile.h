// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Frames as one animated PNG file.

#ifndef HV_TOOLS_PLAY_OUTPUT_APNGFILE_H
#define HV_TOOLS_PLAY_OUTPUT_APNGFILE_H

#include <tools/files.h>
#include <tools/play/output/FrameOutput.h>

#include <cstdint>

/// A picture that programs without animation show as its first frame, and that repeats for ever.
/// Every frame clears what the one before it painted, so that each is encoded by itself. A file
/// that is not closed is not there.
/// Source: the Animated PNG format, version 1.0.
class ApngFile : public FrameOutput {
public:
    /// @param framesPerSecond  above 0.
    /// Throws ToolError when the file is there already and `isForced` does not allow to write over
    /// it, and when it cannot be made.
    ApngFile(std::string const& path, std::size_t numFrames, double framesPerSecond, bool isForced);

    EncodedFrame Encode(Canvas const& canvas, std::size_t number) const override;
    void Take(EncodedFrame const& frame, std::size_t number) override;
    void Close() override;

private:
    void PutChunk(char const* type, std::string const& data);
    void PutControl(PixelBox const& box);

    std::string path_;
    OutputFile file_;
    std::size_t numFrames_;
    double framesPerSecond_;
    std::uint32_t sequence_ = 0;  ///< of the next chunk that carries one
};

#endif
