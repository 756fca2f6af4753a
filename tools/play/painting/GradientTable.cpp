// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The colours along a gradient.

#include <tools/play/painting/GradientTable.h>

#include <algorithm>

namespace {

std::uint8_t ByteOf(double share)
{
    return static_cast<std::uint8_t>(share > 0.0 ? std::min(share, 1.0) * 255.0 + 0.5 : 0.0);
}

/// Walks along stops with offsets that do not fall.
template <class Stop>
class StopWalk {
public:
    /// At least one stop, in order.
    explicit StopWalk(std::vector<Stop> const& stops) : stops_(stops) {}

    void MoveTo(double offset)
    {
        offset_ = offset;
        while (above_ < stops_.size() && stops_[above_].offset <= offset) {
            ++above_;
        }
    }
    /// Of what `value` reads from a stop, that between the two beside the offset.
    template <class Value>
    double Between(Value const& value) const
    {
        if (above_ == 0) {
            return value(stops_.front());
        }
        Stop const& low = stops_[above_ - 1];
        if (above_ == stops_.size()) {
            return value(low);
        }
        Stop const& high = stops_[above_];
        double const share = (offset_ - low.offset) / (high.offset - low.offset);
        return value(low) + (value(high) - value(low)) * share;
    }

private:
    std::vector<Stop> const& stops_;
    double offset_ = 0.0;
    std::size_t above_ = 0;  ///< the first stop behind the offset
};

/// Stops as editors write them rise; any others are put in order.
template <class Stop>
std::vector<Stop> Sorted(std::vector<Stop> stops)
{
    std::stable_sort(stops.begin(), stops.end(),
                     [](Stop const& a, Stop const& b) { return a.offset < b.offset; });
    return stops;
}

}  // namespace

void GradientTable::AddTo(PaintKey& key, DrawnGradient const& gradient, double opacity)
{
    key.Add({opacity, static_cast<double>(gradient.colours.size())});
    for (DrawnStop const& stop : gradient.colours) {
        key.Add({stop.offset, stop.colour.red, stop.colour.green, stop.colour.blue});
    }
    for (DrawnOpacity const& stop : gradient.opacities) {
        key.Add({stop.offset, stop.opacity});
    }
}

void GradientTable::Make(DrawnGradient const& gradient, double opacity)
{
    std::vector<DrawnStop> const colours = Sorted(gradient.colours);
    std::vector<DrawnOpacity> const opacities = Sorted(gradient.opacities);
    StopWalk<DrawnStop> colourAt(colours);
    StopWalk<DrawnOpacity> opacityAt(opacities);
    colours_.clear();
    colours_.reserve(kSteps + 1);
    for (int i = 0; i <= kSteps; ++i) {
        double const offset = static_cast<double>(i) / kSteps;
        colourAt.MoveTo(offset);
        opacityAt.MoveTo(offset);
        auto const part = [&colourAt](double SceneColour::*member) {
            return ByteOf(
                colourAt.Between([member](DrawnStop const& stop) { return stop.colour.*member; }));
        };
        double const alpha =
            opacities.empty()
                ? 1.0
                : opacityAt.Between([](DrawnOpacity const& stop) { return stop.opacity; });
        colours_.push_back(
            PaintPixel_Premultiplied({part(&SceneColour::red), part(&SceneColour::green),
                                      part(&SceneColour::blue), ByteOf(alpha * opacity)}));
    }
    isOpaque_ = std::all_of(colours_.begin(), colours_.end(),
                            [](std::uint32_t colour) { return PaintPixel_Alpha(colour) == 255; });
}
