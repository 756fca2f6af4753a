// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Pictures as PNG files, through libpng.

#ifndef HV_TOOLS_PAINT_PNG_FILE_H
#define HV_TOOLS_PAINT_PNG_FILE_H

#include <tools/paint/Canvas.h>

#include <cstdint>
#include <string>
#include <vector>

/// An image of brightness, 0 black to 255 white, row by row from the top.
struct GreyImage {
    int width;
    int height;
    std::vector<std::uint8_t> pixels;
};

/// What is spent on a PNG file.
enum class PngEffort {
    Small,
    Quick  ///< a quarter of the time, up to a half more bytes: for many frames
};

/// The bytes of a PNG file of the pixels in `box`, which lies in the canvas and is not empty.
/// Throws ToolError when libpng refuses; `path` is where the file is to go, for the message.
std::string PngFile_Bytes(std::string const& path, Canvas const& canvas, PixelBox const& box,
                          PngEffort effort);

/// Writes the canvas; the file's folder is made when it is missing. Throws ToolError when it cannot
/// be written.
void PngFile_Write(std::string const& path, Canvas const& canvas);

/// Reads any PNG file as brightness, over white where it is transparent. Throws ToolError when it
/// cannot be read, is no PNG file or has more than 2^28 pixels.
GreyImage PngFile_ReadGrey(std::string const& path);

#endif
