// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Where painted frames go.

#ifndef HV_TOOLS_PLAY_OUTPUT_FRAMEOUTPUT_H
#define HV_TOOLS_PLAY_OUTPUT_FRAMEOUTPUT_H

#include <tools/paint/Canvas.h>

#include <cstddef>
#include <string>

/// A frame as a PNG file of a part of the picture.
struct EncodedFrame {
    std::string png;
    PixelBox box;  ///< outside it the frame is transparent
};

/// Takes frames. Encoding is done by many threads at once; taking by one at a time, in order.
class FrameOutput {
public:
    FrameOutput() = default;
    virtual ~FrameOutput() = default;
    FrameOutput(FrameOutput const&) = delete;
    FrameOutput& operator=(FrameOutput const&) = delete;

    virtual EncodedFrame Encode(Canvas const& canvas, std::size_t number) const = 0;
    /// Throws ToolError when it cannot be written.
    virtual void Take(EncodedFrame const& frame, std::size_t number) = 0;
    /// After the last frame.
    virtual void Close() = 0;
};

/// Throws ToolError when there is a file of this name and `isForced` does not allow to write over
/// it.
void FrameOutput_RefuseExisting(std::string const& path, bool isForced);

#endif
