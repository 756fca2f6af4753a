// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The shapes of a layer.

#ifndef HV_TOOLS_PLAY_SCENE_SHAPE_READER_H
#define HV_TOOLS_PLAY_SCENE_SHAPE_READER_H

#include <tools/lottie/json_access.h>
#include <tools/play/document/LeftOut.h>
#include <tools/play/scene/Scene.h>

#include <string>

/// Reads a list of shapes; a transform in it becomes that of the group. Hidden shapes are passed
/// over. Throws ToolError, naming the place, where it cannot be understood.
SceneGroup ShapeReader_Read(Json const& list, std::string const& path, LeftOut& leftOut);

#endif
