// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What a fill covers, as runs of pixels.

#include <tools/paint/Coverage.h>
#include <tools/paint/byte_runs.h>

#include <algorithm>
#include <cstring>

namespace {

/// How many of the `count` bytes come before a 0 or before many of 255.
std::size_t PartsOf(std::uint8_t const* bytes, std::size_t count)
{
    std::size_t parts = 0;
    while (parts < count && bytes[parts] != 0 &&
           !(bytes[parts] == 255 && parts + kByteRunStep <= count &&
             ByteRun_IsStepOf(bytes + parts, 255))) {
        ++parts;
    }
    return parts;
}

}  // namespace

void Coverage::Take(HvUByteRaster& raster, PixelBox const& box, int margin)
{
    box_ = {};
    runs_.clear();
    shares_.clear();
    auto const stride = static_cast<std::size_t>(raster.width);
    for (int y = box.top; y < box.bottom; ++y) {
        std::uint8_t* const row = raster.data + static_cast<std::size_t>(y + margin) * stride +
                                  static_cast<std::size_t>(box.left + margin);
        std::size_t const before = runs_.size();
        TakeRow(row, box.left, y, static_cast<std::size_t>(box.right - box.left));
        if (runs_.size() > before) {
            int const left = runs_[before].x;
            int const right = runs_.back().x + runs_.back().length;
            std::memset(row + (left - box.left), 0, static_cast<std::size_t>(right - left));
            box_ = box_.Union({left, y, right, y + 1});
        }
    }
}

void Coverage::TakeRow(std::uint8_t const* row, int x, int y, std::size_t count)
{
    for (std::size_t at = 0; at < count;) {
        at += ByteRun_Of(row + at, count - at, 0);
        if (at == count) {
            return;
        }
        std::size_t length = PartsOf(row + at, count - at);
        std::uint32_t firstShare = static_cast<std::uint32_t>(shares_.size());
        if (length != 0) {
            shares_.insert(shares_.end(), row + at, row + at + length);
        } else {
            length = ByteRun_Of(row + at, count - at, 255);
            firstShare = kWhole;
        }
        runs_.push_back({x + static_cast<int>(at), y, static_cast<int>(length), firstShare});
        at += length;
    }
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
