// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// From a document to its scene.

#include <tools/ToolError.h>
#include <tools/play/scene/scene_reader.h>
#include <tools/play/scene/shape_reader.h>

#include <algorithm>
#include <map>
#include <string>
#include <utility>

namespace {

/// Compositions in compositions multiply: a few of them, each twice in the next one, would take for
/// ever to paint.
constexpr double kMostLayersOfFrame = 1e6;
/// Layers of one composition.
constexpr std::size_t kMostLayers = 100000;

/// Compositions in compositions, and mattes of mattes: deeper than any editor shows. Reading and
/// painting call themselves for each level.
constexpr int kDeepest = 64;

/// The kinds of layers, by their numbers in a document.
enum LayerKind : int {
    Instance = 0,
    Solid = 1,
    Null = 3,
    Shapes = 4
};

std::string KindText(int kind)
{
    static std::map<int, std::string> const kTexts = {
        {2, "images"}, {5, "texts"}, {6, "sound"}, {9, "videos"}, {13, "cameras"}};
    auto const found = kTexts.find(kind);
    return found != kTexts.end() ? found->second : "layers of the type " + std::to_string(kind);
}

/// #rrggbb
SceneColour SolidColour(std::string const& text, std::string const& path)
{
    bool const isColour = text.size() == 7 && text[0] == '#' &&
                          text.find_first_not_of("0123456789abcdefABCDEF", 1) == text.npos;
    if (!isColour) {
        throw ToolError(path + " is no colour");
    }
    auto const part = [&text](std::size_t at) {
        return std::stoi(text.substr(at, 2), nullptr, 16) / 255.0;
    };
    return {part(1), part(3), part(5)};
}

class SceneReader {
public:
    SceneReader(Json const& document, LeftOut& leftOut) : document_(document), leftOut_(leftOut)
    {
        Json const* assets = Json_Find(document, "assets");
        for (std::size_t i = 0; assets != nullptr && i < assets->size(); ++i) {
            Json const& asset = (*assets)[i];
            if (Json_Find(asset, "layers") != nullptr) {
                assets_.insert({Json_Text(Json_Find(asset, "id")), {i, 0, 0.0, Asset::IsUnread}});
            }
        }
    }

    Scene Read()
    {
        PropertyReader const reader(document_, "", leftOut_);
        scene_.width = reader.Plain("w", 0);
        scene_.height = reader.Plain("h", 0);
        scene_.frameRate = reader.Plain("fr", 0);
        scene_.firstFrame = reader.Plain("ip", 0);
        scene_.endFrame = reader.Plain("op", 0);
        if (!(scene_.width > 0 && scene_.height > 0)) {
            throw ToolError("not a Lottie document: it has no size");
        }
        if (!(scene_.frameRate > 0)) {
            throw ToolError("not a Lottie document: it has no frame rate");
        }
        ReadComposition(document_, "layers");
        return std::move(scene_);
    }

private:
    /// A composition among the assets.
    struct Asset {
        std::size_t number;
        std::size_t composition;
        double layersOfFrame;
        enum {
            IsUnread,
            IsBeingRead,
            IsRead
        } state;
    };

    /// Adds a composition to the scene and returns how many layers a frame of it paints.
    double ReadComposition(Json const& owner, std::string const& path)
    {
        Json const* list = Json_Find(owner, "layers");
        if (list == nullptr || !list->is_array()) {
            throw ToolError("not a Lottie document: it has no list of layers");
        }
        if (++depth_ > kDeepest) {
            throw ToolError("compositions are nested deeper than " + std::to_string(kDeepest) +
                            " levels");
        }
        if (list->size() > kMostLayers) {
            throw ToolError(path + " has more than " + std::to_string(kMostLayers) + " layers");
        }
        std::size_t const composition = scene_.compositions.size();
        scene_.compositions.emplace_back();
        double layersOfFrame = 0.0;
        std::vector<SceneLayer> layers;
        layers.reserve(list->size());
        for (std::size_t i = 0; i < list->size(); ++i) {
            PropertyReader const reader((*list)[i], Json_ElementPath(path, i), leftOut_);
            layers.push_back(ReadLayer(reader, layersOfFrame));
        }
        if (layersOfFrame > kMostLayersOfFrame) {
            throw ToolError(path + ": more than a million layers would be painted for a frame");
        }
        Connect(*list, path, layers);
        scene_.compositions[composition].layers = std::move(layers);
        --depth_;
        return layersOfFrame;
    }

    SceneLayer ReadLayer(PropertyReader const& reader, double& layersOfFrame)
    {
        Json const none = Json::object();
        Json const* transform = Json_Find(reader.Owner(), "ks");
        SceneLayer layer;
        layer.transform = AnimatedTransform(PropertyReader(transform != nullptr ? *transform : none,
                                                           reader.PathOf("ks"), leftOut_));
        layer.transform.SetAlongPath(reader.PlainSwitch("ao"));
        layer.isMatte = reader.PlainSwitch("td");
        if (!reader.PlainSwitch("hd")) {
            ShowBetween(reader.Plain("ip", scene_.firstFrame), reader.Plain("op", scene_.endFrame),
                        layer.isVisible);
            ReadContent(reader, layer, layersOfFrame);
            ReadMasks(reader, layer);
            NoteLeftOut(reader);
        }
        layersOfFrame += 1.0;
        return layer;
    }

    static void ShowBetween(double in, double out, HvBooleanFCurve& isVisible)
    {
        if (in < out) {
            // Before its first key a curve has the value of that.
            isVisible.CreateKey(in - 1.0, 0.0);
            isVisible.CreateKey(in, 1.0);
            isVisible.CreateKey(out, 0.0);
        }
    }

    void NoteLeftOut(PropertyReader const& reader)
    {
        auto const isList = [&reader](char const* key) {
            Json const* list = Json_Find(reader.Owner(), key);
            return list != nullptr && list->is_array() && !list->empty();
        };
        if (isList("ef")) {
            leftOut_.Add("effects", reader.PathOf("ef"));
        }
        if (isList("sy")) {
            leftOut_.Add("layer styles", reader.PathOf("sy"));
        }
        if (reader.PlainInteger("bm", 0) != 0) {
            leftOut_.Add("blend modes", reader.PathOf("bm"));
        }
        if (reader.PlainSwitch("ddd")) {
            leftOut_.Add("the third dimension", reader.Path());
        }
    }

    void ReadContent(PropertyReader const& reader, SceneLayer& layer, double& layersOfFrame)
    {
        int const kind = reader.PlainInteger("ty", -1);
        switch (kind) {
        case Instance:
            layer.content = ReadInstance(reader, layersOfFrame);
            break;
        case Solid:
            layer.content = SceneSolid{
                SolidColour(Json_Text(Json_Find(reader.Owner(), "sc")), reader.PathOf("sc")),
                reader.Plain("sw", 0), reader.Plain("sh", 0)};
            break;
        case Null:
            break;
        case Shapes:
            if (Json const* list = Json_Find(reader.Owner(), "shapes")) {
                layer.content = ShapeReader_Read(*list, reader.PathOf("shapes"), leftOut_);
            }
            break;
        default:
            leftOut_.Add(KindText(kind), reader.Path());
        }
    }

    SceneInstance ReadInstance(PropertyReader const& reader, double& layersOfFrame)
    {
        std::string const id = Json_Text(Json_Find(reader.Owner(), "refId"));
        auto const found = assets_.find(id);
        if (found == assets_.end()) {
            throw ToolError(reader.PathOf("refId") + " names no composition");
        }
        Asset& asset = found->second;
        if (asset.state == Asset::IsBeingRead) {
            throw ToolError(reader.Path() + ": the composition \"" + id + "\" contains itself");
        }
        if (asset.state == Asset::IsUnread) {
            asset.state = Asset::IsBeingRead;
            asset.composition = scene_.compositions.size();
            std::string const path = Json_ElementPath("assets", asset.number);
            Json const& owner = (*Json_Find(document_, "assets"))[asset.number];
            asset.layersOfFrame = ReadComposition(owner, path + ".layers");
            asset.state = Asset::IsRead;
        }
        layersOfFrame += asset.layersOfFrame;
        SceneInstance instance{asset.composition,
                               reader.Plain("st", 0),
                               reader.Plain("sr", 1),
                               std::nullopt,
                               scene_.frameRate,
                               reader.Plain("w", scene_.width),
                               reader.Plain("h", scene_.height)};
        if (!(instance.stretch != 0.0)) {
            throw ToolError(reader.PathOf("sr") + " is 0");
        }
        if (reader.Has("tm")) {
            instance.seconds = AnimatedNumber(reader.Number("tm", 0));
        }
        return instance;
    }

    void ReadMasks(PropertyReader const& reader, SceneLayer& layer)
    {
        static std::map<std::string, MaskMode> const kModes = {
            {"a", MaskMode::Add},     {"s", MaskMode::Subtract}, {"i", MaskMode::Intersect},
            {"l", MaskMode::Lighten}, {"d", MaskMode::Darken},   {"f", MaskMode::Difference}};
        Json const* list = Json_Find(reader.Owner(), "masksProperties");
        std::string const path = reader.PathOf("masksProperties");
        for (std::size_t i = 0; list != nullptr && i < list->size(); ++i) {
            PropertyReader const mask((*list)[i], Json_ElementPath(path, i), leftOut_);
            std::string const mode = Json_Text(Json_Find(mask.Owner(), "mode"));
            auto const found = kModes.find(mode);
            if (found == kModes.end()) {
                if (mode != "n") {
                    leftOut_.Add("masks of the mode \"" + mode + "\"", mask.Path());
                }
                continue;
            }
            if (IsMoved(mask, "x")) {
                leftOut_.Add("widening of masks", mask.Path());
            }
            layer.masks.push_back(
                {AnimatedOutline(mask.Outline("pt")), AnimatedNumber(mask.Number("o", 100)),
                 AnimatedNumber(mask.Number("f", 0)), found->second, mask.PlainSwitch("inv")});
        }
    }

    /// Whether a property is anything but 0.
    static bool IsMoved(PropertyReader const& reader, char const* key)
    {
        for (LottieTrack const& track : reader.Numbers(key, 1, 0)) {
            if (track.keys.size() > 1 || track.keys.front().value != 0.0) {
                return true;
            }
        }
        return false;
    }

    /// Finds parents and mattes among the layers of a composition.
    void Connect(Json const& list, std::string const& path, std::vector<SceneLayer>& layers)
    {
        std::map<int, std::size_t> byIndex;
        for (std::size_t i = 0; i < layers.size(); ++i) {
            PropertyReader const reader(list[i], Json_ElementPath(path, i), leftOut_);
            if (reader.Has("ind")) {
                byIndex.insert({reader.PlainInteger("ind", 0), i});
            }
        }
        for (std::size_t i = 0; i < layers.size(); ++i) {
            PropertyReader const reader(list[i], Json_ElementPath(path, i), leftOut_);
            auto const find = [&](char const* key) {
                auto const found = byIndex.find(reader.PlainInteger(key, 0));
                return found == byIndex.end() ? std::nullopt : std::optional(found->second);
            };
            if (reader.Has("parent")) {
                layers[i].parent = find("parent");
            }
            int const mode = std::clamp(reader.PlainInteger("tt", 0), 0, 4);
            if (mode != 0) {
                layers[i].matteMode = static_cast<MatteMode>(mode);
                layers[i].matte = reader.Has("tp") ? find("tp")
                                  : i > 0          ? std::optional(i - 1)
                                                   : std::nullopt;
            }
        }
        RefuseChains(path, layers, &SceneLayer::parent, "parent", kMostLayers);
        RefuseChains(path, layers, &SceneLayer::matte, "matte", kDeepest);
        for (SceneLayer const& layer : layers) {
            if (layer.matte) {
                layers[*layer.matte].isMatte = true;
            }
        }
    }

    /// Throws where layers are their own parents or mattes, or are linked in a chain too long.
    static void RefuseChains(std::string const& path, std::vector<SceneLayer> const& layers,
                             std::optional<std::size_t> SceneLayer::*next, char const* what,
                             std::size_t longest)
    {
        // How many layers follow each; 0 where that is not known yet.
        std::vector<std::size_t> lengths(layers.size(), 0);
        std::vector<std::size_t> chain;
        for (std::size_t i = 0; i < layers.size(); ++i) {
            chain.clear();
            std::optional<std::size_t> at = i;
            while (at && lengths[*at] == 0 && chain.size() <= layers.size()) {
                chain.push_back(*at);
                at = layers[*at].*next;
            }
            if (chain.size() > layers.size()) {
                throw ToolError(Json_ElementPath(path, i) + " is its own " + what);
            }
            std::size_t length = at ? lengths[*at] : 0;
            for (auto link = chain.rbegin(); link != chain.rend(); ++link) {
                lengths[*link] = ++length;
            }
            if (length > longest) {
                throw ToolError(Json_ElementPath(path, i) + " has a chain of more than " +
                                std::to_string(longest) + " layers, each the " + what +
                                " of the one before");
            }
        }
    }

    Json const& document_;
    LeftOut& leftOut_;
    std::map<std::string, Asset> assets_;
    Scene scene_;
    int depth_ = 0;
};

}  // namespace

Scene SceneReader_Read(Json const& document, LeftOut& leftOut)
{
    return SceneReader(document, leftOut).Read();
}
