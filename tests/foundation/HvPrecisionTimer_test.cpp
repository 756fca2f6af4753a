// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The stopwatch over the performance counter, under a counter, an environment and a folder of the
// test.

#include <hv/foundation/HvPrecisionTimer.h>

#include "../support/allocation_failure.h"
#include "../support/timer_world.h"

#include <iomanip>
#include <iostream>
#include <sstream>
#include <thread>

namespace {

using Timer = HvPrecisionTimer;

// What std::cout gets while the object lives.
class CapturedOutput {
public:
    CapturedOutput() : former_(std::cout.rdbuf(text_.rdbuf())) {}
    ~CapturedOutput() { std::cout.rdbuf(former_); }
    CapturedOutput(CapturedOutput const&) = delete;
    CapturedOutput& operator=(CapturedOutput const&) = delete;
    std::string Text() const { return text_.str(); }

private:
    std::ostringstream text_;
    std::streambuf* former_;
};

class HvPrecisionTimer_world : public testing::Test {
protected:
    // Measures `counts` counts of the fake counter, of which 1000 make a second.
    void Measure(Timer& timer, long long counts)
    {
        clocks.SetCount(5000000);
        timer.Start();
        clocks.SetCount(5000000 + counts);
        timer.Stop();
    }
    std::string Log() const { return folder.Read("t.log").value_or("no file"); }

    FakeClocks clocks;
    CurrentFolder folder;
};

using HvPrecisionTimer_result = HvPrecisionTimer_world;
using HvPrecisionTimer_lines = HvPrecisionTimer_world;
using HvPrecisionTimer_file = HvPrecisionTimer_world;

}  // namespace

TEST_F(HvPrecisionTimer_result, IsInTheUnit)
{
    struct Row {
        int unit;
        double result;
    };
    // 1500 counts of 1000 a second.
    for (Row const& row : {Row{1, 1.5}, Row{2, 1500}, Row{4, 1.5e6}, Row{8, 1.5e9}, Row{16, 1.5e12},
                           Row{0, 1.5}, Row{3, 1.5}, Row{32, 1.5}, Row{-1, 1.5}}) {
        Timer timer("t", "t.log", Timer::Hv_Timer_Out(0), Timer::Hv_Timer_Unit(row.unit), true);
        Measure(timer, 1500);
        EXPECT_EQ(timer.ComputeResult(), row.result) << row.unit;
    }
}

TEST_F(HvPrecisionTimer_result, IsZeroBeforeAMeasurement)
{
    Timer const timer("t", "t.log", Timer::StandardOutput, Timer::Seconds, true);
    EXPECT_EQ(timer.ComputeResult(), 0);
}

TEST_F(HvPrecisionTimer_result, IsNegativeWhenOnlyStarted)
{
    Timer timer("t", "t.log", Timer::StandardOutput, Timer::Seconds, true);
    clocks.SetCount(3000);
    timer.Start();
    EXPECT_EQ(timer.ComputeResult(), -3);
}

TEST_F(HvPrecisionTimer_result, FollowsTheFrequencyFoundLast)
{
    Timer timer("t", "t.log", Timer::StandardOutput, Timer::Seconds, true);
    Measure(timer, 3000);
    clocks.SetCountsPerSecond(500);
    EXPECT_EQ(timer.ComputeResult(), 3);
    Timer const other("t", "t.log", Timer::StandardOutput, Timer::Seconds, true);
    EXPECT_EQ(timer.ComputeResult(), 6);
}

TEST_F(HvPrecisionTimer_result, InitCounterForgetsTheMeasurement)
{
    Timer timer("t", "t.log", Timer::StandardOutput, Timer::Seconds, true);
    Measure(timer, 3000);
    EXPECT_TRUE(timer.InitCounter());
    EXPECT_EQ(timer.ComputeResult(), 0);
    Measure(timer, 1000);
    clocks.RemoveCounter();
    EXPECT_FALSE(timer.InitCounter());
    EXPECT_EQ(timer.ComputeResult(), 0);
}

TEST_F(HvPrecisionTimer_result, IsOfTheWholeCountsWhereTheyAreLarge)
{
    // 2^60 counts after the start of the clock a double no longer holds a single one.
    Timer timer("t", "t.log", Timer::StandardOutput, Timer::Seconds, true);
    clocks.SetCount(1LL << 60);
    timer.Start();
    clocks.SetCount((1LL << 60) + 7);
    timer.Stop();
    EXPECT_EQ(timer.ComputeResult(), 0.007);
}

TEST_F(HvPrecisionTimer_lines, LabelValueAndUnitToTheStandardOutput)
{
    CapturedOutput const output;
    for (int unit : {1, 2, 4, 8, 16, 5}) {
        Timer timer("t", "t.log", Timer::StandardOutput, Timer::Hv_Timer_Unit(unit), true);
        Measure(timer, 25);
        timer.OutputResults("draw");
    }
    // The last is an unknown unit: the text of milliseconds beside the value in seconds.
    EXPECT_EQ(output.Text(), "draw: 0.025 s\ndraw: 25 ms\ndraw: 25000 us\ndraw: 2.5e+07 ns\n"
                             "draw: 2.5e+10 ps\ndraw: 0.025 ms\n");
    EXPECT_EQ(folder.NumFiles(), 0u);
}

TEST_F(HvPrecisionTimer_lines, ValueAloneWithoutNameAndUnit)
{
    CapturedOutput const output;
    Timer timer("t", "t.log", Timer::StandardOutput, Timer::Milliseconds, false);
    Measure(timer, 25);
    timer.OutputResults("draw");
    timer.WriteNameAndUnit(true);
    timer.OutputResults("draw");
    timer.WriteNameAndUnit(false);
    timer.OutputResults("draw");
    EXPECT_EQ(output.Text(), "draw: 25\ndraw: 25 ms\ndraw: 25\n");
}

TEST_F(HvPrecisionTimer_lines, NameStandsInForANullLabel)
{
    CapturedOutput const output;
    Timer timer("first", "t.log", Timer::StandardOutput, Timer::Milliseconds, true);
    timer.OutputResults(nullptr);
    timer.SetName("second");
    timer.OutputResults(nullptr);
    timer.SetName(nullptr);
    timer.OutputResults(nullptr);
    timer.SetName(std::string(300, 'x').c_str());
    timer.OutputResults(nullptr);
    timer.OutputResults("");
    EXPECT_EQ(output.Text(),
              "first: 0 ms\nsecond: 0 ms\n: 0 ms\n" + std::string(255, 'x') + ": 0 ms\n: 0 ms\n");
}

TEST_F(HvPrecisionTimer_lines, SetUnitRenewsTextAndFactor)
{
    CapturedOutput const output;
    Timer timer("t", "t.log", Timer::StandardOutput, Timer::Milliseconds, true);
    Measure(timer, 25);
    timer.SetUnit(Timer::Seconds);
    timer.OutputResults("draw");
    timer.SetUnit(Timer::Hv_Timer_Unit(1000));
    timer.OutputResults("draw");
    EXPECT_EQ(output.Text(), "draw: 0.025 s\ndraw: 0.025 ms\n");
}

TEST_F(HvPrecisionTimer_lines, LabelIsNoFormatAndOfAnyLength)
{
    CapturedOutput const output;
    std::string const label(100000, '%');
    Timer timer("t", "t.log", Timer::StandardOutput, Timer::Seconds, true);
    timer.OutputResults("%s%n%d");
    timer.OutputResults(label.c_str());
    EXPECT_EQ(output.Text(), "%s%n%d: 0 s\n" + label + ": 0 s\n");
}

TEST_F(HvPrecisionTimer_lines, FormatsOfTheHostsStreamsStayOut)
{
    CapturedOutput const output;
    std::ios former(nullptr);
    former.copyfmt(std::cout);
    std::cout << std::hex << std::fixed << std::setprecision(1) << std::showpos;
    Timer timer("t", "t.log", Timer::StandardOutput, Timer::Seconds, true);
    Measure(timer, 25);
    timer.OutputResults("draw");
    std::cout.copyfmt(former);
    EXPECT_EQ(output.Text(), "draw: 0.025 s\n");
}

TEST_F(HvPrecisionTimer_lines, OtherOutputsWriteNothing)
{
    CapturedOutput const output;
    clocks.RemoveCounter();
    for (int out : {0, 1, 3, 6, 8, -1}) {
        Timer timer("t", "t.log", Timer::Hv_Timer_Out(out), Timer::Seconds, true);
        timer.OutputResults("draw");
        timer.OutputWarning();
        timer.SetOutputFile("u.log");
    }
    EXPECT_EQ(output.Text(), "");
    EXPECT_EQ(folder.NumFiles(), 0u);
}

TEST_F(HvPrecisionTimer_lines, WarnsOnceWhenThereIsNoCounter)
{
    CapturedOutput const output;
    clocks.RemoveCounter();
    Timer timer("t", "t.log", Timer::StandardOutput, Timer::Seconds, true);
    timer.Start();
    timer.Stop();
    timer.OutputResults("draw");
    Timer("t", "t.log", Timer::LogFile, Timer::Seconds, true);
    EXPECT_EQ(output.Text(), "Hardware does not support performance timer\ndraw: 0 s\n");
    EXPECT_EQ(Log(), "Hardware does not support performance timer\n");
}

TEST_F(HvPrecisionTimer_file, GetsTheLinesAtOnceAndBehindWhatIsThere)
{
    CapturedOutput const output;
    std::ofstream("t.log") << "before\n";
    Timer timer("t", "t.log", Timer::LogFile, Timer::Milliseconds, true);
    Measure(timer, 25);
    timer.OutputResults("draw");
    EXPECT_EQ(Log(), "before\ndraw: 25 ms\n");
    timer.OutputWarning();
    EXPECT_EQ(Log(), "before\ndraw: 25 ms\nHardware does not support performance timer\n");
    EXPECT_EQ(output.Text(), "");
}

TEST_F(HvPrecisionTimer_file, ReadsTheSameInEveryLocale)
{
    struct CommaNumbers : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
    };
    std::locale const former =
        std::locale::global(std::locale(std::locale::classic(), new CommaNumbers));
    Timer timer("t", "t.log", Timer::LogFile, Timer::Seconds, true);
    Measure(timer, 25);
    timer.OutputResults("draw");
    std::locale::global(former);
    EXPECT_EQ(Log(), "draw: 0.025 s\n");
}

TEST_F(HvPrecisionTimer_file, IsReplacedBySetOutputFile)
{
    Timer timer("t", "t.log", Timer::LogFile, Timer::Seconds, true);
    timer.OutputResults("a");
    timer.SetOutputFile("u.log");
    timer.OutputResults("b");
    timer.SetOutputFile("t.log");
    timer.OutputResults("c");
    timer.SetOutputFile("no such folder/t.log");
    timer.OutputResults("d");
    EXPECT_EQ(Log(), "a: 0 s\nc: 0 s\n");
    EXPECT_EQ(folder.Read("u.log"), "b: 0 s\n");
    EXPECT_EQ(folder.NumFiles(), 2u);
}

TEST_F(HvPrecisionTimer_file, NullIsTheDefaultAndAnEmptyNameIsGiven)
{
    EnvironmentValue const temp("TEMP", "t1");
    Timer timer("t", nullptr, Timer::LogFile, Timer::Seconds, true);
    timer.OutputResults("a");
    timer.SetOutputFile("");
    timer.OutputResults("b");
    EXPECT_EQ(folder.Read("t1\\HvHPTimer.log"), "a: 0 s\n");
    EXPECT_EQ(folder.NumFiles(), 1u);
}

TEST_F(HvPrecisionTimer_file, DefaultTakesTmpAndThenNoFolder)
{
    EnvironmentValue const temp("TEMP", "");
    {
        EnvironmentValue const tmp("TMP", "t2");
        Timer("t", nullptr, Timer::LogFile, Timer::Seconds, true).OutputResults("a");
    }
    EnvironmentValue const tmp("TMP", nullptr);
    Timer("t", nullptr, Timer::LogFile, Timer::Seconds, true).OutputResults("b");
    EXPECT_EQ(folder.Read("t2\\HvHPTimer.log"), "a: 0 s\n");
    EXPECT_EQ(folder.Read("HvHPTimer.log"), "b: 0 s\n");
}

TEST(HvPrecisionTimer_counter, PlatformsCounterMeasuresASleep)
{
    Timer timer("t", nullptr, Timer::Hv_Timer_Out(0), Timer::Milliseconds, true);
    timer.Start();
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    timer.Stop();
    EXPECT_GE(timer.ComputeResult(), 5);
    EXPECT_LT(timer.ComputeResult(), 10000);
}

TEST_F(HvPrecisionTimer_file, RefusedAllocationsLeaveATimerThatWorks)
{
    std::string const longName(1000, 'n');
    // The three blocks of the texts, the longer one of the file, and the stream.
    EXPECT_EQ(RefuseEachAllocation(
                  [&] { Timer("t", longName.c_str(), Timer::LogFile, Timer::Seconds, true); }),
              5);
    // Each run makes a timer of its own; renaming the file may fail at the longer block, with the
    // old file still open, or at the stream, with none.
    EXPECT_EQ(RefuseEachAllocation(
                  [] {
                      return std::make_unique<Timer>("t", "t.log", Timer::LogFile, Timer::Seconds,
                                                     true);
                  },
                  [&](auto& timer) { timer->SetOutputFile(longName.c_str()); },
                  [](auto& timer, bool) { timer->OutputResults("a"); }),
              2);
    EXPECT_EQ(Log(), "a: 0 s\n");
}
