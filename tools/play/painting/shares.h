// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// How much of each pixel is let through by masks and mattes.

#ifndef HV_TOOLS_PLAY_PAINTING_SHARES_H
#define HV_TOOLS_PLAY_PAINTING_SHARES_H

#include <tools/paint/Canvas.h>
#include <tools/play/scene/Scene.h>

#include <cstdint>
#include <vector>

// Shares are bytes, one for each pixel of a picture `width` pixels wide; only those of `box` count.

/// Sets `all` to what the first mask, of the mode `first`, adds to or takes from.
void Shares_Begin(MaskMode first, int width, PixelBox const& box, std::vector<std::uint8_t>& all);

/// Whether a mask alone lets through just what it covers.
bool Shares_AreCoverage(SceneMask const& mask, std::uint8_t opacity);

/// Combines the coverage of a mask, made fainter by `opacity`, with what the masks before it let
/// through; `all` becomes what they let through together.
void Shares_Combine(SceneMask const& mask, std::uint8_t opacity, int width, PixelBox const& box,
                    std::vector<std::uint8_t> const& coverage, std::vector<std::uint8_t>& all);

/// What a matte lets through, by its opacity or its brightness.
void Shares_OfMatte(Canvas const& matte, MatteMode mode, PixelBox const& box,
                    std::vector<std::uint8_t>& shares);

#endif
