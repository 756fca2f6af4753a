// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What a fill covers, as runs of pixels.

#include <tools/paint/Coverage.h>
#include <tools/paint/byte_runs.h>

#include <algorithm>
#include <cstring>

namespace {

/// Whether so many covered pixels begin here that they are worth a run.
bool IsWhole(std::uint8_t const* bytes, std::size_t count)
{
    return bytes[0] == 255 && count >= kByteRunStep &&
           ByteRun_Difference(bytes, ByteRun_PatternOf(255)) == 0;
}

}  // namespace

void Coverage::Take(HvUByteRaster& raster, PixelBox const& box, int left, int top)
{
    box_ = {};
    runs_.clear();
    shares_.clear();
    auto const stride = static_cast<std::size_t>(raster.width);
    for (int y = box.top; y < box.bottom; ++y) {
        std::uint8_t* const row = raster.data + static_cast<std::size_t>(y - top) * stride +
                                  static_cast<std::size_t>(box.left - left);
        std::size_t const before = runs_.size();
        TakeRow(row, box.left, y, static_cast<std::size_t>(box.right - box.left));
        if (runs_.size() > before) {
            int const first = runs_[before].x;
            int const end = runs_.back().x + runs_.back().length;
            std::memset(row + (first - box.left), 0, static_cast<std::size_t>(end - first));
            box_ = box_.Union({first, y, end, y + 1});
        }
    }
}

void Coverage::TakeRow(std::uint8_t const* row, int x, int y, std::size_t count)
{
    // Room for all of the row, to be written without asking.
    std::size_t numShares = shares_.size();
    shares_.resize(numShares + count);
    std::uint8_t* const shares = shares_.data();
    for (std::size_t at = ByteRun_Of(row, count, 0); at < count;) {
        std::size_t const first = at;
        std::size_t const firstShare = numShares;
        while (at < count && row[at] != 0 && !IsWhole(row + at, count - at)) {
            shares[numShares++] = row[at++];
        }
        if (at > first) {
            Append(x + static_cast<int>(first), y, at - first, firstShare);
        }
        if (at < count && row[at] == 255) {
            std::size_t const length = ByteRun_Of(row + at, count - at, 255);
            Append(x + static_cast<int>(at), y, length, kWhole);
            at += length;
        }
        at += ByteRun_Of(row + at, count - at, 0);
    }
    shares_.resize(numShares);
}

void Coverage::Append(int x, int y, std::size_t length, std::size_t firstShare)
{
    runs_.push_back({x, y, static_cast<int>(length), static_cast<std::uint32_t>(firstShare)});
}

std::size_t Coverage::NumBytes() const
{
    return runs_.size() * sizeof(Stored) + shares_.size();
}

void Coverage::Spread(int width, PixelBox const& box, std::uint8_t* shares) const
{
    auto const rowAt = [shares, width](int y) {
        return shares + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
    };
    for (int y = box.top; y < box.bottom; ++y) {
        std::fill(rowAt(y) + box.left, rowAt(y) + std::max(box.right, box.left), std::uint8_t(0));
    }
    ForEachRun([&](Run const& run) {
        int const first = std::max(run.x, box.left);
        int const end = std::min(run.x + run.length, box.right);
        if (run.y < box.top || run.y >= box.bottom || first >= end) {
            return;
        }
        if (run.shares == nullptr) {
            std::fill(rowAt(run.y) + first, rowAt(run.y) + end, std::uint8_t(255));
        } else {
            std::copy(run.shares + (first - run.x), run.shares + (end - run.x),
                      rowAt(run.y) + first);
        }
    });
}
