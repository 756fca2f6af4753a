// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The walk through a Lottie document.

#include <tools/ToolError.h>
#include <tools/lottie/LottieDocument.h>
#include <tools/lottie/json_access.h>
#include <tools/lottie/keyframes.h>
#include <tools/lottie/property_label.h>

#include <cstddef>

namespace {

/// Where the walk stands.
struct Place {
    std::string path;   ///< layers[0].ks.p
    std::string names;  ///< the names given in the file, of what is around: Ball / Group 1
    std::string key;    ///< the last key of the path that is no index
};

class Walk {
public:
    explicit Walk(LottieDocument& document) : document_(document) {}

    void Visit(Json const& value, Place const& place)
    {
        if (value.is_array()) {
            for (std::size_t i = 0; i < value.size(); ++i) {
                Visit(value[i], {Json_ElementPath(place.path, i), place.names, place.key});
            }
        } else if (value.is_object()) {
            VisitObject(value, place);
        }
    }

private:
    void VisitObject(Json const& object, Place const& place)
    {
        std::string const names = Join(place.names, Json_Text(Json_Find(object, "nm")));
        std::string const type = Json_Text(Json_Find(object, "ty"));
        for (auto const& member : object.items()) {
            Json const& value = member.value();
            if (!value.is_structured()) {
                continue;
            }
            Place const inner = {Json_MemberPath(place.path, member.key()), names, member.key()};
            NoteExpression(value, inner.path);
            if (Keyframes_Has(value)) {
                Keyframes_Read(value, inner.path,
                               Join(names, PropertyLabel(member.key(), type, place.key)),
                               document_);
            } else {
                Visit(value, inner);
            }
        }
    }

    /// A property may carry a script that a player runs over its keys.
    void NoteExpression(Json const& property, std::string const& path)
    {
        Json const* expression = Json_Find(property, "x");
        if (expression != nullptr && expression->is_string() &&
            Json_Find(property, "k") != nullptr) {
            document_.notes.push_back({path, "its expression is ignored"});
        }
    }

    static std::string Join(std::string const& names, std::string const& name)
    {
        return names.empty() || name.empty() ? names + name : names + " / " + name;
    }

    LottieDocument& document_;
};

double OptionalNumber(Json const& root, char const* key)
{
    Json const* value = Json_Find(root, key);
    return value == nullptr ? 0.0 : Json_Number(*value, key);
}

}  // namespace

LottieDocument LottieDocument_Parse(std::string const& text)
{
    Json const root = Json_Parse(text);
    Json const* layers = Json_Find(root, "layers");
    if (layers == nullptr || !layers->is_array()) {
        throw ToolError("not a Lottie document: it has no list of layers");
    }
    LottieDocument document;
    document.name = Json_Text(Json_Find(root, "nm"));
    document.frameRate = OptionalNumber(root, "fr");
    document.firstFrame = OptionalNumber(root, "ip");
    document.lastFrame = OptionalNumber(root, "op");
    Walk walk(document);
    walk.Visit(*layers, {"layers", "", "layers"});
    if (Json const* assets = Json_Find(root, "assets")) {
        walk.Visit(*assets, {"assets", "", "assets"});
    }
    return document;
}
