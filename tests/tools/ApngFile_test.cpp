// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The chunks of an animated PNG file.

#include <tools/ToolError.h>
#include <tools/files.h>
#include <tools/play/output/ApngFile.h>

#include <gtest/gtest.h>
#include <zlib.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace {

std::uint32_t NumberAt(std::string const& bytes, std::size_t at, std::size_t size = 4)
{
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < size; ++i) {
        value = value << 8 | static_cast<unsigned char>(bytes.at(at + i));
    }
    return value;
}

struct Chunk {
    std::string type;
    std::string data;
};

/// All chunks, their check sums verified.
std::vector<Chunk> ChunksOf(std::string const& png)
{
    std::vector<Chunk> chunks;
    for (std::size_t at = 8; at < png.size();) {
        std::size_t const size = NumberAt(png, at);
        std::string const body = png.substr(at + 4, size + 4);
        EXPECT_EQ(
            crc32(0, reinterpret_cast<Bytef const*>(body.data()), static_cast<uInt>(body.size())),
            NumberAt(png, at + 8 + size));
        chunks.push_back({body.substr(0, 4), body.substr(4)});
        at += size + 12;
    }
    return chunks;
}

class ApngFileTest : public testing::Test {
protected:
    ApngFileTest()
    {
        std::string name = (std::filesystem::temp_directory_path() / "hv_apng_XXXXXX").string();
        folder_ = mkdtemp(name.data());
        path_ = folder_ + "/film.png";
    }
    ~ApngFileTest() override
    {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    std::string folder_;
    std::string path_;
};

}  // namespace

TEST_F(ApngFileTest, FramesFollowOneAnotherInNumberedChunks)
{
    Canvas empty(8, 4);
    Canvas painted(8, 4);
    painted.SetPixel(2, 1, {255, 0, 0, 255});
    painted.SetPixel(4, 3, {255, 0, 0, 255});
    {
        ApngFile file(path_, 3, 25.0, false);
        std::size_t number = 0;
        for (Canvas const* canvas : {&empty, &painted, &empty}) {
            file.Take(file.Encode(*canvas, number), number);
            ++number;
        }
        file.Close();
    }
    std::string const png = File_Read(path_);
    EXPECT_EQ(png.substr(0, 8), "\x89PNG\r\n\x1a\n");
    std::vector<Chunk> const chunks = ChunksOf(png);
    std::string types;
    std::uint32_t sequence = 0;
    for (Chunk const& chunk : chunks) {
        types += chunk.type + " ";
        if (chunk.type == "fcTL" || chunk.type == "fdAT") {
            EXPECT_EQ(NumberAt(chunk.data, 0), sequence++);
        }
    }
    EXPECT_EQ(types, "IHDR acTL fcTL IDAT fcTL fdAT fcTL fdAT IEND ");
    EXPECT_EQ(NumberAt(chunks[1].data, 0), 3u) << "frames";
    EXPECT_EQ(NumberAt(chunks[1].data, 4), 0u) << "for ever";
    // The second frame: the box of what is painted, and a twenty-fifth of a second.
    std::string const& control = chunks[4].data;
    EXPECT_EQ(NumberAt(control, 4), 3u);
    EXPECT_EQ(NumberAt(control, 8), 3u);
    EXPECT_EQ(NumberAt(control, 12), 2u);
    EXPECT_EQ(NumberAt(control, 16), 1u);
    EXPECT_EQ(25u * NumberAt(control, 20, 2), NumberAt(control, 22, 2));
}

TEST_F(ApngFileTest, DelaysFitSixteenBits)
{
    for (double const rate : {1e-9, 0.001, 0.5, 1.0, 29.97, 60.0, 120.0, 1e3, 65535.0, 1e9}) {
        Canvas const canvas(1, 1);
        ApngFile file(path_, 1, rate, true);
        file.Take(file.Encode(canvas, 0), 0);
        file.Close();
        std::string const control = ChunksOf(File_Read(path_))[2].data;
        double const numerator = NumberAt(control, 20, 2);
        double const denominator = NumberAt(control, 22, 2);
        ASSERT_GT(numerator, 0) << rate;
        ASSERT_GT(denominator, 0) << rate;
        if (rate >= 0.5 && rate <= 65535.0) {
            EXPECT_NEAR(denominator / numerator, rate, 1e-3 * rate) << rate;
        }
    }
}

TEST_F(ApngFileTest, NothingIsWrittenOverAFileUnlessAsked)
{
    File_Write(path_, "mine");
    EXPECT_THROW(ApngFile(path_, 1, 25.0, false), ToolError);
    EXPECT_EQ(File_Read(path_), "mine");
}

TEST_F(ApngFileTest, AFileThatWasNotClosedIsGone)
{
    {
        ApngFile const file(path_, 1, 25.0, false);
    }
    EXPECT_FALSE(std::filesystem::exists(path_));
}
