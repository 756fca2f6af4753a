// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Sets of user data.

#include <tests/fcurve/user_data_samples.h>
#include <tests/support/allocation_failure.h>

#include <hv/foundation/byte_codec.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <map>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

Bytes ImageOf(CFCUserDataSet const& set)
{
    Bytes image(static_cast<std::size_t>(set.ImageSize()), 0xEE);
    HvByteWriter writer(image.data());
    set.WriteImage(writer);
    EXPECT_EQ(writer.Used(), image.size());
    return image;
}

// Guid(0x01020304) with "Hi", written by hand.
Bytes const kHandImage = {0x1E, 0,  0,  0,                   // 30 bytes follow
                          0,    1,  0,  0,                   // version 256
                          1,    0,  0,  0,                   // one entry
                          4,    3,  2,  1,                   // first number
                          6,    5,  8,  7,                   // second and third
                          9,    10, 11, 12, 13, 14, 15, 16,  // the last eight bytes
                          2,    0,  0,  0,                   // two bytes of blob
                          'H',  'i'};

}  // namespace

TEST(CFCUserDataSet, KeysAreOrderedByTheirFieldsAsNumbers)
{
    CFCUserDataKey const key(Guid(2));
    EXPECT_FALSE(key < key);
    EXPECT_TRUE(key == CFCUserDataKey(Guid(2)));
    EXPECT_TRUE(key < CFCUserDataKey(Guid(0x100)));
    _GUID larger = Guid(2);
    ++larger.Data2;
    EXPECT_TRUE(key < CFCUserDataKey(larger));
    EXPECT_FALSE(CFCUserDataKey(larger) < key);
    EXPECT_TRUE(CFCUserDataKey(larger) < CFCUserDataKey(Guid(3)));
    larger = Guid(2);
    larger.Data3 = 0x8000;
    EXPECT_TRUE(key < CFCUserDataKey(larger));
    for (int k = 0; k < 8; ++k) {
        larger = Guid(2);
        larger.Data4[k] = 0xFF;
        EXPECT_TRUE(key < CFCUserDataKey(larger)) << k;
        EXPECT_FALSE(key == CFCUserDataKey(larger)) << k;
    }
}

TEST(CFCUserDataSet, NewSetIsEmptyAndAllocatesNothing)
{
    AllocationCounter const counter;
    CFCUserDataSet const set;
    EXPECT_TRUE(set.IsEmpty());
    EXPECT_EQ(set.Count(), 0u);
    EXPECT_EQ(set.FindUserData(Guid(1)), nullptr);
    EXPECT_EQ(counter.Allocations(), 0);
}

TEST(CFCUserDataSet, InsertedBlobIsACopy)
{
    CFCUserDataSet set;
    unsigned char bytes[] = {1, 2, 3};
    EXPECT_EQ(set.InsertUserData(Guid(1), bytes, 3), 1);
    bytes[0] = 9;
    CFCUserDataValue const* const value = set.FindUserData(Guid(1));
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(Bytes(value->Bytes(), value->Bytes() + value->Size()), (Bytes{1, 2, 3}));
}

TEST(CFCUserDataSet, BlobOfTheSameIdentifierIsReplaced)
{
    CFCUserDataSet set = SetOf(1, "first");
    EXPECT_EQ(set.InsertUserData(Guid(1), BytesOf("second"), 6), 1);
    EXPECT_EQ(set.Count(), 1u);
    EXPECT_EQ(TextIn(&set, 1), "second");
    EXPECT_EQ(set.ImageSize(), 12u + 20u + 6u);
}

TEST(CFCUserDataSet, SizeOfZeroStoresAnEntryWithoutBytes)
{
    CFCUserDataSet set;
    EXPECT_EQ(set.InsertUserData(Guid(1), nullptr, 0), 1);
    EXPECT_EQ(set.InsertUserData(Guid(2), BytesOf("x"), 0), 1);
    ASSERT_NE(set.FindUserData(Guid(1)), nullptr);
    EXPECT_EQ(set.FindUserData(Guid(1))->Size(), 0u);
    EXPECT_EQ(set.FindUserData(Guid(1))->Bytes(), nullptr);
    EXPECT_EQ(set.FindUserData(Guid(2))->Bytes(), nullptr);
    EXPECT_EQ(set.Count(), 2u);
}

TEST(CFCUserDataSet, NullPointerWithASizeIsRefused)
{
    CFCUserDataSet set = SetOf(1, "kept");
    EXPECT_EQ(set.InsertUserData(Guid(1), nullptr, 4), 0);
    EXPECT_EQ(set.InsertUserData(Guid(2), nullptr, 4), 0);
    EXPECT_EQ(set.Count(), 1u);
    EXPECT_EQ(TextIn(&set, 1), "kept");
}

TEST(CFCUserDataSet, BlobMayBeGivenItsOwnBytes)
{
    CFCUserDataSet set = SetOf(1, "abcdef");
    unsigned char const* const own = set.FindUserData(Guid(1))->Bytes();
    EXPECT_EQ(set.InsertUserData(Guid(1), own + 2, 3), 1);
    EXPECT_EQ(TextIn(&set, 1), "cde");
    EXPECT_EQ(set.InsertUserData(Guid(2), set.FindUserData(Guid(1))->Bytes(), 2), 1);
    EXPECT_EQ(TextIn(&set, 2), "cd");
}

TEST(CFCUserDataSet, RemovedBlobIsGone)
{
    CFCUserDataSet set = SetOf(1, "one");
    set.InsertUserData(Guid(2), BytesOf("two"), 3);
    EXPECT_EQ(set.RemoveUserData(Guid(3)), 0);
    EXPECT_EQ(set.RemoveUserData(Guid(1)), 1);
    EXPECT_EQ(set.RemoveUserData(Guid(1)), 0);
    EXPECT_EQ(TextIn(&set, 1), "none");
    EXPECT_EQ(TextIn(&set, 2), "two");
    EXPECT_EQ(set.ImageSize(), 12u + 20u + 3u);
}

TEST(CFCUserDataSet, CopyIsDeepAndSwapExchanges)
{
    CFCUserDataSet set = SetOf(1, "one");
    CFCUserDataSet copy(set);
    EXPECT_NE(copy.FindUserData(Guid(1))->Bytes(), set.FindUserData(Guid(1))->Bytes());
    copy.InsertUserData(Guid(1), BytesOf("other"), 5);
    EXPECT_EQ(TextIn(&set, 1), "one");
    set.Swap(copy);
    EXPECT_EQ(TextIn(&set, 1), "other");
    EXPECT_EQ(TextIn(&copy, 1), "one");
    CFCUserDataSet& same = set;
    set = same;
    EXPECT_EQ(TextIn(&set, 1), "other");
    set = CFCUserDataSet();
    EXPECT_TRUE(set.IsEmpty());
    EXPECT_EQ(set.ImageSize(), 12u);
}

TEST(CFCUserDataSet, EntriesComeInTheOrderOfTheirKeys)
{
    CFCUserDataSet set;
    for (unsigned int const n : {7U, 3U, 0x80000000U, 5U}) {
        set.InsertUserData(Guid(n), nullptr, 0);
    }
    std::vector<unsigned int> seen;
    for (auto const& entry : set) {
        seen.push_back(entry.first.guid.Data1);
    }
    EXPECT_EQ(seen, (std::vector<unsigned int>{3, 5, 7, 0x80000000U}));
}

TEST(CFCUserDataSet, ImageHasTheBytesOfTheFormat)
{
    EXPECT_EQ(ImageOf(SetOf(0x01020304, "Hi")), kHandImage);
    EXPECT_EQ(ImageOf(CFCUserDataSet()), (Bytes{8, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0}));
}

TEST(CFCUserDataSet, ImageIsReadAndSteppedOver)
{
    Bytes bytes = kHandImage;
    bytes.push_back(77);
    HvByteReader reader(bytes.data(), bytes.size());
    CFCUserDataSet set = SetOf(5, "goes");
    set.ReadImage(reader);
    EXPECT_FALSE(reader.Failed());
    EXPECT_EQ(reader.Used(), kHandImage.size());
    EXPECT_EQ(set.Count(), 1u);
    EXPECT_EQ(TextIn(&set, 0x01020304), "Hi");
}

TEST(CFCUserDataSet, ImageThatIsLongerThanItsEntriesIsSteppedOver)
{
    Bytes bytes = kHandImage;
    bytes[0] += 3;
    bytes.insert(bytes.end(), {1, 2, 3});
    HvByteReader reader(bytes.data(), bytes.size());
    CFCUserDataSet set;
    set.ReadImage(reader);
    EXPECT_FALSE(reader.Failed());
    EXPECT_EQ(reader.Left(), 0u);
    EXPECT_EQ(TextIn(&set, 0x01020304), "Hi");
}

TEST(CFCUserDataSet, ImageOfAnotherVersionReadsAsEmpty)
{
    Bytes bytes = kHandImage;
    bytes[4] = 1;  // version 257
    HvByteReader reader(bytes.data(), bytes.size());
    CFCUserDataSet set = SetOf(5, "goes");
    set.ReadImage(reader);
    EXPECT_FALSE(reader.Failed());
    EXPECT_EQ(reader.Left(), 0u);
    EXPECT_TRUE(set.IsEmpty());
}

TEST(CFCUserDataSet, LaterBlobOfAnIdentifierReplacesTheEarlierInAnImage)
{
    CFCUserDataSet two = SetOf(1, "one");
    two.InsertUserData(Guid(2), BytesOf("two"), 3);
    Bytes bytes = ImageOf(two);
    bytes[12 + 23] = 1;  // the second entry's first number
    HvByteReader reader(bytes.data(), bytes.size());
    CFCUserDataSet set;
    set.ReadImage(reader);
    EXPECT_FALSE(reader.Failed());
    EXPECT_EQ(set.Count(), 1u);
    EXPECT_EQ(TextIn(&set, 1), "two");
}

TEST(CFCUserDataSet, EveryTruncatedImageIsRefused)
{
    for (std::size_t size = 0; size < kHandImage.size(); ++size) {
        Bytes const cut(kHandImage.begin(), kHandImage.begin() + static_cast<std::ptrdiff_t>(size));
        HvByteReader reader(cut.data(), cut.size());
        CFCUserDataSet set;
        set.ReadImage(reader);
        EXPECT_TRUE(reader.Failed()) << size;
        EXPECT_TRUE(set.IsEmpty()) << size;
    }
}

// The size field of the image, the count and the blob's size, each with each value that could hurt.
TEST(CFCUserDataSet, ClaimsBeyondTheImageAreRefused)
{
    for (std::size_t const field : {0U, 8U, 28U}) {
        for (unsigned int const claim : {0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU, 31U, 1000U}) {
            Bytes bytes = kHandImage;
            HvByteWriter(bytes.data() + field).WriteUInt32(claim);
            HvByteReader reader(bytes.data(), bytes.size());
            CFCUserDataSet set;
            set.ReadImage(reader);
            EXPECT_TRUE(reader.Failed()) << field << " " << claim;
            EXPECT_TRUE(set.IsEmpty());
        }
    }
}

TEST(CFCUserDataSet, HugeCountAllocatesNothing)
{
    Bytes bytes = kHandImage;
    HvByteWriter(bytes.data() + 8).WriteUInt32(0xFFFFFFFFU);
    HvByteReader reader(bytes.data(), bytes.size());
    CFCUserDataSet set;
    AllocationCounter const counter;
    set.ReadImage(reader);
    EXPECT_TRUE(reader.Failed());
    EXPECT_EQ(counter.Allocations(), 0);
}

TEST(CFCUserDataSet, ImageOfAnySetReadsBackTheSame)
{
    EXPECT_TRUE(rc::check([](std::map<unsigned int, std::string> const& model) {
        CFCUserDataSet set;
        for (auto const& entry : model) {
            auto const size = static_cast<unsigned int>(entry.second.size());
            set.InsertUserData(Guid(entry.first), BytesOf(entry.second.data()), size);
        }
        Bytes const image = ImageOf(set);
        HvByteReader reader(image.data(), image.size());
        CFCUserDataSet read;
        read.ReadImage(reader);
        RC_ASSERT(!reader.Failed());
        RC_ASSERT(reader.Left() == 0U);
        RC_ASSERT(read.Count() == model.size());
        RC_ASSERT(ImageOf(read) == image);
    }));
}

TEST(CFCUserDataSet, DynamicSizeCountsNodesAndBlobs)
{
    EXPECT_EQ(XQGetDynamicMemSize(CFCUserDataSet()), 0u);
    CFCUserDataSet set = SetOf(1, "four");
    set.InsertUserData(Guid(2), BytesOf("three"), 5);
    using Entry = std::pair<CFCUserDataKey const, CFCUserDataValue>;
    EXPECT_EQ(XQGetDynamicMemSize(set), 2 * XQComputeSTLTreeNodeSize<Entry>() + 9);
    EXPECT_EQ(XQGetMemSize(set), sizeof set + XQGetDynamicMemSize(set));
}

TEST(CFCUserDataSet, RefusedAllocationLeavesTheSetAsItWas)
{
    struct Work {
        CFCUserDataSet set = SetOf(1, "one");
        CFCUserDataSet other = SetOf(2, "two");
    };
    auto const isAsItWas = [](Work& work) {
        EXPECT_EQ(TextIn(&work.set, 1), "one");
        EXPECT_EQ(work.set.Count(), 1u);
        EXPECT_EQ(work.set.ImageSize(), 12u + 20u + 3u);
    };
    auto const prepare = [] { return Work(); };
    auto const check = [&](Work& work, bool completed) {
        if (!completed) {
            isAsItWas(work);
        }
    };
    EXPECT_EQ(RefuseEachAllocation(
                  prepare,
                  [](Work& work) { work.set.InsertUserData(Guid(1), BytesOf("longer"), 6); },
                  check),
              1);
    EXPECT_EQ(RefuseEachAllocation(
                  prepare, [](Work& work) { work.set.InsertUserData(Guid(3), BytesOf("new"), 3); },
                  check),
              2);
    EXPECT_EQ(RefuseEachAllocation(
                  prepare, [](Work& work) { work.set = work.other; }, check),
              2);
    EXPECT_EQ(RefuseEachAllocation(
                  prepare,
                  [](Work& work) {
                      HvByteReader reader(kHandImage.data(), kHandImage.size());
                      work.set.ReadImage(reader);
                  },
                  check),
              2);
}
