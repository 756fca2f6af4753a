// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The ring of pointers.

#include <hv/foundation/HvDLList.h>

#include <tests/support/allocation_failure.h>
#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <vector>

namespace {

using List = HvDLList<int>;

/// The items of a list, after a walk of the ring in both directions.
std::vector<int*> Items(List const& list)
{
    std::vector<int*> forward;
    std::vector<int*> backward;
    HvDLListNode<int>* node = list.Head();
    for (unsigned int i = 0; i < list.Count(); ++i, node = node->next) {
        forward.push_back(node->item);
        EXPECT_EQ(node->next->previous, node);
    }
    EXPECT_EQ(node, list.Head());
    for (unsigned int i = 0; i < list.Count(); ++i) {
        node = node->previous;
        backward.push_back(node->item);
    }
    std::reverse(backward.begin(), backward.end());
    EXPECT_EQ(forward, backward);
    return forward;
}

class HvDLListTest : public testing::Test {
protected:
    int a = 0, b = 0, c = 0, d = 0;
    List list;
};

}  // namespace

TEST_F(HvDLListTest, HoldsNothingAtFirst)
{
    EXPECT_EQ(list.Head(), nullptr);
    EXPECT_EQ(list.Count(), 0u);
    EXPECT_EQ(list.Search(&a), nullptr);
    EXPECT_EQ(HvDLListIter<int>(&list).Next(), nullptr);
    list.RemoveAll();
    EXPECT_EQ(list.Count(), 0u);
}

TEST_F(HvDLListTest, AppendsAfterTheTail)
{
    HvDLListNode<int>* node = list.Append(&a);
    EXPECT_EQ(node, list.Head());
    EXPECT_EQ(list.Head()->next, list.Head());
    EXPECT_EQ(list.Head()->previous, list.Head());
    list.Append(&b);
    node = list.Append(&c);
    EXPECT_EQ(node, list.Head()->previous);
    EXPECT_EQ(Items(list), (std::vector<int*>{&a, &b, &c}));
}

TEST_F(HvDLListTest, FindsItemsByAddress)
{
    list.Append(&a);
    list.Append(&b);
    list.Append(&c);
    EXPECT_EQ(list.Search(&a), list.Head());
    EXPECT_EQ(list.Search(&b), list.Head()->next);
    EXPECT_EQ(list.Search(&c), list.Head()->previous);
    EXPECT_EQ(list.Search(&d), nullptr);
}

TEST_F(HvDLListTest, FindsTheTailFirstAmongTwice)
{
    list.Append(&a);
    list.Append(&b);
    list.Append(&a);
    EXPECT_EQ(list.Search(&a), list.Head()->previous);
}

TEST_F(HvDLListTest, InsertsBeforeAndAfter)
{
    list.Append(&a);
    HvDLListNode<int>* node = list.Insert(&b, &a, List::Before);
    EXPECT_EQ(node, list.Head());
    EXPECT_EQ(Items(list), (std::vector<int*>{&b, &a}));
    list.Insert(&c, &b, List::After);
    EXPECT_EQ(Items(list), (std::vector<int*>{&b, &c, &a}));
    node = list.Insert(&d, &a, List::After);
    EXPECT_EQ(node, list.Head()->previous);
    EXPECT_EQ(Items(list), (std::vector<int*>{&b, &c, &a, &d}));
}

TEST_F(HvDLListTest, TakesAnyPositionButBeforeAsAfter)
{
    list.Append(&a);
    list.Append(&b);
    list.Insert(&c, &a, static_cast<List::Position>(2));
    EXPECT_EQ(Items(list), (std::vector<int*>{&a, &c, &b}));
}

TEST_F(HvDLListTest, InsertsNothingBesideAStranger)
{
    EXPECT_EQ(list.Insert(&a, &b, List::Before), nullptr);
    list.Append(&a);
    EXPECT_EQ(list.Insert(&c, &b, List::After), nullptr);
    EXPECT_EQ(Items(list), (std::vector<int*>{&a}));
}

TEST_F(HvDLListTest, RemovesHeadInnerAndTail)
{
    for (int* const item : {&a, &b, &c, &d}) {
        list.Append(item);
    }
    list.Remove(&a);
    EXPECT_EQ(Items(list), (std::vector<int*>{&b, &c, &d}));
    list.Remove(&c);
    EXPECT_EQ(Items(list), (std::vector<int*>{&b, &d}));
    list.Remove(&d);
    EXPECT_EQ(Items(list), (std::vector<int*>{&b}));
    list.Remove(&a);
    EXPECT_EQ(Items(list), (std::vector<int*>{&b}));
    list.Remove(&b);
    EXPECT_EQ(list.Head(), nullptr);
    EXPECT_EQ(list.Count(), 0u);
    list.Remove(&b);
    EXPECT_EQ(list.Count(), 0u);
}

TEST_F(HvDLListTest, ServesAgainAfterRemovingAll)
{
    list.Append(&a);
    list.Append(&b);
    list.RemoveAll();
    EXPECT_EQ(list.Head(), nullptr);
    list.Append(&c);
    EXPECT_EQ(Items(list), (std::vector<int*>{&c}));
}

TEST_F(HvDLListTest, WalksAsManyItemsAsThereWereAtTheStart)
{
    list.Append(&a);
    list.Append(&b);
    HvDLListIter<int> iter(&list);
    EXPECT_EQ(iter.Next(), &a);
    list.Append(&c);
    EXPECT_EQ(iter.Next(), &b);
    EXPECT_EQ(iter.Next(), nullptr);
    EXPECT_EQ(iter.Next(), nullptr);
}

TEST_F(HvDLListTest, WalksOnWhenTheItemGivenLastIsRemoved)
{
    for (int* const item : {&a, &b, &c}) {
        list.Append(item);
    }
    HvDLListIter<int> iter(&list);
    while (int* const item = iter.Next()) {
        list.Remove(item);
    }
    EXPECT_EQ(list.Count(), 0u);
}

TEST_F(HvDLListTest, OwnsItsNodesOnly)
{
    AllocationCounter const counter;
    {
        List local;
        local.Append(&a);
        local.Append(&b);
        local.Remove(&a);
        EXPECT_EQ(counter.Live(), 1);
    }
    EXPECT_EQ(counter.Live(), 0);
}

TEST_F(HvDLListTest, StaysAsItWasWhenAnAllocationFails)
{
    RefuseEachAllocation([&] {
        List local;
        try {
            local.Append(&a);
            local.Append(&b);
            local.Insert(&c, &b, List::Before);
        } catch (std::bad_alloc const&) {
            std::vector<int*> const whole{&a, &b, &c};
            std::vector<int*> const items = Items(local);
            EXPECT_EQ(items, std::vector<int*>(whole.begin(), whole.begin() + long(items.size())));
            throw;
        }
    });
}

TEST_F(HvDLListTest, AgreesWithAVectorInAnySequenceOfEdits)
{
    EXPECT_TRUE(rc::check([] {
        List ring;
        std::vector<int> pool(12);
        std::vector<int*> model;
        unsigned int const steps = PickInRange(0u, 40u);
        for (unsigned int step = 0; step < steps; ++step) {
            int* const item = &pool[PickInRange<std::size_t>(0, pool.size())];
            int* const other = &pool[PickInRange<std::size_t>(0, pool.size())];
            auto const at = std::find(model.begin(), model.end(), item);
            if (at != model.end()) {
                ring.Remove(item);
                model.erase(at);
            } else if (PickInRange(0, 2) != 0) {
                ring.Append(item);
                model.push_back(item);
            } else {
                bool const after = PickInRange(0, 2) != 0;
                auto const place = std::find(model.begin(), model.end(), other);
                HvDLListNode<int> const* const node =
                    ring.Insert(item, other, after ? List::After : List::Before);
                RC_ASSERT((node != nullptr) == (place != model.end()));
                if (node != nullptr) {
                    model.insert(place + (after ? 1 : 0), item);
                }
            }
            RC_ASSERT(Items(ring) == model);
        }
    }));
}
