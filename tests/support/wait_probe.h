// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Whether a call waits for a lock, seen from a second thread.

#ifndef TESTS_SUPPORT_WAIT_PROBE_H
#define TESTS_SUPPORT_WAIT_PROBE_H

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

/// Whether `call()` waits for a lock that the calling thread holds: it runs in a second thread
/// until it is done or `release()` has let the lock go. A call that is expected to wait is given a
/// moment to show otherwise, one that is expected to run is given long enough for any machine, so a
/// slow machine cannot make a right call look wrong.
template <class Release, class Call>
bool WaitProbe_Waits(Release release, bool expected, Call call)
{
    std::mutex mutex;
    std::condition_variable changed;
    bool started = false;
    bool done = false;

    std::thread worker([&] {
        {
            std::lock_guard<std::mutex> const guard(mutex);
            started = true;
        }
        changed.notify_all();
        call();
        {
            std::lock_guard<std::mutex> const guard(mutex);
            done = true;
        }
        changed.notify_all();
    });
    bool waits = false;
    {
        std::unique_lock<std::mutex> guard(mutex);
        changed.wait(guard, [&] { return started; });
        auto const patience =
            expected ? std::chrono::milliseconds(2) : std::chrono::milliseconds(10000);
        waits = !changed.wait_for(guard, patience, [&] { return done; });
    }
    release();
    worker.join();
    return waits;
}

#endif
