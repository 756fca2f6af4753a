// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Memory accounting.

#include <hv/foundation/dynamic_mem_size.h>

#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvPoint2fArray.h>

#include <gtest/gtest.h>

#include <map>
#include <utility>
#include <vector>

namespace {

struct Record {
    double numbers[3];
};

struct Owner {
    unsigned long held;
    ~Owner() {}
};

}  // namespace

template <>
struct XQDynamicMemRule<Owner, CXQMemBaseType> {
    static unsigned long Get(Owner const& owner) { return owner.held; }
};

TEST(DynamicMemSize, CountsNothingForPlainTypes)
{
    EXPECT_EQ(XQGetDynamicMemSize(5), 0u);
    EXPECT_EQ(XQGetDynamicMemSize<Record>(Record()), 0u);
    EXPECT_EQ((XQGetMemSize<Record, CXQMemBaseType>(Record())), 24u);
}

TEST(DynamicMemSize, CountsTheCapacityOfArrays)
{
    HvAltDynArray<Record> records(5);
    records.Resize(3);
    EXPECT_EQ(XQGetDynamicMemSize<HvAltDynArray<Record>>(records), 5u * 24u);
    HvPoint2fArray const points(7u);
    EXPECT_EQ(XQGetDynamicMemSize<HvPoint2fArray>(points), 7u * 8u);
}

TEST(DynamicMemSize, CountsTheElementsOfArraysOfArrays)
{
    HvDynArray<HvDoubleArray> a(2);
    a.Add(HvDoubleArray(1.0, 10));
    // Two slots, the ten numbers of the first, the one that the second reserves.
    EXPECT_EQ(XQGetDynamicMemSize(a), 2u * sizeof(HvDoubleArray) + 80u + 8u);
}

TEST(DynamicMemSize, FollowsPointersWhenTold)
{
    HvAltDynArray<Record> records(2);
    HvAltDynArray<Record>* const pointer = &records;
    HvAltDynArray<Record>* const null = nullptr;
    unsigned long const expected = sizeof(records) + 48u;
    EXPECT_EQ(XQGetDynamicMemSizeDeref<HvAltDynArray<Record>*>(pointer), expected);
    EXPECT_EQ(XQGetDynamicMemSizeDeref<HvAltDynArray<Record>*>(null), 0u);
    EXPECT_EQ(XQGetDynamicMemSize<HvAltDynArray<Record>*>(pointer), 0u);
    HvAltDynArray<Record>* const* const twice = &pointer;
    using Twice = CXQMemDereference<CXQMemDereference<CXQMemBaseType>>;
    EXPECT_EQ((XQGetDynamicMemSize<HvAltDynArray<Record>* const*, Twice>(twice)),
              expected + sizeof(void*));
}

TEST(DynamicMemSize, SumsTheMembersOfAPairByTheirPolicies)
{
    HvDoubleArray numbers(3u);
    std::pair<HvDoubleArray, HvDoubleArray*> const pair(numbers, &numbers);
    using Pair = std::pair<HvDoubleArray, HvDoubleArray*>;
    using Policy = std::pair<CXQMemBaseType, CXQMemDereference<CXQMemBaseType>>;
    EXPECT_EQ((XQGetDynamicMemSize<Pair, Policy>(pair)), 24u + 24u + sizeof(HvDoubleArray));
    EXPECT_EQ(XQGetDynamicMemSize<Pair>(pair), 24u);
}

TEST(DynamicMemSize, CountsATreeNodeForEachElementOfAMap)
{
    // A node is a colour, three links and the pair: 32 + 16 bytes where pointers have 8.
    unsigned long const node = XQComputeSTLTreeNodeSize<std::pair<double const, Owner*>>();
    EXPECT_EQ(node, 4 * sizeof(void*) + 16u);
    Owner owner{100};
    std::map<double, Owner*> const map{{1.0, &owner}, {2.0, nullptr}};
    using Map = std::map<double, Owner*>;
    using Policy = std::pair<CXQMemBaseType, CXQMemDereference<CXQMemBaseType>>;
    EXPECT_EQ((XQGetDynamicMemSize<Map>(map)), 2 * node);
    EXPECT_EQ((XQGetDynamicMemSize<Map, Policy>(map)), 2 * node + 100 + sizeof(Owner));
    EXPECT_EQ((XQGetMemSize<Map, Policy>(map)), sizeof(Map) + 2 * node + 100 + sizeof(Owner));
    EXPECT_EQ((XQGetDynamicMemSize<Map, Policy>(Map())), 0u);
}

TEST(DynamicMemSize, CountsTheCapacityAndTheElementsOfAVector)
{
    std::vector<Owner> vector;
    vector.reserve(4);
    vector.push_back(Owner{7});
    vector.push_back(Owner{8});
    EXPECT_EQ(XQGetDynamicMemSize<std::vector<Owner>>(vector), 4 * sizeof(Owner) + 15);
}
