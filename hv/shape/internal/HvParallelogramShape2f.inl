// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The members that the rectangle and the oval have in common. Included by the source file of each,
// which instantiates them. `Self` gives kKind, its HvShape2f::Kind, and SetupPathRep.

#ifndef HV_SHAPE_INTERNAL_HVPARALLELOGRAMSHAPE2F_INL
#define HV_SHAPE_INTERNAL_HVPARALLELOGRAMSHAPE2F_INL

#include <hv/foundation/byte_codec.h>
#include <hv/raster/HvFillBox.h>
#include <hv/rotation/HvTransfo4.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvParallelogramShape2f.h>
#include <hv/shape/HvPath2f.h>
#include <hv/shape/HvShapeLock.h>
#include <hv/shape/internal/shape_archive.h>
#include <hv/shape/internal/shape_transforms.h>

/// The outline of a shape as a path of its own, taken under the shape's lock; what the path then
/// does runs without it.
template <class Self>
class HvShapeOutline {
public:
    explicit HvShapeOutline(Self const& shape) : path_(1) { shape.SetupPathRep(path_); }

    HvPath2f const* operator->() const { return &path_; }

private:
    HvPath2f path_;
};

template <class Self>
HvParallelogramShape2f<Self>::HvParallelogramShape2f(HvPoint2<float> const& p0,
                                                     HvPoint2<float> const& p1,
                                                     HvPoint2<float> const& p2)
    : frame_(p0, p1, p2)
{
}

template <class Self>
HvParallelogramShape2f<Self>::HvParallelogramShape2f(HvPoint2<float> const& center, float width,
                                                     float height)
    : frame_(center, width, height)
{
}

template <class Self>
HvParallelogramShape2f<Self>::HvParallelogramShape2f(HvPoint2<float> const& a,
                                                     HvPoint2<float> const& b)
    : frame_(a, b)
{
}

template <class Self>
HvParallelogramShape2f<Self>::HvParallelogramShape2f(HvParallelogramShape2f const& source)
    : HvShape2f(source)
{
    HvShapeLock const lock(source);
    frame_ = source.frame_;
}

template <class Self>
HvParallelogramShape2f<Self>&
HvParallelogramShape2f<Self>::operator=(HvParallelogramShape2f const& source)
{
    HvShapeLock const lock(*this);
    HvShape2f::operator=(source);
    HvShapeLock const sourceLock(source);
    frame_ = source.frame_;
    return *this;
}

template <class Self>
HvShape2f const* HvParallelogramShape2f<Self>::QueryShapeKind(Kind kind) const
{
    HvShapeSection const section(*this);
    return kind == Self::kKind ? this : nullptr;
}

template <class Self>
HvShape2f* HvParallelogramShape2f<Self>::Clone() const
{
    return new Self(AsSelf());
}

template <class Self>
unsigned int HvParallelogramShape2f<Self>::NumPoints() const
{
    return HvParallelogram2f::kHandles;
}

template <class Self>
int HvParallelogramShape2f<Self>::GetPoint(unsigned int i, HvPoint2<float>& point) const
{
    if (i >= HvParallelogram2f::kHandles) {
        return 0;
    }
    HvShapeLock const lock(*this);
    point = frame_.Handle(i);
    return 1;
}

template <class Self>
HvPoint2<float> HvParallelogramShape2f<Self>::GetPoint(unsigned int i) const
{
    HvShapeLock const lock(*this);
    return frame_.Handle(i);
}

template <class Self>
HvPoint2<float>* HvParallelogramShape2f<Self>::GetPoints(unsigned int first, unsigned int last,
                                                         HvPoint2<float>* points) const
{
    HvShapeLock const lock(*this);
    frame_.GetHandles(first, last, points);
    return points;
}

template <class Self>
HvPoint2<double>* HvParallelogramShape2f<Self>::GetPoints(unsigned int first, unsigned int last,
                                                          HvPoint2<double>* points) const
{
    HvShapeLock const lock(*this);
    frame_.GetHandles(first, last, points);
    return points;
}

template <class Self>
HvPoint2<float> HvParallelogramShape2f<Self>::GetCenter() const
{
    return GetPoint(0);
}

template <class Self>
float HvParallelogramShape2f<Self>::GetWidth() const
{
    return static_cast<float>(GetWidthd());
}

template <class Self>
float HvParallelogramShape2f<Self>::GetWidthf() const
{
    return static_cast<float>(GetWidthd());
}

template <class Self>
double HvParallelogramShape2f<Self>::GetWidthd() const
{
    HvShapeLock const lock(*this);
    return frame_.Width();
}

template <class Self>
float HvParallelogramShape2f<Self>::GetHeight() const
{
    return static_cast<float>(GetHeightd());
}

template <class Self>
float HvParallelogramShape2f<Self>::GetHeightf() const
{
    return static_cast<float>(GetHeightd());
}

template <class Self>
double HvParallelogramShape2f<Self>::GetHeightd() const
{
    HvShapeLock const lock(*this);
    return frame_.Height();
}

template <class Self>
void HvParallelogramShape2f<Self>::SetWidth(float width)
{
    HvShapeLock const lock(*this);
    frame_.SetWidth(width);
}

template <class Self>
void HvParallelogramShape2f<Self>::SetWidth(double width)
{
    SetWidth(static_cast<float>(width));
}

template <class Self>
void HvParallelogramShape2f<Self>::SetHeight(float height)
{
    HvShapeLock const lock(*this);
    frame_.SetHeight(height);
}

template <class Self>
void HvParallelogramShape2f<Self>::SetHeight(double height)
{
    SetHeight(static_cast<float>(height));
}

template <class Self>
HvExtent2<float>& HvParallelogramShape2f<Self>::GetExtent(HvExtent2<float>& extent) const
{
    HvShapeLock const lock(*this);
    return extent = frame_.Extent();
}

template <class Self>
HvExtent2<double>& HvParallelogramShape2f<Self>::GetExtent(HvExtent2<double>& extent) const
{
    HvShapeLock const lock(*this);
    HvExtent2<float> const box = frame_.Extent();
    return extent = HvExtent2<double>(box.min.x, box.min.y, box.max.x, box.max.y);
}

template <class Self>
HvExtent2<float>& HvParallelogramShape2f<Self>::GetTightExtent(HvExtent2<float>& extent) const
{
    return GetExtent(extent);
}

template <class Self>
HvExtent2<double>& HvParallelogramShape2f<Self>::GetTightExtent(HvExtent2<double>& extent) const
{
    return GetExtent(extent);
}

template <class Self>
int HvParallelogramShape2f<Self>::GetClosePointIndex(HvPoint2<float> const& p, double size,
                                                     unsigned int* index) const
{
    HvShapeLock const lock(*this);
    return frame_.FindCloseHandle(p, size, *index);
}

template <class Self>
unsigned int HvParallelogramShape2f<Self>::GetPointsInExtentIndices(HvExtent2<float> const& extent,
                                                                    HvULongArray* indices) const
{
    HvShapeLock const lock(*this);
    return frame_.AddHandlesInExtent(extent, *indices);
}

template <class Self>
int HvParallelogramShape2f<Self>::IntersectSamplePointsExtent(HvGC const& gc,
                                                              HvExtent2<float> const& extent,
                                                              HvPoint2fArray& points,
                                                              HvPointTagArray& tags,
                                                              int skipExtentTest) const
{
    return HvShapeOutline<Self>(AsSelf())->IntersectSamplePointsExtent(gc, extent, points, tags,
                                                                       skipExtentTest);
}

template <class Self>
HvShape2f& HvParallelogramShape2f<Self>::Translate(HvPoint2<float> const& offset)
{
    HvShapeLock const lock(*this);
    frame_.Translate(offset);
    return *this;
}

template <class Self>
HvShape2f& HvParallelogramShape2f<Self>::Rotate(double degrees, HvPoint2<float> const& center)
{
    return Transform(HvShapeTransform_Rotation(degrees, center));
}

template <class Self>
HvShape2f& HvParallelogramShape2f<Self>::Scale(double sx, double sy, HvPoint2<float> const& center)
{
    return Transform(HvShapeTransform_Scale(sx, sy, center));
}

template <class Self>
HvShape2f& HvParallelogramShape2f<Self>::ShearX(double shear, double y0)
{
    return Transform(HvShapeTransform_ShearX(shear, y0));
}

template <class Self>
HvShape2f& HvParallelogramShape2f<Self>::ShearY(double shear, double x0)
{
    return Transform(HvShapeTransform_ShearY(shear, x0));
}

template <class Self>
HvShape2f& HvParallelogramShape2f<Self>::Transform(HvTransfo4 const& transform)
{
    HvShapeLock const lock(*this);
    frame_.Transform(transform);
    return *this;
}

template <class Self>
unsigned int HvParallelogramShape2f<Self>::Flatten(HvGC const& gc, HvPoint2fArray& points,
                                                   HvPointTagArray& tags) const
{
    return HvShapeOutline<Self>(AsSelf())->Flatten(gc, points, tags);
}

template <class Self>
unsigned int HvParallelogramShape2f<Self>::Sample(HvGC const& gc, HvPoint2fArray& points,
                                                  HvPointTagArray& tags) const
{
    return HvShapeOutline<Self>(AsSelf())->Sample(gc, points, tags);
}

template <class Self>
void HvParallelogramShape2f<Self>::AAFill(HvGC const& gc, HvUByteRaster& raster,
                                          int (*interrupted)()) const
{
    HvShapeOutline<Self>(AsSelf())->AAFill(gc, raster, interrupted);
}

template <class Self>
void HvParallelogramShape2f<Self>::SoftFill(HvGC const& gc, HvUByteRaster& raster,
                                            int (*interrupted)()) const
{
    HvShapeOutline<Self>(AsSelf())->SoftFill(gc, raster, interrupted);
}

template <class Self>
void HvParallelogramShape2f<Self>::Stroke(HvGC const& gc, HvUByteRaster& raster) const
{
    HvShapeOutline<Self>(AsSelf())->Stroke(gc, raster);
}

template <class Self>
bool HvParallelogramShape2f<Self>::GetFrameOnRaster(HvGC const& gc, HvUByteRaster const& raster,
                                                    HvParallelogram2f& frame) const
{
    HvShapeLock const lock(*this);
    HvFillBox box;
    if (HvFillBox_FromExtent(gc.transform.Map(frame_.Extent()), raster, box) == 0) {
        return false;
    }
    frame = frame_;
    return true;
}

template <class Self>
unsigned int HvParallelogramShape2f<Self>::WriteToBuffer(void* buffer) const
{
    HvShapeLock const lock(*this);
    HvByteWriter writer = HvShapeArchive_Begin(buffer, GetBufferSize(), Self::kKind);
    HvShapeArchive_WritePoint(writer, frame_.p0);
    HvShapeArchive_WritePoint(writer, frame_.p1);
    HvShapeArchive_WritePoint(writer, frame_.p2);
    return GetBufferSize();
}

template <class Self>
unsigned int HvParallelogramShape2f<Self>::GetBufferSize() const
{
    constexpr unsigned int kPoints = 3;
    return kHvShapeLengthBytes + kHvShapeKindBytes + kPoints * kHvShapePointBytes;
}

template <class Self>
unsigned int HvParallelogramShape2f<Self>::ReadFromBufferBody(void const* body)
{
    HvByteReader reader = HvByteReader::Unbounded(body);
    return ReadArchiveBody(reader);
}

template <class Self>
unsigned int HvParallelogramShape2f<Self>::ReadArchiveBody(HvByteReader& body)
{
    if (!HvShapeArchive_ReadKind(body, Self::kKind)) {
        body.Fail("its kind is not that of the shape", kHvShapeKindBytes);
        return 0;
    }
    HvParallelogram2f read;
    read.p0 = HvShapeArchive_ReadPoint(body);
    read.p1 = HvShapeArchive_ReadPoint(body);
    read.p2 = HvShapeArchive_ReadPoint(body);
    if (body.Failed()) {
        return 0;
    }
    HvShapeLock const lock(*this);
    frame_ = read;
    return GetBufferSize() - kHvShapeLengthBytes;
}

#endif
