// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the rectangle and the oval have in common.

#ifndef HV_SHAPE_HVPARALLELOGRAMSHAPE2F_H
#define HV_SHAPE_HVPARALLELOGRAMSHAPE2F_H

#include <hv/shape/HvParallelogram2f.h>
#include <hv/shape/HvShape2f.h>

class HvByteReader;

/// A shape of three points: p0, the end p1 of the width side and the end p2 of the height side.
/// `Self` is HvRect2f or HvOval2f, the class that derives from it; nobody uses this base by name.
///
/// The control points are the nine handles of HvParallelogram2f, from the centre around the
/// outline. What renders or flattens goes through a path of the outline, unless `Self` says
/// otherwise. No number is refused: a shape may hold coordinates that are not finite. Results,
/// locks and failures are as HvShape2f says.
template <class Self>
class HV_API HvParallelogramShape2f : public HvShape2f {
public:
    // Life.

    /// All points at the origin.
    HvParallelogramShape2f() = default;
    /// The origin corner, the end of the width side and the end of the height side.
    HvParallelogramShape2f(HvPoint2<float> const& p0, HvPoint2<float> const& p1,
                           HvPoint2<float> const& p2);
    /// Sides along the axes, about a centre.
    HvParallelogramShape2f(HvPoint2<float> const& center, float width, float height);
    /// Sides along the axes, from two opposite corners.
    HvParallelogramShape2f(HvPoint2<float> const& a, HvPoint2<float> const& b);
    /// Copies the points, under the lock of `source`.
    HvParallelogramShape2f(HvParallelogramShape2f const& source);
    /// Locks this shape, then `source`.
    HvParallelogramShape2f& operator=(HvParallelogramShape2f const& source);
    using HvShape2f::operator=;

    HvShape2f const* QueryShapeKind(Kind kind) const override;
    HvShape2f* Clone() const override;

    // Points and sizes.

    /// 9.
    unsigned int NumPoints() const override;
    int GetPoint(unsigned int i, HvPoint2<float>& point) const override;
    HvPoint2<float> GetPoint(unsigned int i) const override;
    HvPoint2<float>* GetPoints(unsigned int first, unsigned int last,
                               HvPoint2<float>* points) const override;
    /// The same, widened to `double`.
    HvPoint2<double>* GetPoints(unsigned int first, unsigned int last,
                                HvPoint2<double>* points) const override;
    /// The centre of the parallelogram.
    HvPoint2<float> GetCenter() const;
    /// The length from p0 to p1.
    float GetWidth() const;
    /// The same.
    float GetWidthf() const;
    /// The same in `double`.
    double GetWidthd() const;
    /// The length from p0 to p2.
    float GetHeight() const;
    /// The same.
    float GetHeightf() const;
    /// The same in `double`.
    double GetHeightd() const;
    /// Moves p1 along its side so that the width is `width`, in float. When p0 and p1 are equal the
    /// side becomes parallel to the x axis.
    void SetWidth(float width);
    /// The same; `width` is rounded to `float`.
    void SetWidth(double width);
    /// The same with p2; when p0 and p2 are equal the side becomes parallel to the y axis.
    void SetHeight(float height);
    /// The same; `height` is rounded to `float`.
    void SetHeight(double height);

    // Extents: all four give the box of the four corners.

    HvExtent2<float>& GetExtent(HvExtent2<float>& extent) const override;
    /// The same in `double`.
    HvExtent2<double>& GetExtent(HvExtent2<double>& extent) const override;
    HvExtent2<float>& GetTightExtent(HvExtent2<float>& extent) const override;
    /// The same in `double`.
    HvExtent2<double>& GetTightExtent(HvExtent2<double>& extent) const override;

    // Hits.

    int GetClosePointIndex(HvPoint2<float> const& p, double size,
                           unsigned int* index) const override;
    unsigned int GetPointsInExtentIndices(HvExtent2<float> const& extent,
                                          HvULongArray* indices) const override;
    int IntersectSamplePointsExtent(HvGC const& gc, HvExtent2<float> const& extent,
                                    HvPoint2fArray& points, HvPointTagArray& tags,
                                    int skipExtentTest) const override;

    // Edits of all points.

    /// Adds `offset` to every control point.
    HvShape2f& Translate(HvPoint2<float> const& offset) override;
    HvShape2f& Rotate(double degrees, HvPoint2<float> const& center) override;
    /// Scales about `center`, along the axes.
    HvShape2f& Scale(double sx, double sy, HvPoint2<float> const& center) override;
    HvShape2f& ShearX(double shear, double y0) override;
    HvShape2f& ShearY(double shear, double x0) override;
    /// Maps every control point through `transform`.
    HvShape2f& Transform(HvTransfo4 const& transform) override;

    // Outline and rendering.

    unsigned int Flatten(HvGC const& gc, HvPoint2fArray& points,
                         HvPointTagArray& tags) const override;
    unsigned int Sample(HvGC const& gc, HvPoint2fArray& points,
                        HvPointTagArray& tags) const override;
    void AAFill(HvGC const& gc, HvUByteRaster& raster, int (*interrupted)()) const override;
    void SoftFill(HvGC const& gc, HvUByteRaster& raster, int (*interrupted)()) const override;
    void Stroke(HvGC const& gc, HvUByteRaster& raster) const override;

    // Saving: 32 bytes, the three points behind the head. See HvShapeArchive.h.

    unsigned int WriteToBuffer(void* buffer) const override;
    unsigned int GetBufferSize() const override;
    unsigned int ReadFromBufferBody(void const* body) override;
    /// The same through a reader, for bytes that nobody vouches for: 28; 0 when they are not all
    /// there or of another kind, and the reader tells where and why.
    unsigned int ReadArchiveBody(HvByteReader& body);

protected:
    /// Stores the three points when their box in device coordinates touches `raster`; otherwise
    /// there is nothing to fill.
    bool GetFrameOnRaster(HvGC const& gc, HvUByteRaster const& raster,
                          HvParallelogram2f& frame) const;

    HvParallelogram2f frame_;  ///< the three points; guarded by the lock of the shape

private:
    Self const& AsSelf() const { return static_cast<Self const&>(*this); }
};

#endif
