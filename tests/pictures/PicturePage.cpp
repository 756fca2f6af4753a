// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A page of small pictures, each with a caption.

#include "PicturePage.h"

#include <cstddef>

namespace {

/// Between cells and around them, in pixels, and its grey.
constexpr int kLine = 2;
constexpr unsigned char kLineGrey = 96;

}  // namespace

PicturePage::PicturePage(std::string const& name, int columns, int rows, int side)
    : name_(name), columns_(columns), side_(side),
      picture_(columns * (side + kLine) + kLine, rows * (side + kLine) + kLine, kLineGrey)
{
}

void PicturePage::Place(std::string const& caption, HvUByteRaster const& cell)
{
    int const number = static_cast<int>(captions_.size());
    picture_.CopyRaster(kLine + number % columns_ * (side_ + kLine),
                        kLine + number / columns_ * (side_ + kLine), cell);
    captions_.push_back(caption);
}

std::string PicturePage::CaptionAt(int x, int y) const
{
    int const number = y / (side_ + kLine) * columns_ + x / (side_ + kLine);
    std::size_t const index = static_cast<std::size_t>(number);
    return index < captions_.size() ? captions_[index] : "no cell";
}
