// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The drawing of a group: its shapes at one time.

#include <tools/ToolError.h>
#include <tools/play/evaluation/drawing.h>
#include <tools/play/evaluation/path_pieces.h>
#include <tools/play/evaluation/shape_outlines.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace {

/// Repeaters in repeaters multiply.
constexpr std::size_t kMostDrawn = 1000000;
/// Copies of one repeater.
constexpr double kMostCopies = 100000.0;
/// A highlight on the rim of a radial gradient would leave it without an inside.
constexpr double kFarthestHighlight = 0.99;

/// Walks over the shapes in order. What a shape has drawn so far in its group are the outlines and
/// paints from a first one on, since inner groups have added theirs in between.
class DrawingWalk {
public:
    DrawingWalk(double frame, Drawing& drawing) : frame_(frame), drawing_(drawing) {}

    void Visit(SceneGroup const& group)
    {
        Place const outer = place_;
        place_ = {outer.toLayer, drawing_.outlines.size(), drawing_.paints.size()};
        place_.toLayer.PostMultiply(group.transform.At(frame_));
        for (SceneShape const& shape : group.shapes) {
            std::visit([this](auto const& kind) { Visit(kind); }, shape.kind);
        }
        double const opacity = group.transform.OpacityAt(frame_);
        for (std::size_t i = place_.firstPaint; i < drawing_.paints.size(); ++i) {
            drawing_.paints[i].opacity *= opacity;
        }
        place_ = outer;
    }

private:
    /// The group that is walked over.
    struct Place {
        HvTransfo4 toLayer;
        std::size_t firstOutline = 0;
        std::size_t firstPaint = 0;
    };

    void Visit(SceneOutline const& shape) { AddOutline(shape); }
    void Visit(SceneRect const& shape) { AddOutline(shape); }
    void Visit(SceneEllipse const& shape) { AddOutline(shape); }
    void Visit(SceneStar const& shape) { AddOutline(shape); }

    template <class Shape>
    void AddOutline(Shape const& shape)
    {
        drawing_.outlines.push_back({ShapeOutline_Of(shape, frame_), place_.toLayer});
    }

    void Visit(SceneTrim const& trim)
    {
        TrimRange const range =
            TrimRange_Of(trim.start.At(frame_) * 0.01, trim.end.At(frame_) * 0.01,
                         trim.offset.At(frame_) / 360.0);
        std::vector<HvPath2f*> run;
        for (std::size_t i = place_.firstOutline; i < drawing_.outlines.size(); ++i) {
            HvPath2f& path = drawing_.outlines[i].path;
            if (trim.isOneRun) {
                run.push_back(&path);
            } else {
                path = PathPieces_Trim(path, range);
            }
        }
        PathPieces_TrimAsOne(run, range);
    }

    void Visit(SceneRepeater const& repeater)
    {
        double const wanted = std::ceil(repeater.copies.At(frame_));
        int const copies = static_cast<int>(wanted >= 1.0 ? std::min(wanted, kMostCopies) : 0.0);
        Drawing const one = TakeOwn();
        std::size_t drawn = 1 + one.outlines.size();
        for (DrawnPaint const& paint : one.paints) {
            drawn += 1 + paint.outlines.size();
        }
        if (drawn * static_cast<std::size_t>(copies) > kMostDrawn) {
            throw ToolError("repeaters ask for more than a million outlines and paints");
        }
        for (int i = 0; i < copies; ++i) {
            AppendCopy(one, repeater, repeater.isBelow ? i : copies - 1 - i, copies);
        }
    }

    /// Takes what the group has drawn so far out of the drawing; outlines are numbered anew.
    Drawing TakeOwn()
    {
        auto const outlines =
            std::next(drawing_.outlines.begin(), static_cast<std::ptrdiff_t>(place_.firstOutline));
        auto const paints =
            std::next(drawing_.paints.begin(), static_cast<std::ptrdiff_t>(place_.firstPaint));
        Drawing own;
        std::move(outlines, drawing_.outlines.end(), std::back_inserter(own.outlines));
        std::move(paints, drawing_.paints.end(), std::back_inserter(own.paints));
        drawing_.outlines.erase(outlines, drawing_.outlines.end());
        drawing_.paints.erase(paints, drawing_.paints.end());
        for (DrawnPaint& paint : own.paints) {
            for (std::size_t& outline : paint.outlines) {
                outline -= place_.firstOutline;
            }
        }
        return own;
    }

    void AppendCopy(Drawing const& one, SceneRepeater const& repeater, int i, int copies)
    {
        // From the layer into the group, a step on, and back.
        HvTransfo4 inverse;
        if (place_.toLayer.Inverse(inverse) == 0) {
            return;
        }
        HvTransfo4 move(place_.toLayer);
        move.PostMultiply(repeater.step.Repeated(frame_, i + repeater.offset.At(frame_)));
        move.PostMultiply(inverse);
        double const share = copies > 1 ? static_cast<double>(i) / (copies - 1) : 0.0;
        double const start = repeater.startOpacity.At(frame_) * 0.01;
        double const end = repeater.endOpacity.At(frame_) * 0.01;
        double const opacity = std::clamp(start + (end - start) * share, 0.0, 1.0);
        std::size_t const firstOutline = drawing_.outlines.size();
        for (DrawnOutline const& outline : one.outlines) {
            drawing_.outlines.push_back(outline);
            drawing_.outlines.back().toLayer.PreMultiply(move);
        }
        for (DrawnPaint const& paint : one.paints) {
            drawing_.paints.push_back(paint);
            DrawnPaint& copy = drawing_.paints.back();
            copy.toLayer.PreMultiply(move);
            copy.opacity *= opacity;
            for (std::size_t& outline : copy.outlines) {
                outline += firstOutline;
            }
        }
    }

    void Visit(ScenePaint const& paint)
    {
        DrawnPaint drawn;
        drawn.colour = paint.colour.At(frame_);
        drawn.opacity = std::clamp(paint.opacity.At(frame_) * 0.01, 0.0, 1.0);
        drawn.fillRule = paint.fillRule;
        drawn.toLayer = place_.toLayer;
        if (paint.gradient) {
            drawn.gradient = GradientOf(*paint.gradient);
        }
        if (paint.stroke) {
            drawn.stroke = StrokeOf(*paint.stroke);
        }
        for (std::size_t i = place_.firstOutline; i < drawing_.outlines.size(); ++i) {
            drawn.outlines.push_back(i);
        }
        numPainted_ += drawn.outlines.size() + 1;
        if (numPainted_ > kMostDrawn) {
            throw ToolError("more than a million outlines are painted in a layer");
        }
        drawing_.paints.push_back(std::move(drawn));
    }

    DrawnGradient GradientOf(SceneGradient const& gradient) const
    {
        DrawnGradient drawn;
        drawn.start = gradient.start.At(frame_);
        drawn.end = gradient.end.At(frame_);
        drawn.isRadial = gradient.isRadial;
        HvPoint2<double> const way = drawn.end - drawn.start;
        double const highlight = std::clamp(gradient.highlight.At(frame_) * 0.01,
                                            -kFarthestHighlight, kFarthestHighlight);
        HvTransfo4 turn;
        turn.RotateXY(gradient.highlightAngle.At(frame_), HvPoint2<double>());
        drawn.focus = drawn.start + turn.Map(way) * highlight;
        auto const stop = [this, &gradient](std::size_t i) { return gradient.stops[i].At(frame_); };
        std::size_t const end = 4 * gradient.numColours;
        for (std::size_t i = 0; i < end; i += 4) {
            drawn.colours.push_back({stop(i), {stop(i + 1), stop(i + 2), stop(i + 3)}});
        }
        for (std::size_t i = end; i + 1 < gradient.stops.size(); i += 2) {
            drawn.opacities.push_back({stop(i), stop(i + 1)});
        }
        return drawn;
    }

    DrawnStroke StrokeOf(SceneStroke const& stroke) const
    {
        DrawnStroke drawn{
            stroke.width.At(frame_),     stroke.capStyle, stroke.joinStyle, stroke.miterLimit, {},
            stroke.dashOffset.At(frame_)};
        for (AnimatedNumber const& length : stroke.dashes) {
            drawn.dashes.push_back(length.At(frame_));
        }
        return drawn;
    }

    double frame_;
    Drawing& drawing_;
    Place place_;
    std::size_t numPainted_ = 0;
};

}  // namespace

Drawing Drawing_Of(SceneGroup const& group, double frame)
{
    Drawing drawing;
    DrawingWalk(frame, drawing).Visit(group);
    return drawing;
}
