// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The array of elements with constructors: growth, aliasing, moved storage, failed allocations.

#include <hv/foundation/HvDynArray.h>

#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvPoint2fArray.h>
#include <tests/support/allocation_failure.h>
#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <limits>
#include <vector>

namespace {

using ArrayOfArrays = HvDynArray<HvDoubleArray>;
using Model = std::vector<std::vector<double>>;

HvDoubleArray MakeInner(unsigned int i)
{
    return HvDoubleArray(double(i), i % 4);
}

ArrayOfArrays MakeArray(unsigned int capacity, unsigned int count)
{
    ArrayOfArrays a(capacity);
    for (unsigned int i = 0; i < count; ++i) {
        a.Add(MakeInner(i));
    }
    return a;
}

std::vector<double> Numbers(HvDoubleArray const& a)
{
    return std::vector<double>(a.begin(), a.end());
}

Model Contents(ArrayOfArrays const& a)
{
    Model contents;
    for (HvDoubleArray const& inner : a) {
        contents.push_back(Numbers(inner));
    }
    return contents;
}

struct Plain {
    double number;
    int flag;
};

/// Counts the objects that are alive; its copies can throw, so the array must not rely on moves.
struct Copied {
    static int alive;
    int number = 0;

    Copied() { ++alive; }
    Copied(Copied const& other) : number(other.number) { ++alive; }
    Copied& operator=(Copied const& other)
    {
        HvFree(HvAllocate(1));
        number = other.number;
        return *this;
    }
    ~Copied() { --alive; }
};
int Copied::alive = 0;

}  // namespace

TEST(HvDynArray, ConstructsEverySlotByDefault)
{
    ArrayOfArrays const a(3);
    EXPECT_EQ(a.Count(), 0u);
    EXPECT_EQ(a.Capacity(), 3u);
    for (unsigned int i = 0; i < 3; ++i) {
        EXPECT_EQ(a[i].Size(), 0u);
        EXPECT_EQ(a[i].Capacity(), 1u);
    }
    EXPECT_EQ(ArrayOfArrays(0).Capacity(), 1u);
}

TEST(HvDynArray, ZeroFillsPlainElements)
{
    HvDynArray<Plain> a(2);
    a.Resize(9);
    for (Plain const& plain : a) {
        EXPECT_EQ(plain.number, 0.0);
        EXPECT_EQ(plain.flag, 0);
    }
}

TEST(HvDynArray, DestroysEveryElementOnce)
{
    Copied::alive = 0;
    {
        HvDynArray<Copied> a(2);
        for (int i = 0; i < 9; ++i) {
            Copied element;
            element.number = i;
            a.Add(element);
        }
        EXPECT_EQ(Copied::alive, 16);
        a.RemoveClosedRange(1, 6);
        EXPECT_EQ(Copied::alive, 4);
        EXPECT_EQ(a[0].number, 0);
        EXPECT_EQ(a[1].number, 7);
        EXPECT_EQ(a[2].number, 8);
    }
    EXPECT_EQ(Copied::alive, 0);
}

TEST(HvDynArray, FollowsTheRuleOfCapacities)
{
    ArrayOfArrays a(8);
    a.Resize(3);
    EXPECT_EQ(a.Capacity(), 4u);
    a.Resize(0);
    EXPECT_EQ(a.Capacity(), 1u);
    a.Resize(5);
    EXPECT_EQ(a.Capacity(), 8u);
}

TEST(HvDynArray, ChopsWithoutShrinkingOrClearing)
{
    ArrayOfArrays a = MakeArray(8, 8);
    a.Chop(1);
    EXPECT_EQ(a.Capacity(), 8u);
    a.Chop(3);
    EXPECT_EQ(a.Count(), 1u);
    EXPECT_EQ(Numbers(a[7]), Numbers(MakeInner(7)));
}

TEST(HvDynArray, HandsOverTheStorageOfInnerArrays)
{
    ArrayOfArrays a = MakeArray(2, 2);
    double const* const inner = a[1].Data();
    a.Add(MakeInner(2));
    EXPECT_EQ(a[1].Data(), inner);
    a.InsertBefore(0, MakeInner(9));
    EXPECT_EQ(a[2].Data(), inner);
    a.RemoveClosedRange(0, 0);
    EXPECT_EQ(a[1].Data(), inner);
    a.Resize(2);
    EXPECT_EQ(a[1].Data(), inner);
}

TEST(HvDynArray, TakesStorageOfTemporaries)
{
    HvDynArray<HvPoint2fArray> a(1);
    HvPoint2fArray points(HvPoint2<float>(1, 2), 100);
    HvPoint2<float> const* const data = points.Data();
    a.Add(std::move(points));
    EXPECT_EQ(a[0].Data(), data);
    EXPECT_EQ(a[0].Size(), 100u);
}

TEST(HvDynArray, TakesItsOwnElementsAsArguments)
{
    for (unsigned int count = 1; count <= 9; ++count) {
        for (unsigned int k = 0; k < count; ++k) {
            ArrayOfArrays added = MakeArray(1, count);
            added.Add(added[k]);
            EXPECT_EQ(Numbers(added[count]), Numbers(MakeInner(k)));
            EXPECT_EQ(Numbers(added[k]), Numbers(MakeInner(k)));
            for (unsigned int i = 0; i <= count; ++i) {
                ArrayOfArrays inserted = MakeArray(1, count);
                inserted.InsertBefore(i, inserted[k]);
                EXPECT_EQ(Numbers(inserted[i]), Numbers(MakeInner(k)));
            }
        }
    }
}

TEST(HvDynArray, CopiesDeeply)
{
    ArrayOfArrays a = MakeArray(8, 4);
    ArrayOfArrays const copy(a);
    ArrayOfArrays assigned(1);
    assigned = a;
    a[1][0] = -1;
    EXPECT_EQ(Contents(copy), Contents(MakeArray(4, 4)));
    EXPECT_EQ(copy.Capacity(), 8u);
    EXPECT_EQ(Contents(assigned), Contents(copy));
    EXPECT_EQ(assigned.Capacity(), 4u);
    ArrayOfArrays const& self = assigned;
    assigned = self;
    EXPECT_EQ(Contents(assigned), Contents(copy));
}

TEST(HvDynArray, AgreesWithAVectorInAnySequenceOfEdits)
{
    EXPECT_TRUE(rc::check([] {
        ArrayOfArrays a(PickInRange(0u, 10u));
        Model model;
        unsigned int const steps = PickInRange(0u, 50u);
        for (unsigned int step = 0; step < steps; ++step) {
            auto const size = unsigned(model.size());
            HvDoubleArray const inner = MakeInner(step);
            switch (PickInRange(0, 7)) {
            case 0:
            case 1:
            case 5:
            case 6:
                a.Add(inner);
                model.push_back(Numbers(inner));
                break;
            case 2: {
                auto const i = PickInRange(0u, size + 1);
                a.InsertBefore(i, inner);
                model.insert(model.begin() + i, Numbers(inner));
                break;
            }
            case 3:
                if (size != 0) {
                    auto const first = PickInRange(0u, size);
                    auto const last = std::min(size - 1, first + PickInRange(0u, 5u));
                    a.RemoveClosedRange(first, last);
                    model.erase(model.begin() + first, model.begin() + last + 1);
                }
                break;
            default: {
                auto const n = PickInRange(size / 2, size + 1);
                a.Resize(n);
                model.resize(n);
            }
            }
            RC_ASSERT(Contents(a) == model);
        }
    }));
}

TEST(HvDynArray, StaysAsItWasWhenAnAllocationFails)
{
    auto const prepare = [] { return MakeArray(4, 4); };
    auto const unchanged = [](ArrayOfArrays& a, bool completed) {
        if (!completed) {
            EXPECT_EQ(Contents(a), Contents(MakeArray(4, 4)));
            EXPECT_EQ(a.Capacity(), 4u);
        }
    };
    using Array = ArrayOfArrays;
    // A copy of the element, the block, and one allocation for each of its eight slots.
    EXPECT_EQ(RefuseEachAllocation(
                  prepare, [](Array& a) { a.Add(a[3]); }, unchanged),
              10);
    EXPECT_EQ(RefuseEachAllocation(
                  prepare, [](Array& a) { a.InsertBefore(1, a[3]); }, unchanged),
              10);
    EXPECT_EQ(RefuseEachAllocation(
                  prepare, [](Array& a) { a.Resize(1); }, unchanged),
              2);
    EXPECT_EQ(RefuseEachAllocation(
                  prepare, [](Array& a) { a.RemoveClosedRange(0, 2); }, unchanged),
              2);
    RefuseEachAllocation(
        prepare,
        [](Array& a) {
            Array const other = MakeArray(1, 9);
            a = other;
        },
        unchanged);
}

TEST(HvDynArray, StaysAsItWasWhenACopiedElementFails)
{
    Copied::alive = 0;
    auto const prepare = [] {
        HvDynArray<Copied> a(2);
        a.Resize(2);
        a[0].number = 10;
        a[1].number = 11;
        return a;
    };
    RefuseEachAllocation(
        prepare, [](HvDynArray<Copied>& a) { a.Add(a[1]); },
        [](HvDynArray<Copied>& a, bool completed) {
            EXPECT_EQ(a.Count(), completed ? 3u : 2u);
            EXPECT_EQ(a[0].number, 10);
            EXPECT_EQ(a[a.Count() - 1].number, 11);
        });
    EXPECT_EQ(Copied::alive, 0);
}

TEST(HvDynArray, RefusesSizesThatItCannotHold)
{
    ArrayOfArrays a = MakeArray(2, 2);
    EXPECT_THROW(a.Resize(std::numeric_limits<unsigned int>::max()), std::bad_alloc);
    EXPECT_THROW(a.Reserve((1u << 31) + 1), std::bad_alloc);
    EXPECT_EQ(a.Count(), 2u);
    EXPECT_EQ(a.Capacity(), 2u);
}
