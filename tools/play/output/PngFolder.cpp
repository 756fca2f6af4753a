// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Frames as PNG files of a folder.

#include <tools/ToolError.h>
#include <tools/files.h>
#include <tools/paint/png_file.h>
#include <tools/play/output/PngFolder.h>

#include <filesystem>
#include <system_error>
#include <utility>

namespace {

/// Digits of a frame's number, so that names sort as frames do.
constexpr std::size_t kDigits = 4;

}  // namespace

void FrameOutput_RefuseExisting(std::string const& path, bool isForced)
{
    std::error_code ignored;
    if (!isForced && std::filesystem::exists(path, ignored)) {
        throw ToolError(path + ": exists already; --force writes over it");
    }
}

PngFolder::PngFolder(std::string folder, std::size_t numFrames, bool isForced)
    : folder_(std::move(folder))
{
    for (std::size_t i = 0; i < numFrames; ++i) {
        FrameOutput_RefuseExisting(PathOf(i), isForced);
    }
}

std::string PngFolder::PathOf(std::size_t number) const
{
    std::string digits = std::to_string(number);
    digits.insert(0, digits.size() < kDigits ? kDigits - digits.size() : 0, '0');
    return (std::filesystem::path(folder_) / ("frame_" + digits + ".png")).string();
}

EncodedFrame PngFolder::Encode(Canvas const& canvas, std::size_t number) const
{
    return {PngFile_Bytes(PathOf(number), canvas, canvas.Box(), PngEffort::Quick), canvas.Box()};
}

void PngFolder::Take(EncodedFrame const& frame, std::size_t number)
{
    File_Write(PathOf(number), frame.png);
}
