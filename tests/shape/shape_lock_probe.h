// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Which calls on a shape take its lock, seen from a second thread.

#ifndef TESTS_SHAPE_SHAPE_LOCK_PROBE_H
#define TESTS_SHAPE_SHAPE_LOCK_PROBE_H

#include <hv/shape/HvShapeLock.h>
#include <tests/support/wait_probe.h>

#include <memory>
#include <thread>

/// Whether `call()` waits for the lock of `shape`, which this thread holds.
template <class Call>
bool ShapeLockProbe_Waits(HvShape2f const& shape, bool expected, Call call)
{
    auto held = std::make_unique<HvShapeLock>(shape);
    return WaitProbe_Waits([&] { held.reset(); }, expected, call);
}

/// Whether another thread finds the lock of `shape` free and never entered, as it does when no call
/// left it behind.
inline bool ShapeLockProbe_IsFree(HvShape2f const& shape)
{
    int depth = 0;
    std::thread([&] {
        HvShapeLock const lock(shape);
        depth = HvShapeLock::Depth(shape);
    }).join();
    return depth == 1;
}

#endif
