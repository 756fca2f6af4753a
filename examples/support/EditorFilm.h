// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What a curve editor shows while the mouse drags, frame by frame.

#ifndef EXAMPLES_SUPPORT_EDITORFILM_H
#define EXAMPLES_SUPPORT_EDITORFILM_H

#include <hv/hv.h>

#include <string>
#include <vector>

/// Collects frames: the curve with its keys and handles, the region that a tool holds, and in
/// yellow what it asks to be drawn anew.
class EditorFilm {
public:
    using Point = HvPoint2<double>;
    using Extent = HvExtent2<double>;

    // What the editor shows of the curve, and its size in pixels.
    static constexpr double kViewLeft = -1;
    static constexpr double kViewRight = 13;
    static constexpr double kViewBottom = -3.5;
    static constexpr double kViewTop = 6.5;
    static constexpr int kWidth = 400;
    static constexpr int kHeight = 240;
    /// What the view multiplies y by, against x: handles are judged by eye.
    static constexpr double kViewScale =
        (kHeight / (kViewTop - kViewBottom)) / (kWidth / (kViewRight - kViewLeft));

    /// Plays a drag: takes a step for each place of the mouse, recorded or on the way to the next,
    /// and keeps what is seen after it. `step(mouse, invalid, region)` gives what its tool has
    /// answered; false when that is 0.
    template <class Step>
    bool Play(HvStdFCurve const& curve, char const* title, std::vector<Point> const& mouse,
              Step step)
    {
        Extent region;
        for (std::size_t k = 0; k < mouse.size(); ++k) {
            Point const next = mouse[k + 1 < mouse.size() ? k + 1 : k];
            for (unsigned part = 0; part < kStepsBetween; ++part) {
                Extent invalid;
                Point const place = mouse[k] + (next - mouse[k]) * (double(part) / kStepsBetween);
                if (step(place, invalid, region) == 0) {
                    return false;
                }
                AddFrame(curve, title, invalid, region);
            }
        }
        return true;
    }

    /// Six keys with tangents of their own, one of them selected, one with a jump.
    static HvStdFCurve SampleCurve();

    /// Writes all frames one after another, for a tenth of a second each, for ever, and those at
    /// the recorded places side by side, eight in a row; both as SVG, into EXAMPLE.svg and
    /// EXAMPLE_sheet.svg unless the program's arguments tell otherwise. Gives its exit status.
    int Write(char const* example, int argc, char** argv) const;

private:
    static constexpr unsigned kStepsBetween = 3;  // mouse steps from one recorded place to the next

    std::string Film() const;
    std::string Sheet() const;
    void AddFrame(HvStdFCurve const& curve, char const* title, Extent const& invalid,
                  Extent const& region);

    std::vector<std::string> frames_;
};

#endif
