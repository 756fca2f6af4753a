// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What does a lock cost a curve's evaluation, and what its hint?
//
// The critical section beside the mutexes of the standard library: entered and left alone, entered
// again by its owner, and by two threads at once with a little work inside and outside. A slot read
// beside a plain thread-local variable: one slot, a million in order, a million at random.

#include <hv/platform/CActiveDataMultiThreadedRenderingLock.h>
#include <hv/platform/CXQCriticalSection.h>
#include <hv/platform/thread_local_slots.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <mutex>
#include <random>
#include <thread>
#include <vector>

namespace {

class CriticalSection {
public:
    CriticalSection() { InitializeCriticalSection(&section); }
    ~CriticalSection() { DeleteCriticalSection(&section); }
    void lock() { EnterCriticalSection(&section); }
    void unlock() { LeaveCriticalSection(&section); }

private:
    CRITICAL_SECTION section;
};

class CountingSection {
public:
    void lock() { section.Enter(); }
    void unlock() { section.Leave(); }

private:
    CXQCriticalSection section;
};

class AccessLock {
public:
    void lock() { CActiveDataMultiThreadedRenderingLock::ADAccessLock(); }
    void unlock() { CActiveDataMultiThreadedRenderingLock::ADAccessUnlock(); }
};

// glibc leaves the atomics out of its mutexes until a process has had its second thread. Curves are
// read by several, so all locks are timed after one.
bool const hadSecondThread = [] {
    std::thread([] {}).join();
    return true;
}();

template <class Lock>
void Alone(benchmark::State& state)
{
    static Lock lock;
    for (auto _ : state) {
        lock.lock();
        benchmark::ClobberMemory();
        lock.unlock();
    }
}
BENCHMARK_TEMPLATE(Alone, CriticalSection);
BENCHMARK_TEMPLATE(Alone, CountingSection);
BENCHMARK_TEMPLATE(Alone, AccessLock);
BENCHMARK_TEMPLATE(Alone, std::mutex);
BENCHMARK_TEMPLATE(Alone, std::recursive_mutex);

template <class Lock>
void EnteredAgain(benchmark::State& state)
{
    static Lock lock;
    lock.lock();
    for (auto _ : state) {
        lock.lock();
        benchmark::ClobberMemory();
        lock.unlock();
    }
    lock.unlock();
}
BENCHMARK_TEMPLATE(EnteredAgain, CriticalSection);
BENCHMARK_TEMPLATE(EnteredAgain, CountingSection);
BENCHMARK_TEMPLATE(EnteredAgain, std::recursive_mutex);

// About as long as a short evaluation: some twenty nanoseconds.
double Work(double x)
{
    for (int k = 0; k < 6; ++k) {
        x = x * 0.999 + 0.001;
    }
    return x;
}

template <class Lock>
void Shared(benchmark::State& state)
{
    static Lock lock;
    static double guarded = 0.0;
    double own = 0.0;
    for (auto _ : state) {
        lock.lock();
        guarded = Work(guarded);
        lock.unlock();
        benchmark::DoNotOptimize(own = Work(own));
    }
}
BENCHMARK_TEMPLATE(Shared, CriticalSection)->Threads(1)->Threads(2)->UseRealTime();
BENCHMARK_TEMPLATE(Shared, std::mutex)->Threads(1)->Threads(2)->UseRealTime();
BENCHMARK_TEMPLATE(Shared, std::recursive_mutex)->Threads(1)->Threads(2)->UseRealTime();

thread_local void* plainVariable = nullptr;

void PlainThreadLocal(benchmark::State& state)
{
    for (auto _ : state) {
        benchmark::ClobberMemory();
        benchmark::DoNotOptimize(plainVariable);
    }
}
BENCHMARK(PlainThreadLocal);

// Slots of a run, with a value in each, freed at its end.
class Slots {
public:
    explicit Slots(std::size_t count) : numbers(count)
    {
        for (unsigned int& number : numbers) {
            number = XQTlsAlloc();
            XQTlsSetValue(number, &number);
        }
    }
    ~Slots()
    {
        for (unsigned int const number : numbers) {
            XQTlsFree(number);
        }
    }

    std::vector<unsigned int> numbers;
};

void SlotRead(benchmark::State& state)
{
    Slots const slots(static_cast<std::size_t>(state.range(0)));
    std::size_t k = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(XQTlsGetValue(slots.numbers[k]));
        k = k + 1 == slots.numbers.size() ? 0 : k + 1;
    }
}
BENCHMARK(SlotRead)->Arg(1)->Arg(1000000);

void SlotReadAtRandom(benchmark::State& state)
{
    Slots slots(static_cast<std::size_t>(state.range(0)));
    std::shuffle(slots.numbers.begin(), slots.numbers.end(), std::mt19937(1));
    std::size_t k = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(XQTlsGetValue(slots.numbers[k]));
        k = k + 1 == slots.numbers.size() ? 0 : k + 1;
    }
}
BENCHMARK(SlotReadAtRandom)->Arg(1000000);

void SlotWrite(benchmark::State& state)
{
    Slots const slots(1);
    std::uintptr_t value = 0;
    for (auto _ : state) {
        XQTlsSetValue(slots.numbers[0], reinterpret_cast<void*>(++value));
    }
}
BENCHMARK(SlotWrite);

void SlotLife(benchmark::State& state)
{
    for (auto _ : state) {
        unsigned int const slot = XQTlsAlloc();
        benchmark::DoNotOptimize(slot);
        XQTlsFree(slot);
    }
}
BENCHMARK(SlotLife);

}  // namespace
