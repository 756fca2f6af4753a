// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Frames as one animated PNG file, put together from the chunks of PNG files that libpng has made:
// IHDR, acTL, then for each frame fcTL and its data, which are IDAT of the first frame and fdAT of
// the others, and IEND.

#include <tools/ToolError.h>
#include <tools/paint/png_file.h>
#include <tools/play/output/ApngFile.h>

#include <zlib.h>

#include <algorithm>
#include <cmath>
#include <ostream>

namespace {

constexpr std::size_t kSignatureSize = 8;
/// Length, type and check sum of a chunk.
constexpr std::size_t kChunkFrame = 12;
/// The largest numerator or denominator of a delay.
constexpr double kMostDelay = 65535.0;

constexpr char kClearAfterwards = 1;
constexpr char kReplace = 0;

void AppendNumber(std::string& bytes, std::uint32_t value, int size)
{
    for (int shift = 8 * (size - 1); shift >= 0; shift -= 8) {
        bytes.push_back(static_cast<char>((value >> shift) & 0xFF));
    }
}

std::uint32_t NumberAt(std::string const& bytes, std::size_t at)
{
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
    }
    return value;
}

/// The data of all chunks of a type, one after the other.
std::string DataOf(std::string const& png, char const* type)
{
    std::string data;
    for (std::size_t at = kSignatureSize; at + kChunkFrame <= png.size();) {
        std::size_t const size = NumberAt(png, at);
        if (png.compare(at + 4, 4, type) == 0) {
            data.append(png, at + 8, size);
        }
        at += size + kChunkFrame;
    }
    return data;
}

/// The time of a frame as a fraction, as near as 16 bits allow.
void AppendDelay(std::string& bytes, double framesPerSecond)
{
    double numerator = std::min(1000.0, std::floor(kMostDelay / framesPerSecond));
    double denominator = 0.0;
    if (numerator >= 1.0) {
        denominator = std::round(numerator * framesPerSecond);
    }
    if (numerator < 1.0) {
        numerator = 1.0;
        denominator = kMostDelay;
    } else if (denominator < 1.0) {
        numerator = std::min(std::round(1.0 / framesPerSecond), kMostDelay);
        denominator = 1.0;
    }
    AppendNumber(bytes, static_cast<std::uint32_t>(numerator), 2);
    AppendNumber(bytes, static_cast<std::uint32_t>(denominator), 2);
}

}  // namespace

ApngFile::ApngFile(std::string const& path, std::size_t numFrames, double framesPerSecond,
                   bool isForced)
    : path_((FrameOutput_RefuseExisting(path, isForced), path)), file_(path), numFrames_(numFrames),
      framesPerSecond_(framesPerSecond)
{
}

EncodedFrame ApngFile::Encode(Canvas const& canvas, std::size_t number) const
{
    // The first frame is the picture; of the others only what is painted is stored, a single pixel
    // at least.
    PixelBox box = number == 0 ? canvas.Box() : canvas.PaintedBox();
    if (box.IsEmpty()) {
        box = {0, 0, 1, 1};
    }
    return {PngFile_Bytes(path_, canvas, box, PngEffort::Quick), box};
}

void ApngFile::PutChunk(char const* type, std::string const& data)
{
    std::string chunk;
    AppendNumber(chunk, static_cast<std::uint32_t>(data.size()), 4);
    chunk += type;
    chunk += data;
    uLong const sum = crc32(0, reinterpret_cast<Bytef const*>(chunk.data()) + 4,
                            static_cast<uInt>(chunk.size() - 4));
    AppendNumber(chunk, static_cast<std::uint32_t>(sum), 4);
    file_.Stream() << chunk;
}

void ApngFile::PutControl(PixelBox const& box)
{
    std::string control;
    AppendNumber(control, sequence_++, 4);
    for (int const value : {box.right - box.left, box.bottom - box.top, box.left, box.top}) {
        AppendNumber(control, static_cast<std::uint32_t>(value), 4);
    }
    AppendDelay(control, framesPerSecond_);
    control.push_back(kClearAfterwards);
    control.push_back(kReplace);
    PutChunk("fcTL", control);
}

void ApngFile::Take(EncodedFrame const& frame, std::size_t number)
{
    std::string data = DataOf(frame.png, "IDAT");
    if (number == 0) {
        file_.Stream() << frame.png.substr(0, kSignatureSize);
        PutChunk("IHDR", DataOf(frame.png, "IHDR"));
        std::string animation;
        AppendNumber(animation, static_cast<std::uint32_t>(numFrames_), 4);
        AppendNumber(animation, 0, 4);
        PutChunk("acTL", animation);
        PutControl(frame.box);
        PutChunk("IDAT", data);
        return;
    }
    PutControl(frame.box);
    std::string numbered;
    AppendNumber(numbered, sequence_++, 4);
    PutChunk("fdAT", numbered + data);
}

void ApngFile::Close()
{
    PutChunk("IEND", "");
    file_.Close();
}
