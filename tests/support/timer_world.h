// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Clocks, environment and files for the tests of the timers.

#ifndef TESTS_SUPPORT_TIMER_WORLD_H
#define TESTS_SUPPORT_TIMER_WORLD_H

#include <hv/foundation/internal/timer_clocks.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <random>
#include <string>

/// Clocks that stand until the test moves them, while it lives; then the former ones come back.
class FakeClocks {
public:
    FakeClocks() : former_(HvTimerClocks_Current())
    {
        state() = State{};
        HvTimerClocks_Current() = HvTimerClocks{[] { return state().timeOfDay; },
                                                [](long long& countsPerSecond) {
                                                    if (state().hasCounter) {
                                                        countsPerSecond = state().countsPerSecond;
                                                    }
                                                    return state().hasCounter;
                                                },
                                                [](long long& count) {
                                                    if (state().hasCounter) {
                                                        count = state().count;
                                                    }
                                                    return state().hasCounter;
                                                }};
    }
    ~FakeClocks() { HvTimerClocks_Current() = former_; }
    FakeClocks(FakeClocks const&) = delete;
    FakeClocks& operator=(FakeClocks const&) = delete;

    void SetTimeOfDay(long long seconds, int milliseconds)
    {
        state().timeOfDay = HvTimeOfDay{seconds, milliseconds};
    }
    void SetCount(long long count) { state().count = count; }
    void SetCountsPerSecond(long long countsPerSecond)
    {
        state().countsPerSecond = countsPerSecond;
    }
    void RemoveCounter() { state().hasCounter = false; }

private:
    struct State {
        HvTimeOfDay timeOfDay{1000, 0};
        bool hasCounter = true;
        long long countsPerSecond = 1000;
        long long count = 0;
    };

    static State& state()
    {
        static State theState;
        return theState;
    }

    HvTimerClocks former_;
};

/// An environment variable with a value of the test, or without one, while it lives.
class EnvironmentValue {
public:
    EnvironmentValue(char const* name, char const* value) : name_(name)
    {
        if (char const* const former = std::getenv(name)) {
            former_ = former;
        }
        Set(value);
    }
    ~EnvironmentValue() { Set(former_ ? former_->c_str() : nullptr); }
    EnvironmentValue(EnvironmentValue const&) = delete;
    EnvironmentValue& operator=(EnvironmentValue const&) = delete;

private:
    void Set(char const* value)
    {
#if defined(_WIN32)
        _putenv_s(name_, value != nullptr ? value : "");
#else
        value != nullptr ? setenv(name_, value, 1) : unsetenv(name_);
#endif
    }

    char const* name_;
    std::optional<std::string> former_;
};

/// A new empty folder, of another name in every run, which is the current one, while it lives.
class CurrentFolder {
public:
    CurrentFolder() : former_(std::filesystem::current_path())
    {
        auto const* const test = testing::UnitTest::GetInstance()->current_test_info();
        path_ = std::filesystem::temp_directory_path() /
                ("hv_" + std::string(test->test_suite_name()) + "_" + test->name() + "_" +
                 std::to_string(std::random_device()()));
        std::filesystem::create_directories(path_);
        std::filesystem::current_path(path_);
    }
    ~CurrentFolder()
    {
        std::filesystem::current_path(former_);
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    CurrentFolder(CurrentFolder const&) = delete;
    CurrentFolder& operator=(CurrentFolder const&) = delete;

    std::string Path() const { return path_.string(); }

    /// The bytes of a file of the folder; nothing when there is none.
    std::optional<std::string> Read(std::string const& name) const
    {
        std::ifstream file(path_ / name, std::ios_base::binary);
        if (!file) {
            return std::nullopt;
        }
        return std::string(std::istreambuf_iterator<char>(file), {});
    }
    std::size_t NumFiles() const
    {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(path_),
                                                      std::filesystem::directory_iterator()));
    }

private:
    std::filesystem::path former_;
    std::filesystem::path path_;
};

#endif
