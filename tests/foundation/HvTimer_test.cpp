// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The stopwatch over the time of day, under a clock, an environment and a folder of the test.

#include <hv/foundation/HvTimer.h>

#include "../support/allocation_failure.h"
#include "../support/timer_world.h"

#include <locale>

namespace {

class HvTimer_log : public testing::Test {
protected:
    std::string Log() const { return folder.Read("t.log").value_or("no file"); }

    FakeClocks clocks;
    CurrentFolder folder;
};

class HvTimer_file : public testing::Test {
protected:
    // A folder that the environment names need not exist where backslashes are no separators.
    FakeClocks clocks;
    CurrentFolder folder;
};

// A locale that groups digits and writes a decimal comma, as the host's may.
struct CommaNumbers : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

}  // namespace

TEST_F(HvTimer_log, LineTellsNameAndMilliseconds)
{
    HvTimer timer("fill", "t.log");
    clocks.SetTimeOfDay(50, 100);
    timer.Start();
    clocks.SetTimeOfDay(53, 345);
    timer.Print();
    EXPECT_EQ(Log(), "fill: 3245 milli s\n");
}

TEST_F(HvTimer_log, BorrowsAcrossASecondsChange)
{
    HvTimer timer("fill", "t.log");
    clocks.SetTimeOfDay(50, 900);
    timer.Start();
    clocks.SetTimeOfDay(51, 100);
    timer.Print();
    EXPECT_EQ(Log(), "fill: 200 milli s\n");
}

TEST_F(HvTimer_log, SumsStretches)
{
    HvTimer timer("fill", "t.log");
    // 300 ms, 700 ms over a second's change, 999 ms: milliseconds of the sum pass a second and fall
    // again.
    int const stretches[3][4] = {{1, 100, 1, 400}, {2, 800, 3, 500}, {7, 0, 7, 999}};
    for (auto const& stretch : stretches) {
        clocks.SetTimeOfDay(stretch[0], stretch[1]);
        timer.Start();
        clocks.SetTimeOfDay(stretch[2], stretch[3]);
        timer.Stop();
    }
    clocks.SetTimeOfDay(100, 0);
    timer.Print();
    EXPECT_EQ(Log(), "fill: 1999 milli s\n");
}

TEST_F(HvTimer_log, SecondPrintRepeatsTheSum)
{
    HvTimer timer("fill", "t.log");
    clocks.SetTimeOfDay(50, 0);
    timer.Start();
    clocks.SetTimeOfDay(50, 20);
    timer.Print();
    clocks.SetTimeOfDay(60, 0);
    timer.Print();
    EXPECT_EQ(Log(), "fill: 20 milli s\nfill: 20 milli s\n");
}

TEST_F(HvTimer_log, NewTimerStandsStill)
{
    HvTimer timer("fill", "t.log");
    clocks.SetTimeOfDay(2000, 0);
    timer.Stop();
    timer.Print();
    EXPECT_EQ(Log(), "fill: 0 milli s\n");
}

TEST_F(HvTimer_log, SecondStartKeepsTheStretchThatRuns)
{
    HvTimer timer("fill", "t.log");
    clocks.SetTimeOfDay(50, 0);
    timer.Start();
    clocks.SetTimeOfDay(50, 30);
    timer.Start();
    clocks.SetTimeOfDay(50, 50);
    timer.Print();
    EXPECT_EQ(Log(), "fill: 50 milli s\n");
}

TEST_F(HvTimer_log, ClockThatIsSetBackGivesANegativeSum)
{
    HvTimer timer("fill", "t.log");
    clocks.SetTimeOfDay(50, 0);
    timer.Start();
    clocks.SetTimeOfDay(48, 500);
    timer.Print();
    EXPECT_EQ(Log(), "fill: -1500 milli s\n");
}

TEST_F(HvTimer_log, LongSumsHaveSixSignificantDigits)
{
    HvTimer timer("night", "t.log");
    clocks.SetTimeOfDay(0, 0);
    timer.Start();
    clocks.SetTimeOfDay(1234, 567);
    timer.Print();
    EXPECT_EQ(Log(), "night: 1.23457e+06 milli s\n");
}

TEST_F(HvTimer_log, ReadsTheSameInEveryLocale)
{
    std::locale const former =
        std::locale::global(std::locale(std::locale::classic(), new CommaNumbers));
    HvTimer timer("fill", "t.log");
    clocks.SetTimeOfDay(0, 0);
    timer.Start();
    clocks.SetTimeOfDay(12, 345);
    timer.Print();
    std::locale::global(former);
    EXPECT_EQ(Log(), "fill: 12345 milli s\n");
}

TEST_F(HvTimer_log, AppendsToWhatIsThere)
{
    std::ofstream("t.log") << "before\n";
    HvTimer("a", "t.log").Print();
    HvTimer("b", "t.log").Print();
    EXPECT_EQ(Log(), "before\na: 0 milli s\nb: 0 milli s\n");
}

TEST_F(HvTimer_log, NameIsCutAt255Bytes)
{
    HvTimer(std::string(255, 'x').c_str(), "t.log").Print();
    HvTimer(std::string(256, 'y').c_str(), "t.log").Print();
    HvTimer(std::string(100000, 'z').c_str(), "t.log").Print();
    EXPECT_EQ(Log(), std::string(255, 'x') + ": 0 milli s\n" + std::string(255, 'y') +
                         ": 0 milli s\n" + std::string(255, 'z') + ": 0 milli s\n");
}

TEST_F(HvTimer_log, NameIsNoFormatAndNullIsEmpty)
{
    HvTimer("%s%n", "t.log").Print();
    HvTimer(nullptr, "t.log").Print();
    EXPECT_EQ(Log(), "%s%n: 0 milli s\n: 0 milli s\n");
}

TEST_F(HvTimer_log, FileThatCannotBeOpenedIsPassedOver)
{
    HvTimer timer("fill", "no such folder/t.log");
    timer.Start();
    timer.Print();
    HvTimer("fill", "").Print();
    EXPECT_EQ(folder.NumFiles(), 0u);
}

TEST_F(HvTimer_file, DefaultIsBesideTheFolderOfTemp)
{
    EnvironmentValue const temp("TEMP", "t1");
    EnvironmentValue const tmp("TMP", "t2");
    HvTimer("fill", nullptr).Print();
    EXPECT_EQ(folder.Read("t1\\HvTimer.log"), "fill: 0 milli s\n");
    EXPECT_EQ(folder.NumFiles(), 1u);
}

TEST_F(HvTimer_file, DefaultTakesTmpWhenTempIsNotSetOrEmpty)
{
    EnvironmentValue const tmp("TMP", "t2");
    for (char const* value : {static_cast<char const*>(nullptr), ""}) {
        EnvironmentValue const temp("TEMP", value);
        HvTimer("fill", nullptr).Print();
    }
    EXPECT_EQ(folder.Read("t2\\HvTimer.log"), "fill: 0 milli s\nfill: 0 milli s\n");
    EXPECT_EQ(folder.NumFiles(), 1u);
}

TEST_F(HvTimer_file, DefaultHasNoFolderWithoutVariables)
{
    EnvironmentValue const temp("TEMP", nullptr);
    for (char const* value : {static_cast<char const*>(nullptr), ""}) {
        EnvironmentValue const tmp("TMP", value);
        HvTimer("fill", nullptr).Print();
    }
    EXPECT_EQ(folder.Read("HvTimer.log"), "fill: 0 milli s\nfill: 0 milli s\n");
    EXPECT_EQ(folder.NumFiles(), 1u);
}

TEST_F(HvTimer_file, IsChosenWhenTheTimerIsMade)
{
    EnvironmentValue const temp("TEMP", "early");
    HvTimer timer("fill", nullptr);
    EnvironmentValue const later("TEMP", "late");
    timer.Print();
    EXPECT_TRUE(folder.Read("early\\HvTimer.log").has_value());
    EXPECT_EQ(folder.NumFiles(), 1u);
}

// Many more bytes than the block of a name, in the file given and in the environment's folder.
TEST_F(HvTimer_file, LongNamesAreKeptWhole)
{
    std::string longPath = folder.Path();
    for (int k = 0; k < 40; ++k) {
        longPath += "/inner_folder";
    }
    std::filesystem::create_directories(longPath);
    HvTimer("given", (longPath + "/t.log").c_str()).Print();
    EnvironmentValue const temp("TEMP", (longPath + "/logs").c_str());
    HvTimer("default", nullptr).Print();

    std::string const inner = longPath.substr(folder.Path().size() + 1);
    EXPECT_EQ(folder.Read(inner + "/t.log"), "given: 0 milli s\n");
    EXPECT_EQ(folder.Read(inner + "/logs\\HvTimer.log"), "default: 0 milli s\n");
    std::filesystem::remove_all(longPath);
}

TEST(HvTimer_clock, PlatformsTimeOfDayIsThatOfTheSystem)
{
    HvTimeOfDay const now = HvTimerClocks_Current().timeOfDay();
    EXPECT_GE(now.milliseconds, 0);
    EXPECT_LT(now.milliseconds, 1000);
    // The two readings may lie on the two sides of a second's change.
    EXPECT_LE(std::time(nullptr) - now.seconds, 1);
    EXPECT_GE(std::time(nullptr) - now.seconds, 0);
}

TEST(HvTimer_memory, RefusedAllocationsLeaveNothing)
{
    std::string const longName(1000, 'n');
    // The two blocks of the texts and the longer one of the file.
    EXPECT_EQ(RefuseEachAllocation([&] { HvTimer("fill", longName.c_str()); }), 3);
    EXPECT_EQ(RefuseEachAllocation([&] { delete new HvTimer("fill", "short"); }), 3);
}
