// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Small animations as texts, and what they look like.

#ifndef HV_TESTS_TOOLS_PLAY_DOCUMENTS_H
#define HV_TESTS_TOOLS_PLAY_DOCUMENTS_H

#include <tools/play/painting/FramePainter.h>
#include <tools/play/scene/scene_reader.h>

#include <string>
#include <vector>

/// A document of 16 by 16 units, ten frames at ten a second.
inline std::string PlayDocument(std::string const& layers, std::string const& assets = "")
{
    return R"({"w":16,"h":16,"fr":10,"ip":0,"op":10,"assets":[)" + assets + R"(],"layers":[)" +
           layers + "]}";
}

/// A layer of shapes that is there all the time; `more` are further members.
inline std::string PlayLayer(std::string const& shapes, std::string const& more = "")
{
    return R"({"ty":4,"ip":0,"op":10,"shapes":[)" + shapes + "]" +
           (more.empty() ? "" : "," + more) + "}";
}

/// A rectangle by its corners.
inline std::string PlayRect(double left, double top, double right, double bottom)
{
    auto const pair = [](double x, double y) {
        return "[" + std::to_string(x) + "," + std::to_string(y) + "]";
    };
    return R"({"ty":"rc","p":{"k":)" + pair((left + right) / 2, (top + bottom) / 2) +
           R"(},"s":{"k":)" + pair(right - left, bottom - top) + "}}";
}

/// A fill; `colour` is its three parts from 0 to 1.
inline std::string PlayFill(std::string const& colour, std::string const& more = "")
{
    return R"({"ty":"fl","c":{"k":[)" + colour + "]}" + (more.empty() ? "" : "," + more) + "}";
}

inline Scene PlayScene(std::string const& document)
{
    LeftOut leftOut;
    return SceneReader_Read(Json_Parse(document), leftOut);
}

/// What the document leaves out.
inline std::vector<std::string> PlayLeftOut(std::string const& document)
{
    LeftOut leftOut;
    SceneReader_Read(Json_Parse(document), leftOut);
    std::vector<std::string> texts;
    for (LeftOut::Entry const& entry : leftOut.Entries()) {
        texts.push_back(entry.text);
    }
    return texts;
}

/// A frame of a document, a pixel for each unit.
inline Canvas PlayFrame(std::string const& document, double frame)
{
    Scene const scene = PlayScene(document);
    Canvas canvas(16, 16);
    FramePainter(scene, 16, 16).Paint(frame, canvas);
    return canvas;
}

inline std::vector<int> PlayPixel(Canvas const& canvas, int x, int y)
{
    std::uint8_t const* const bytes = canvas.Pixel(x, y);
    return {bytes[0], bytes[1], bytes[2], bytes[3]};
}

#endif
