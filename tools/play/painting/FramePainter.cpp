// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A scene painted at a time.

#include <tools/play/painting/FramePainter.h>
#include <tools/play/painting/shares.h>

#include <hv/shape/HvRect2f.h>

#include <algorithm>
#include <utility>

namespace {

/// How much of a composition may be cut off at the rim of the picture by rounding.
constexpr double kRimSlack = 1e-6;

std::uint8_t ByteOf(double share)
{
    return static_cast<std::uint8_t>(share > 0.0 ? std::min(share, 1.0) * 255.0 + 0.5 : 0.0);
}

HvPath2f RectOf(double width, double height)
{
    return HvPath2f(HvRect2f(HvPoint2<float>(), HvPoint2<float>(HvPoint2<double>(width, height))));
}

/// The scene fitted into a picture and centred.
HvTransfo4 Fitted(Scene const& scene, int width, int height)
{
    double const scale = std::min(width / scene.width, height / scene.height);
    HvTransfo4 fitted;
    fitted.Translate((width - scene.width * scale) / 2, (height - scene.height * scale) / 2, 0.0);
    fitted.ScaleXY(scale, scale, HvPoint2<double>());
    return fitted;
}

}  // namespace

FramePainter::FramePainter(Scene const& scene, int width, int height)
    : scene_(scene), width_(width), height_(height), toPixels_(Fitted(scene, width, height)),
      raster_(width, height, 0), painter_(raster_), maskPainter_(raster_)
{
}

void FramePainter::Paint(double frame, Canvas& canvas)
{
    canvas.Clear();
    painter_.BeginFrame();
    maskPainter_.BeginFrame();
    Place place = {scene_.compositions.front(), frame, toPixels_, {}};
    PaintComposition(place, canvas);
}

void FramePainter::PaintComposition(Place& place, Canvas& canvas)
{
    std::size_t const count = place.composition.layers.size();
    place.layersToPixels.assign(count, std::nullopt);
    for (std::size_t i = count; i-- > 0;) {
        if (!place.composition.layers[i].isMatte) {
            PaintLayer(place, i, canvas);
        }
    }
}

void FramePainter::PaintLayer(Place& place, std::size_t i, Canvas& canvas)
{
    SceneLayer const& layer = place.composition.layers[i];
    double const opacity = layer.transform.OpacityAt(place.frame);
    if (layer.isVisible.Eval(place.frame, 0) == 0.0 || !(opacity > 0.0)) {
        return;
    }
    HvTransfo4 const toPixels = LayerToPixels(place, i);
    auto const* instance = std::get_if<SceneInstance>(&layer.content);
    bool const isCut = instance != nullptr && !CoversPicture(*instance, toPixels);
    if (layer.masks.empty() && !layer.matte && !isCut) {
        PaintContent(layer, place.frame, toPixels, opacity, canvas);
        return;
    }
    // Most scenes have neither masks nor mattes, and need no room for them.
    shares_.resize(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_));
    maskShares_.resize(shares_.size());
    if (!layer.matte && PaintVeiled(layer, place.frame, toPixels, opacity, canvas)) {
        return;
    }
    PaintApart(opacity, canvas, [&](Canvas& own) {
        PaintContent(layer, place.frame, toPixels, 1.0, own);
        if (isCut) {
            maskPainter_.CoverageOf(RectOf(instance->width, instance->height), toPixels, 0.0)
                .Spread(width_, own.TouchedBox(), shares_.data());
            own.Multiply(shares_.data());
        }
        if (!layer.masks.empty()) {
            own.Multiply(SharesOfMasks(layer, place.frame, toPixels, own.TouchedBox()));
        }
        MultiplyByMatte(place, layer, own);
    });
}

/// A layer of one plain paint needs no canvas of its own: its masks are the veil before it.
bool FramePainter::PaintVeiled(SceneLayer const& layer, double frame, HvTransfo4 const& toPixels,
                               double opacity, Canvas& canvas)
{
    auto const* group = std::get_if<SceneGroup>(&layer.content);
    if (group == nullptr) {
        return false;
    }
    Drawing const drawing = Drawing_Of(*group, frame);
    if (drawing.paints.size() > 1 ||
        (drawing.paints.size() == 1 && drawing.paints.front().gradient)) {
        return false;
    }
    auto const veilOf = [&](PixelBox const& box) {
        return Veil{SharesOfMasks(layer, frame, toPixels, box), ByteOf(opacity)};
    };
    painter_.PaintVeiled(drawing, toPixels, veilOf, canvas);
    return true;
}

void FramePainter::PaintContent(SceneLayer const& layer, double frame, HvTransfo4 const& toPixels,
                                double opacity, Canvas& canvas)
{
    if (auto const* group = std::get_if<SceneGroup>(&layer.content)) {
        Drawing const drawing = Drawing_Of(*group, frame);
        // One paint is made fainter by itself; several shine through one another if each is.
        if (opacity == 1.0 || drawing.paints.size() <= 1) {
            painter_.Paint(drawing, toPixels, opacity, canvas);
        } else {
            PaintApart(opacity, canvas,
                       [&](Canvas& own) { painter_.Paint(drawing, toPixels, 1.0, own); });
        }
    } else if (auto const* solid = std::get_if<SceneSolid>(&layer.content)) {
        painter_.PaintPath(RectOf(solid->width, solid->height), toPixels, solid->colour, opacity,
                           canvas);
    } else if (auto const* instance = std::get_if<SceneInstance>(&layer.content)) {
        Place inner = {
            scene_.compositions[instance->composition], instance->TimeAt(frame), toPixels, {}};
        if (opacity == 1.0) {
            PaintComposition(inner, canvas);
        } else {
            PaintApart(opacity, canvas, [&](Canvas& own) { PaintComposition(inner, own); });
        }
    }
}

/// Paints what `paint` paints on a canvas of its own, and that over `canvas`.
template <class PaintOwn>
void FramePainter::PaintApart(double opacity, Canvas& canvas, PaintOwn const& paint)
{
    std::unique_ptr<Canvas> own = TakeCanvas();
    paint(*own);
    canvas.Paint(*own, ByteOf(opacity));
    spare_.push_back(std::move(own));
}

std::unique_ptr<Canvas> FramePainter::TakeCanvas()
{
    if (spare_.empty()) {
        return std::make_unique<Canvas>(width_, height_);
    }
    std::unique_ptr<Canvas> canvas = std::move(spare_.back());
    spare_.pop_back();
    canvas->Clear();
    return canvas;
}

HvTransfo4 const& FramePainter::LayerToPixels(Place& place, std::size_t layer)
{
    std::vector<SceneLayer> const& layers = place.composition.layers;
    // Up to an ancestor that is known, or the topmost one, and down again.
    std::vector<std::size_t> chain;
    std::optional<std::size_t> at = layer;
    while (at && !place.layersToPixels[*at]) {
        chain.push_back(*at);
        at = layers[*at].parent;
    }
    HvTransfo4 transform = at ? *place.layersToPixels[*at] : place.toPixels;
    for (auto link = chain.rbegin(); link != chain.rend(); ++link) {
        transform.PostMultiply(layers[*link].transform.At(place.frame));
        place.layersToPixels[*link] = transform;
    }
    return *place.layersToPixels[layer];
}

bool FramePainter::CoversPicture(SceneInstance const& instance, HvTransfo4 const& toPixels) const
{
    HvTransfo4 fromPixels;
    if (toPixels.Inverse(fromPixels) == 0) {
        return false;
    }
    double const slack = kRimSlack * (instance.width + instance.height);
    for (double const x : {0.0, static_cast<double>(width_)}) {
        for (double const y : {0.0, static_cast<double>(height_)}) {
            HvPoint2<double> const corner = fromPixels.Map(HvPoint2<double>(x, y));
            bool const isInside = corner.x >= -slack && corner.x <= instance.width + slack &&
                                  corner.y >= -slack && corner.y <= instance.height + slack;
            if (!isInside) {
                return false;
            }
        }
    }
    return true;
}

/// What the masks of a layer let through together, in a box.
std::uint8_t const* FramePainter::SharesOfMasks(SceneLayer const& layer, double frame,
                                                HvTransfo4 const& toPixels, PixelBox const& box)
{
    for (SceneMask const& mask : layer.masks) {
        maskPainter_.CoverageOf(mask.outline.At(frame), toPixels, mask.feather.At(frame))
            .Spread(width_, box, shares_.data());
        std::uint8_t const opacity = ByteOf(mask.opacity.At(frame) * 0.01);
        if (layer.masks.size() == 1 && Shares_AreCoverage(mask, opacity)) {
            return shares_.data();
        }
        if (&mask == &layer.masks.front()) {
            Shares_Begin(mask.mode, width_, box, maskShares_);
        }
        Shares_Combine(mask, opacity, width_, box, shares_, maskShares_);
    }
    return maskShares_.data();
}

void FramePainter::MultiplyByMatte(Place& place, SceneLayer const& layer, Canvas& canvas)
{
    if (!layer.matte) {
        return;
    }
    std::unique_ptr<Canvas> matte = TakeCanvas();
    PaintLayer(place, *layer.matte, *matte);
    Shares_OfMatte(*matte, layer.matteMode, canvas.TouchedBox(), shares_);
    canvas.Multiply(shares_.data());
    spare_.push_back(std::move(matte));
}
