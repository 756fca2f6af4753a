// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// How much of each pixel is let through by masks and mattes.

#ifndef HV_TOOLS_PLAY_PAINTING_SHARES_H
#define HV_TOOLS_PLAY_PAINTING_SHARES_H

#include <tools/paint/Canvas.h>
#include <tools/play/scene/Scene.h>

#include <cstdint>
#include <vector>

/// Combines the coverage of a mask, made fainter by `opacity`, with what the masks before it let
/// through; `all` becomes what they let through together.
void Shares_Combine(SceneMask const& mask, std::uint8_t opacity,
                    std::vector<std::uint8_t> const& coverage, std::vector<std::uint8_t>& all);

/// What a matte lets through, by its opacity or its brightness.
void Shares_OfMatte(Canvas const& matte, MatteMode mode, std::vector<std::uint8_t>& shares);

#endif
