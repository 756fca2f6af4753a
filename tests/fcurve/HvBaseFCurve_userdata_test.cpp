// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// User data as a host sees them: on a curve, on its keys, through edits, under the locks.

#include <tests/fcurve/user_data_samples.h>
#include <tests/support/allocation_failure.h>

#include <hv/fcurve/HvIntegerFCurve.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/byte_codec.h>
#include <hv/platform/CActiveDataMultiThreadedRenderingLock.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <limits>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Keys at 1, 2, ... count, of value 10.
HvIntegerFCurve CurveWithKeys(int count)
{
    HvIntegerFCurve curve(0.0);
    for (int k = 1; k <= count; ++k) {
        curve.CreateKey(k, 10.0);
    }
    return curve;
}

void Put(HvBaseFCurve& curve, double parameter, char const* text)
{
    EXPECT_EQ(curve.SetUserDataSet(SetOf(1, text), parameter), 1);
}

std::string At(HvBaseFCurve const& curve, double parameter)
{
    return TextIn(curve.GetUserDataSet(parameter), 1);
}

std::string OnCurve(HvBaseFCurve const& curve, unsigned int n)
{
    unsigned char const* bytes = nullptr;
    unsigned int size = 0;
    if (curve.GetFCurveUserData(Guid(n), bytes, size) == 0) {
        return "none";
    }
    return std::string(bytes, bytes + size);
}

Bytes BlockOf(HvBaseFCurve const& curve)
{
    Bytes block(curve.GetUserDataBufferSize(), 0xEE);
    EXPECT_EQ(curve.WriteUserDataToBuffer(block.data()), block.size());
    return block;
}

}  // namespace

TEST(HvBaseFCurve_userdata, CurveWithoutDataWritesNineBytes)
{
    HvIntegerFCurve const curve(0.0);
    EXPECT_EQ(curve.HasUserData(), 0);
    EXPECT_EQ(curve.GetUserDataBufferSize(), 9u);
    EXPECT_EQ(BlockOf(curve), (Bytes{5, 0, 0, 0, 0, 1, 0, 0, 0}));
}

TEST(HvBaseFCurve_userdata, BlobOnTheCurveIsSetReadAndRemoved)
{
    HvIntegerFCurve curve(0.0);
    unsigned char const* bytes = BytesOf("as it was");
    unsigned int size = 77;
    EXPECT_EQ(curve.GetFCurveUserData(Guid(1), bytes, size), 0);
    EXPECT_EQ(size, 77u);
    EXPECT_EQ(curve.SetFCurveUserData(Guid(1), BytesOf("blob"), 4), 1);
    EXPECT_EQ(curve.SetFCurveUserData(Guid(2), nullptr, 0), 1);
    EXPECT_EQ(curve.SetFCurveUserData(Guid(3), nullptr, 1), 0);
    EXPECT_EQ(OnCurve(curve, 1), "blob");
    EXPECT_EQ(OnCurve(curve, 2), "");
    EXPECT_EQ(OnCurve(curve, 3), "none");
    EXPECT_EQ(curve.HasUserData(), 1);
    EXPECT_EQ(curve.GetUserDataBufferSize(), 11u + 12u + 20u + 4u + 20u);
    EXPECT_EQ(curve.RemoveFCurveUserData(Guid(3)), 0);
    EXPECT_EQ(curve.RemoveFCurveUserData(Guid(1)), 1);
    EXPECT_EQ(curve.RemoveFCurveUserData(Guid(2)), 1);
    EXPECT_EQ(curve.RemoveFCurveUserData(Guid(2)), 0);
    EXPECT_EQ(curve.HasUserData(), 0);
    EXPECT_EQ(curve.GetUserDataBufferSize(), 9u) << "the record goes with the last data";
}

TEST(HvBaseFCurve_userdata, RefusedFirstBlobLeavesNoRecord)
{
    HvIntegerFCurve curve(0.0);
    EXPECT_EQ(curve.SetFCurveUserData(Guid(1), nullptr, 1), 0);
    EXPECT_EQ(curve.SetUserDataSet(SetOf(1, "x"), kNaN), 0);
    EXPECT_EQ(curve.SetUserDataSet(CFCUserDataSet(), 1.0), 1);
    EXPECT_EQ(curve.HasUserData(), 0);
    EXPECT_EQ(curve.GetUserDataBufferSize(), 9u);
}

TEST(HvBaseFCurve_userdata, BlobMayBeGivenTheBytesThatTheCurveHandsOut)
{
    HvIntegerFCurve curve(0.0);
    curve.SetFCurveUserData(Guid(1), BytesOf("abcdef"), 6);
    unsigned char const* bytes = nullptr;
    unsigned int size = 0;
    curve.GetFCurveUserData(Guid(1), bytes, size);
    EXPECT_EQ(curve.SetFCurveUserData(Guid(1), bytes + 1, size - 2), 1);
    EXPECT_EQ(OnCurve(curve, 1), "bcde");
}

TEST(HvBaseFCurve_userdata, KeyBlobLandsOnTheKeyFoundAndTellsItsParameter)
{
    HvIntegerFCurve curve = CurveWithKeys(3);
    double parameter = 2.2;
    EXPECT_EQ(curve.SetKeyUserData(parameter, Guid(1), BytesOf("two"), 3, 0.1), 0);
    EXPECT_EQ(parameter, 2.2);
    EXPECT_EQ(curve.SetKeyUserData(parameter, Guid(1), BytesOf("two"), 3, 0.3), 1);
    EXPECT_EQ(parameter, 2.0);
    EXPECT_EQ(At(curve, 2.0), "two");
    EXPECT_EQ(curve.HasUserData(2.0), 1);
    EXPECT_EQ(curve.HasUserData(2.2), 0);

    unsigned char const* bytes = nullptr;
    unsigned int size = 0;
    parameter = 1.9;
    EXPECT_EQ(curve.GetKeyUserData(parameter, Guid(1), bytes, size, 0.2), 1);
    EXPECT_EQ(parameter, 2.0);
    EXPECT_EQ(std::string(bytes, bytes + size), "two");
    parameter = 3.1;
    EXPECT_EQ(curve.GetKeyUserData(parameter, Guid(1), bytes, size, 0.2), 0) << "a key without";
    EXPECT_EQ(parameter, 3.1);

    EXPECT_EQ(curve.RemoveKeyUserData(parameter, Guid(1), 0.2), 0);
    EXPECT_EQ(parameter, 3.1);
    parameter = 2.1;
    EXPECT_EQ(curve.RemoveKeyUserData(parameter, Guid(2), 0.2), 0);
    EXPECT_EQ(parameter, 2.1);
    EXPECT_EQ(curve.RemoveKeyUserData(parameter, Guid(1), 0.2), 1);
    EXPECT_EQ(parameter, 2.0);
    EXPECT_EQ(curve.HasUserData(), 0);
}

TEST(HvBaseFCurve_userdata, NearestKeyWithinTheToleranceIsMeant)
{
    HvIntegerFCurve curve = CurveWithKeys(3);
    double parameter = 2.6;
    EXPECT_EQ(curve.SetKeyUserData(parameter, Guid(1), BytesOf("x"), 1, 5.0), 1);
    EXPECT_EQ(parameter, 3.0);
    parameter = kNaN;
    EXPECT_EQ(curve.SetKeyUserData(parameter, Guid(1), BytesOf("x"), 1, 5.0), 0);
    HvIntegerFCurve noKeys(0.0);
    parameter = 1.0;
    EXPECT_EQ(noKeys.SetKeyUserData(parameter, Guid(1), BytesOf("x"), 1, 5.0), 0);
    EXPECT_EQ(noKeys.HasUserData(), 0);
}

TEST(HvBaseFCurve_userdata, SetOfAKeyIsReplacedByACopy)
{
    HvIntegerFCurve curve = CurveWithKeys(2);
    CFCUserDataSet set = SetOf(1, "one");
    EXPECT_EQ(curve.SetUserDataSet(set, 1.0), 1);
    set.InsertUserData(Guid(1), BytesOf("changed"), 7);
    EXPECT_EQ(At(curve, 1.0), "one");
    EXPECT_EQ(curve.SetUserDataSet(*curve.GetUserDataSet(1.0), 1.0), 1) << "its own set";
    EXPECT_EQ(curve.SetUserDataSet(*curve.GetUserDataSet(1.0), 2.0), 1);
    EXPECT_EQ(At(curve, 1.0), "one");
    EXPECT_EQ(At(curve, 2.0), "one");
    EXPECT_EQ(curve.SetUserDataSet(CFCUserDataSet(), 1.0), 1);
    EXPECT_EQ(curve.GetUserDataSet(1.0), nullptr);
}

TEST(HvBaseFCurve_userdata, ParameterThatIsNotFiniteFindsNothing)
{
    HvIntegerFCurve curve = CurveWithKeys(1);
    Put(curve, 1.0, "a");
    for (double const parameter : {kNaN, kInfinity, -kInfinity}) {
        EXPECT_EQ(curve.HasUserData(parameter), 0);
        EXPECT_EQ(curve.GetUserDataSet(parameter), nullptr);
        EXPECT_EQ(curve.SetUserDataSet(SetOf(1, "x"), parameter), 0);
        EXPECT_EQ(curve.RemoveKeyUserData(parameter), 0);
        EXPECT_EQ(curve.ScaleAllKeyUserData(parameter), 0);
        EXPECT_EQ(curve.TranslateAllKeyUserData(parameter), 0);
        EXPECT_EQ(curve.CopyKeyUserData(curve, parameter, 2.0), 0);
        EXPECT_EQ(curve.CopyKeyUserData(curve, 1.0, parameter), 0);
    }
    EXPECT_EQ(At(curve, 1.0), "a");
}

TEST(HvBaseFCurve_userdata, SetsAreDroppedByParameterOrAll)
{
    HvIntegerFCurve curve = CurveWithKeys(3);
    EXPECT_EQ(curve.RemoveKeyUserData(1.0), 0);
    EXPECT_EQ(curve.RemoveAllKeyUserData(), 1);
    Put(curve, 1.0, "a");
    Put(curve, 2.0, "b");
    Put(curve, 3.0, "c");
    curve.SetFCurveUserData(Guid(1), BytesOf("curve"), 5);
    EXPECT_EQ(curve.RemoveKeyUserData(2.0), 1);
    EXPECT_EQ(curve.RemoveKeyUserData(2.0), 0);
    EXPECT_EQ(At(curve, 1.0), "a");
    EXPECT_EQ(curve.RemoveAllKeyUserData(), 1);
    EXPECT_EQ(At(curve, 1.0), "none");
    EXPECT_EQ(OnCurve(curve, 1), "curve");
}

TEST(HvBaseFCurve_userdata, MovesFollowTheParameters)
{
    HvIntegerFCurve curve = CurveWithKeys(3);
    EXPECT_EQ(curve.ScaleAllKeyUserData(2.0), 1) << "nothing to move";
    EXPECT_EQ(curve.TranslateAllKeyUserData(2.0), 1);
    HvDoubleArray from;
    HvDoubleArray to;
    EXPECT_EQ(curve.MoveKeyUserDataTail(from, to), 1);
    Put(curve, 1.0, "a");
    Put(curve, 2.0, "b");
    EXPECT_EQ(curve.ScaleAllKeyUserData(2.0), 1);
    EXPECT_EQ(At(curve, 2.0), "a");
    EXPECT_EQ(At(curve, 4.0), "b");
    EXPECT_EQ(curve.TranslateAllKeyUserData(1.0), 1);
    EXPECT_EQ(At(curve, 3.0), "a");
    EXPECT_EQ(At(curve, 5.0), "b");
    from.Add(3.0);
    EXPECT_EQ(curve.MoveKeyUserDataTail(from, to), 0);
    to.Add(5.0);
    EXPECT_EQ(curve.MoveKeyUserDataTail(from, to), 1);
    EXPECT_EQ(At(curve, 3.0), "none");
    EXPECT_EQ(At(curve, 5.0), "a");
}

TEST(HvBaseFCurve_userdata, SetIsCopiedFromAnotherCurve)
{
    HvIntegerFCurve source = CurveWithKeys(2);
    HvIntegerFCurve target = CurveWithKeys(2);
    Put(source, 1.0, "source");
    Put(target, 2.0, "target");
    EXPECT_EQ(target.CopyKeyUserData(source, 2.0, 2.0), 0) << "no set there";
    EXPECT_EQ(At(target, 2.0), "target");
    EXPECT_EQ(target.CopyKeyUserData(source, 1.0, 2.0), 1);
    EXPECT_EQ(At(target, 2.0), "source");
    EXPECT_EQ(At(source, 1.0), "source");
    EXPECT_EQ(target.CopyKeyUserData(target, 2.0, 2.0), 1);
    EXPECT_EQ(target.CopyKeyUserData(target, 2.0, 1.0), 1);
    EXPECT_EQ(At(target, 1.0), "source");
}

TEST(HvBaseFCurve_userdata, RecordsAreExchanged)
{
    HvIntegerFCurve first = CurveWithKeys(1);
    HvIntegerFCurve second = CurveWithKeys(1);
    Put(first, 1.0, "first");
    first.ExchangeUserData(second);
    EXPECT_EQ(first.HasUserData(), 0);
    EXPECT_EQ(At(second, 1.0), "first");
    second.ExchangeUserData(second);
    EXPECT_EQ(At(second, 1.0), "first");
}

TEST(HvBaseFCurve_userdata, CopiesAreDeep)
{
    HvIntegerFCurve curve = CurveWithKeys(1);
    Put(curve, 1.0, "a");
    curve.SetFCurveUserData(Guid(1), BytesOf("curve"), 5);
    HvIntegerFCurve copy(curve);
    std::unique_ptr<HvBaseFCurve> const clone(curve.Clone());
    HvIntegerFCurve assigned(0.0);
    assigned = curve;
    Bytes const block = BlockOf(curve);
    curve.RemoveAllKeyUserData();
    curve.RemoveFCurveUserData(Guid(1));
    EXPECT_EQ(BlockOf(copy), block);
    EXPECT_EQ(BlockOf(*clone), block);
    EXPECT_EQ(BlockOf(assigned), block);
    assigned = curve;
    EXPECT_EQ(assigned.HasUserData(), 0);
}

// Through edits of the curve.

TEST(HvBaseFCurve_userdata, ShiftedKeyKeepsItsData)
{
    HvIntegerFCurve curve = CurveWithKeys(3);
    Put(curve, 3.0, "three");
    EXPECT_EQ(curve.ShiftParameters(2.0), 1);
    EXPECT_EQ(At(curve, 5.0), "three");
    EXPECT_EQ(At(curve, 3.0), "none");
}

TEST(HvBaseFCurve_userdata, RemovedKeyLosesItsData)
{
    HvIntegerFCurve curve = CurveWithKeys(3);
    Put(curve, 2.0, "two");
    Put(curve, 3.0, "three");
    EXPECT_EQ(curve.RemoveKey(2.0, 0.0), 1);
    EXPECT_EQ(At(curve, 2.0), "none");
    EXPECT_EQ(At(curve, 3.0), "three");
}

TEST(HvBaseFCurve_userdata, ReadOnlyCurveStillTakesData)
{
    HvIntegerFCurve curve = CurveWithKeys(1);
    curve.SetReadOnlyConstraint(1);
    EXPECT_EQ(curve.SetFCurveUserData(Guid(1), BytesOf("note"), 4), 1);
    EXPECT_EQ(OnCurve(curve, 1), "note");
}

// The block.

TEST(HvBaseFCurve_userdata, BlockIsWrittenAndReadBack)
{
    HvIntegerFCurve curve = CurveWithKeys(3);
    Put(curve, 2.0, "two");
    curve.SetFCurveUserData(Guid(7), BytesOf("curve"), 5);
    Bytes const block = BlockOf(curve);
    EXPECT_EQ(block.size(), 11u + (12u + 20u + 5u) + 4u + (20u + 20u + 3u));
    HvIntegerFCurve read = CurveWithKeys(3);
    Put(read, 3.0, "goes");
    EXPECT_EQ(read.ReadUserDataFromBufferBody(block.data() + 4), block.size() - 4);
    EXPECT_EQ(BlockOf(read), block);
}

TEST(HvBaseFCurve_userdata, BlockOfAnotherVersionIsNothingToRead)
{
    HvIntegerFCurve curve = CurveWithKeys(1);
    Put(curve, 1.0, "kept");
    unsigned char const body[] = {1, 1, 0, 0, 1};
    EXPECT_EQ(curve.ReadUserDataFromBufferBody(body), 0u);
    EXPECT_EQ(At(curve, 1.0), "kept");
}

TEST(HvBaseFCurve_userdata, BlockWithoutDataTakesAllAway)
{
    HvIntegerFCurve curve = CurveWithKeys(1);
    Put(curve, 1.0, "goes");
    unsigned char const body[] = {0, 1, 0, 0, 0};
    EXPECT_EQ(curve.ReadUserDataFromBufferBody(body), 5u);
    EXPECT_EQ(curve.HasUserData(), 0);
}

TEST(HvBaseFCurve_userdata, TruncatedBlockIsRefusedThroughABoundedReader)
{
    HvIntegerFCurve source = CurveWithKeys(2);
    Put(source, 2.0, "two");
    source.SetFCurveUserData(Guid(7), BytesOf("curve"), 5);
    Bytes const block = BlockOf(source);
    for (std::size_t size = 0; size <= block.size() - 4; ++size) {
        bool const whole = size == block.size() - 4;
        Bytes const body(block.begin() + 4, block.begin() + 4 + static_cast<std::ptrdiff_t>(size));
        HvIntegerFCurve curve = CurveWithKeys(2);
        Put(curve, 1.0, "kept");
        HvByteReader reader(body.data(), body.size());
        EXPECT_EQ(curve.ReadUserDataBlockBody(reader), whole ? 1 : 0) << size;
        EXPECT_EQ(reader.Failed(), !whole) << size;
        EXPECT_EQ(At(curve, 1.0), whole ? "none" : "kept") << size;
    }
}

TEST(HvBaseFCurve_userdata, DynamicSizeGrowsByTheData)
{
    HvIntegerFCurve curve = CurveWithKeys(2);
    unsigned long const without = curve.GetDynamicMemSize();
    curve.SetFCurveUserData(Guid(1), BytesOf("abc"), 3);
    unsigned long const node =
        XQComputeSTLTreeNodeSize<std::pair<CFCUserDataKey const, CFCUserDataValue>>();
    EXPECT_EQ(curve.GetDynamicMemSize(), without + node + 3);
}

// Locks.

namespace {

// Runs `operation` on a thread of its own while this one holds a lock, and tells whether it went
// through; it ends, at the latest, when the lock is released.
template <class Operation>
bool GoesThroughWhileHeld(void (*hold)(HvBaseFCurve&), void (*release)(HvBaseFCurve&),
                          HvBaseFCurve& curve, bool expected, Operation operation)
{
    std::atomic<bool> done{false};
    hold(curve);
    std::thread thread([&] {
        operation();
        done = true;
    });
    // One that waits is given a moment to show that it does not; one that must not wait, all the
    // time that a busy machine may need.
    int const milliseconds = expected ? 10000 : 5;
    for (int k = 0; k < milliseconds && !done; ++k) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    bool const through = done;
    release(curve);
    thread.join();
    return through;
}

void HoldAccess(HvBaseFCurve&)
{
    CActiveDataMultiThreadedRenderingLock::ADAccessLock();
}

void ReleaseAccess(HvBaseFCurve&)
{
    CActiveDataMultiThreadedRenderingLock::ADAccessUnlock();
}

void HoldSection(HvBaseFCurve& curve)
{
    curve.AcquireLocks();
}

void ReleaseSection(HvBaseFCurve& curve)
{
    curve.ReleaseLocks();
}

template <class Operation>
void ExpectLocks(char const* name, bool writer, HvBaseFCurve& curve, Operation operation)
{
    SCOPED_TRACE(name);
    EXPECT_FALSE(GoesThroughWhileHeld(&HoldSection, &ReleaseSection, curve, false, operation));
    EXPECT_EQ(GoesThroughWhileHeld(&HoldAccess, &ReleaseAccess, curve, !writer, operation),
              !writer);
}

}  // namespace

TEST(HvBaseFCurve_userdata_threads, ReadersTakeTheSectionAndWritersTheAccessLockToo)
{
    HvIntegerFCurve curve = CurveWithKeys(2);
    HvIntegerFCurve other = CurveWithKeys(2);
    Put(curve, 1.0, "a");
    Put(other, 1.0, "b");
    double p = 1.0;
    unsigned char const* bytes = nullptr;
    unsigned int size = 0;
    unsigned char buffer[200];
    unsigned char const body[] = {0, 1, 0, 0, 0};
    HvDoubleArray const none;
    CFCUserDataSet const set = SetOf(1, "set");

    ExpectLocks("HasUserData", false, curve, [&] { curve.HasUserData(); });
    ExpectLocks("HasUserData of a key", false, curve, [&] { curve.HasUserData(1.0); });
    ExpectLocks("GetUserDataSet", false, curve, [&] { curve.GetUserDataSet(1.0); });
    ExpectLocks("GetFCurveUserData", false, curve,
                [&] { curve.GetFCurveUserData(Guid(1), bytes, size); });
    ExpectLocks("GetKeyUserData", false, curve,
                [&] { curve.GetKeyUserData(p, Guid(1), bytes, size, 0.1); });
    ExpectLocks("GetUserDataBufferSize", false, curve, [&] { curve.GetUserDataBufferSize(); });
    ExpectLocks("WriteUserDataToBuffer", false, curve,
                [&] { curve.WriteUserDataToBuffer(buffer); });

    ExpectLocks("SetUserDataSet", true, curve, [&] { curve.SetUserDataSet(set, 1.0); });
    ExpectLocks("SetFCurveUserData", true, curve,
                [&] { curve.SetFCurveUserData(Guid(1), BytesOf("x"), 1); });
    ExpectLocks("RemoveFCurveUserData", true, curve, [&] { curve.RemoveFCurveUserData(Guid(1)); });
    ExpectLocks("SetKeyUserData", true, curve,
                [&] { curve.SetKeyUserData(p, Guid(1), BytesOf("x"), 1, 0.1); });
    ExpectLocks("RemoveKeyUserData", true, curve,
                [&] { curve.RemoveKeyUserData(p, Guid(1), 0.1); });
    ExpectLocks("RemoveKeyUserData of a key", true, curve, [&] { curve.RemoveKeyUserData(1.0); });
    ExpectLocks("RemoveAllKeyUserData", true, curve, [&] { curve.RemoveAllKeyUserData(); });
    ExpectLocks("ScaleAllKeyUserData", true, curve, [&] { curve.ScaleAllKeyUserData(1.0); });
    ExpectLocks("TranslateAllKeyUserData", true, curve,
                [&] { curve.TranslateAllKeyUserData(0.0); });
    ExpectLocks("MoveKeyUserDataTail", true, curve, [&] { curve.MoveKeyUserDataTail(none, none); });
    ExpectLocks("CopyKeyUserData", true, curve, [&] { curve.CopyKeyUserData(other, 1.0, 1.0); });
    ExpectLocks("CopyKeyUserData's source", true, other,
                [&] { curve.CopyKeyUserData(other, 1.0, 1.0); });
    ExpectLocks("ExchangeUserData", true, curve, [&] { curve.ExchangeUserData(other); });
    ExpectLocks("ExchangeUserData's other", true, other, [&] { curve.ExchangeUserData(other); });
    ExpectLocks("ReadUserDataFromBufferBody", true, curve,
                [&] { curve.ReadUserDataFromBufferBody(body); });
}

// A second thread gets all locks after a refused allocation; one that stayed taken would hang it.
TEST(HvBaseFCurve_userdata_threads, RefusedAllocationReleasesTheLocks)
{
    HvIntegerFCurve curve = CurveWithKeys(1);
    HvIntegerFCurve other = CurveWithKeys(1);
    Put(other, 1.0, "other");
    {
        AllocationCounter counter;
        counter.RefuseAllocation(1);
        EXPECT_THROW(curve.SetFCurveUserData(Guid(1), BytesOf("x"), 1), std::bad_alloc);
        counter.RefuseAllocation(2);
        EXPECT_THROW(curve.CopyKeyUserData(other, 1.0, 1.0), std::bad_alloc);
    }
    bool done = false;
    std::thread([&] {
        CActiveDataMultiThreadedRenderingLock::ADAccessLock();
        curve.AcquireLocks();
        other.AcquireLocks();
        done = true;
        other.ReleaseLocks();
        curve.ReleaseLocks();
        CActiveDataMultiThreadedRenderingLock::ADAccessUnlock();
    }).join();
    EXPECT_TRUE(done);
    EXPECT_EQ(curve.HasUserData(), 0);
}

// Two threads exchange and copy between two curves in opposite directions, a third reads.
TEST(HvBaseFCurve_userdata_threads, OppositeDirectionsDoNotDeadlock)
{
    constexpr int kSteps = 300;
    HvIntegerFCurve first = CurveWithKeys(1);
    HvIntegerFCurve second = CurveWithKeys(1);
    Put(first, 1.0, "data");
    Put(second, 1.0, "data");
    auto const edit = [](HvIntegerFCurve& a, HvIntegerFCurve& b) {
        for (int step = 0; step < kSteps; ++step) {
            a.CopyKeyUserData(b, 1.0, 1.0);
            a.ExchangeUserData(b);
            a.SetFCurveUserData(Guid(1), BytesOf("x"), 1);
        }
    };
    std::thread forth([&] { edit(first, second); });
    std::thread back([&] { edit(second, first); });
    std::thread reader([&] {
        for (int step = 0; step < kSteps; ++step) {
            EXPECT_EQ(first.HasUserData(1.0), 1);
            EXPECT_EQ(second.HasUserData(), 1);
        }
    });
    forth.join();
    back.join();
    reader.join();
    EXPECT_EQ(At(first, 1.0), "data");
}

// Failed allocations.

TEST(HvBaseFCurve_userdata, RefusedAllocationLeavesTheCurveAsItWas)
{
    struct Work {
        HvIntegerFCurve curve = CurveWithKeys(2);
        HvIntegerFCurve other = CurveWithKeys(2);
        Bytes block;
    };
    auto const walk = [](bool withData, auto operate) {
        auto const prepare = [withData] {
            auto work = std::make_unique<Work>();
            Put(work->other, 1.0, "other");
            if (withData) {
                Put(work->curve, 2.0, "two");
            }
            work->block = BlockOf(work->curve);
            return work;
        };
        auto const check = [](std::unique_ptr<Work>& work, bool completed) {
            if (!completed) {
                EXPECT_EQ(BlockOf(work->curve), work->block);
            }
        };
        return RefuseEachAllocation(
            prepare, [&](std::unique_ptr<Work>& work) { operate(*work); }, check);
    };
    for (bool const withData : {false, true}) {
        long const record = withData ? 0 : 1;
        EXPECT_EQ(
            walk(withData, [](Work& w) { w.curve.SetFCurveUserData(Guid(1), BytesOf("x"), 1); }),
            record + 2);
        EXPECT_EQ(walk(withData,
                       [](Work& w) {
                           double parameter = 1.0;
                           w.curve.SetKeyUserData(parameter, Guid(1), BytesOf("x"), 1, 0.0);
                       }),
                  record + 3);
        EXPECT_EQ(walk(withData, [](Work& w) { w.curve.CopyKeyUserData(w.other, 1.0, 1.0); }),
                  record + 3);
        EXPECT_GE(walk(withData,
                       [](Work& w) {
                           Bytes const block = BlockOf(w.other);
                           w.curve.ReadUserDataFromBufferBody(block.data() + 4);
                       }),
                  record + 3);
        EXPECT_EQ(walk(withData, [](Work& w) { w.curve.TranslateAllKeyUserData(1.0); }), 0);
        EXPECT_EQ(walk(withData, [](Work& w) { w.curve.ExchangeUserData(w.other); }), 0);
    }
}
