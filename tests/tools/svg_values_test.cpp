// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <tools/svg/svg_values.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

/// A colour as 0xRRGGBB, or -1.
int Colour(std::string const& text)
{
    SvgColour colour;
    return SvgValue_ReadColour(text, colour) ? colour.red << 16 | colour.green << 8 | colour.blue
                                             : -1;
}

double Length(std::string const& text)
{
    double length = -1;
    return SvgValue_ReadLength(text, length) ? length : std::nan("");
}

HvPoint2<double> Mapped(std::string const& text, HvPoint2<double> const& p)
{
    HvTransfo4 transform;
    EXPECT_TRUE(SvgValue_ReadTransform(text, transform)) << text;
    HvPoint2<double> image = p;
    transform.Map(p, image);
    return image;
}

}  // namespace

TEST(svg_values, ColoursInEveryForm)
{
    EXPECT_EQ(Colour("#1aF"), 0x11AAFF);
    EXPECT_EQ(Colour(" #102030 "), 0x102030);
    EXPECT_EQ(Colour("rgb(1, 2,300)"), 0x0102FF);
    EXPECT_EQ(Colour("rgb(0%,100%,50%)"), 0x00FF80);
    EXPECT_EQ(Colour("Rebeccapurple"), -1) << "no name of SVG 1.1";
    EXPECT_EQ(Colour("Tomato"), 0xFF6347);
    for (char const* const wrong : {"", "#12", "#12345g", "rgb(1,2)", "rgb(1,2,3)x", "none"}) {
        EXPECT_EQ(Colour(wrong), -1) << wrong;
    }
}

TEST(svg_values, LengthsInTheirUnits)
{
    EXPECT_EQ(Length("12"), 12);
    EXPECT_EQ(Length(" 1.5px "), 1.5);
    EXPECT_EQ(Length("1in"), 96);
    EXPECT_EQ(Length("72pt"), 96);
    EXPECT_EQ(Length("2.54cm"), 96);
    EXPECT_TRUE(std::isnan(Length("50%")));
    EXPECT_TRUE(std::isnan(Length("1 2")));
    EXPECT_TRUE(std::isnan(Length("px")));
}

TEST(svg_values, SharesAreCutToTheirRange)
{
    double share = -1;
    EXPECT_TRUE(SvgValue_ReadShare(".25", share));
    EXPECT_EQ(share, 0.25);
    EXPECT_TRUE(SvgValue_ReadShare("75%", share));
    EXPECT_EQ(share, 0.75);
    EXPECT_TRUE(SvgValue_ReadShare("7", share));
    EXPECT_EQ(share, 1);
    EXPECT_TRUE(SvgValue_ReadShare("-1", share));
    EXPECT_EQ(share, 0);
    EXPECT_FALSE(SvgValue_ReadShare("1px", share));
}

TEST(svg_values, TransformsApplyFromTheRight)
{
    EXPECT_EQ(Mapped("", HvPoint2<double>(1, 2)), HvPoint2<double>(1, 2));
    EXPECT_EQ(Mapped("translate(10) scale(2, 3)", HvPoint2<double>(1, 2)), HvPoint2<double>(12, 6));
    EXPECT_EQ(Mapped("scale(2),translate(10,1)", HvPoint2<double>(1, 2)), HvPoint2<double>(22, 6));
    EXPECT_EQ(Mapped("matrix(1 2 3 4 5 6)", HvPoint2<double>(1, 2)), HvPoint2<double>(12, 16));
    HvPoint2<double> const turned = Mapped("rotate(90 1 1)", HvPoint2<double>(2, 1));
    EXPECT_NEAR(turned.x, 1, 1e-14);
    EXPECT_NEAR(turned.y, 2, 1e-14);
    HvPoint2<double> const skewed = Mapped("skewX(45)", HvPoint2<double>(1, 2));
    EXPECT_NEAR(skewed.x, 3, 1e-14);
    EXPECT_EQ(skewed.y, 2);
    EXPECT_NEAR(Mapped("skewY(45)", HvPoint2<double>(1, 2)).y, 3, 1e-14);
}

TEST(svg_values, WrongTransformLeavesTheOneThatWas)
{
    for (char const* const wrong : {"scale", "scale(", "scale(1", "scale()", "rotate(1 2)",
                                    "matrix(1 2 3)", "turn(1)", "scale(1) x", "scale(1))"}) {
        HvTransfo4 transform;
        transform.Translate(1, 2, 3);
        HvTransfo4 const before = transform;
        EXPECT_FALSE(SvgValue_ReadTransform(wrong, transform)) << wrong;
        EXPECT_EQ(transform.GetMatrixElement(0, 3), before.GetMatrixElement(0, 3));
        EXPECT_EQ(transform.GetMatrixElement(0, 0), 1);
    }
}
