// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Outlines of the pixels of a raster.

#ifndef HV_VECTORIZE_HVVECTORIZER_H
#define HV_VECTORIZE_HVVECTORIZER_H

#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvMemory.h>

class HvPath2f;
class HvUByteRaster;
struct HvGC;
struct HvVectorizerImpl;

/// Turns the pixels of a raster that have one value into closed outlines, along their sides or
/// fitted to these by curves. What a region is, and where its contours start, ObVectorize says;
/// coordinates are pixels, (0, 0) being the outer corner of the first one.
///
/// Contours below a threshold are left out: a region with its holes when its outer contour is, a
/// hole by itself. Areas and perimeters are those of ObTestContourArea and ObTestContourPerimeter.
///
/// No lock: while nobody changes the thresholds any number of threads may use one vectorizer, each
/// with a path of its own, or with paths that others use too; a path is locked for each of its
/// edits, not for the whole call.
class HV_API HvVectorizer : public HvAllocated {
public:
    /// The thresholds are taken as they are, a negative one too: every contour that is drawn
    /// reaches it.
    HvVectorizer(double perimeterThreshold, double areaThreshold);
    ~HvVectorizer();
    HvVectorizer(HvVectorizer const&) = delete;
    HvVectorizer& operator=(HvVectorizer const&) = delete;

    /// Sets the least perimeter of a contour, in pixels, to the absolute value; 0 keeps all.
    void SetPerimeterThreshold(double threshold);
    /// Sets the least area of a contour, in square pixels, to the absolute value; 0 keeps all.
    void SetAreaThreshold(double threshold);

    /// Appends the contours of the pixels that equal `value` as closed polygons, their sides along
    /// x and y and as long as they can be.
    ///
    /// Each region gives its outer contour, then its holes, which run the other way; filled by
    /// either rule the path covers just these pixels. A hole may start in the middle of a side.
    ///
    /// @param extent  has no effect.
    /// @return        the points appended.
    ///
    /// A raster without pixels, or wider than 65,533, gives nothing. Contours are appended many at
    /// a time; when std::bad_alloc comes out, those that were stay, each of them whole. Beyond 2^24
    /// rows float does not hold every ordinate: they are rounded.
    unsigned int Vectorize(HvUByteRaster const& raster, unsigned char value,
                           HvExtent2<float> const& extent, HvPath2f& path) const;

    /// Appends the same contours as chains of cubics, with a line or two steps where they are
    /// short.
    ///
    /// @param gc    `gc.flatness` is the greatest distance of a pixel corner of the contour from
    ///              the curve; a corner between two single steps may be 0.18 from it whatever it
    ///              says.
    /// @param path  the curves are appended to it.
    /// @return      the points appended; 0 when there is no contour.
    ///
    /// Neighbouring cubics share a direction where they join, taken from the pixel corners within
    /// four steps; so does the end with the start. When std::bad_alloc comes out, the contours
    /// appended so far stay, the last one open.
    /// Cost: a contour of n steps that is split evenly takes log n fits of n points each. Source:
    /// P. Schneider, "An algorithm for automatically fitting digitized curves", Graphics Gems,
    /// 1990.
    unsigned int VectorizeAndFit(HvUByteRaster const& raster, unsigned char value,
                                 HvExtent2<float> const& extent, HvGC const& gc,
                                 HvPath2f& path) const;

private:
    HvVectorizerImpl* impl_;
};

#endif
