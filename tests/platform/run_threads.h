// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Threads that start their work at one moment.

#ifndef HV_TESTS_PLATFORM_RUN_THREADS_H
#define HV_TESTS_PLATFORM_RUN_THREADS_H

#include <atomic>
#include <thread>
#include <vector>

/// Runs `work(k)` for k = 0 .. count - 1 on a thread each, all released together, and waits for
/// them.
template <class Work>
void RunThreads(int count, Work work)
{
    std::atomic<int> ready{0};
    std::vector<std::thread> threads;
    for (int k = 0; k < count; ++k) {
        threads.emplace_back([&ready, count, k, &work] {
            ++ready;
            while (ready.load() < count) {
                std::this_thread::yield();
            }
            work(k);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

/// The result of `question` when another thread asks it.
template <class Question>
auto AskedByAnotherThread(Question question) -> decltype(question())
{
    decltype(question()) answer{};
    std::thread([&answer, &question] { answer = question(); }).join();
    return answer;
}

#endif
