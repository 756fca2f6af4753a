// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// From the keyframes of one property to the tracks of its components.
//
// A keyframe is {t: time, s: value, i, o: easing to the next keyframe, h: 1 when held}. Older files
// have the value at the segment's end as e, and a last keyframe of t alone. A value is a number or
// an array of numbers. The easing's i and o are {x, y}, each a number for all components or an
// array with one for each. A position may have handles in space: to, from its value, and ti, from
// the value at the next keyframe; the easing is then that of the length travelled.

#include <tools/ToolError.h>
#include <tools/lottie/keyframes.h>
#include <tools/number_text.h>

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace {

/// A keyframe with its values found, before it is taken apart into components.
struct Keyframe {
    double time;
    std::vector<double> values;
    LottieSegment segment;
    Json const* in;
    Json const* out;
    Json const* leaving;
    Json const* arriving;
    std::string path;
};

/// Whether a keyframe holds a path or a text rather than numbers.
bool HoldsObject(Json const& keyframe)
{
    Json const* value = Json_Find(keyframe, "s");
    if (value == nullptr) {
        return false;
    }
    return value->is_object() ||
           (value->is_array() && !value->empty() && value->front().is_object());
}

/// The value at a keyframe: its own, or where the file leaves that out what the one before it ends
/// with.
std::vector<double> ValuesOf(Json const& keyframe, Json const* before,
                             std::vector<Keyframe> const& read, std::string const& path)
{
    if (Json const* own = Json_Find(keyframe, "s")) {
        return Json_Numbers(*own, Json_MemberPath(path, "s"));
    }
    if (before == nullptr) {
        throw ToolError(path + " is the first key and has no value");
    }
    if (Json const* end = Json_Find(*before, "e")) {
        return Json_Numbers(*end, Json_MemberPath(read.back().path, "e"));
    }
    return read.back().values;
}

Keyframe ReadKeyframe(Json const& keyframe, Json const* before, std::vector<Keyframe> const& read,
                      std::string const& path)
{
    Json const* time = Json_Find(keyframe, "t");
    if (time == nullptr) {
        throw ToolError(path + " has no time");
    }
    Keyframe result;
    result.path = path;
    result.time = Json_Number(*time, Json_MemberPath(path, "t"));
    result.values = ValuesOf(keyframe, before, read, path);
    result.in = Json_Find(keyframe, "i");
    result.out = Json_Find(keyframe, "o");
    result.leaving = Json_Find(keyframe, "to");
    result.arriving = Json_Find(keyframe, "ti");
    bool const isHeld = Json_IsOn(Json_Find(keyframe, "h"));
    bool const isEased = result.in != nullptr && result.out != nullptr;
    result.segment = isHeld    ? LottieSegment::Hold
                     : isEased ? LottieSegment::Eased
                               : LottieSegment::Linear;
    return result;
}

/// All keyframes, with times that strictly rise.
std::vector<Keyframe> ReadKeyframes(Json const& keys, std::string const& path,
                                    LottieDocument& document)
{
    std::vector<Keyframe> read;
    read.reserve(keys.size());
    Json const* before = nullptr;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        Keyframe next = ReadKeyframe(keys[i], before, read, Json_ElementPath(path, i));
        before = &keys[i];
        if (!read.empty() && next.time < read.back().time) {
            throw ToolError(next.path + ".t: key times must rise, but " +
                            NumberText_Exact(next.time) + " follows " +
                            NumberText_Exact(read.back().time));
        }
        if (!read.empty() && next.time == read.back().time) {
            document.notes.push_back({next.path, "takes the place of another key at frame " +
                                                     NumberText_Exact(next.time)});
            read.pop_back();
        }
        read.push_back(std::move(next));
    }
    // Nothing follows the last key: its way onward means nothing.
    read.back().segment = LottieSegment::Hold;
    return read;
}

/// One coordinate of a handle, for one component; where the file gives fewer than there are
/// components, the last serves the rest.
double HandleCoordinate(Json const& handle, char const* axis, std::size_t component,
                        std::string const& path)
{
    std::string const place = Json_MemberPath(path, axis);
    Json const* value = Json_Find(handle, axis);
    if (value == nullptr) {
        throw ToolError(place + " is missing");
    }
    std::vector<double> const numbers = Json_Numbers(*value, place);
    return numbers[std::min(component, numbers.size() - 1)];
}

LottieEasing EasingOf(Keyframe const& key, std::size_t component)
{
    std::string const in = Json_MemberPath(key.path, "i");
    std::string const out = Json_MemberPath(key.path, "o");
    LottieEasing easing;
    easing.outX = HandleCoordinate(*key.out, "x", component, out);
    easing.outY = HandleCoordinate(*key.out, "y", component, out);
    easing.inX = HandleCoordinate(*key.in, "x", component, in);
    easing.inY = HandleCoordinate(*key.in, "y", component, in);
    return easing;
}

/// Cuts the easing's times to the segment: beyond it the curve would run backwards. Whether there
/// was anything to cut.
bool CutTimes(LottieEasing& easing)
{
    LottieEasing const before = easing;
    easing.outX = std::clamp(easing.outX, 0.0, 1.0);
    easing.inX = std::clamp(easing.inX, 0.0, 1.0);
    return easing.outX != before.outX || easing.inX != before.inX;
}

LottieTrack TrackOf(std::vector<Keyframe> const& keyframes, std::size_t component, bool& wasCut)
{
    LottieTrack track;
    track.keys.reserve(keyframes.size());
    for (Keyframe const& keyframe : keyframes) {
        LottieKey key;
        key.time = keyframe.time;
        key.value = keyframe.values[component];
        key.segment = keyframe.segment;
        if (key.segment == LottieSegment::Eased) {
            key.easing = EasingOf(keyframe, component);
            wasCut = CutTimes(key.easing) || wasCut;
        }
        track.keys.push_back(key);
    }
    return track;
}

HvPoint3<double> PointOf(std::vector<double> const& values)
{
    return {values[0], values.size() > 1 ? values[1] : 0.0, values.size() > 2 ? values[2] : 0.0};
}

/// A handle in space; none where the file leaves it out or has null.
HvPoint3<double> HandleOf(Json const* handle, std::string const& path)
{
    bool const isMissing = handle == nullptr || handle->is_null();
    return isMissing ? HvPoint3<double>() : PointOf(Json_Numbers(*handle, path));
}

bool HasHandles(std::vector<Keyframe> const& keyframes)
{
    return std::any_of(keyframes.begin(), keyframes.end(), [](Keyframe const& keyframe) {
        return keyframe.leaving != nullptr || keyframe.arriving != nullptr;
    });
}

LottiePath PathOf(std::vector<Keyframe> const& keyframes)
{
    LottiePath path;
    path.keys.reserve(keyframes.size());
    for (Keyframe const& keyframe : keyframes) {
        LottiePathKey key;
        key.time = keyframe.time;
        key.place = PointOf(keyframe.values);
        key.leaving = HandleOf(keyframe.leaving, Json_MemberPath(keyframe.path, "to"));
        key.arriving = HandleOf(keyframe.arriving, Json_MemberPath(keyframe.path, "ti"));
        key.segment = keyframe.segment;
        if (key.segment == LottieSegment::Eased) {
            key.easing = EasingOf(keyframe, 0);
            CutTimes(key.easing);
        }
        path.keys.push_back(key);
    }
    return path;
}

bool EndsWith(std::string const& text, std::string const& end)
{
    return text.size() >= end.size() &&
           text.compare(text.size() - end.size(), end.size(), end) == 0;
}

/// The name of a component of the property `name`.
std::string ComponentName(std::string const& name, std::size_t component, std::size_t count)
{
    constexpr char const* kColours[] = {"red", "green", "blue", "alpha"};
    constexpr char const* kAxes[] = {"x", "y", "z"};
    if (EndsWith(name, "colour") && count <= 4) {
        return kColours[component];
    }
    return count <= 3 ? kAxes[component] : std::to_string(component);
}

}  // namespace

bool Keyframes_Has(Json const& value)
{
    Json const* keys = Json_Find(value, "k");
    return keys != nullptr && keys->is_array() && !keys->empty() &&
           Json_Find(keys->front(), "t") != nullptr;
}

void Keyframes_Read(Json const& property, std::string const& path, std::string const& name,
                    LottieDocument& document)
{
    Json const& keys = property["k"];
    if (std::any_of(keys.begin(), keys.end(), HoldsObject)) {
        document.notes.push_back({path, "its keys hold paths or texts, not numbers: skipped"});
        return;
    }
    std::vector<Keyframe> const keyframes =
        ReadKeyframes(keys, Json_MemberPath(path, "k"), document);
    std::size_t count = keyframes.front().values.size();
    for (Keyframe const& keyframe : keyframes) {
        count = std::min(count, keyframe.values.size());
    }
    bool wasCut = false;
    for (std::size_t i = 0; i < count; ++i) {
        LottieTrack track = TrackOf(keyframes, i, wasCut);
        track.path = count == 1 ? path : Json_ElementPath(path, i);
        track.name = count == 1 ? name : name + " " + ComponentName(name, i, count);
        document.tracks.push_back(std::move(track));
    }
    if (count >= 2 && HasHandles(keyframes)) {
        LottiePath motion = PathOf(keyframes);
        motion.path = path;
        motion.name = name;
        document.paths.push_back(std::move(motion));
    }
    if (wasCut) {
        document.notes.push_back({path, "easing times outside 0 to 1 are cut to it"});
    }
}
