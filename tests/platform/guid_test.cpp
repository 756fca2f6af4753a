// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// _GUID: where its fields lie.

#include <hv/platform/guid.h>

#include <gtest/gtest.h>

#include <cstddef>

TEST(guid, FieldsLieWithoutGaps)
{
    EXPECT_EQ(offsetof(_GUID, Data1), 0u);
    EXPECT_EQ(offsetof(_GUID, Data2), 4u);
    EXPECT_EQ(offsetof(_GUID, Data3), 6u);
    EXPECT_EQ(offsetof(_GUID, Data4), 8u);
    EXPECT_EQ(sizeof(_GUID), 16u);
}
