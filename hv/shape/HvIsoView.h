// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A view on a world, with pan and zoom.

#ifndef HV_SHAPE_HVISOVIEW_H
#define HV_SHAPE_HVISOVIEW_H

#include <hv/foundation/HvExtent2.h>
#include <hv/platform/HvExport.h>
#include <hv/rotation/HvTransfo4.h>

/// A pair of inverse transforms between a world and the pixels of a view, and the view's size.
///
/// View-to-world is the one that changes; world-to-view follows it. What changes it composes on the
/// right: the new motion acts first, in the coordinates of the view. A change after which there
/// would be no inverse, or one with numbers that are not finite, is undone: the view stays as it
/// was. Not thread-safe on its own.
class HV_API HvIsoView {
public:
    /// A view with the world's origin in its centre.
    ///
    /// @param viewWidth, viewHeight  size of the view, in pixels.
    /// @param pixelX, pixelY, pixelZ  size of a pixel, in the world. When one is 0 there is no
    ///                                inverse: world-to-view stays the identity, IsValid gives 0.
    HvIsoView(double viewWidth, double pixelX, double viewHeight, double pixelY, double pixelZ);

    /// 1 when both sizes are 0 or above and neither transform is singular, otherwise 0.
    int IsValid() const;

    /// The view's width, in view units.
    double GetViewWidth() const { return width_; }
    /// The view's height, in view units.
    double GetViewHeight() const { return height_; }
    /// From world to view coordinates.
    HvTransfo4 const& GetWorldToView() const { return worldToView_; }
    /// From view to world coordinates.
    HvTransfo4 const& GetViewToWorld() const { return viewToWorld_; }

    /// Sets a size; the transforms stay.
    void SetViewWidth(double width) { width_ = width; }
    /// Sets a size; the transforms stay.
    void SetViewHeight(double height) { height_ = height; }

    /// Moves the view by `offset`, in view coordinates.
    void Pan(HvPoint2<double> const& offset);
    /// Multiplies the size of a pixel in the world, about a centre in view coordinates that keeps
    /// its place in both.
    void Zoom(double sx, double sy, double sz, HvPoint2<double> const& center);
    /// Moves the view by the extent's minimum corner and then divides its scale by the smaller of
    /// the two ratios of view size to extent size. From a view whose transforms are the identity
    /// that fits the whole extent into the view, anchored at its minimum corner; any other view is
    /// composed with it. Does nothing when the view's width or height is 0. The state of the extent
    /// is not asked.
    void SetFromExtent(HvExtent2<double> const& extent);

    /// The length of the image of the world's diagonal unit vector (1, 1): a pure scale s gives s
    /// times the square root of 2.
    double GetWorldUnitVectorLengthInView() const;
    /// The same from the view to the world.
    double GetViewUnitVectorLengthInWorld() const;
    /// Sets `extent`, and returns it, to the box of (0, 0) and the view's size.
    HvExtent2<double>& GetViewExtentInViewCS(HvExtent2<double>& extent) const;
    /// Sets `extent`, and returns it, to the box of the view's corners in the world.
    HvExtent2<double>& GetViewExtentInWorldCS(HvExtent2<double>& extent) const;

private:
    template <class Change>
    void ChangeViewToWorld(Change change);

    HvTransfo4 worldToView_;
    HvTransfo4 viewToWorld_;
    double width_;
    double height_;
};

#endif
