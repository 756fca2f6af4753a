// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A shape without points, for what the base alone does.

#ifndef TESTS_SHAPE_PROBE_SHAPE_H
#define TESTS_SHAPE_PROBE_SHAPE_H

#include <hv/foundation/HvExtent2.h>
#include <hv/shape/HvShape2f.h>

/// Implements every slot and does nothing in it.
class ProbeShape : public HvShape2f {
public:
    ProbeShape() = default;
    ProbeShape(ProbeShape const& other) : HvShape2f(other) {}
    using HvShape2f::operator=;

    HvShape2f const* QueryShapeKind(Kind) const override { return nullptr; }
    HvShape2f* Clone() const override { return new ProbeShape(*this); }
    unsigned int NumPoints() const override { return 0; }
    HvExtent2<float>& GetExtent(HvExtent2<float>& extent) const override { return extent; }
    HvExtent2<double>& GetExtent(HvExtent2<double>& extent) const override { return extent; }
    HvExtent2<float>& GetTightExtent(HvExtent2<float>& extent) const override { return extent; }
    HvExtent2<double>& GetTightExtent(HvExtent2<double>& extent) const override { return extent; }
    int GetPoint(unsigned int, HvPoint2<float>&) const override { return 0; }
    HvPoint2<float> GetPoint(unsigned int) const override { return {}; }
    HvPoint2<float>* GetPoints(unsigned int, unsigned int, HvPoint2<float>* points) const override
    {
        return points;
    }
    HvPoint2<double>* GetPoints(unsigned int, unsigned int, HvPoint2<double>* points) const override
    {
        return points;
    }
    int GetClosePointIndex(HvPoint2<float> const&, double, unsigned int*) const override
    {
        return 0;
    }
    unsigned int GetPointsInExtentIndices(HvExtent2<float> const&, HvULongArray*) const override
    {
        return 0;
    }
    int IsIntersectingExtent(HvGC const&, HvExtent2<float> const&, int) const override { return 0; }
    bool IsInteriorIntersectingExtent(HvGC const&, HvExtent2<float> const&, int) const override
    {
        return false;
    }
    int IntersectSamplePointsExtent(HvGC const&, HvExtent2<float> const&, HvPoint2fArray&,
                                    HvPointTagArray&, int) const override
    {
        return 0;
    }
    HvShape2f& Translate(HvPoint2<float> const&) override { return *this; }
    HvShape2f& Rotate(double, HvPoint2<float> const&) override { return *this; }
    HvShape2f& Scale(double, double, HvPoint2<float> const&) override { return *this; }
    HvShape2f& ShearX(double, double) override { return *this; }
    HvShape2f& ShearY(double, double) override { return *this; }
    HvShape2f& Transform(HvTransfo4 const&) override { return *this; }
    unsigned int Flatten(HvGC const&, HvPoint2fArray&, HvPointTagArray&) const override
    {
        return 0;
    }
    unsigned int Sample(HvGC const&, HvPoint2fArray&, HvPointTagArray&) const override { return 0; }
    void Fill(HvGC const&, HvUByteRaster&, int (*)()) const override {}
    void AAFill(HvGC const&, HvUByteRaster&, int (*)()) const override {}
    void SoftFill(HvGC const&, HvUByteRaster&, int (*)()) const override {}
    void Stroke(HvGC const&, HvUByteRaster&) const override {}
    unsigned int WriteToBuffer(void*) const override { return 0; }
    unsigned int GetBufferSize() const override { return 0; }
    unsigned int ReadFromBufferBody(void const*) override { return 0; }
};

#endif
