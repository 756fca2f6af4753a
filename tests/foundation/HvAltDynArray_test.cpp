// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The array of raw records: growth, shrinking, zeroed slots, aliasing, failed allocations.

#include <hv/foundation/HvAltDynArray.h>

#include <tests/support/allocation_failure.h>
#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <vector>

namespace {

struct Record {
    double parameter;
    unsigned int word;
    unsigned int flag;
};

bool operator==(Record const& a, Record const& b)
{
    return a.parameter == b.parameter && a.word == b.word && a.flag == b.flag;
}

Record MakeRecord(int i)
{
    return Record{i + 0.5, unsigned(i), 7};
}

HvAltDynArray<Record> MakeArray(unsigned int capacity, int count)
{
    HvAltDynArray<Record> a(capacity);
    for (int i = 0; i < count; ++i) {
        a.Add(MakeRecord(i));
    }
    return a;
}

std::vector<Record> Contents(HvAltDynArray<Record> const& a)
{
    return std::vector<Record>(a.begin(), a.end());
}

std::vector<Record> Records(std::vector<int> const& numbers)
{
    std::vector<Record> records;
    for (int const i : numbers) {
        records.push_back(MakeRecord(i));
    }
    return records;
}

bool FreeSlotsAreZero(HvAltDynArray<Record> const& a)
{
    std::vector<unsigned char> const zeros((a.Capacity() - a.Count()) * sizeof(Record) + 1);
    return std::memcmp(static_cast<void const*>(a.Data() + a.Count()), zeros.data(),
                       zeros.size() - 1) == 0;
}

}  // namespace

TEST(HvAltDynArray, TurnsNoCapacityIntoOne)
{
    HvAltDynArray<Record> const a(0);
    EXPECT_EQ(a.Count(), 0u);
    EXPECT_EQ(a.Capacity(), 1u);
}

TEST(HvAltDynArray, StartsWithZeros)
{
    EXPECT_TRUE(FreeSlotsAreZero(HvAltDynArray<Record>(100)));
}

TEST(HvAltDynArray, FollowsTheTableOfCapacities)
{
    struct Row {
        unsigned int capacity, n, expected;
    };
    // Halving undershoots from (8, 3) to 2, and doubling puts it right; odd capacities halve down.
    Row const rows[] = {
        {8, 0, 1}, {8, 1, 1}, {8, 2, 2}, {8, 3, 4}, {8, 4, 4}, {8, 5, 8},     {8, 8, 8}, {8, 9, 16},
        {2, 5, 8}, {5, 2, 2}, {5, 3, 5}, {6, 2, 2}, {6, 3, 3}, {3, 100, 192}, {1, 0, 1}, {1, 1, 1},
    };
    for (Row const& row : rows) {
        HvAltDynArray<Record> a(row.capacity);
        a.Resize(row.n);
        EXPECT_EQ(a.Capacity(), row.expected) << row.capacity << " resized to " << row.n;
        EXPECT_EQ(a.Count(), row.n);
    }
}

TEST(HvAltDynArray, ResizesWithZerosInNewPlaces)
{
    HvAltDynArray<Record> a = MakeArray(4, 4);
    a.Resize(3);
    a.Resize(9);
    EXPECT_EQ(a[2], MakeRecord(2));
    for (unsigned int i = 3; i < 9; ++i) {
        EXPECT_EQ(a[i], Record());
    }
}

TEST(HvAltDynArray, ChopsWithoutShrinking)
{
    HvAltDynArray<Record> a = MakeArray(8, 8);
    Record const* const data = a.Data();
    a.Chop(1);
    a.Chop(5);
    EXPECT_EQ(Contents(a), Records({0}));
    EXPECT_TRUE(FreeSlotsAreZero(a));
    a.Add(MakeRecord(9));
    EXPECT_EQ(a.Capacity(), 8u);
    EXPECT_EQ(a.Data(), data);
}

TEST(HvAltDynArray, MayShrinkOnInsertionAfterAChop)
{
    HvAltDynArray<Record> a = MakeArray(8, 8);
    a.Chop(2);
    a.InsertBefore(1, MakeRecord(9));
    EXPECT_EQ(a.Capacity(), 4u);
    EXPECT_EQ(Contents(a), Records({0, 9, 1}));
}

TEST(HvAltDynArray, RemovesOnCapacityOne)
{
    HvAltDynArray<Record> a = MakeArray(1, 1);
    a.Remove(0);
    EXPECT_EQ(a.Count(), 0u);
    EXPECT_EQ(a.Capacity(), 1u);
    EXPECT_TRUE(FreeSlotsAreZero(a));
}

TEST(HvAltDynArray, ShrinksOnlyBelowHalf)
{
    HvAltDynArray<Record> a = MakeArray(8, 5);
    a.Remove(0);
    EXPECT_EQ(a.Capacity(), 8u);
    a.Remove(3);
    EXPECT_EQ(a.Capacity(), 4u);
    EXPECT_EQ(Contents(a), Records({1, 2, 3}));
    HvAltDynArray<Record> odd = MakeArray(5, 3);
    odd.Remove(0);
    EXPECT_EQ(odd.Capacity(), 5u);
}

TEST(HvAltDynArray, TakesItsOwnRecordsAsArguments)
{
    for (int count = 1; count <= 9; ++count) {
        for (unsigned int k = 0; k < unsigned(count); ++k) {
            HvAltDynArray<Record> added = MakeArray(1, count);
            added.Add(added[k]);
            EXPECT_EQ(added[unsigned(count)], MakeRecord(int(k)));
            for (unsigned int i = 0; i <= unsigned(count); ++i) {
                HvAltDynArray<Record> inserted = MakeArray(1, count);
                inserted.InsertBefore(i, inserted[k]);
                EXPECT_EQ(inserted[i], MakeRecord(int(k)));
            }
        }
    }
}

TEST(HvAltDynArray, CopiesDeeplyWithTheCapacity)
{
    HvAltDynArray<Record> a = MakeArray(8, 2);
    HvAltDynArray<Record> const copy(a);
    a[0].word = 99;
    EXPECT_EQ(Contents(copy), Records({0, 1}));
    EXPECT_EQ(copy.Capacity(), 8u);
}

TEST(HvAltDynArray, AssignsByTheRuleOfResize)
{
    HvAltDynArray<Record> a = MakeArray(8, 8);
    HvAltDynArray<Record> const six = MakeArray(6, 6);
    HvAltDynArray<Record> const one = MakeArray(1, 1);
    Record const* const data = a.Data();
    a = six;
    EXPECT_EQ(Contents(a), Contents(six));
    EXPECT_EQ(a.Data(), data);
    EXPECT_TRUE(FreeSlotsAreZero(a));
    a = one;
    EXPECT_EQ(Contents(a), Contents(one));
    EXPECT_EQ(a.Capacity(), 1u);
    HvAltDynArray<Record> const& self = a;
    a = self;
    EXPECT_EQ(Contents(a), Contents(one));
}

TEST(HvAltDynArray, ReservesWithoutChangingTheCount)
{
    HvAltDynArray<Record> a = MakeArray(3, 2);
    a.Reserve(10);
    EXPECT_EQ(a.Capacity(), 12u);
    EXPECT_EQ(Contents(a), Records({0, 1}));
    AllocationCounter const counter;
    for (int i = 2; i < 12; ++i) {
        a.Add(MakeRecord(i));
    }
    a.Reserve(1);
    EXPECT_EQ(counter.Allocations(), 0);
}

TEST(HvAltDynArray, SwapsContents)
{
    HvAltDynArray<Record> a = MakeArray(4, 2);
    HvAltDynArray<Record> b = MakeArray(1, 1);
    a.Swap(b);
    EXPECT_EQ(Contents(a), Records({0}));
    EXPECT_EQ(Contents(b), Records({0, 1}));
    EXPECT_EQ(b.Capacity(), 4u);
}

TEST(HvAltDynArray, AgreesWithAVectorInAnySequenceOfEdits)
{
    EXPECT_TRUE(rc::check([] {
        HvAltDynArray<Record> a(PickInRange(0u, 10u));
        std::vector<Record> model;
        unsigned int const steps = PickInRange(0u, 60u);
        for (unsigned int step = 0; step < steps; ++step) {
            auto const size = unsigned(model.size());
            Record const record = MakeRecord(int(step));
            switch (PickInRange(0, 8)) {
            case 0:
            case 1:
            case 5:
            case 6:
                a.Add(record);
                model.push_back(record);
                break;
            case 2: {
                auto const i = PickInRange(0u, size + 1);
                a.InsertBefore(i, record);
                model.insert(model.begin() + i, record);
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
                model.resize(n, Record());
                break;
            }
            default: {
                auto const n = PickInRange(size / 2, size + 3);
                a.Chop(n);
                model.resize(n < size ? n : size, Record());
            }
            }
            RC_ASSERT(Contents(a) == model);
            RC_ASSERT(a.Capacity() >= a.Count());
            RC_ASSERT(FreeSlotsAreZero(a));
        }
    }));
}

TEST(HvAltDynArray, StaysAsItWasWhenAnAllocationFails)
{
    auto const prepare = [] { return MakeArray(8, 8); };
    auto const unchanged = [](HvAltDynArray<Record>& a, bool completed) {
        if (!completed) {
            EXPECT_EQ(Contents(a), Contents(MakeArray(8, 8)));
            EXPECT_EQ(a.Capacity(), 8u);
        }
    };
    using Array = HvAltDynArray<Record>;
    EXPECT_EQ(RefuseEachAllocation(
                  prepare, [](Array& a) { a.Add(a[3]); }, unchanged),
              1);
    EXPECT_EQ(RefuseEachAllocation(
                  prepare, [](Array& a) { a.InsertBefore(2, a[3]); }, unchanged),
              1);
    EXPECT_EQ(RefuseEachAllocation(
                  prepare, [](Array& a) { a.Resize(2); }, unchanged),
              1);
    EXPECT_EQ(RefuseEachAllocation(
                  prepare, [](Array& a) { a.Resize(20); }, unchanged),
              1);
    EXPECT_EQ(RefuseEachAllocation(
                  prepare, [](Array& a) { a.RemoveClosedRange(1, 6); }, unchanged),
              1);
    EXPECT_EQ(RefuseEachAllocation(
                  prepare, [](Array& a) { Array const copy(a); }, unchanged),
              1);
    EXPECT_EQ(RefuseEachAllocation([] { return MakeArray(1, 1); },
                                   [](Array& a) {
                                       Array const& other = a;
                                       Array target(30);
                                       target = other;
                                   },
                                   [](Array&, bool) {}),
              2);
}

TEST(HvAltDynArray, RefusesSizesThatItCannotHold)
{
    HvAltDynArray<Record> a = MakeArray(2, 2);
    EXPECT_THROW(a.Resize(std::numeric_limits<unsigned int>::max()), std::bad_alloc);
    EXPECT_THROW(a.Reserve((1u << 31) + 1), std::bad_alloc);
    EXPECT_THROW(HvAltDynArray<Record>((1u << 31) + 1), std::bad_alloc);
    EXPECT_EQ(Contents(a), Records({0, 1}));
    EXPECT_EQ(a.Capacity(), 2u);
}
