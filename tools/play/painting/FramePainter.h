// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A scene painted at a time.

#ifndef HV_TOOLS_PLAY_PAINTING_FRAMEPAINTER_H
#define HV_TOOLS_PLAY_PAINTING_FRAMEPAINTER_H

#include <tools/paint/Canvas.h>
#include <tools/play/painting/DrawingPainter.h>
#include <tools/play/scene/Scene.h>

#include <memory>
#include <optional>
#include <vector>

/// Paints frames of a scene; one for each thread, all of one scene.
class FramePainter {
public:
    /// The scene outlives the painter. It is fitted into the picture and centred.
    FramePainter(Scene const& scene, int width, int height);

    /// Makes `canvas`, of the size of the picture, that of a frame; frames need not be whole.
    /// Throws ToolError where the scene asks for more than can be painted.
    void Paint(double frame, Canvas& canvas);

private:
    /// A composition at a time.
    struct Place {
        SceneComposition const& composition;
        double frame;
        HvTransfo4 toPixels;
        std::vector<std::optional<HvTransfo4>> layersToPixels;  ///< those known so far
    };

    void PaintComposition(Place& place, Canvas& canvas);
    void PaintLayer(Place& place, std::size_t layer, Canvas& canvas);
    void PaintContent(SceneLayer const& layer, double frame, HvTransfo4 const& toPixels,
                      double opacity, Canvas& canvas);
    template <class PaintOwn>
    void PaintApart(double opacity, Canvas& canvas, PaintOwn const& paint);
    std::unique_ptr<Canvas> TakeCanvas();
    HvTransfo4 const& LayerToPixels(Place& place, std::size_t layer);
    bool PaintVeiled(SceneLayer const& layer, double frame, HvTransfo4 const& toPixels,
                     double opacity, Canvas& canvas);
    std::uint8_t const* SharesOfMasks(SceneLayer const& layer, double frame,
                                      HvTransfo4 const& toPixels, PixelBox const& box);
    void MultiplyByMatte(Place& place, SceneLayer const& layer, Canvas& canvas);
    bool CoversPicture(SceneInstance const& instance, HvTransfo4 const& toPixels) const;

    Scene const& scene_;
    int width_;
    int height_;
    HvTransfo4 toPixels_;
    HvUByteRaster raster_;
    DrawingPainter painter_;
    DrawingPainter maskPainter_;            ///< of masks, while the other one paints
    std::vector<std::uint8_t> shares_;      ///< of one mask or matte
    std::vector<std::uint8_t> maskShares_;  ///< of all masks of a layer
    std::vector<std::unique_ptr<Canvas>> spare_;
};

#endif
