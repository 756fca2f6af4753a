// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// From a document to its scene.

#ifndef HV_TOOLS_PLAY_SCENE_SCENE_READER_H
#define HV_TOOLS_PLAY_SCENE_SCENE_READER_H

#include <tools/lottie/json_access.h>
#include <tools/play/document/LeftOut.h>
#include <tools/play/scene/Scene.h>

/// Reads the scene of a document. What it asks for and the player does not do is left out and
/// collected. Throws ToolError, naming the place, where the document cannot be understood, where
/// layers are their own parents or compositions contain themselves, and where more than a million
/// layers would have to be painted for a frame.
Scene SceneReader_Read(Json const& document, LeftOut& leftOut);

#endif
