// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the rectangle and the oval have in common, each tried as both.

#include <hv/shape/HvParallelogramShape2f.h>

#include "shape_lock_probe.h"

#include <hv/foundation/HvPoint2fArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/foundation/HvULongArray.h>
#include <hv/foundation/byte_codec.h>
#include <hv/raster/HvUByteRaster.h>
#include <hv/rotation/HvTransfo4.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvOval2f.h>
#include <hv/shape/HvPath2f.h>
#include <hv/shape/HvRect2f.h>
#include <hv/shape/HvShapeArchive.h>
#include <tests/support/allocation_failure.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <limits>
#include <memory>
#include <thread>
#include <vector>

namespace {

using Extent = HvExtent2<float>;
using Point = HvPoint2<float>;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

/// Corners (10, 20), (18, 22), (11, 26), (19, 28).
template <class Shape>
Shape MakeShape()
{
    return Shape(Point(10, 20), Point(18, 22), Point(11, 26));
}

void ExpectPoints(HvShape2f const& shape, Point const& p0, Point const& p1, Point const& p2)
{
    EXPECT_EQ(shape.GetPoint(6), p0);
    EXPECT_EQ(shape.GetPoint(8), p1);
    EXPECT_EQ(shape.GetPoint(4), p2);
}

void ExpectUnchanged(HvShape2f const& shape)
{
    ExpectPoints(shape, Point(10, 20), Point(18, 22), Point(11, 26));
}

template <class Shape>
class HvParallelogramShape2fTyped : public testing::Test {
};

using Shapes = testing::Types<HvRect2f, HvOval2f>;
TYPED_TEST_SUITE(HvParallelogramShape2fTyped, Shapes, );

}  // namespace

TYPED_TEST(HvParallelogramShape2fTyped, IsMadeOfThreePoints)
{
    ExpectPoints(TypeParam(), Point(0, 0), Point(0, 0), Point(0, 0));
    ExpectUnchanged(MakeShape<TypeParam>());
    ExpectPoints(TypeParam(Point(5, 7), 4.0F, 6.0F), Point(3, 4), Point(7, 4), Point(3, 10));
    ExpectPoints(TypeParam(Point(5, 7), Point(1, 9)), Point(5, 7), Point(1, 7), Point(5, 9));
}

TYPED_TEST(HvParallelogramShape2fTyped, HoldsItsPointsAloneBehindTheLock)
{
    EXPECT_EQ(sizeof(TypeParam), sizeof(HvShape2f) + 3 * sizeof(Point));
}

TYPED_TEST(HvParallelogramShape2fTyped, AnswersToItsOwnKindAlone)
{
    TypeParam const shape;
    for (int kind = -1; kind <= 6; ++kind) {
        HvShape2f const* const expected = kind == TypeParam::kKind ? &shape : nullptr;
        EXPECT_EQ(shape.QueryShapeKind(static_cast<HvShape2f::Kind>(kind)), expected) << kind;
    }
}

TYPED_TEST(HvParallelogramShape2fTyped, CopiesAreEqualAndIndependent)
{
    TypeParam shape = MakeShape<TypeParam>();
    TypeParam const copy(shape);
    TypeParam assigned;
    EXPECT_EQ(&(assigned = shape), &assigned);
    std::unique_ptr<HvShape2f> const clone(shape.Clone());
    EXPECT_NE(clone->QueryShapeKind(TypeParam::kKind), nullptr);
    shape.Translate(Point(1, 1));
    ExpectUnchanged(copy);
    ExpectUnchanged(assigned);
    ExpectUnchanged(*clone);
    TypeParam const& self = assigned;
    assigned = self;
    ExpectUnchanged(assigned);
    EXPECT_TRUE(ShapeLockProbe_IsFree(shape));
    EXPECT_TRUE(ShapeLockProbe_IsFree(assigned));
}

TYPED_TEST(HvParallelogramShape2fTyped, AssignmentOfTheBaseCopiesNothing)
{
    TypeParam target = MakeShape<TypeParam>();
    TypeParam const source;
    HvShape2f& base = target;
    EXPECT_EQ(&(base = source), &target);
    ExpectUnchanged(target);
}

TYPED_TEST(HvParallelogramShape2fTyped, HasNinePoints)
{
    TypeParam const shape = MakeShape<TypeParam>();
    EXPECT_EQ(shape.NumPoints(), 9U);
    Point const handles[] = {Point(14.5F, 24), Point(18.5F, 25), Point(19, 28),
                             Point(15, 27),    Point(11, 26),    Point(10.5F, 23),
                             Point(10, 20),    Point(14, 21),    Point(18, 22)};
    for (unsigned int i = 0; i < 9; ++i) {
        Point point;
        EXPECT_EQ(shape.GetPoint(i, point), 1);
        EXPECT_EQ(point, handles[i]) << i;
        EXPECT_EQ(shape.GetPoint(i), handles[i]) << i;
    }
    Point untouched(-1, -2);
    EXPECT_EQ(shape.GetPoint(9, untouched), 0);
    EXPECT_EQ(shape.GetPoint(0xFFFFFFFFU, untouched), 0);
    EXPECT_EQ(untouched, Point(-1, -2));
    EXPECT_EQ(shape.GetCenter(), handles[0]);

    Point floats[9];
    EXPECT_EQ(shape.GetPoints(0, 8, floats), floats);
    HvPoint2<double> doubles[9];
    EXPECT_EQ(shape.GetPoints(0, 8, doubles), doubles);
    for (unsigned int i = 0; i < 9; ++i) {
        EXPECT_EQ(floats[i], handles[i]) << i;
        EXPECT_EQ(doubles[i], HvPoint2<double>(handles[i])) << i;
    }
    EXPECT_EQ(shape.GetPoints(5, 4, floats), floats);
}

TYPED_TEST(HvParallelogramShape2fTyped, SidesHaveTheirLengths)
{
    TypeParam const shape(Point(0, 0), Point(1, 2), Point(-3, 1));
    EXPECT_EQ(shape.GetWidthd(), std::hypot(1.0, 2.0));
    EXPECT_EQ(shape.GetWidthf(), static_cast<float>(std::hypot(1.0, 2.0)));
    EXPECT_EQ(shape.GetWidth(), static_cast<float>(std::hypot(1.0, 2.0)));
    EXPECT_EQ(shape.GetHeightd(), std::hypot(3.0, 1.0));
    EXPECT_EQ(shape.GetHeightf(), static_cast<float>(std::hypot(3.0, 1.0)));
    EXPECT_EQ(shape.GetHeight(), static_cast<float>(std::hypot(3.0, 1.0)));
}

TYPED_TEST(HvParallelogramShape2fTyped, SidesAreSet)
{
    TypeParam shape(Point(1, 1), Point(4, 5), Point(1, 3));
    shape.SetWidth(10.0F);
    shape.SetHeight(4.0F);
    ExpectPoints(shape, Point(1, 1), Point(7, 9), Point(1, 5));
    // In float: the double is rounded first.
    shape.SetWidth(5.0 + 1e-12);
    shape.SetHeight(1.0 + 1e-12);
    ExpectPoints(shape, Point(1, 1), Point(4, 5), Point(1, 2));
}

TYPED_TEST(HvParallelogramShape2fTyped, VanishedSidesComeBackAlongTheirAxes)
{
    TypeParam shape(Point(1, 2), Point(1, 2), Point(1, 2));
    shape.SetWidth(3.0);
    shape.SetHeight(4.0);
    ExpectPoints(shape, Point(1, 2), Point(4, 2), Point(1, 6));
}

TYPED_TEST(HvParallelogramShape2fTyped, AllExtentsAreThatOfTheCorners)
{
    TypeParam const shape = MakeShape<TypeParam>();
    Extent floats;
    HvExtent2<double> doubles;
    auto const expectFloats = [&] {
        EXPECT_EQ(floats.state, Extent::Ordinary);
        EXPECT_EQ(floats.min, Point(10, 20));
        EXPECT_EQ(floats.max, Point(19, 28));
        floats = Extent();
    };
    auto const expectDoubles = [&] {
        EXPECT_EQ(doubles.state, HvExtent2<double>::Ordinary);
        EXPECT_EQ(doubles.min, HvPoint2<double>(10, 20));
        EXPECT_EQ(doubles.max, HvPoint2<double>(19, 28));
        doubles = HvExtent2<double>();
    };
    EXPECT_EQ(&shape.GetExtent(floats), &floats);
    expectFloats();
    EXPECT_EQ(&shape.GetTightExtent(floats), &floats);
    expectFloats();
    EXPECT_EQ(&shape.GetExtent(doubles), &doubles);
    expectDoubles();
    EXPECT_EQ(&shape.GetTightExtent(doubles), &doubles);
    expectDoubles();
}

TYPED_TEST(HvParallelogramShape2fTyped, PointsAreFoundByTheirPlace)
{
    TypeParam const shape = MakeShape<TypeParam>();
    unsigned int index = 77;
    EXPECT_EQ(shape.GetClosePointIndex(Point(18, 23), 2.0, &index), 1);
    EXPECT_EQ(index, 8U);
    index = 77;
    EXPECT_EQ(shape.GetClosePointIndex(Point(18, 23), 1.999, &index), 0);
    EXPECT_EQ(index, 77U);
    HvULongArray indices;
    EXPECT_EQ(shape.GetPointsInExtentIndices(Extent(18, 22, 19, 28), &indices), 3U);
    EXPECT_EQ(indices.Size(), 3U);
}

TYPED_TEST(HvParallelogramShape2fTyped, AffineEditsChangeAllPoints)
{
    TypeParam const start(Point(1, 2), Point(3, 2), Point(1, 5));
    TypeParam shape(start);
    EXPECT_EQ(&shape.Translate(Point(10, -1)), &shape);
    ExpectPoints(shape, Point(11, 1), Point(13, 1), Point(11, 4));

    shape = start;
    // About (1, 2) by a quarter: (2, 0) becomes (0, 2), (0, 3) becomes (-3, 0).
    EXPECT_EQ(&shape.Rotate(90.0, Point(1, 2)), &shape);
    ExpectPoints(shape, Point(1, 2), Point(1, 4), Point(-2, 2));

    shape = start;
    EXPECT_EQ(&shape.Scale(2.0, -3.0, Point(3, 2)), &shape);
    ExpectPoints(shape, Point(-1, 2), Point(3, 2), Point(-1, -7));

    shape = start;
    EXPECT_EQ(&shape.ShearX(2.0, 77.0), &shape);
    ExpectPoints(shape, Point(5, 2), Point(7, 2), Point(11, 5));

    shape = start;
    EXPECT_EQ(&shape.ShearY(2.0, 1.0), &shape);
    ExpectPoints(shape, Point(1, 2), Point(3, 6), Point(1, 5));

    shape = start;
    EXPECT_EQ(&shape.Transform(HvTransfo4().Translate(1, 1, 0).Scale(2, 2, 1)), &shape);
    ExpectPoints(shape, Point(3, 5), Point(7, 5), Point(3, 11));
}

TYPED_TEST(HvParallelogramShape2fTyped, ArchiveHasItsStatedBytes)
{
    TypeParam const shape(Point(1, -2), Point(0.5F, 0), Point(3, 4));
    unsigned char bytes[33];
    std::memset(bytes, 0xEE, sizeof bytes);
    EXPECT_EQ(shape.GetBufferSize(), 32U);
    EXPECT_EQ(shape.WriteToBuffer(bytes), 32U);
    unsigned char const expected[33] = {28,   0,    0,    0, TypeParam::kKind,
                                        0,    0,    0,    0, 0,
                                        0x80, 0x3F, 0,    0, 0,
                                        0xC0, 0,    0,    0, 0x3F,
                                        0,    0,    0,    0, 0,
                                        0,    0x40, 0x40, 0, 0,
                                        0x80, 0x40, 0xEE};
    EXPECT_EQ(std::memcmp(bytes, expected, sizeof bytes), 0);
    EXPECT_EQ(HvShape2f_GetKindFromBufferBody(bytes + 4), TypeParam::kKind);
}

TYPED_TEST(HvParallelogramShape2fTyped, ArchiveIsReadBackToTheBit)
{
    TypeParam const shape(Point(1, kNaN), Point(-0.0F, std::numeric_limits<float>::infinity()),
                          Point(3, std::numeric_limits<float>::denorm_min()));
    unsigned char bytes[32];
    shape.WriteToBuffer(bytes);
    TypeParam read = MakeShape<TypeParam>();
    EXPECT_EQ(read.ReadFromBufferBody(bytes + 4), 28U);
    unsigned char again[32];
    read.WriteToBuffer(again);
    EXPECT_EQ(std::memcmp(bytes, again, sizeof bytes), 0);
}

TYPED_TEST(HvParallelogramShape2fTyped, OtherKindsAreNotRead)
{
    TypeParam shape = MakeShape<TypeParam>();
    unsigned char bytes[32] = {};
    for (unsigned int kind = 0; kind < 0x400; ++kind) {
        bytes[4] = static_cast<unsigned char>(kind);
        bytes[5] = static_cast<unsigned char>(kind >> 8);
        if (kind != TypeParam::kKind) {
            ASSERT_EQ(shape.ReadFromBufferBody(bytes + 4), 0U) << kind;
        }
    }
    ExpectUnchanged(shape);
}

TYPED_TEST(HvParallelogramShape2fTyped, BytesBehindTheKindDoNotMatter)
{
    TypeParam const shape(Point(1, 2), Point(3, 4), Point(5, 6));
    unsigned char bytes[32];
    shape.WriteToBuffer(bytes);
    bytes[6] = 0x12;
    bytes[7] = 0x34;
    TypeParam read;
    EXPECT_EQ(read.ReadFromBufferBody(bytes + 4), 28U);
    ExpectPoints(read, Point(1, 2), Point(3, 4), Point(5, 6));
}

TYPED_TEST(HvParallelogramShape2fTyped, ArchiveThatIsCutOffIsNotRead)
{
    TypeParam const source(Point(1, 2), Point(3, 4), Point(5, 6));
    std::vector<unsigned char> bytes(32);
    source.WriteToBuffer(bytes.data());
    TypeParam shape = MakeShape<TypeParam>();
    for (std::size_t size = 0; size < 28; ++size) {
        // A block of its own, so that a read beyond it is seen.
        std::vector<unsigned char> const part(bytes.begin() + 4,
                                              bytes.begin() + 4 + static_cast<long>(size));
        HvByteReader reader(part.data(), part.size());
        ASSERT_EQ(shape.ReadArchiveBody(reader), 0U) << size;
        ASSERT_TRUE(reader.Failed());
    }
    ExpectUnchanged(shape);
    HvByteReader reader(bytes.data() + 4, 28);
    EXPECT_EQ(shape.ReadArchiveBody(reader), 28U);
    EXPECT_EQ(reader.Used(), 28U);
}

TYPED_TEST(HvParallelogramShape2fTyped, RefusedArchiveTellsWhereAndWhy)
{
    TypeParam shape;
    unsigned char body[28] = {1};
    HvByteReader other(body, sizeof body);
    EXPECT_EQ(shape.ReadArchiveBody(other), 0U);
    EXPECT_STREQ(other.Fault(), "its kind is not that of the shape");
    EXPECT_EQ(other.FaultPlace(), 0U);
    body[0] = TypeParam::kKind;
    HvByteReader part(body, 27);
    EXPECT_EQ(shape.ReadArchiveBody(part), 0U);
    EXPECT_STREQ(part.Fault(), HvByteReader::kEndsEarly);
    EXPECT_EQ(part.FaultPlace(), 24U);
}

TYPED_TEST(HvParallelogramShape2fTyped, OnlyCopiesAllocate)
{
    TypeParam shape = MakeShape<TypeParam>();
    TypeParam const other;
    AllocationCounter counter;
    unsigned char bytes[32];
    Extent extent;
    unsigned int index = 0;
    shape.WriteToBuffer(bytes);
    shape.ReadFromBufferBody(bytes + 4);
    shape.GetExtent(extent);
    shape.GetClosePointIndex(Point(0, 0), 1.0, &index);
    shape.Rotate(3, Point(1, 1));
    shape = other;
    EXPECT_EQ(counter.Allocations(), 0);
    counter.RefuseAllocation(1);
    EXPECT_THROW(delete shape.Clone(), std::bad_alloc);
    counter.RefuseAllocation(0);
    EXPECT_TRUE(ShapeLockProbe_IsFree(shape));
}

TYPED_TEST(HvParallelogramShape2fTyped, EveryMemberWaitsForTheLock)
{
    TypeParam shape = MakeShape<TypeParam>();
    Point point;
    Point points[9];
    HvPoint2<double> doubles[9];
    Extent extent;
    HvExtent2<double> extentd;
    unsigned int index = 0;
    HvULongArray indices;
    unsigned char bytes[32];
    shape.WriteToBuffer(bytes);
    auto const expectWait = [&](char const* name, auto call) {
        EXPECT_TRUE(ShapeLockProbe_Waits(shape, true, call)) << name;
    };
    expectWait("QueryShapeKind", [&] { shape.QueryShapeKind(HvShape2f::Rect); });
    expectWait("Clone", [&] { delete shape.Clone(); });
    expectWait("GetPoint", [&] { shape.GetPoint(1, point); });
    expectWait("GetPoint", [&] { shape.GetPoint(1); });
    expectWait("GetPoints", [&] { shape.GetPoints(0, 8, points); });
    expectWait("GetPoints", [&] { shape.GetPoints(0, 8, doubles); });
    expectWait("GetCenter", [&] { shape.GetCenter(); });
    expectWait("GetWidth", [&] { shape.GetWidth(); });
    expectWait("GetWidthf", [&] { shape.GetWidthf(); });
    expectWait("GetWidthd", [&] { shape.GetWidthd(); });
    expectWait("GetHeight", [&] { shape.GetHeight(); });
    expectWait("GetHeightf", [&] { shape.GetHeightf(); });
    expectWait("GetHeightd", [&] { shape.GetHeightd(); });
    expectWait("SetWidth", [&] { shape.SetWidth(1.0F); });
    expectWait("SetWidth", [&] { shape.SetWidth(1.0); });
    expectWait("SetHeight", [&] { shape.SetHeight(1.0F); });
    expectWait("SetHeight", [&] { shape.SetHeight(1.0); });
    expectWait("GetExtent", [&] { shape.GetExtent(extent); });
    expectWait("GetExtent", [&] { shape.GetExtent(extentd); });
    expectWait("GetTightExtent", [&] { shape.GetTightExtent(extent); });
    expectWait("GetTightExtent", [&] { shape.GetTightExtent(extentd); });
    expectWait("GetClosePointIndex", [&] { shape.GetClosePointIndex(point, 1.0, &index); });
    expectWait("GetPointsInExtentIndices",
               [&] { shape.GetPointsInExtentIndices(extent, &indices); });
    expectWait("Translate", [&] { shape.Translate(point); });
    expectWait("Rotate", [&] { shape.Rotate(1, point); });
    expectWait("Scale", [&] { shape.Scale(1, 1, point); });
    expectWait("ShearX", [&] { shape.ShearX(1, 1); });
    expectWait("ShearY", [&] { shape.ShearY(1, 1); });
    expectWait("Transform", [&] { shape.Transform(HvTransfo4()); });
    expectWait("WriteToBuffer", [&] { shape.WriteToBuffer(bytes); });
    expectWait("ReadFromBufferBody", [&] { shape.ReadFromBufferBody(bytes + 4); });
    expectWait("copy", [&] { TypeParam const copy(shape); });
    TypeParam other;
    expectWait("assignment", [&] { shape = other; });
    expectWait("assignment", [&] { other = shape; });
    EXPECT_TRUE(ShapeLockProbe_IsFree(shape));
}

TYPED_TEST(HvParallelogramShape2fTyped, RendersAndFlattensAsItsOutline)
{
    TypeParam const shape = MakeShape<TypeParam>();
    HvPath2f path(1);
    shape.SetupPathRep(path);
    HvGC gc;
    gc.transform.Translate(-20, -50, 0).Scale(3, 3, 1);
    gc.flatness = 0.25;
    gc.softRadiusA = 2.0;

    // Each operation appends, so both start with one entry.
    HvPoint2fArray points(Point(1, 1), 1);
    HvPoint2fArray expectedPoints(Point(1, 1), 1);
    HvPointTagArray tags(HvPointTagEnd, 1);
    HvPointTagArray expectedTags(HvPointTagEnd, 1);
    auto const expectSamePoints = [&] {
        ASSERT_EQ(points.Size(), expectedPoints.Size());
        ASSERT_EQ(tags.Size(), expectedTags.Size());
        for (unsigned int i = 0; i < points.Size(); ++i) {
            EXPECT_EQ(points[i], expectedPoints[i]) << i;
            EXPECT_EQ(tags[i], expectedTags[i]) << i;
        }
    };
    EXPECT_EQ(shape.Flatten(gc, points, tags), path.Flatten(gc, expectedPoints, expectedTags));
    expectSamePoints();
    EXPECT_EQ(shape.Sample(gc, points, tags), path.Sample(gc, expectedPoints, expectedTags));
    expectSamePoints();
    Extent const query(20, 10, 30, 40);
    EXPECT_EQ(shape.IntersectSamplePointsExtent(gc, query, points, tags, 0),
              path.IntersectSamplePointsExtent(gc, query, expectedPoints, expectedTags, 0));
    expectSamePoints();
    EXPECT_GT(points.Size(), 20U);

    HvUByteRaster raster(40, 40, 7);
    HvUByteRaster expected(40, 40, 7);
    auto const areSamePixels = [&] {
        return std::memcmp(raster.data, expected.data, raster.NumPixels()) == 0;
    };
    shape.AAFill(gc, raster, nullptr);
    path.AAFill(gc, expected, nullptr);
    EXPECT_TRUE(areSamePixels());
    EXPECT_EQ(raster.AllPixelValuesAre(7), 0);
    shape.SoftFill(gc, raster, nullptr);
    path.SoftFill(gc, expected, nullptr);
    EXPECT_TRUE(areSamePixels());
    auto const interrupt = [] { return 1; };
    shape.AAFill(gc, raster, interrupt);
    path.AAFill(gc, expected, interrupt);
    EXPECT_TRUE(areSamePixels());
    shape.Stroke(gc, raster);
    path.Stroke(gc, expected);
    EXPECT_TRUE(areSamePixels());
}

TYPED_TEST(HvParallelogramShape2fTyped, RefusedAllocationOfTheOutlineReleasesTheLock)
{
    TypeParam const shape = MakeShape<TypeParam>();
    HvGC const gc;
    long const made = RefuseEachAllocation([&] {
        HvPoint2fArray points;
        HvPointTagArray tags;
        HvUByteRaster raster(40, 40, 0);
        try {
            shape.Flatten(gc, points, tags);
            shape.AAFill(gc, raster, nullptr);
        } catch (std::bad_alloc const&) {
            EXPECT_TRUE(ShapeLockProbe_IsFree(shape));
            throw;
        }
    });
    EXPECT_GT(made, 0);
}

TEST(HvParallelogramShape2f_threads, ReadersNeverSeeHalfAnEdit)
{
    // The editor keeps p1 = p0 + (8, 2) and p2 = p0 + (1, 6) in every state.
    HvRect2f shape(Point(0, 0), Point(8, 2), Point(1, 6));
    std::atomic<int> broken{0};
    std::thread editor([&] {
        for (int i = 0; i < 2000; ++i) {
            shape.Translate(Point(i % 2 == 0 ? 16.0F : -16.0F, 4.0F));
        }
    });
    std::vector<std::thread> readers;
    for (int k = 0; k < 3; ++k) {
        readers.emplace_back([&] {
            for (int i = 0; i < 1000; ++i) {
                HvRect2f const copy(shape);
                Point points[9];
                shape.GetPoints(0, 8, points);
                bool const isWhole = points[8] - points[6] == Point(8, 2) &&
                                     points[4] - points[6] == Point(1, 6) &&
                                     copy.GetPoint(8) - copy.GetPoint(6) == Point(8, 2);
                broken += isWhole ? 0 : 1;
            }
        });
    }
    editor.join();
    for (std::thread& reader : readers) {
        reader.join();
    }
    EXPECT_EQ(broken, 0);
    EXPECT_EQ(shape.GetPoint(6), Point(0, 8000));
}
