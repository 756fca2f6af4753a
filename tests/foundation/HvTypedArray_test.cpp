// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The typed arrays, all twelve: growth, shrinking, aliasing, failed allocations.

#include <hv/foundation/HvBoolArray.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvFloatArray.h>
#include <hv/foundation/HvLPVoidArray.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPoint2fArray.h>
#include <hv/foundation/HvPoint3dArray.h>
#include <hv/foundation/HvPoint3fArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/foundation/HvUByteArray.h>
#include <hv/foundation/HvULongArray.h>
#include <hv/foundation/HvUShortArray.h>

#include <tests/support/allocation_failure.h>
#include <tests/support/generators.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

namespace {

/// The element of an array that stands for the number `i`, 0 <= i < 256.
template <class T>
struct Element {
    static T Of(unsigned int i) { return static_cast<T>(i); }
};
template <>
struct Element<void*> {
    static void* Of(unsigned int i)
    {
        static char places[256];
        return &places[i];
    }
};
template <class T>
struct Element<HvPoint2<T>> {
    static HvPoint2<T> Of(unsigned int i) { return HvPoint2<T>(T(i), T(i) / 2); }
};
template <class T>
struct Element<HvPoint3<T>> {
    static HvPoint3<T> Of(unsigned int i) { return HvPoint3<T>(T(i), T(i) / 2, -T(i)); }
};

}  // namespace

template <class Array>
class HvTypedArrays : public testing::Test {
protected:
    using T = std::remove_reference_t<decltype(std::declval<Array&>()[0])>;
    using Model = std::vector<T>;

    static T Of(unsigned int i) { return Element<T>::Of(i); }

    static Model Sequence(std::vector<unsigned int> const& numbers)
    {
        Model model;
        for (unsigned int const i : numbers) {
            model.push_back(Of(i));
        }
        return model;
    }

    /// An array of the elements 0 to count - 1.
    static Array Make(unsigned int capacity, unsigned int count)
    {
        Array a(capacity);
        for (unsigned int i = 0; i < count; ++i) {
            a.Add(Of(i));
        }
        return a;
    }

    static Model Contents(Array const& a) { return Model(a.begin(), a.end()); }
};

using Arrays = testing::Types<HvBoolArray, HvPointTagArray, HvFloatArray, HvDoubleArray,
                              HvUByteArray, HvUShortArray, HvULongArray, HvLPVoidArray,
                              HvPoint2fArray, HvPoint2dArray, HvPoint3fArray, HvPoint3dArray>;
TYPED_TEST_SUITE(HvTypedArrays, Arrays, );

TYPED_TEST(HvTypedArrays, HasThreeFields)
{
    EXPECT_EQ(sizeof(TypeParam), 2 * sizeof(unsigned int) + sizeof(void*));
}

TYPED_TEST(HvTypedArrays, HoldsOneElementOfCapacityByDefault)
{
    TypeParam const a;
    EXPECT_EQ(a.Size(), 0u);
    EXPECT_EQ(a.Capacity(), 1u);
}

TYPED_TEST(HvTypedArrays, TakesACapacity)
{
    TypeParam const five(5u);
    EXPECT_EQ(five.Size(), 0u);
    EXPECT_EQ(five.Capacity(), 5u);
    TypeParam const none(0u);
    EXPECT_EQ(none.Size(), 0u);
    EXPECT_EQ(none.Capacity(), 1u);
}

TYPED_TEST(HvTypedArrays, RepeatsAValue)
{
    TypeParam const a(this->Of(7), 3);
    EXPECT_EQ(this->Contents(a), this->Sequence({7, 7, 7}));
    EXPECT_EQ(a.Capacity(), 3u);
    TypeParam const none(this->Of(7), 0);
    EXPECT_EQ(none.Size(), 0u);
    EXPECT_EQ(none.Capacity(), 1u);
}

TYPED_TEST(HvTypedArrays, CopiesElementsFromAPointer)
{
    auto const elements = this->Sequence({3, 1, 4, 1, 5});
    TypeParam const a(elements.data(), 5);
    EXPECT_EQ(this->Contents(a), elements);
    EXPECT_EQ(a.Capacity(), 5u);
    TypeParam const none(elements.data(), 0);
    EXPECT_EQ(none.Size(), 0u);
    EXPECT_EQ(none.Capacity(), 1u);
}

TYPED_TEST(HvTypedArrays, GrowsByDoubling)
{
    TypeParam a(2u);
    std::vector<unsigned int> capacities;
    for (unsigned int i = 0; i < 5; ++i) {
        a.Add(this->Of(i));
        capacities.push_back(a.Capacity());
    }
    EXPECT_EQ(capacities, (std::vector<unsigned int>{2, 2, 4, 4, 8}));
    EXPECT_EQ(this->Contents(a), this->Sequence({0, 1, 2, 3, 4}));
}

TYPED_TEST(HvTypedArrays, ResizesByTheTableOfCapacities)
{
    struct Row {
        unsigned int capacity, n, expected;
    };
    // Halving undershoots from (8, 3) to 2, and doubling puts it right; odd capacities halve down.
    for (Row const& row : {Row{8, 0, 1},
                           {8, 1, 1},
                           {8, 2, 2},
                           {8, 3, 4},
                           {8, 4, 4},
                           {8, 5, 8},
                           {8, 8, 8},
                           {8, 9, 16},
                           {2, 5, 8},
                           {5, 2, 2},
                           {5, 3, 5},
                           {6, 2, 2},
                           {6, 3, 3},
                           {7, 2, 2},
                           {7, 3, 3},
                           {3, 100, 192},
                           {1, 0, 1},
                           {1, 1, 1},
                           {1, 2, 2}}) {
        unsigned int const size = std::min(row.capacity, 6u);
        TypeParam a = this->Make(row.capacity, size);
        a.Resize(row.n);
        EXPECT_EQ(a.Capacity(), row.expected) << row.capacity << " resized to " << row.n;
        EXPECT_EQ(a.Size(), row.n);
        for (unsigned int i = 0; i < std::min(size, row.n); ++i) {
            EXPECT_EQ(a[i], this->Of(i));
        }
    }
}

TYPED_TEST(HvTypedArrays, ChopsWithTheCapacityKept)
{
    TypeParam a = this->Make(8, 8);
    a.Chop(9);
    EXPECT_EQ(a.Size(), 8u);
    a.Chop(1);
    EXPECT_EQ(this->Contents(a), this->Sequence({0}));
    EXPECT_EQ(a.Capacity(), 8u);
}

TYPED_TEST(HvTypedArrays, ChopsAndGivesUpCapacity)
{
    TypeParam a = this->Make(16, 8);
    a.ChopAndResize(8);
    EXPECT_EQ(a.Capacity(), 16u);
    a.ChopAndResize(9);
    EXPECT_EQ(a.Size(), 8u);
    a.ChopAndResize(3);
    EXPECT_EQ(this->Contents(a), this->Sequence({0, 1, 2}));
    EXPECT_EQ(a.Capacity(), 4u);
}

TYPED_TEST(HvTypedArrays, CopiesDeeply)
{
    TypeParam a = this->Make(8, 3);
    TypeParam const copy(a);
    a[0] = this->Of(99);
    EXPECT_EQ(this->Contents(copy), this->Sequence({0, 1, 2}));
    EXPECT_EQ(copy.Capacity(), 8u);
}

TYPED_TEST(HvTypedArrays, AssignsByTheRuleOfResize)
{
    TypeParam a = this->Make(8, 8);
    auto const* const data = a.Data();
    TypeParam const five = this->Make(5, 5);
    TypeParam const two = this->Make(9, 2);
    a = five;
    EXPECT_EQ(this->Contents(a), this->Contents(five));
    EXPECT_EQ(a.Data(), data);
    EXPECT_EQ(a.Capacity(), 8u);
    a = two;
    EXPECT_EQ(this->Contents(a), this->Contents(two));
    EXPECT_EQ(a.Capacity(), 2u);
    TypeParam const& self = a;
    a = self;
    EXPECT_EQ(this->Contents(a), this->Contents(two));
    a[0] = this->Of(50);
    EXPECT_EQ(two[0], this->Of(0));
}

TYPED_TEST(HvTypedArrays, MovesItsStorage)
{
    TypeParam a = this->Make(8, 3);
    auto const* const data = a.Data();
    TypeParam b(std::move(a));
    EXPECT_EQ(b.Data(), data);
    EXPECT_EQ(this->Contents(b), this->Sequence({0, 1, 2}));
    EXPECT_EQ(a.Size(), 0u);
    EXPECT_EQ(a.Capacity(), 1u);
    a = std::move(b);
    EXPECT_EQ(a.Data(), data);
    EXPECT_EQ(b.Size(), 0u);
    b.Swap(a);
    EXPECT_EQ(b.Data(), data);
    EXPECT_EQ(a.Size(), 0u);
}

TYPED_TEST(HvTypedArrays, AddsItsOwnElementWhileItGrows)
{
    for (unsigned int count = 1; count <= 9; ++count) {
        for (unsigned int k = 0; k < count; ++k) {
            TypeParam a = this->Make(1, count);
            a.Add(a[k]);
            EXPECT_EQ(a[count], this->Of(k));
        }
    }
}

TYPED_TEST(HvTypedArrays, AddsManyAtOnce)
{
    TypeParam a = this->Make(2, 2);
    TypeParam const other = this->Make(5, 5);
    a.Add(other);
    EXPECT_EQ(a.Capacity(), 8u);
    a.Add(other, 3, 2);
    a.Add(other.Data() + 1, 1);
    a.Add(other.Data(), 0);
    EXPECT_EQ(this->Contents(a), this->Sequence({0, 1, 0, 1, 2, 3, 4, 3, 4, 1}));
    a.Chop(0);
    a.Add(other, 0, 1);
    EXPECT_EQ(a.Capacity(), 16u) << "an insertion never shrinks";
}

TYPED_TEST(HvTypedArrays, AddsAndInsertsStretchesOfItself)
{
    for (unsigned int const capacity : {6u, 32u}) {
        for (unsigned int first = 0; first <= 6; ++first) {
            for (unsigned int count = 0; first + count <= 6; ++count) {
                auto const model = this->Contents(this->Make(6, 6));
                auto const begin = model.begin() + first;
                TypeParam added = this->Make(capacity, 6);
                added.Add(added.Data() + first, count);
                auto expected = model;
                expected.insert(expected.end(), begin, begin + count);
                EXPECT_EQ(this->Contents(added), expected);
                for (unsigned int i = 0; i <= 6; ++i) {
                    TypeParam inserted = this->Make(capacity, 6);
                    inserted.InsertBefore(i, inserted.Data() + first, count);
                    expected = model;
                    expected.insert(expected.begin() + i, begin, begin + count);
                    EXPECT_EQ(this->Contents(inserted), expected)
                        << first << " + " << count << " before " << i;
                }
            }
        }
    }
}

TYPED_TEST(HvTypedArrays, AddsAndInsertsItself)
{
    TypeParam a = this->Make(3, 3);
    a.Add(a);
    EXPECT_EQ(this->Contents(a), this->Sequence({0, 1, 2, 0, 1, 2}));
    TypeParam b = this->Make(3, 3);
    b.InsertBefore(1, b);
    EXPECT_EQ(this->Contents(b), this->Sequence({0, 0, 1, 2, 1, 2}));
    TypeParam c = this->Make(3, 3);
    c.InsertBefore(1, c[2]);
    EXPECT_EQ(this->Contents(c), this->Sequence({0, 2, 1, 2}));
}

TYPED_TEST(HvTypedArrays, RemovesAndShrinksBelowHalf)
{
    TypeParam a = this->Make(8, 5);
    a.Remove(1);
    EXPECT_EQ(this->Contents(a), this->Sequence({0, 2, 3, 4}));
    EXPECT_EQ(a.Capacity(), 8u);
    a.Remove(3);
    EXPECT_EQ(this->Contents(a), this->Sequence({0, 2, 3}));
    EXPECT_EQ(a.Capacity(), 4u);
    // Half of five is two.
    TypeParam odd = this->Make(5, 3);
    odd.Remove(0);
    EXPECT_EQ(odd.Capacity(), 5u);
    odd.Remove(0);
    EXPECT_EQ(odd.Capacity(), 1u);
    EXPECT_EQ(this->Contents(odd), this->Sequence({2}));
    odd.Remove(0);
    EXPECT_EQ(odd.Size(), 0u);
    EXPECT_EQ(odd.Capacity(), 1u);
}

TYPED_TEST(HvTypedArrays, RemovesClosedRanges)
{
    for (unsigned int i = 0; i < 9; ++i) {
        for (unsigned int j = i; j < 9; ++j) {
            TypeParam a = this->Make(16, 9);
            a.RemoveClosedRange(i, j);
            auto model = this->Contents(this->Make(9, 9));
            model.erase(model.begin() + i, model.begin() + j + 1);
            EXPECT_EQ(this->Contents(a), model);
            EXPECT_EQ(a.Capacity(), model.size() < 8
                                        ? HvArrayCapacity_AfterResize(16, unsigned(model.size()))
                                        : 16u);
        }
    }
}

TYPED_TEST(HvTypedArrays, ReservesForAddingWithoutAllocation)
{
    TypeParam a = this->Make(3, 2);
    a.Reserve(10);
    EXPECT_EQ(a.Capacity(), 12u);
    EXPECT_EQ(this->Contents(a), this->Sequence({0, 1}));
    AllocationCounter const counter;
    for (unsigned int i = 2; i < 12; ++i) {
        a.Add(this->Of(i));
    }
    a.Reserve(12);
    a.Reserve(1);
    EXPECT_EQ(counter.Allocations(), 0);
    EXPECT_EQ(a.Capacity(), 12u);
}

TYPED_TEST(HvTypedArrays, AgreesWithAVectorInAnySequenceOfEdits)
{
    EXPECT_TRUE(rc::check([] {
        TypeParam a(PickInRange(0u, 10u));
        typename HvTypedArrays<TypeParam>::Model model;
        unsigned int const steps = PickInRange(0u, 40u);
        for (unsigned int step = 0; step < steps; ++step) {
            auto const size = unsigned(model.size());
            auto const element = HvTypedArrays<TypeParam>::Of(step);
            switch (PickInRange(0, 7)) {
            case 0:
                a.Add(element);
                model.push_back(element);
                break;
            case 1: {
                auto const i = PickInRange(0u, size + 1);
                a.InsertBefore(i, element);
                model.insert(model.begin() + i, element);
                break;
            }
            case 2: {
                auto const i = PickInRange(0u, size + 1);
                auto const first = PickInRange(0u, size + 1);
                auto const count = PickInRange(0u, std::min(size - first, 6u) + 1);
                auto const stretch = std::vector<std::decay_t<decltype(a[0])>>(
                    model.begin() + first, model.begin() + first + count);
                a.InsertBefore(i, a.Data() + first, count);
                model.insert(model.begin() + i, stretch.begin(), stretch.end());
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
            case 4: {
                auto const n = PickInRange(size / 2, size + 10);
                a.Resize(n);
                std::fill(a.begin() + std::min(size, n), a.end(), element);
                model.resize(n, element);
                break;
            }
            case 5: {
                auto const n = PickInRange(size / 2, size + 3);
                a.Chop(n);
                model.resize(std::min(size, n));
                break;
            }
            default: {
                auto const n = PickInRange(size / 2, size + 3);
                a.ChopAndResize(n);
                model.resize(std::min(size, n));
            }
            }
            bool const agrees = HvTypedArrays<TypeParam>::Contents(a) == model;
            RC_ASSERT(agrees);
            RC_ASSERT(a.Capacity() >= std::max(a.Size(), 1u));
        }
    }));
}

TYPED_TEST(HvTypedArrays, StaysAsItWasWhenAnAllocationFails)
{
    using Array = TypeParam;
    auto const prepare = [] { return HvTypedArrays<Array>::Make(8, 8); };
    auto const original = this->Contents(this->Make(8, 8));
    auto const unchanged = [&](Array& a, bool completed) {
        if (!completed) {
            EXPECT_EQ(this->Contents(a), original);
            EXPECT_EQ(a.Capacity(), 8u);
        }
    };
    Array const one = this->Make(1, 1);
    Array const twenty = this->Make(20, 20);
    auto const allocations = [&](auto operate) {
        return RefuseEachAllocation(prepare, operate, unchanged);
    };
    EXPECT_EQ(allocations([](Array& a) { a.Add(a[3]); }), 1);
    EXPECT_EQ(allocations([](Array& a) { a.Add(a); }), 1);
    EXPECT_EQ(allocations([](Array& a) { a.InsertBefore(2, a.Data() + 1, 3); }), 1);
    EXPECT_EQ(allocations([](Array& a) { a.Resize(2); }), 1);
    EXPECT_EQ(allocations([](Array& a) { a.Resize(9); }), 1);
    EXPECT_EQ(allocations([](Array& a) { a.Reserve(9); }), 1);
    EXPECT_EQ(allocations([](Array& a) { a.ChopAndResize(4); }), 1);
    EXPECT_EQ(allocations([](Array& a) { a.Chop(4); }), 0);
    EXPECT_EQ(allocations([](Array& a) { a.RemoveClosedRange(1, 6); }), 1);
    EXPECT_EQ(allocations([&](Array& a) { a = one; }), 1);
    EXPECT_EQ(allocations([&](Array& a) { a = twenty; }), 1);
    EXPECT_EQ(allocations([](Array& a) { Array const copy(a); }), 1);
    EXPECT_EQ(allocations([](Array& a) { Array const moved(std::move(a)); }), 1);
    EXPECT_EQ(allocations([](Array& a) { Array const copy(a.Data(), 3); }), 1);
    EXPECT_EQ(allocations([](Array& a) { Array const copy(a[0], 3); }), 1);
    EXPECT_EQ(allocations([](Array&) { Array const empty; }), 1);
}

TYPED_TEST(HvTypedArrays, RefusesSizesThatItCannotHold)
{
    constexpr unsigned int kMost = std::numeric_limits<unsigned int>::max();
    TypeParam a = this->Make(3, 3);
    EXPECT_THROW(a.Resize(kMost), std::bad_alloc);
    EXPECT_THROW(a.Resize((1u << 31) + 1), std::bad_alloc);
    EXPECT_THROW(a.Reserve(kMost), std::bad_alloc);
    EXPECT_THROW(a.Add(a.Data(), kMost), std::bad_alloc);
    EXPECT_THROW(a.Add(a.Data(), kMost - 2), std::bad_alloc);
    EXPECT_THROW(a.InsertBefore(0, a.Data(), 1u << 31), std::bad_alloc);
    EXPECT_THROW(TypeParam{kMost}, std::bad_alloc);
    EXPECT_THROW(TypeParam(this->Of(1), kMost), std::bad_alloc);
    EXPECT_EQ(this->Contents(a), this->Sequence({0, 1, 2}));
    EXPECT_EQ(a.Capacity(), 3u);
}

TEST(HvArrayCapacity, NeverWraps)
{
    constexpr unsigned int kMost = kHvArrayMaxCapacity;
    EXPECT_EQ(HvArrayCapacity_AfterResize(1, kMost), kMost);
    EXPECT_EQ(HvArrayCapacity_AfterResize(1, kMost - 1), kMost);
    EXPECT_THROW(HvArrayCapacity_AfterResize(1, kMost + 1), std::bad_alloc);
    EXPECT_THROW(HvArrayCapacity_AfterResize(3, kMost), std::bad_alloc);
    EXPECT_EQ(HvArrayCapacity_AfterResize(kMost, 1), 1u);
    EXPECT_EQ(HvArrayCapacity_GrownSize(kMost - 1, 1), kMost);
    EXPECT_THROW(HvArrayCapacity_GrownSize(kMost, 1), std::bad_alloc);
    EXPECT_THROW(HvArrayCapacity_GrownSize(1, std::numeric_limits<unsigned int>::max()),
                 std::bad_alloc);
    EXPECT_EQ(HvArrayCapacity_Bytes(3, 8), 24u);
    EXPECT_THROW(HvArrayCapacity_Bytes(kMost + 1, 1), std::bad_alloc);
    EXPECT_THROW(HvArrayCapacity_Bytes(3, std::numeric_limits<std::size_t>::max() / 2),
                 std::bad_alloc);
}

TEST(HvTypedArray, ReadsALiteralZeroAsAValue)
{
    HvBoolArray const flags(0, 3);
    EXPECT_EQ(flags.Size(), 3u);
    EXPECT_EQ(flags[2], 0);
    HvDoubleArray const numbers(0, 2);
    EXPECT_EQ(numbers.Size(), 2u);
    EXPECT_EQ(numbers[1], 0.0);
    HvULongArray const longs(0u, 2);
    EXPECT_EQ(longs.Size(), 2u);
    HvLPVoidArray const pointers(nullptr, 2);
    EXPECT_EQ(pointers.Size(), 2u);
    EXPECT_EQ(pointers[1], nullptr);
    HvPoint2dArray points;
    points.Add(0, 0);
    points.Add(1, 2.5);
    EXPECT_EQ(points.Size(), 2u);
    EXPECT_EQ(points[0], HvPoint2<double>(0, 0));
    EXPECT_EQ(points[1], HvPoint2<double>(1, 2.5));
}

TEST(HvTypedArray, CopiesPointersFromAPointer)
{
    int a = 0, b = 0;
    void* places[] = {&a, &b};
    HvLPVoidArray const pointers(places, 2);
    ASSERT_EQ(pointers.Size(), 2u);
    EXPECT_EQ(pointers[1], &b);
}

TEST(HvPointTag, HasTheStoredValues)
{
    EXPECT_EQ(int(HvPointTagStart), 0);
    EXPECT_EQ(int(HvPointTagInner), 1);
    EXPECT_EQ(int(HvPointTagEnd), 2);
    EXPECT_EQ(sizeof(HvPointTag), 4u);
}
