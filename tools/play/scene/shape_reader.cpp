// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The shapes of a layer.

#include <tools/ToolError.h>
#include <tools/play/scene/shape_reader.h>

#include <algorithm>
#include <utility>

namespace {

/// More colours than any editor offers.
constexpr std::size_t kMostColours = 4096;
/// More lengths than a pattern of dashes has.
constexpr std::size_t kMostDashes = 256;

/// The direction that draws an outline the other way round.
constexpr int kReversed = 3;

class ShapeReader {
public:
    explicit ShapeReader(LeftOut& leftOut) : leftOut_(leftOut) {}

    SceneGroup ReadGroup(Json const& list, std::string const& path)
    {
        if (!list.is_array()) {
            throw ToolError(path + " is no list of shapes");
        }
        SceneGroup group;
        for (std::size_t i = 0; i < list.size(); ++i) {
            PropertyReader const reader(list[i], Json_ElementPath(path, i), leftOut_);
            if (!reader.PlainSwitch("hd")) {
                ReadInto(reader, group);
            }
        }
        return group;
    }

private:
    void ReadInto(PropertyReader const& reader, SceneGroup& group)
    {
        std::string const type = Json_Text(Json_Find(reader.Owner(), "ty"));
        if (type == "tr") {
            group.transform = AnimatedTransform(reader);
        } else if (type == "gr") {
            if (Json const* list = Json_Find(reader.Owner(), "it")) {
                group.shapes.push_back({ReadGroup(*list, reader.PathOf("it"))});
            }
        } else if (type == "mm") {
            NoteMerge(reader);
        } else if (!ReadOutline(type, reader, group) && !ReadModifier(type, reader, group) &&
                   !ReadPaint(type, reader, group)) {
            leftOut_.Add("shapes of the type \"" + type + "\"", reader.Path());
        }
    }

    /// Outlines that are merged lie over one another as they do without.
    void NoteMerge(PropertyReader const& reader)
    {
        int const mode = reader.PlainInteger("mm", 1);
        if (mode > 2) {
            leftOut_.Add("merging of outlines other than by adding", reader.Path());
        }
    }

    static bool IsReversed(PropertyReader const& reader)
    {
        // Under the same key a stroke has its dashes.
        Json const* direction = Json_Find(reader.Owner(), "d");
        return direction != nullptr && direction->is_number() &&
               reader.PlainInteger("d", 1) == kReversed;
    }

    bool ReadOutline(std::string const& type, PropertyReader const& reader, SceneGroup& group)
    {
        bool const isReversed = IsReversed(reader);
        if (type == "sh") {
            group.shapes.push_back(
                {SceneOutline{AnimatedOutline(reader.Outline("ks")), isReversed}});
        } else if (type == "rc") {
            group.shapes.push_back(
                {SceneRect{AnimatedPlace(reader.Place("p", 0)), AnimatedPlace(reader.Place("s", 0)),
                           AnimatedNumber(reader.Number("r", 0)), isReversed}});
        } else if (type == "el") {
            group.shapes.push_back({SceneEllipse{AnimatedPlace(reader.Place("p", 0)),
                                                 AnimatedPlace(reader.Place("s", 0)), isReversed}});
        } else if (type == "sr") {
            group.shapes.push_back({ReadStar(reader)});
        } else {
            return false;
        }
        return true;
    }

    static SceneStar ReadStar(PropertyReader const& reader)
    {
        auto const number = [&reader](char const* key) {
            return AnimatedNumber(reader.Number(key, 0));
        };
        return {AnimatedPlace(reader.Place("p", 0)),
                number("pt"),
                number("r"),
                number("or"),
                number("os"),
                number("ir"),
                number("is"),
                reader.PlainInteger("sy", 1) == 2,
                IsReversed(reader)};
    }

    bool ReadModifier(std::string const& type, PropertyReader const& reader, SceneGroup& group)
    {
        auto const number = [&reader](char const* key, double missing) {
            return AnimatedNumber(reader.Number(key, missing));
        };
        if (type == "tm") {
            group.shapes.push_back({SceneTrim{number("s", 0), number("e", 100), number("o", 0),
                                              reader.PlainInteger("m", 1) == 2}});
        } else if (type == "rp") {
            Json const none = Json::object();
            Json const* step = Json_Find(reader.Owner(), "tr");
            PropertyReader const inner(step != nullptr ? *step : none, reader.PathOf("tr"),
                                       leftOut_);
            group.shapes.push_back({SceneRepeater{
                number("c", 1), number("o", 0), AnimatedTransform(inner),
                AnimatedNumber(inner.Number("so", 100)), AnimatedNumber(inner.Number("eo", 100)),
                reader.PlainInteger("m", 1) == 2}});
        } else {
            return false;
        }
        return true;
    }

    bool ReadPaint(std::string const& type, PropertyReader const& reader, SceneGroup& group)
    {
        bool const isGradient = type == "gf" || type == "gs";
        bool const isStroke = type == "st" || type == "gs";
        if (!isGradient && !isStroke && type != "fl") {
            return false;
        }
        if (reader.PlainInteger("bm", 0) != 0) {
            leftOut_.Add("blend modes", reader.Path());
        }
        ScenePaint paint;
        paint.opacity = AnimatedNumber(reader.Number("o", 100));
        paint.fillRule = reader.PlainInteger("r", 1) == 2 ? 0 : 1;
        if (isGradient) {
            paint.gradient = ReadGradient(reader);
        } else {
            paint.colour = AnimatedColour(reader.Numbers("c", 3, 0));
        }
        if (isStroke) {
            paint.stroke = ReadStroke(reader);
        }
        group.shapes.push_back({std::move(paint)});
        return true;
    }

    SceneGradient ReadGradient(PropertyReader const& reader)
    {
        Json const none = Json::object();
        Json const* colours = Json_Find(reader.Owner(), "g");
        PropertyReader const inner(colours != nullptr ? *colours : none, reader.PathOf("g"),
                                   leftOut_);
        int const count = inner.PlainInteger("p", 0);
        SceneGradient gradient{AnimatedPlace(reader.Place("s", 0)),
                               AnimatedPlace(reader.Place("e", 0)),
                               AnimatedNumber(reader.Number("h", 0)),
                               AnimatedNumber(reader.Number("a", 0)),
                               {},
                               static_cast<std::size_t>(std::max(count, 0)),
                               reader.PlainInteger("t", 1) == 2};
        for (LottieTrack const& track : inner.Numbers("k", 0, 0)) {
            gradient.stops.emplace_back(track);
        }
        if (gradient.numColours < 1 || gradient.numColours > kMostColours ||
            gradient.stops.size() < 4 * gradient.numColours ||
            gradient.stops.size() > 6 * kMostColours) {
            throw ToolError(inner.Path() + " has not the colours that it counts");
        }
        return gradient;
    }

    SceneStroke ReadStroke(PropertyReader const& reader)
    {
        // The styles of a document, from 1 on, as those of HvGC.
        constexpr int kCaps[] = {2, 0, 1};
        constexpr int kJoins[] = {1, 2, 0};
        auto const styleOf = [&reader](char const* key, int const* styles) {
            return styles[std::clamp(reader.PlainInteger(key, 1), 1, 3) - 1];
        };
        SceneStroke stroke;
        stroke.width = AnimatedNumber(reader.Number("w", 1));
        stroke.capStyle = styleOf("lc", kCaps);
        stroke.joinStyle = styleOf("lj", kJoins);
        stroke.miterLimit = reader.Plain("ml", 4);
        if (Json const* list = Json_Find(reader.Owner(), "d")) {
            ReadDashes(*list, reader.PathOf("d"), stroke);
        }
        return stroke;
    }

    void ReadDashes(Json const& list, std::string const& path, SceneStroke& stroke)
    {
        // A plain direction may stand under the same key.
        if (!list.is_array()) {
            return;
        }
        if (list.size() > kMostDashes) {
            throw ToolError(path + " has more than " + std::to_string(kMostDashes) + " lengths");
        }
        for (std::size_t i = 0; i < list.size(); ++i) {
            PropertyReader const reader(list[i], Json_ElementPath(path, i), leftOut_);
            AnimatedNumber length(reader.Number("v", 0));
            if (Json_Text(Json_Find(list[i], "n")) == "o") {
                stroke.dashOffset = std::move(length);
            } else {
                stroke.dashes.push_back(std::move(length));
            }
        }
    }

    LeftOut& leftOut_;
};

}  // namespace

SceneGroup ShapeReader_Read(Json const& list, std::string const& path, LeftOut& leftOut)
{
    return ShapeReader(leftOut).ReadGroup(list, path);
}
