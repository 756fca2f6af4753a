// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// When the progress bar shows, and that it leaves nothing behind.

#include <tools/ProgressBar.h>

#include <gtest/gtest.h>

#include <sstream>

namespace {

constexpr auto kAtOnce = std::chrono::seconds(0);

}  // namespace

TEST(ProgressBar, ShowsTheShareAndErasesItself)
{
    std::ostringstream out;
    {
        ProgressBar bar(out, true, "work", 4, kAtOnce);
        bar.Advance(2);
        EXPECT_EQ(out.str(), "\rwork [################................] 50 %");
    }
    std::string const erasing = "\r\x1b[K";
    ASSERT_GE(out.str().size(), erasing.size());
    EXPECT_EQ(out.str().substr(out.str().size() - erasing.size()), erasing);
}

TEST(ProgressBar, StaysSilentWhereNobodyWatches)
{
    std::ostringstream out;
    {
        ProgressBar bar(out, false, "work", 4, kAtOnce);
        bar.Advance(4);
    }
    EXPECT_EQ(out.str(), "");
}

TEST(ProgressBar, StaysSilentWhileWorkIsShort)
{
    std::ostringstream out;
    {
        ProgressBar bar(out, true, "work", 4, std::chrono::hours(1));
        bar.Advance(4);
    }
    EXPECT_EQ(out.str(), "");
}

TEST(ProgressBar, StopsAtTheWhole)
{
    std::ostringstream out;
    ProgressBar bar(out, true, "work", 2, kAtOnce);
    bar.Advance(50);
    EXPECT_EQ(out.str(), "\rwork [################################] 100 %");
    ProgressBar empty(out, true, "none", 0, kAtOnce);
    empty.Advance(0);
    EXPECT_NE(out.str().find("none [################################] 100 %"), std::string::npos);
}
