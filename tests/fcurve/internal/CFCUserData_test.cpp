// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A curve's record of user data: sets under parameters, their moves, the block in an archive.

#include <tests/fcurve/user_data_samples.h>
#include <tests/support/allocation_failure.h>
#include <tests/support/generators.h>

#include <hv/fcurve/internal/CFCUserData.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/byte_codec.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <limits>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kMost = std::numeric_limits<double>::max();

HvDoubleArray Parameters(std::vector<double> const& values)
{
    HvDoubleArray array;
    for (double const value : values) {
        array.Add(value);
    }
    return array;
}

Bytes BlockOf(CFCUserData const& data)
{
    Bytes block(data.BlockSize(), 0xEE);
    HvByteWriter writer(block.data());
    data.WriteBlock(writer);
    EXPECT_EQ(writer.Used(), block.size());
    return block;
}

// What follows the length.
HvByteReader BodyOf(Bytes const& block)
{
    return HvByteReader(block.data() + 4, block.size() - 4);
}

// Sets named a, b, c, ... at the given parameters, each one blob under Guid(1).
void PutSets(CFCUserData& data, std::vector<double> const& parameters)
{
    char name[] = "a";
    for (double const parameter : parameters) {
        data.SetKeySet(parameter, SetOf(1, name));
        ++name[0];
    }
}

std::string NameAt(CFCUserData const& data, double parameter)
{
    return TextIn(data.FindKeySet(parameter), 1);
}

// One blob "c" under Guid(0x01020304) on the curve; at 2.5 the blob "k" under the same, and at 3 an
// entry without bytes. Written by hand.
Bytes const kHandBlock = {
    // clang-format off
    0x7D, 0, 0, 0,                      // 125 bytes follow
    0, 1, 0, 0,                         // version 256
    1,                                  // there are data
    1,                                  // on the curve:
    29, 0, 0, 0,  0, 1, 0, 0,  1, 0, 0, 0,
    4, 3, 2, 1,  6, 5,  8, 7,  9, 10, 11, 12, 13, 14, 15, 16,
    1, 0, 0, 0,  'c',
    1,                                  // on keys:
    2, 0, 0, 0,                         // two sets
    0, 0, 0, 0, 0, 0, 0x04, 0x40,       // 2.5
    29, 0, 0, 0,  0, 1, 0, 0,  1, 0, 0, 0,
    4, 3, 2, 1,  6, 5,  8, 7,  9, 10, 11, 12, 13, 14, 15, 16,
    1, 0, 0, 0,  'k',
    0, 0, 0, 0, 0, 0, 0x08, 0x40,       // 3
    28, 0, 0, 0,  0, 1, 0, 0,  1, 0, 0, 0,
    4, 3, 2, 1,  6, 5,  8, 7,  9, 10, 11, 12, 13, 14, 15, 16,
    0, 0, 0, 0
    // clang-format on
};

void FillAsHandBlock(CFCUserData& data)
{
    data.InsertCurveBlob(Guid(0x01020304), BytesOf("c"), 1);
    data.InsertKeyBlob(2.5, Guid(0x01020304), BytesOf("k"), 1);
    data.InsertKeyBlob(3.0, Guid(0x01020304), nullptr, 0);
}

}  // namespace

TEST(CFCUserData, NewRecordHasNoData)
{
    AllocationCounter const counter;
    CFCUserData const data;
    EXPECT_TRUE(data.IsEmpty());
    EXPECT_TRUE(data.CurveSet().IsEmpty());
    EXPECT_EQ(data.FindKeySet(0.0), nullptr);
    EXPECT_EQ(counter.Allocations(), 0);
}

TEST(CFCUserData, CurveBlobsAndKeyBlobsAreApart)
{
    CFCUserData data;
    EXPECT_EQ(data.InsertCurveBlob(Guid(1), BytesOf("curve"), 5), 1);
    EXPECT_EQ(data.InsertKeyBlob(1.0, Guid(1), BytesOf("key"), 3), 1);
    EXPECT_EQ(TextIn(&data.CurveSet(), 1), "curve");
    EXPECT_EQ(NameAt(data, 1.0), "key");
    EXPECT_EQ(NameAt(data, 1.0000000001), "none");
    EXPECT_EQ(data.RemoveCurveBlob(Guid(2)), 0);
    EXPECT_EQ(data.RemoveCurveBlob(Guid(1)), 1);
    EXPECT_FALSE(data.IsEmpty());
    EXPECT_EQ(data.RemoveKeyBlob(1.0, Guid(1)), 1);
    EXPECT_TRUE(data.IsEmpty());
}

TEST(CFCUserData, SetWithoutBlobsIsNotKept)
{
    CFCUserData data;
    data.InsertKeyBlob(1.0, Guid(1), BytesOf("a"), 1);
    data.InsertKeyBlob(1.0, Guid(2), BytesOf("b"), 1);
    EXPECT_EQ(data.RemoveKeyBlob(1.0, Guid(1)), 1);
    EXPECT_NE(data.FindKeySet(1.0), nullptr);
    EXPECT_EQ(data.RemoveKeyBlob(1.0, Guid(1)), 0);
    EXPECT_EQ(data.RemoveKeyBlob(1.0, Guid(2)), 1);
    EXPECT_EQ(data.FindKeySet(1.0), nullptr);
    EXPECT_EQ(data.RemoveKeyBlob(1.0, Guid(2)), 0);
    data.SetKeySet(2.0, SetOf(1, "x"));
    EXPECT_EQ(data.SetKeySet(2.0, CFCUserDataSet()), 1);
    EXPECT_EQ(data.FindKeySet(2.0), nullptr);
    EXPECT_EQ(data.SetKeySet(2.0, CFCUserDataSet()), 1);
    EXPECT_TRUE(data.IsEmpty());
}

TEST(CFCUserData, SetOfAKeyIsReplacedAsAWhole)
{
    CFCUserData data;
    data.InsertKeyBlob(1.0, Guid(1), BytesOf("a"), 1);
    data.SetKeySet(1.0, SetOf(2, "b"));
    EXPECT_EQ(TextIn(data.FindKeySet(1.0), 1), "none");
    EXPECT_EQ(TextIn(data.FindKeySet(1.0), 2), "b");
    data.SetKeySet(1.0, *data.FindKeySet(1.0));
    EXPECT_EQ(TextIn(data.FindKeySet(1.0), 2), "b");
}

TEST(CFCUserData, ParameterThatIsNotFiniteIsRefused)
{
    CFCUserData data;
    PutSets(data, {-1.0, 0.0, 1.0});
    Bytes const before = BlockOf(data);
    for (double const parameter : {kNaN, kInfinity, -kInfinity}) {
        EXPECT_EQ(data.SetKeySet(parameter, SetOf(1, "x")), 0);
        EXPECT_EQ(data.SetKeySet(parameter, CFCUserDataSet()), 0);
        EXPECT_EQ(data.InsertKeyBlob(parameter, Guid(1), BytesOf("x"), 1), 0);
        EXPECT_EQ(data.RemoveKeyBlob(parameter, Guid(1)), 0);
        EXPECT_EQ(data.RemoveKeySet(parameter), 0);
        EXPECT_EQ(data.FindKeySet(parameter), nullptr);
        EXPECT_EQ(data.ScaleKeySets(parameter), 0);
        EXPECT_EQ(data.TranslateKeySets(parameter), 0);
        EXPECT_EQ(data.MoveKeySets(Parameters({0.0, parameter}), Parameters({5.0, 6.0})), 0);
        EXPECT_EQ(data.MoveKeySets(Parameters({0.0, 1.0}), Parameters({5.0, parameter})), 0);
        EXPECT_EQ(BlockOf(data), before);
    }
}

TEST(CFCUserData, NullPointerWithASizeIsRefused)
{
    CFCUserData data;
    EXPECT_EQ(data.InsertCurveBlob(Guid(1), nullptr, 1), 0);
    EXPECT_EQ(data.InsertKeyBlob(1.0, Guid(1), nullptr, 1), 0);
    EXPECT_TRUE(data.IsEmpty());
    PutSets(data, {1.0});
    EXPECT_EQ(data.InsertKeyBlob(1.0, Guid(1), nullptr, 1), 0);
    EXPECT_EQ(NameAt(data, 1.0), "a");
}

TEST(CFCUserData, MinusZeroIsZero)
{
    CFCUserData data;
    PutSets(data, {-0.0});
    EXPECT_EQ(NameAt(data, 0.0), "a");
}

TEST(CFCUserData, RemovedSetIsGone)
{
    CFCUserData data;
    PutSets(data, {1.0, 2.0});
    data.InsertCurveBlob(Guid(1), BytesOf("curve"), 5);
    EXPECT_EQ(data.RemoveKeySet(3.0), 0);
    EXPECT_EQ(data.RemoveKeySet(1.0), 1);
    EXPECT_EQ(NameAt(data, 1.0), "none");
    EXPECT_EQ(NameAt(data, 2.0), "b");
    data.RemoveAllKeySets();
    EXPECT_EQ(NameAt(data, 2.0), "none");
    EXPECT_EQ(TextIn(&data.CurveSet(), 1), "curve");
}

TEST(CFCUserData, BlobOfAKeyMayBeGivenBytesOfTheRecord)
{
    CFCUserData data;
    data.InsertKeyBlob(1.0, Guid(1), BytesOf("abcdef"), 6);
    unsigned char const* const own = data.FindKeySet(1.0)->FindUserData(Guid(1))->Bytes();
    EXPECT_EQ(data.InsertKeyBlob(1.0, Guid(1), own + 1, 4), 1);
    EXPECT_EQ(NameAt(data, 1.0), "bcde");
    data.InsertCurveBlob(Guid(1), data.FindKeySet(1.0)->FindUserData(Guid(1))->Bytes() + 1, 2);
    EXPECT_EQ(TextIn(&data.CurveSet(), 1), "cd");
}

// Moves.

TEST(CFCUserData, TranslationMovesAllSets)
{
    CFCUserData data;
    PutSets(data, {3.0, 4.0});
    EXPECT_EQ(data.TranslateKeySets(2.0), 1);
    EXPECT_EQ(NameAt(data, 3.0), "none");
    EXPECT_EQ(NameAt(data, 5.0), "a");
    EXPECT_EQ(NameAt(data, 6.0), "b");
}

TEST(CFCUserData, ScalingByANegativeNumberReversesTheOrder)
{
    CFCUserData data;
    PutSets(data, {1.0, 2.0, 3.0});
    EXPECT_EQ(data.ScaleKeySets(-1.0), 1);
    EXPECT_EQ(NameAt(data, -1.0), "a");
    EXPECT_EQ(NameAt(data, -2.0), "b");
    EXPECT_EQ(NameAt(data, -3.0), "c");
}

TEST(CFCUserData, SetFromTheLargerParameterStaysWhereTwoMeet)
{
    CFCUserData data;
    PutSets(data, {3.0, 1.0, 2.0});  // a at 3
    EXPECT_EQ(data.ScaleKeySets(0.0), 1);
    EXPECT_EQ(NameAt(data, 0.0), "a");
    EXPECT_EQ(BlockOf(data).size(), data.BlockSize());

    // Above 2^54 the doubles stand four apart: 3 * 2^53 + 6 is half way between two of them and
    // goes to the even one, 3 * 2^53 + 8.
    CFCUserData far;
    double const base = 9007199254740992.0;  // 2^53
    PutSets(far, {base + 6.0, base + 8.0});
    EXPECT_EQ(far.TranslateKeySets(2.0 * base), 1);
    EXPECT_EQ(NameAt(far, 3.0 * base + 8.0), "b");
    EXPECT_EQ(far.BlockSize(), 11u + 4u + 20u + 20u + 1u);
    EXPECT_EQ(BlockOf(far).size(), far.BlockSize());
}

TEST(CFCUserData, MoveOutOfTheNumbersIsRefusedAsAWhole)
{
    CFCUserData data;
    PutSets(data, {1.0, 0.75 * kMost});
    Bytes const before = BlockOf(data);
    EXPECT_EQ(data.ScaleKeySets(2.0), 0);
    EXPECT_EQ(data.TranslateKeySets(0.5 * kMost), 0);
    EXPECT_EQ(BlockOf(data), before);
    EXPECT_EQ(data.TranslateKeySets(-0.5 * kMost), 1);
}

TEST(CFCUserData, TailMovesToEitherSide)
{
    CFCUserData data;
    PutSets(data, {1.0, 2.0, 3.0});
    EXPECT_EQ(data.MoveKeySets(Parameters({2.0, 3.0}), Parameters({3.0, 4.0})), 1);
    EXPECT_EQ(NameAt(data, 1.0), "a");
    EXPECT_EQ(NameAt(data, 2.0), "none");
    EXPECT_EQ(NameAt(data, 3.0), "b");
    EXPECT_EQ(NameAt(data, 4.0), "c");
    EXPECT_EQ(data.MoveKeySets(Parameters({3.0, 4.0}), Parameters({2.0, 3.0})), 1);
    EXPECT_EQ(NameAt(data, 2.0), "b");
    EXPECT_EQ(NameAt(data, 3.0), "c");
    EXPECT_EQ(NameAt(data, 4.0), "none");
}

TEST(CFCUserData, SetsAreLiftedBeforeTheFirstIsPutDown)
{
    CFCUserData data;
    PutSets(data, {1.0, 2.0});
    EXPECT_EQ(data.MoveKeySets(Parameters({1.0, 2.0}), Parameters({2.0, 1.0})), 1);
    EXPECT_EQ(NameAt(data, 1.0), "b");
    EXPECT_EQ(NameAt(data, 2.0), "a");
    // 5 has no set, so nothing moves on from there to 7.
    EXPECT_EQ(data.MoveKeySets(Parameters({1.0, 5.0}), Parameters({5.0, 7.0})), 1);
    EXPECT_EQ(NameAt(data, 5.0), "b");
    EXPECT_EQ(NameAt(data, 7.0), "none");
}

TEST(CFCUserData, LaterOfTwoMovesOntoOneParameterStays)
{
    CFCUserData data;
    PutSets(data, {1.0, 2.0, 3.0, 4.0});
    EXPECT_EQ(data.MoveKeySets(Parameters({2.0, 1.0}), Parameters({9.0, 9.0})), 1);
    EXPECT_EQ(NameAt(data, 9.0), "a");
    EXPECT_EQ(data.MoveKeySets(Parameters({3.0}), Parameters({4.0})), 1);
    EXPECT_EQ(NameAt(data, 4.0), "c") << "in place of a set that does not move";
    EXPECT_EQ(BlockOf(data).size(), data.BlockSize());
}

TEST(CFCUserData, ListsOfTwoSizesAreRefused)
{
    CFCUserData data;
    EXPECT_EQ(data.MoveKeySets(Parameters({1.0}), Parameters({})), 1) << "nothing to move";
    PutSets(data, {1.0});
    EXPECT_EQ(data.MoveKeySets(Parameters({1.0}), Parameters({})), 0);
    EXPECT_EQ(NameAt(data, 1.0), "a");
    HvDoubleArray const same = Parameters({1.0});
    EXPECT_EQ(data.MoveKeySets(same, same), 1);
    EXPECT_EQ(NameAt(data, 1.0), "a");
}

TEST(CFCUserData, MovesAllocateNothing)
{
    CFCUserData data;
    PutSets(data, {1.0, 2.0, 3.0});
    HvDoubleArray const from = Parameters({1.0, 3.0});
    HvDoubleArray const to = Parameters({3.0, 7.0});
    AllocationCounter const counter;
    data.ScaleKeySets(2.0);
    data.ScaleKeySets(0.5);
    data.TranslateKeySets(1.0);
    data.TranslateKeySets(-1.0);
    data.MoveKeySets(from, to);
    EXPECT_EQ(counter.Allocations(), 0);
    EXPECT_EQ(NameAt(data, 3.0), "a");
    EXPECT_EQ(NameAt(data, 7.0), "c");
}

// Any run of edits against a plain model, with the size of the block at each step.
TEST(CFCUserData, EditsFollowAModel)
{
    EXPECT_TRUE(rc::check([] {
        CFCUserData data;
        std::map<double, std::string> model;
        for (int step = 0; step < 30; ++step) {
            double const p = PickInRange(-3, 4);
            double const q = PickInRange(-3, 4);
            std::string const name = std::to_string(step);
            switch (PickInRange(0, 5)) {
            case 0:
                data.SetKeySet(p, SetOf(1, name.c_str()));
                model[p] = name;
                break;
            case 1:
                RC_ASSERT(data.RemoveKeySet(p) == static_cast<int>(model.erase(p)));
                break;
            case 2: {
                RC_ASSERT(data.MoveKeySets(Parameters({p}), Parameters({q})) == 1);
                if (model.count(p) != 0) {
                    std::string const moved = model[p];
                    model.erase(p);
                    model[q] = moved;
                }
                break;
            }
            case 3: {
                RC_ASSERT(data.TranslateKeySets(p) == 1);
                std::map<double, std::string> shifted;
                for (auto const& entry : model) {
                    shifted[entry.first + p] = entry.second;
                }
                model = shifted;
                break;
            }
            default: {
                RC_ASSERT(data.ScaleKeySets(p) == 1);
                std::map<double, std::string> scaled;
                for (auto const& entry : model) {
                    scaled[entry.first * p] = entry.second;
                }
                model = scaled;
                break;
            }
            }
            unsigned int size = model.empty() ? 9 : 11 + 4;
            for (auto const& entry : model) {
                RC_ASSERT(NameAt(data, entry.first) == entry.second);
                size += 20 + 20 + static_cast<unsigned int>(entry.second.size());
            }
            RC_ASSERT(data.BlockSize() == size);
            RC_ASSERT(data.IsEmpty() == model.empty());
        }
    }));
}

// The block.

TEST(CFCUserData, BlockWithoutDataIsNineBytes)
{
    EXPECT_EQ(BlockOf(CFCUserData()), (Bytes{5, 0, 0, 0, 0, 1, 0, 0, 0}));
    EXPECT_EQ(CFCUserData::kEmptyBlockSize, 9u);
}

TEST(CFCUserData, BlockHasTheBytesOfTheFormat)
{
    CFCUserData data;
    FillAsHandBlock(data);
    EXPECT_EQ(BlockOf(data), kHandBlock);
    EXPECT_EQ(data.BlockSize(), 11u + 33u + 4u + 41u + 40u);
}

TEST(CFCUserData, BlockOfCurveDataAloneAndOfKeyDataAlone)
{
    CFCUserData data;
    data.InsertCurveBlob(Guid(1), BytesOf("abc"), 3);
    EXPECT_EQ(data.BlockSize(), 11u + 12u + 20u + 3u);
    Bytes block = BlockOf(data);
    EXPECT_EQ(block[8], 1);
    EXPECT_EQ(block[9], 1);
    EXPECT_EQ(block.back(), 0);
    CFCUserData keys;
    keys.InsertKeyBlob(1.0, Guid(1), BytesOf("abc"), 3);
    EXPECT_EQ(keys.BlockSize(), 11u + 4u + 20u + 20u + 3u);
    block = BlockOf(keys);
    EXPECT_EQ(block[8], 1);
    EXPECT_EQ(block[9], 0);
    EXPECT_EQ(block[10], 1);
    EXPECT_EQ(block[11], 1);
}

TEST(CFCUserData, BlockIsReadBack)
{
    CFCUserData data;
    PutSets(data, {7.0});
    HvByteReader reader = BodyOf(kHandBlock);
    EXPECT_EQ(data.ReadBlockBody(reader), 1);
    EXPECT_EQ(reader.Left(), 0u);
    EXPECT_EQ(NameAt(data, 7.0), "none") << "the record is replaced";
    EXPECT_EQ(TextIn(&data.CurveSet(), 0x01020304), "c");
    EXPECT_EQ(TextIn(data.FindKeySet(2.5), 0x01020304), "k");
    EXPECT_EQ(TextIn(data.FindKeySet(3.0), 0x01020304), "");
    EXPECT_EQ(BlockOf(data), kHandBlock);
}

TEST(CFCUserData, UnboundedReaderUsesTheSameBytes)
{
    CFCUserData data;
    HvByteReader reader = HvByteReader::Unbounded(kHandBlock.data() + 4);
    EXPECT_EQ(data.ReadBlockBody(reader), 1);
    EXPECT_EQ(reader.Used(), kHandBlock.size() - 4);
    EXPECT_EQ(BlockOf(data), kHandBlock);
}

TEST(CFCUserData, BlockWithoutDataEmptiesTheRecord)
{
    CFCUserData data;
    PutSets(data, {7.0});
    Bytes const block = BlockOf(CFCUserData());
    HvByteReader reader = BodyOf(block);
    EXPECT_EQ(data.ReadBlockBody(reader), 1);
    EXPECT_EQ(reader.Left(), 0u);
    EXPECT_TRUE(data.IsEmpty());
}

TEST(CFCUserData, BlockOfAnotherVersionIsNotRead)
{
    Bytes block = kHandBlock;
    block[4] = 2;
    CFCUserData data;
    PutSets(data, {7.0});
    HvByteReader reader = BodyOf(block);
    EXPECT_EQ(data.ReadBlockBody(reader), 0);
    EXPECT_FALSE(reader.Failed());
    EXPECT_EQ(NameAt(data, 7.0), "a");
}

TEST(CFCUserData, ParameterThatIsNotFiniteReadsAsZero)
{
    Bytes block = kHandBlock;
    std::size_t const parameter = 11 + 33 + 4;
    ASSERT_EQ(block[parameter + 7], 0x40);
    block[parameter + 6] = 0xF8;
    block[parameter + 7] = 0x7F;
    CFCUserData data;
    HvByteReader reader = BodyOf(block);
    EXPECT_EQ(data.ReadBlockBody(reader), 1);
    EXPECT_EQ(TextIn(data.FindKeySet(0.0), 0x01020304), "k");
}

TEST(CFCUserData, LaterSetOfAParameterReplacesTheEarlier)
{
    Bytes block = kHandBlock;
    std::size_t const second = block.size() - 40;
    ASSERT_EQ(block[second + 6], 0x08);
    block[second + 6] = 0x04;  // 2.5 again
    CFCUserData data;
    HvByteReader reader = BodyOf(block);
    EXPECT_EQ(data.ReadBlockBody(reader), 1);
    EXPECT_EQ(TextIn(data.FindKeySet(2.5), 0x01020304), "");
    EXPECT_EQ(BlockOf(data).size(), data.BlockSize());
}

TEST(CFCUserData, EveryTruncatedBlockIsRefused)
{
    for (std::size_t size = 0; size < kHandBlock.size() - 4; ++size) {
        Bytes const cut(kHandBlock.begin() + 4,
                        kHandBlock.begin() + 4 + static_cast<std::ptrdiff_t>(size));
        CFCUserData data;
        PutSets(data, {7.0});
        HvByteReader reader(cut.data(), cut.size());
        EXPECT_EQ(data.ReadBlockBody(reader), 0) << size;
        EXPECT_TRUE(reader.Failed()) << size;
        EXPECT_EQ(NameAt(data, 7.0), "a") << size;
    }
}

// Whatever bytes come: the reader stays in bounds, and what was read can be written and read again.
TEST(CFCUserData, AnyBytesAreRefusedOrReadToSomethingWritable)
{
    EXPECT_TRUE(rc::check([](std::vector<std::pair<unsigned char, unsigned char>> const& changes) {
        Bytes body(kHandBlock.begin() + 4, kHandBlock.end());
        for (auto const& change : changes) {
            body[change.first % body.size()] = change.second;
        }
        CFCUserData data;
        HvByteReader reader(body.data(), body.size());
        if (data.ReadBlockBody(reader) == 0) {
            RC_ASSERT(data.IsEmpty());
            return;
        }
        Bytes const written = BlockOf(data);
        CFCUserData again;
        HvByteReader writtenReader = BodyOf(written);
        RC_ASSERT(again.ReadBlockBody(writtenReader) == 1);
        RC_ASSERT(BlockOf(again) == written);
    }));
}

TEST(CFCUserData, HugeCountAllocatesNothing)
{
    Bytes body = {0, 1, 0, 0, 1, 0, 1, 0xFF, 0xFF, 0xFF, 0xFF};
    body.resize(200, 0);
    CFCUserData data;
    HvByteReader reader(body.data(), body.size());
    AllocationCounter const counter;
    EXPECT_EQ(data.ReadBlockBody(reader), 0);
    EXPECT_EQ(counter.Allocations(), 0);
}

// 2^31 - 1 bytes may be the whole block; sums that would wrap are refused too.
TEST(CFCUserData, BlockThatAnArchiveCannotHoldIsRefused)
{
    EXPECT_NO_THROW(CFCUserData_RequireRoomInArchive(9, 0x7FFFFFFFULL - 9));
    EXPECT_THROW(CFCUserData_RequireRoomInArchive(9, 0x7FFFFFFFULL - 8), std::bad_alloc);
    EXPECT_THROW(CFCUserData_RequireRoomInArchive(0x7FFFFFFFULL, 1), std::bad_alloc);
    EXPECT_THROW(CFCUserData_RequireRoomInArchive(9, ~0ULL), std::bad_alloc);
}

TEST(CFCUserData, BlobThatAnArchiveCannotHoldIsRefusedBeforeItIsCopied)
{
    CFCUserData data;
    PutSets(data, {1.0});
    AllocationCounter const counter;
    unsigned char const byte = 0;
    EXPECT_THROW(data.InsertCurveBlob(Guid(1), &byte, 0xFFFFFFFFU), std::bad_alloc);
    EXPECT_THROW(data.InsertKeyBlob(1.0, Guid(1), &byte, 0xFFFFFFFFU), std::bad_alloc);
    EXPECT_THROW(data.InsertKeyBlob(2.0, Guid(1), &byte, 0xFFFFFFFFU), std::bad_alloc);
    EXPECT_EQ(counter.Allocations(), 0);
    EXPECT_EQ(NameAt(data, 1.0), "a");
}

TEST(CFCUserData, DynamicSizeCountsBothMaps)
{
    CFCUserData data;
    EXPECT_EQ(XQGetDynamicMemSize(data), 0u);
    data.InsertCurveBlob(Guid(1), BytesOf("abc"), 3);
    data.InsertKeyBlob(1.0, Guid(1), BytesOf("defgh"), 5);
    unsigned long const blobNode =
        XQComputeSTLTreeNodeSize<std::pair<CFCUserDataKey const, CFCUserDataValue>>();
    unsigned long const setNode =
        XQComputeSTLTreeNodeSize<std::pair<double const, CFCUserDataSet>>();
    EXPECT_EQ(XQGetDynamicMemSize(data), blobNode + 3 + setNode + blobNode + 5);
}

// Each edit that allocates, with each of its allocations refused in turn.
TEST(CFCUserData, RefusedAllocationLeavesTheRecordAsItWas)
{
    struct Work {
        CFCUserData data;
        CFCUserDataSet other = SetOf(2, "other");
    };
    auto const prepare = [] {
        auto work = std::make_unique<Work>();
        FillAsHandBlock(work->data);
        return work;
    };
    auto const check = [](std::unique_ptr<Work>& work, bool completed) {
        if (!completed) {
            EXPECT_EQ(BlockOf(work->data), kHandBlock);
        }
    };
    auto const walk = [&](auto operate) {
        return RefuseEachAllocation(
            prepare, [&](std::unique_ptr<Work>& work) { operate(*work); }, check);
    };
    EXPECT_GE(walk([](Work& w) { w.data.InsertCurveBlob(Guid(9), BytesOf("x"), 1); }), 2);
    EXPECT_GE(walk([](Work& w) { w.data.InsertKeyBlob(9.0, Guid(9), BytesOf("x"), 1); }), 3);
    EXPECT_GE(walk([](Work& w) { w.data.InsertKeyBlob(2.5, Guid(9), BytesOf("x"), 1); }), 2);
    EXPECT_GE(walk([](Work& w) { w.data.SetKeySet(2.5, w.other); }), 2);
    EXPECT_GE(walk([](Work& w) { w.data.SetKeySet(9.0, w.other); }), 3);
    EXPECT_GE(walk([](Work& w) { CFCUserData const copy(w.data); }), 5);
    EXPECT_GE(walk([](Work& w) {
                  HvByteReader reader = BodyOf(kHandBlock);
                  w.data.ReadBlockBody(reader);
              }),
              5);
}
