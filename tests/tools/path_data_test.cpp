// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <tools/svg/path_data.h>

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <vector>

namespace {

/// Writes what is drawn as absolute path data.
class Recorder : public HvBezierSink {
public:
    void Moveto(HvPoint2<float> const& p) override { Write('M', {p}); }
    void Lineto(HvPoint2<float> const& p) override { Write('L', {p}); }
    void Curveto(HvPoint2<float> const& c1, HvPoint2<float> const& c2,
                 HvPoint2<float> const& p) override
    {
        cubics.push_back({at_, c1, c2, p});
        Write('C', {c1, c2, p});
    }
    int Closeto() override
    {
        text_ << "Z";
        return 1;
    }
    std::string Text() const { return text_.str(); }

    std::vector<std::vector<HvPoint2<float>>> cubics;

private:
    void Write(char command, std::vector<HvPoint2<float>> const& points)
    {
        text_ << command;
        for (HvPoint2<float> const& p : points) {
            text_ << (&p == &points.front() ? "" : " ") << p.x << "," << p.y;
        }
        at_ = points.back();
    }

    std::ostringstream text_;
    HvPoint2<float> at_;
};

std::string Drawn(std::string const& data)
{
    Recorder recorder;
    EXPECT_EQ(PathData_Draw(data, recorder), "");
    return recorder.Text();
}

std::string Refused(std::string const& data, std::string const& drawn)
{
    Recorder recorder;
    std::string const fault = PathData_Draw(data, recorder);
    EXPECT_EQ(recorder.Text(), drawn);
    return fault;
}

}  // namespace

TEST(path_data, AbsoluteAndRelativeCommandsDrawTheSame)
{
    EXPECT_EQ(Drawn("M1,2L3,4H5V6C1,1 2,2 3,3"), "M1,2L3,4L5,4L5,6C1,1 2,2 3,3");
    EXPECT_EQ(Drawn("m1,2l2,2h2v2c-4-5-3-4-2-3"), "M1,2L3,4L5,4L5,6C1,1 2,2 3,3");
}

TEST(path_data, NumbersNeedNoSeparators)
{
    EXPECT_EQ(Drawn("M.5.25-1+2 1e1-2e-1"), "M0.5,0.25L-1,2L10,-0.2");
    EXPECT_EQ(Drawn(" \tM 1 , 2\n,3 4 "), "M1,2L3,4");
}

TEST(path_data, FurtherPointsOfAMoveAreLines)
{
    EXPECT_EQ(Drawn("M0 0 1 1 2 0"), "M0,0L1,1L2,0");
    EXPECT_EQ(Drawn("m1 1 1 1 1 -1"), "M1,1L2,2L3,1");
}

TEST(path_data, ClosingDrawsTheLineBackUnlessItIsThere)
{
    EXPECT_EQ(Drawn("M0 0H4V4z"), "M0,0L4,0L4,4L0,0Z");
    EXPECT_EQ(Drawn("M0 0H4V4L0 0z"), "M0,0L4,0L4,4L0,0Z");
    EXPECT_EQ(Drawn("M0 0H4V4zz"), "M0,0L4,0L4,4L0,0Z");
    // What follows starts where the closed one did.
    EXPECT_EQ(Drawn("M1 1h2v2zl5 5"), "M1,1L3,1L3,3L1,1ZM1,1L6,6");
    EXPECT_EQ(Drawn("M1 1h2v2zm5 5h1"), "M1,1L3,1L3,3L1,1ZM6,6L7,6");
}

TEST(path_data, SmoothCurvesMirrorTheLastHandle)
{
    EXPECT_EQ(Drawn("M0 0C0 2 2 2 2 0S4-2 4 0"), "M0,0C0,2 2,2 2,0C2,-2 4,-2 4,0");
    EXPECT_EQ(Drawn("M0 0L2 0S4-2 4 0"), "M0,0L2,0C2,0 4,-2 4,0");
    // Quadratics become the cubics of the same shape.
    EXPECT_EQ(Drawn("M0 0Q3 3 6 0"), "M0,0C2,2 4,2 6,0");
    EXPECT_EQ(Drawn("M0 0Q3 3 6 0T12 0"), "M0,0C2,2 4,2 6,0C8,-2 10,-2 12,0");
    EXPECT_EQ(Drawn("M0 0L6 0T12 0"), "M0,0L6,0C6,0 8,0 12,0");
}

TEST(path_data, FaultKeepsWhatStandsBeforeIt)
{
    EXPECT_EQ(Refused("M1 1L2 2L3", "M1,1L2,2"), "no path data at character 11");
    EXPECT_EQ(Refused("L2 2", ""), "no path data at character 2");
    EXPECT_EQ(Refused("M1 1X5", "M1,1"), "no path data at character 6");
    EXPECT_EQ(Refused("5 5", ""), "no path data at character 1");
    EXPECT_EQ(Refused("M0 0L1 1z 2 2", "M0,0L1,1L0,0Z"), "no path data at character 11");
    EXPECT_EQ(Refused("M0 0Linf 1", "M0,0"), "no path data at character 6");
    EXPECT_EQ(Refused("M0 0L1e99 1", "M0,0"), "no path data at character 6");
    EXPECT_EQ(Refused("M0 0A1 1 0 2 0 1 1", "M0,0"), "no path data at character 11");
    EXPECT_EQ(Drawn(""), "");
}

TEST(path_data, ArcLiesOnItsEllipseAndTurnsAsTold)
{
    // Centre (10, 20), radii 6 and 3, turned by 30 degrees; the ends at 0 and 90 degrees.
    double const tilt = 30.0 * 3.14159265358979323846 / 180.0;
    auto const at = [&](double angle) {
        double const x = 6 * std::cos(angle);
        double const y = 3 * std::sin(angle);
        return HvPoint2<double>(10 + x * std::cos(tilt) - y * std::sin(tilt),
                                20 + x * std::sin(tilt) + y * std::cos(tilt));
    };
    double const quarter = 3.14159265358979323846 / 2;
    struct Case {
        bool isLong;
        bool isRising;
        double from;
        double to;
        std::size_t cubics;
    };
    for (Case const& c : {Case{false, true, 0, quarter, 1}, Case{true, false, 0, quarter, 3},
                          Case{false, false, quarter, 0, 1}, Case{true, true, quarter, 0, 3}}) {
        Recorder recorder;
        recorder.Moveto(HvPoint2<float>(at(c.from)));
        PathData_DrawArc(at(c.from), at(c.to), {HvPoint2<double>(6, 3), 30}, c.isLong, c.isRising,
                         recorder);
        ASSERT_EQ(recorder.cubics.size(), c.cubics);
        double turn = 0;
        double last = c.from;
        for (auto const& cubic : recorder.cubics) {
            for (int i = 1; i <= 16; ++i) {
                double const t = i / 16.0;
                double const u = 1 - t;
                double const w[4] = {u * u * u, 3 * u * u * t, 3 * u * t * t, t * t * t};
                double x = -10;
                double y = -20;
                for (std::size_t k = 0; k < 4; ++k) {
                    x += w[k] * cubic[k].x;
                    y += w[k] * cubic[k].y;
                }
                double const along = (x * std::cos(tilt) + y * std::sin(tilt)) / 6;
                double const across = (-x * std::sin(tilt) + y * std::cos(tilt)) / 3;
                // A cubic of a quarter circle strays by 2.7e-4 of the radius.
                EXPECT_NEAR(std::hypot(along, across), 1, 3e-4);
                double const angle = std::atan2(across, along);
                turn += std::remainder(angle - last, 4 * quarter);
                last = angle;
            }
        }
        double const expected = (c.isLong ? 3 : 1) * quarter * (c.isRising ? 1 : -1);
        EXPECT_NEAR(turn, expected, 1e-5);
    }
}

TEST(path_data, ArcThatCannotReachGrowsAndOneWithoutRadiusIsALine)
{
    // Radius 1 over a distance of 10: half a circle of radius 5.
    Recorder grown;
    EXPECT_EQ(PathData_Draw("M0 0A1 1 0 0 1 10 0", grown), "");
    ASSERT_EQ(grown.cubics.size(), 2u);
    EXPECT_NEAR(grown.cubics[0][3].x, 5, 1e-6);
    EXPECT_NEAR(grown.cubics[0][3].y, -5, 1e-6);
    EXPECT_EQ(grown.cubics[1][3], HvPoint2<float>(10, 0));
    EXPECT_EQ(Drawn("M0 0A0 5 0 0 1 10 0"), "M0,0L10,0");
    EXPECT_EQ(Drawn("M0 0A5 5 0 0 1 0 0"), "M0,0");
    // Flags may stand without separators.
    Recorder close;
    EXPECT_EQ(PathData_Draw("M2 0a2 2 0 01-2 2", close), "");
    EXPECT_EQ(close.cubics.at(0)[3], HvPoint2<float>(0, 2));
}
