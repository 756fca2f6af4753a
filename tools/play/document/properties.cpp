// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The properties of a Lottie document, typed.

#include <tools/ToolError.h>
#include <tools/lottie/keyframes.h>
#include <tools/play/document/properties.h>

#include <hv/foundation/saturate.h>

#include <algorithm>
#include <utility>

namespace {

LottieTrack Constant(double value, std::string const& path)
{
    LottieTrack track;
    track.path = path;
    track.keys.resize(1);
    track.keys.front().value = value;
    return track;
}

/// The value of a property that does not move; some writers leave out the object around it.
Json const* ConstantOf(Json const& property)
{
    return property.is_object() ? Json_Find(property, "k") : &property;
}

std::vector<HvPoint2<double>> PointsOf(Json const& outline, char const* key,
                                       std::string const& path)
{
    std::string const place = Json_MemberPath(path, key);
    Json const* list = Json_Find(outline, key);
    if (list == nullptr || !list->is_array()) {
        throw ToolError(place + " is no list of points");
    }
    std::vector<HvPoint2<double>> points;
    points.reserve(list->size());
    for (Json const& element : *list) {
        std::string const elementPath = Json_ElementPath(place, points.size());
        std::vector<double> const numbers = Json_Numbers(element, elementPath);
        if (numbers.size() < 2) {
            throw ToolError(elementPath + " is no point");
        }
        points.emplace_back(numbers[0], numbers[1]);
    }
    return points;
}

OutlineValue OutlineOf(Json const& value, std::string const& path)
{
    // At a keyframe the outline stands in a list of one.
    Json const& outline = value.is_array() && value.size() == 1 ? value.front() : value;
    if (!outline.is_object()) {
        throw ToolError(path + " is no outline");
    }
    OutlineValue read;
    read.nodes = PointsOf(outline, "v", path);
    read.arriving = PointsOf(outline, "i", path);
    read.leaving = PointsOf(outline, "o", path);
    read.isClosed = Json_IsOn(Json_Find(outline, "c"));
    if (read.arriving.size() != read.nodes.size() || read.leaving.size() != read.nodes.size()) {
        throw ToolError(path + " has not as many handles as nodes");
    }
    return read;
}

/// The outline at keyframe `i`: its own, or what the keyframe before it ends with.
OutlineValue OutlineAtKey(Json const& keys, std::size_t i, std::string const& path)
{
    if (Json const* own = Json_Find(keys[i], "s")) {
        return OutlineOf(*own, Json_MemberPath(Json_ElementPath(path, i), "s"));
    }
    for (std::size_t before = i; before-- > 0;) {
        for (char const* key : {"e", "s"}) {
            if (Json const* value = Json_Find(keys[before], key)) {
                return OutlineOf(*value, Json_MemberPath(Json_ElementPath(path, before), key));
            }
        }
    }
    throw ToolError(Json_ElementPath(path, i) + " is the first key and has no value");
}

/// The keyframes with their numbers in place of their values.
Json NumberedKeys(Json const& keys, std::string const& path)
{
    Json numbered = Json::array();
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (!keys[i].is_object()) {
            throw ToolError(Json_ElementPath(path, i) + " is no keyframe");
        }
        Json key = Json::object();
        for (char const* member : {"t", "i", "o", "h"}) {
            if (Json const* value = Json_Find(keys[i], member)) {
                key[member] = *value;
            }
        }
        key["s"] = Json::array({i});
        numbered.push_back(std::move(key));
    }
    return numbered;
}

}  // namespace

PropertyReader::PropertyReader(Json const& owner, std::string path, LeftOut& leftOut)
    : owner_(owner), path_(std::move(path)), leftOut_(leftOut)
{
}

double PropertyReader::Plain(char const* key, double missing) const
{
    Json const* value = Json_Find(owner_, key);
    return value == nullptr ? missing : Json_Number(*value, PathOf(key));
}

int PropertyReader::PlainInteger(char const* key, int missing) const
{
    return HvSaturate_To<int>(Plain(key, missing));
}

LottieDocument PropertyReader::Animated(Json const& property, std::string const& path) const
{
    LottieDocument read;
    Keyframes_Read(property, path, "", read);
    for (LottieNote const& note : read.notes) {
        leftOut_.Add("parts of keyframes (hv curve tells which)", note.path);
    }
    return read;
}

void PropertyReader::NoteExpression(Json const& property, std::string const& path) const
{
    Json const* expression = Json_Find(property, "x");
    if (expression != nullptr && expression->is_string()) {
        leftOut_.Add("expressions", path);
    }
}

LottieDocument PropertyReader::Read(char const* key, std::size_t count, double missing) const
{
    std::string const path = PathOf(key);
    LottieDocument read;
    if (Json const* property = Json_Find(owner_, key)) {
        NoteExpression(*property, path);
        if (Keyframes_Has(*property)) {
            read = Animated(*property, path);
        } else if (Json const* constant = ConstantOf(*property)) {
            for (double const value : Json_Numbers(*constant, path)) {
                read.tracks.push_back(Constant(value, path));
            }
        }
    }
    while (read.tracks.size() < count) {
        read.tracks.push_back(Constant(missing, path));
    }
    return read;
}

std::vector<LottieTrack> PropertyReader::Numbers(char const* key, std::size_t count,
                                                 double missing) const
{
    return Read(key, count, missing).tracks;
}

LottieTrack PropertyReader::Number(char const* key, double missing) const
{
    return Numbers(key, 1, missing).front();
}

PlaceProperty PropertyReader::Place(char const* key, double missing) const
{
    PlaceProperty place;
    Json const* property = Json_Find(owner_, key);
    if (property != nullptr && Json_IsOn(Json_Find(*property, "s"))) {
        // Its coordinates are properties of their own.
        PropertyReader const parts(*property, PathOf(key), leftOut_);
        place.x = parts.Number("x", missing);
        place.y = parts.Number("y", missing);
        return place;
    }
    LottieDocument read = Read(key, 2, missing);
    place.x = std::move(read.tracks[0]);
    place.y = std::move(read.tracks[1]);
    if (!read.paths.empty()) {
        place.motion = std::move(read.paths.front());
    }
    return place;
}

OutlineProperty PropertyReader::Outline(char const* key) const
{
    std::string const path = PathOf(key);
    Json const* property = Json_Find(owner_, key);
    Json const* value = property == nullptr ? nullptr : Json_Find(*property, "k");
    if (value == nullptr) {
        throw ToolError(path + " has no outline");
    }
    NoteExpression(*property, path);
    OutlineProperty outline;
    if (!Keyframes_Has(*property)) {
        outline.outlines.push_back(OutlineOf(*value, Json_MemberPath(path, "k")));
        outline.phase = Constant(0, path);
        return outline;
    }
    // The easing is read as that of a number; which keys stay is told by their values.
    std::string const keysPath = Json_MemberPath(path, "k");
    Json numbered = Json::object();
    numbered["k"] = NumberedKeys(*value, keysPath);
    outline.phase = Animated(numbered, path).tracks.front();
    for (LottieKey& phaseKey : outline.phase.keys) {
        auto const i = static_cast<std::size_t>(phaseKey.value);
        outline.outlines.push_back(OutlineAtKey(*value, i, keysPath));
        phaseKey.value = static_cast<double>(outline.outlines.size() - 1);
    }
    return outline;
}
