// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Shapes from their archives.

#include <hv/pathbuild/HvShapeFactory.h>

#include <hv/foundation/byte_codec.h>
#include <hv/pathbuild/HvPath2fProp1d.h>
#include <hv/shape/HvOval2f.h>
#include <hv/shape/HvRect2f.h>
#include <tests/support/allocation_failure.h>

#include <gtest/gtest.h>

#include "prop_path_support.h"

#include <memory>
#include <string>

namespace {

using Bytes = std::vector<unsigned char>;
using Shape = std::unique_ptr<HvShape2f>;

Bytes Written(HvShape2f const& shape)
{
    Bytes bytes(shape.GetBufferSize());
    EXPECT_EQ(shape.WriteToBuffer(bytes.data()), bytes.size());
    return bytes;
}

struct Sample {
    HvShape2f::Kind kind;
    Shape shape;
    unsigned int uncounted;  ///< bytes of the body that a read does not count
};

/// One shape of each kind.
std::vector<Sample> Samples()
{
    std::vector<Sample> samples;
    OpenProp const prop = ThreeLines();
    samples.push_back({HvShape2f::Path, Shape(new HvPath2f(prop)), 0});
    samples.push_back({HvShape2f::Rect, Shape(new HvRect2f(PropPoint(1, 2), PropPoint(3, 4))), 0});
    samples.push_back({HvShape2f::Oval, Shape(new HvOval2f(PropPoint(1, 2), PropPoint(3, 4))), 0});
    samples.push_back({HvShape2f::PathProp1d, Shape(prop.Clone()), 12});
    return samples;
}

Shape ReadVouched(Bytes const& archive, unsigned int& consumed)
{
    return Shape(HvShape2f_CreateFromBufferBody(archive.data() + 4, consumed));
}

/// Reads from bytes of their own size, so that a sanitizer sees a read beyond them.
Shape ReadBounded(Bytes const& bytes, unsigned int& used, HvArchiveFault& fault)
{
    std::unique_ptr<unsigned char[]> const exact(new unsigned char[bytes.size()]);
    std::copy(bytes.begin(), bytes.end(), exact.get());
    HvRect2f marker;
    HvShape2f* shape = &marker;
    used = HvShape2f_CreateFromBuffer(exact.get(), bytes.size(), &shape, fault);
    EXPECT_NE(shape, &marker);
    EXPECT_EQ(used == 0, shape == nullptr);
    EXPECT_EQ(used == 0, fault.reason != nullptr);
    return Shape(shape);
}

}  // namespace

TEST(HvShapeFactory, MakesEachKind)
{
    for (Sample const& sample : Samples()) {
        Bytes const archive = Written(*sample.shape);
        unsigned int consumed = 77;
        Shape const vouched = ReadVouched(archive, consumed);
        ASSERT_NE(vouched, nullptr);
        EXPECT_EQ(consumed, archive.size() - 4 - sample.uncounted);
        EXPECT_EQ(vouched->QueryShapeKind(sample.kind), vouched.get());
        EXPECT_EQ(Written(*vouched), archive);

        unsigned int used = 77;
        HvArchiveFault fault;
        Shape const bounded = ReadBounded(archive, used, fault);
        ASSERT_NE(bounded, nullptr);
        EXPECT_EQ(used, archive.size());
        EXPECT_EQ(bounded->QueryShapeKind(sample.kind), bounded.get());
        EXPECT_EQ(Written(*bounded), archive);
    }
}

TEST(HvShapeFactory, ArchivesMayStandBehindOneAnother)
{
    Bytes all;
    for (Sample const& sample : Samples()) {
        Bytes const archive = Written(*sample.shape);
        all.insert(all.end(), archive.begin(), archive.end());
    }
    std::size_t start = 0;
    for (Sample const& sample : Samples()) {
        unsigned int used = 0;
        HvArchiveFault fault;
        Shape const shape =
            ReadBounded(Bytes(all.begin() + std::ptrdiff_t(start), all.end()), used, fault);
        ASSERT_NE(shape, nullptr);
        EXPECT_NE(shape->QueryShapeKind(sample.kind), nullptr);
        start += used;
    }
    EXPECT_EQ(start, all.size());
}

TEST(HvShapeFactory, LengthBeyondTheBodyIsSteppedOver)
{
    for (Sample const& sample : Samples()) {
        Bytes archive = Written(*sample.shape);
        archive[0] = static_cast<unsigned char>(archive[0] + 3);
        archive.insert(archive.end(), {1, 2, 3, 4});
        unsigned int used = 0;
        HvArchiveFault fault;
        EXPECT_NE(ReadBounded(archive, used, fault), nullptr);
        EXPECT_EQ(used, archive.size() - 1);
    }
}

TEST(HvShapeFactory, UnknownKindsMakeNothing)
{
    for (auto const& [first, second] :
         {std::pair(0, 0), std::pair(5, 0), std::pair(0, 1), std::pair(255, 255)}) {
        Bytes archive = Written(HvRect2f(PropPoint(1, 2), PropPoint(3, 4)));
        archive[4] = static_cast<unsigned char>(first);
        archive[5] = static_cast<unsigned char>(second);
        unsigned int consumed = 77;
        EXPECT_EQ(ReadVouched(archive, consumed), nullptr);
        EXPECT_EQ(consumed, 0u);
        unsigned int used = 77;
        HvArchiveFault fault;
        EXPECT_EQ(ReadBounded(archive, used, fault), nullptr);
        EXPECT_EQ(fault.place, 4u);
        EXPECT_EQ(fault.reason, std::string("there is no such kind of shape"));
    }
}

TEST(HvShapeFactory, BodiesThatTheKindRefusesMakeNothing)
{
    Bytes archive = Written(ThreeLines());
    archive[6] = 1;
    archive[7] = 0;  // version 1
    unsigned int consumed = 77;
    EXPECT_EQ(ReadVouched(archive, consumed), nullptr);
    EXPECT_EQ(consumed, 0u);
    unsigned int used = 77;
    HvArchiveFault fault;
    EXPECT_EQ(ReadBounded(archive, used, fault), nullptr);
    EXPECT_EQ(fault.place, 6u);
    EXPECT_EQ(fault.reason, std::string("there is no such version of it"));
}

TEST(HvShapeFactory, EveryShorterBufferIsRefused)
{
    for (Sample const& sample : Samples()) {
        Bytes const archive = Written(*sample.shape);
        for (std::size_t size = 0; size < archive.size(); ++size) {
            unsigned int used = 77;
            HvArchiveFault fault;
            Bytes const part(archive.begin(), archive.begin() + std::ptrdiff_t(size));
            EXPECT_EQ(ReadBounded(part, used, fault), nullptr);
            EXPECT_EQ(fault.reason, std::string(HvByteReader::kEndsEarly));
            EXPECT_LE(fault.place, size);
        }
    }
}

TEST(HvShapeFactory, EveryShorterLengthIsRefused)
{
    for (Sample const& sample : Samples()) {
        Bytes archive = Written(*sample.shape);
        std::size_t const length = archive.size() - 4;
        ASSERT_LT(length, 65536u);
        for (std::size_t claimed = 0; claimed < length; ++claimed) {
            archive[0] = static_cast<unsigned char>(claimed);
            archive[1] = static_cast<unsigned char>(claimed >> 8);
            unsigned int used = 77;
            HvArchiveFault fault;
            EXPECT_EQ(ReadBounded(archive, used, fault), nullptr) << claimed;
        }
    }
}

TEST(HvShapeFactory, NullPointersMakeNothing)
{
    unsigned int consumed = 77;
    EXPECT_EQ(HvShape2f_CreateFromBufferBody(nullptr, consumed), nullptr);
    EXPECT_EQ(consumed, 0u);
    Bytes const archive = Written(HvRect2f());
    EXPECT_EQ(HvShape2f_CreateFromBuffer(archive.data(), archive.size(), nullptr), 0u);
    HvRect2f marker;
    HvShape2f* shape = &marker;
    HvArchiveFault fault;
    EXPECT_EQ(HvShape2f_CreateFromBuffer(nullptr, 100, &shape, fault), 0u);
    EXPECT_EQ(shape, nullptr);
    EXPECT_EQ(fault.reason, nullptr);
}

TEST(HvShapeFactory, WithoutMemoryThereIsNoShape)
{
    for (Sample const& sample : Samples()) {
        Bytes const archive = Written(*sample.shape);
        for (bool const isBounded : {false, true}) {
            bool isMade = false;
            RefuseEachAllocation(
                [] { return 0; },
                [&](int&) {
                    HvShape2f* shape = nullptr;
                    unsigned int consumed = 0;
                    try {
                        if (isBounded) {
                            consumed =
                                HvShape2f_CreateFromBuffer(archive.data(), archive.size(), &shape);
                        } else {
                            shape = HvShape2f_CreateFromBufferBody(archive.data() + 4, consumed);
                        }
                    } catch (std::bad_alloc const&) {
                        EXPECT_TRUE(isBounded);
                        EXPECT_EQ(shape, nullptr);
                    }
                    isMade = shape != nullptr;
                    EXPECT_EQ(isMade, consumed != 0);
                    delete shape;
                },
                [](int&, bool) {});
            EXPECT_TRUE(isMade);
        }
    }
}
