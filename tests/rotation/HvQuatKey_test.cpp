// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Keys of a quaternion curve.

#include "long_matrix.h"

#include <hv/rotation/HvQuatKey.h>

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

namespace {

HvQuatKey Sample()
{
    return HvQuatKey(2.5, HvPoint3<double>(1, 2, 3), 0.1f, 0.2f, 0.3f, 4);
}

}  // namespace

TEST(HvQuatKey, ZeroByDefault)
{
    HvQuatKey const key;
    EXPECT_EQ(key.time, 0);
    EXPECT_EQ(key.angles, HvPoint3<double>(0, 0, 0));
    EXPECT_EQ(key.tension, 0);
    EXPECT_EQ(key.continuity, 0);
    EXPECT_EQ(key.bias, 0);
    EXPECT_EQ(key.spins, 0);
    EXPECT_EQ(key.parameterLocked, 0);
    EXPECT_EQ(key.valueLocked, 0);
    EXPECT_EQ(key.selected, 0);
    EXPECT_EQ(sizeof(HvQuatKey), 48u);
}

TEST(HvQuatKey, HoldsWhatItIsMadeOf)
{
    HvQuatKey const key = Sample();
    EXPECT_EQ(key.time, 2.5);
    EXPECT_EQ(key.angles, HvPoint3<double>(1, 2, 3));
    EXPECT_EQ(key.tension, 0.1f);
    EXPECT_EQ(key.continuity, 0.2f);
    EXPECT_EQ(key.bias, 0.3f);
    EXPECT_EQ(key.spins, 4);
    EXPECT_EQ(key.parameterLocked, 0);
    EXPECT_EQ(key.valueLocked, 0);
    EXPECT_EQ(key.selected, 0);
}

TEST(HvQuatKey, SpinsAreCutToTwelveBits)
{
    struct {
        int given;
        int kept;
    } const cases[] = {
        {0, 0},         {-1, -1},  {2047, 2047}, {2048, -2048},    {-2048, -2048},
        {-2049, 2047},  {4096, 0}, {4095, -1},   {2147483647, -1}, {-2147483647 - 1, 0},
        {12345678, 334}};  // 12345678 = 3014 * 4096 + 334
    for (auto const& c : cases) {
        EXPECT_EQ(HvQuatKey(0, {}, 0, 0, 0, c.given).spins, c.kept) << c.given;
    }
}

TEST(HvQuatKey, FieldsLieInTheirBits)
{
    HvQuatKey key;
    key.spins = -1;
    key.parameterLocked = 1;
    key.selected = 1;
    unsigned char bytes[sizeof key];
    std::memcpy(bytes, &key, sizeof key);
    EXPECT_EQ(bytes[44], 0xFF);
    EXPECT_EQ(bytes[45], 0x0F);
    EXPECT_EQ(bytes[46], 0x50);
    key.valueLocked = 1;
    std::memcpy(bytes, &key, sizeof key);
    EXPECT_EQ(bytes[46], 0x70);
}

TEST(HvQuatKey, WritesKeepTheBitsThatHaveNoName)
{
    HvQuatKey key;
    unsigned char bytes[sizeof key];
    std::memcpy(bytes, &key, sizeof key);
    bytes[45] = 0xA0;
    bytes[46] = 0x8F;
    std::memcpy(static_cast<void*>(&key), bytes, sizeof key);
    EXPECT_EQ(key.spins, 0);
    key.spins = -3;
    key.parameterLocked = 1;
    key.valueLocked = 1;
    key.selected = 1;
    HvQuatKey copy(key);
    HvQuatKey assigned;
    assigned = copy;
    std::memcpy(bytes, &assigned, sizeof key);
    EXPECT_EQ(bytes[45], 0xAF);
    EXPECT_EQ(bytes[46], 0xFF);
    EXPECT_EQ(assigned.spins, -3);
}

TEST(HvQuatKey, OrderIsByTimeAlone)
{
    HvQuatKey const a(1, {9, 9, 9}, 0, 0, 0, 0);
    HvQuatKey const b(2, {0, 0, 0}, 0, 0, 0, 0);
    EXPECT_TRUE(a < b);
    EXPECT_FALSE(b < a);
    EXPECT_FALSE(a < HvQuatKey(1, {0, 0, 0}, 1, 1, 1, 1));
    EXPECT_FALSE(a < HvQuatKey(kNaN, {}, 0, 0, 0, 0));
}

TEST(HvQuatKey, EqualityLooksAtAllButTheSelection)
{
    HvQuatKey const key = Sample();
    EXPECT_TRUE(key == Sample());
    auto const differs = [&](auto change) {
        HvQuatKey other = key;
        change(other);
        return key != other && !(key == other);
    };
    EXPECT_TRUE(differs([](HvQuatKey& k) { k.time = 2; }));
    EXPECT_TRUE(differs([](HvQuatKey& k) { k.angles.x = 0; }));
    EXPECT_TRUE(differs([](HvQuatKey& k) { k.angles.y = 0; }));
    EXPECT_TRUE(differs([](HvQuatKey& k) { k.angles.z = 0; }));
    EXPECT_TRUE(differs([](HvQuatKey& k) { k.tension = 0; }));
    EXPECT_TRUE(differs([](HvQuatKey& k) { k.continuity = 0; }));
    EXPECT_TRUE(differs([](HvQuatKey& k) { k.bias = 0; }));
    EXPECT_TRUE(differs([](HvQuatKey& k) { k.spins = 0; }));
    EXPECT_TRUE(differs([](HvQuatKey& k) { k.parameterLocked = 1; }));
    EXPECT_TRUE(differs([](HvQuatKey& k) { k.valueLocked = 1; }));
    EXPECT_FALSE(differs([](HvQuatKey& k) { k.selected = 1; }));
    EXPECT_FALSE(differs([](HvQuatKey& k) { k.spinsUnused = 5; }));
    HvQuatKey nan = key;
    nan.angles.y = kNaN;
    HvQuatKey const same = nan;
    EXPECT_FALSE(nan == same);
}
