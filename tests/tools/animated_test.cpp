// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Values that move: numbers, places, colours, transforms and outlines.

#include <tools/play/scene/AnimatedOutline.h>
#include <tools/play/scene/animated.h>

#include <gtest/gtest.h>

#include <string>

namespace {

/// An object whose properties are read.
class Owner {
public:
    explicit Owner(std::string const& text)
        : json_(Json_Parse(text)), reader_(json_, "test", leftOut_)
    {
    }

    PropertyReader const& operator*() const { return reader_; }

private:
    Json json_;
    LeftOut leftOut_;
    PropertyReader reader_;
};

AnimatedNumber Number(std::string const& property)
{
    return AnimatedNumber((*Owner(R"({"p":)" + property + "}")).Number("p", 7));
}

AnimatedPlace Place(std::string const& property)
{
    return AnimatedPlace((*Owner(R"({"p":)" + property + "}")).Place("p", 7));
}

void ExpectAt(AnimatedPlace const& place, double frame, double x, double y, double slack = 1e-9)
{
    EXPECT_NEAR(place.At(frame).x, x, slack) << frame;
    EXPECT_NEAR(place.At(frame).y, y, slack) << frame;
}

}  // namespace

TEST(AnimatedNumber, ConstantsHoldsAndLines)
{
    EXPECT_EQ(Number("3").At(5), 3.0);
    EXPECT_EQ(Number(R"({"k":3})").At(5), 3.0);
    EXPECT_EQ(AnimatedNumber((*Owner("{}")).Number("p", 7)).At(5), 7.0);
    AnimatedNumber const line = Number(R"({"k":[{"t":0,"s":[10]},{"t":10,"s":[20]}]})");
    EXPECT_DOUBLE_EQ(line.At(-5), 10.0);
    EXPECT_DOUBLE_EQ(line.At(2.5), 12.5);
    EXPECT_DOUBLE_EQ(line.At(50), 20.0);
}

TEST(AnimatedNumber, HeldIntegersStepFromOneToTheNext)
{
    AnimatedNumber const number =
        Number(R"({"k":[{"t":2,"s":[3],"h":1},{"t":5,"s":[8],"h":1},{"t":9,"s":[4],"h":1}]})");
    EXPECT_EQ(number.At(0), 3.0);
    EXPECT_EQ(number.At(4.9), 3.0);
    EXPECT_EQ(number.At(5), 8.0);
    EXPECT_EQ(number.At(8.9), 8.0);
    EXPECT_EQ(number.At(90), 4.0);
}

TEST(AnimatedNumber, AnEasingIsTheCurveOfItsHandles)
{
    AnimatedNumber const number = Number(
        R"({"k":[{"t":0,"s":[0],"i":{"x":[0.5],"y":[1]},"o":{"x":[0.5],"y":[0]}},{"t":10,"s":[4]}]})");
    EXPECT_NEAR(number.At(5), 2.0, 1e-9) << "symmetric";
    // Time 3 s^2 t / 2 + 3 s t^2 / 2 + t^3 and value 3 s t^2 + t^3 at t = 1/4, s = 3/4.
    double const time = (1.5 * 9.0 / 64 + 1.5 * 3.0 / 64 + 1.0 / 64) * 10;
    double const value = (3 * 3.0 / 64 + 1.0 / 64) * 4;
    EXPECT_NEAR(number.At(time), value, 1e-9);
}

TEST(AnimatedPlace, CoordinatesMayBeOneOrTwoProperties)
{
    ExpectAt(Place(R"({"k":[1,2,3]})"), 0, 1, 2);
    ExpectAt(Place(R"({"s":true,"x":{"k":1},"y":{"k":[{"t":0,"s":[0]},{"t":2,"s":[6]}]}})"), 1, 1,
             3);
}

TEST(AnimatedPlace, AHandledWayIsTravelledByItsLength)
{
    // A straight way whose handles lie on it, unevenly: half the time is half the length.
    AnimatedPlace const place =
        Place(R"({"k":[{"t":0,"s":[0,0],"to":[1,0],"ti":[-90,0]},{"t":10,"s":[100,0]}]})");
    ExpectAt(place, 0, 0, 0);
    ExpectAt(place, 5, 50, 0, 0.01);
    ExpectAt(place, 7.5, 75, 0, 0.01);
    ExpectAt(place, 10, 100, 0);
    ExpectAt(place, 99, 100, 0);
}

TEST(AnimatedPlace, AnEasingThatGoesTooFarRestsAtTheEndOfACurveAndGoesOnALine)
{
    std::string const easing = R"("i":{"x":0.5,"y":2},"o":{"x":0.5,"y":0})";
    std::string const curve = R"({"k":[{"t":0,"s":[0,0],"to":[0,30],"ti":[-30,0],)" + easing +
                              R"(},{"t":10,"s":[60,60]},{"t":20,"s":[60,0]}]})";
    // At t = 3/4 of the easing's parameter the value is 3 s t^2 2 + t^3 = 1.2656.
    double const time = (1.5 * 3.0 / 64 * 3 / 3 + 1.5 * 9.0 / 64 + 27.0 / 64) * 10;
    ExpectAt(Place(curve), time, 60, 60, 1e-3);
    std::string const line =
        R"({"k":[{"t":0,"s":[0,0],"to":[0,0],"ti":[0,0],)" + easing + R"(},{"t":10,"s":[64,0]}]})";
    ExpectAt(Place(line), time, 64 * (3.0 * 1 / 4 * 9 / 16 * 2 + 27.0 / 64), 0, 1e-6);
}

TEST(AnimatedPlace, TheDirectionIsThatOfTheMove)
{
    AnimatedPlace const place = Place(R"({"k":[{"t":0,"s":[0,0]},{"t":10,"s":[5,5]}]})");
    EXPECT_NEAR(place.DirectionAt(5), 45.0, 1e-6);
    EXPECT_EQ(Place(R"({"k":[5,5]})").DirectionAt(5), 0.0);
}

TEST(AnimatedColour, PartsRunToOneOrTo255)
{
    Owner const owner(R"({"a":{"k":[0.2,0.4,1,1]},"b":{"k":[51,102,255,255]}})");
    for (char const* key : {"a", "b"}) {
        SceneColour const colour = AnimatedColour((*owner).Numbers(key, 3, 0)).At(0);
        EXPECT_NEAR(colour.red, 0.2, 1e-12) << key;
        EXPECT_NEAR(colour.green, 0.4, 1e-12) << key;
        EXPECT_NEAR(colour.blue, 1.0, 1e-12) << key;
    }
}

TEST(AnimatedTransform, ScalesThenTurnsThenMoves)
{
    Owner const owner(
        R"({"a":{"k":[1,1]},"p":{"k":[10,20]},"s":{"k":[200,300]},"r":{"k":90},"o":{"k":40}})");
    AnimatedTransform const transform(*owner);
    // (2, 1) is (1, 0) from the anchor, scaled (2, 0), turned clockwise on the screen (0, 2).
    HvPoint2<double> const p = transform.At(0).Map(HvPoint2<double>(2, 1));
    EXPECT_NEAR(p.x, 10, 1e-12);
    EXPECT_NEAR(p.y, 22, 1e-12);
    EXPECT_DOUBLE_EQ(transform.OpacityAt(0), 0.4);
}

TEST(AnimatedTransform, SkewLeansAlongItsAxis)
{
    Owner const level(R"({"sk":{"k":45},"sa":{"k":0}})");
    HvPoint2<double> const up = AnimatedTransform(*level).At(0).Map(HvPoint2<double>(0, -1));
    EXPECT_NEAR(up.x, 1, 1e-12) << "what is above goes to the right";
    EXPECT_NEAR(up.y, -1, 1e-12);
    Owner const upright(R"({"sk":{"k":45},"sa":{"k":90}})");
    HvPoint2<double> const right = AnimatedTransform(*upright).At(0).Map(HvPoint2<double>(1, 0));
    EXPECT_NEAR(right.x, 1, 1e-12);
    EXPECT_NEAR(right.y, 1, 1e-12);
}

TEST(AnimatedTransform, AStepRepeatedTurnsAboutItsAnchor)
{
    Owner const owner(R"({"a":{"k":[5,0]},"p":{"k":[1,0]},"s":{"k":[50,50]},"r":{"k":90}})");
    HvTransfo4 const twice = AnimatedTransform(*owner).Repeated(0, 2);
    HvPoint2<double> const anchor = twice.Map(HvPoint2<double>(5, 0));
    EXPECT_NEAR(anchor.x, 7, 1e-12);
    HvPoint2<double> const p = twice.Map(HvPoint2<double>(9, 0));
    EXPECT_NEAR(p.x, 6, 1e-12) << "4 from the anchor, turned by half a turn, a quarter as long";
    EXPECT_NE(AnimatedTransform(*owner).Repeated(0, 0).IsIdentity(), 0);
}

TEST(AnimatedOutline, BlendsPointByPoint)
{
    auto const square = [](std::string const& side) {
        return R"([{"c":true,"v":[[0,0],[)" + side + ",0],[0," + side +
               R"(]],"i":[[0,0],[0,0],[0,0]],"o":[[0,0],[0,0],[0,0]]}])";
    };
    Owner const owner(R"({"ks":{"k":[{"t":0,"s":)" + square("2") + R"(},{"t":10,"s":)" +
                      square("6") + R"(},{"t":20}]}})");
    AnimatedOutline const outline((*owner).Outline("ks"));
    EXPECT_EQ(outline.At(-1).GetPoint(3).x, 2.0F);
    EXPECT_EQ(outline.At(2.5).GetPoint(3).x, 3.0F);
    EXPECT_EQ(outline.At(10).GetPoint(3).x, 6.0F);
    EXPECT_EQ(outline.At(15).GetPoint(3).x, 6.0F) << "a key without a value keeps the one before";
    EXPECT_NE(outline.At(2.5).IsSubpathClosed(0), 0);
}

TEST(AnimatedOutline, OutlinesOfDifferentBuildMeetAtSharesOfTheirLengths)
{
    // A line of two nodes becomes one of three, twice as long and a unit lower. The morph is fitted
    // to a 512th of the longer one.
    Owner const owner(
        R"({"ks":{"k":[{"t":0,"s":[{"v":[[0,0],[8,0]],"i":[[0,0],[0,0]],"o":[[0,0],[0,0]]}]},)"
        R"({"t":10,"s":[{"v":[[0,1],[2,1],[16,1]],"i":[[0,0],[0,0],[0,0]],)"
        R"("o":[[0,0],[0,0],[0,0]]}]}]}})");
    AnimatedOutline const outline((*owner).Outline("ks"));
    EXPECT_EQ(outline.At(0).NumSegments(), 1u) << "at a key the outline is its own";
    EXPECT_EQ(outline.At(10).NumSegments(), 2u);
    HvPath2f const blend = outline.At(5);
    constexpr float kFit = 16.0F / 512.0F;
    HvExtent2<float> extent;
    blend.GetTightExtent(extent);
    EXPECT_NEAR(extent.min.x, 0.0F, kFit);
    EXPECT_NEAR(extent.max.x, 12.0F, kFit);
    EXPECT_NEAR(extent.min.y, 0.5F, kFit);
    EXPECT_NEAR(extent.max.y, 0.5F, kFit);
}
