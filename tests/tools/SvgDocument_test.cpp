// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/foundation/HvExtent2.h>
#include <tools/ToolError.h>
#include <tools/svg/SvgDocument.h>
#include <tools/svg/svg_painter.h>

#include <gtest/gtest.h>

#include <string>

namespace {

SvgDocument Document(std::string const& inside,
                     std::string const& attributes = "viewBox=\"0 0 8 8\"")
{
    return SvgDocument_Parse("<svg " + attributes + ">" + inside + "</svg>");
}

HvExtent2<float> ExtentOf(SvgElement const& element)
{
    HvExtent2<float> extent;
    element.outline.GetTightExtent(extent);
    return extent;
}

/// The pixel of a document of 8 x 8 units painted on white, as 0xRRGGBB.
int PixelOf(SvgDocument const& document, int x, int y, SvgPaintOptions const& options = {})
{
    Canvas canvas(8, 8);
    canvas.Fill({255, 255, 255, 255});
    SvgPainter_Paint(document, options, canvas, [] {});
    std::uint8_t const* const pixel = canvas.Pixel(x, y);
    return pixel[0] << 16 | pixel[1] << 8 | pixel[2];
}

}  // namespace

TEST(SvgDocument, SizeComesFromAttributesOrTheBox)
{
    SvgDocument const boxed = Document("", "viewBox=\"10 20 30 40\"");
    EXPECT_EQ(boxed.width, 30);
    EXPECT_EQ(boxed.height, 40);
    EXPECT_EQ(boxed.transform.Map(HvPoint2<double>(10, 20)), HvPoint2<double>(0, 0));
    // The box is scaled evenly and put into the middle.
    SvgDocument const wide = Document("", "viewBox=\"0 0 10 10\" width=\"1in\" height=\"20\"");
    EXPECT_EQ(wide.width, 96);
    EXPECT_EQ(wide.transform.Map(HvPoint2<double>(0, 0)), HvPoint2<double>(38, 0));
    EXPECT_EQ(wide.transform.Map(HvPoint2<double>(10, 10)), HvPoint2<double>(58, 20));
    SvgDocument const none = Document("", "width=\"100%\" height=\"0\"");
    EXPECT_EQ(none.width, 100);
    EXPECT_EQ(none.height, 100);
}

TEST(SvgDocument, EveryBasicShapeHasItsOutline)
{
    SvgDocument const document =
        Document("<path d='M1 2H5V6Z'/><rect x='1' y='2' width='4' height='4'/>"
                 "<rect x='1' y='2' width='4' height='4' rx='1'/><circle cx='3' cy='4' r='2'/>"
                 "<ellipse cx='3' cy='4' rx='2' ry='2'/><line x1='1' y1='2' x2='5' y2='6'/>"
                 "<polyline points='1,2 5,2 5,6'/><polygon points='1 2 5 2 5 6'/>");
    ASSERT_EQ(document.elements.size(), 8u);
    EXPECT_TRUE(document.notes.empty());
    for (SvgElement const& element : document.elements) {
        HvExtent2<float> const extent = ExtentOf(element);
        EXPECT_EQ(extent.min, HvPoint2<float>(1, 2));
        EXPECT_EQ(extent.max, HvPoint2<float>(5, 6));
    }
    for (std::size_t const closed : {0u, 1u, 2u, 3u, 4u, 7u}) {
        EXPECT_EQ(document.elements[closed].outline.IsSubpathClosed(0), 1) << closed;
    }
    for (std::size_t const open : {5u, 6u}) {
        EXPECT_EQ(document.elements[open].outline.IsSubpathClosed(0), 0) << open;
    }
    EXPECT_EQ(SvgPainter_NumShapes(document), 8u);
}

TEST(SvgDocument, StylesAreInheritedAndTheStyleAttributeWins)
{
    SvgDocument const document = Document(
        "<g fill='red' stroke='blue' stroke-width='3' stroke-linecap='round' fill-rule='evenodd'>"
        "<path d='M0 0' fill='lime' style=' fill : #010203; stroke-linejoin:bevel'/></g>");
    SvgStyle const& style = document.elements.at(0).children.at(0).style;
    EXPECT_EQ(style.fill.colour.blue, 3);
    EXPECT_TRUE(style.stroke.isPainted);
    EXPECT_EQ(style.stroke.colour.blue, 255);
    EXPECT_EQ(style.strokeWidth, 3);
    EXPECT_EQ(style.capStyle, 0);
    EXPECT_EQ(style.joinStyle, 0);
    EXPECT_EQ(style.fillRule, 0);
}

TEST(SvgDocument, WhatIsNotSupportedIsNotedOnce)
{
    SvgDocument const document = Document(
        "<text/><text/><title/><defs><path/></defs><path d='M0 0' fill='url(#a)' mask='url(#b)'/>"
        "<path d='M0 0L'/><rect width='x'/><g display='none'><text/></g>");
    std::string notes;
    for (SvgNote const& note : document.notes) {
        notes += note.text + "*" + std::to_string(note.count) + "\n";
    }
    EXPECT_EQ(notes, "<text> is not supported*2\n"
                     "fill \"url(#a)\" is not supported*1\n"
                     "mask is not supported*1\n"
                     "no path data at character 6*1\n"
                     "an attribute of a rect is no number*1\n");
}

TEST(SvgDocument, TextThatIsNoDocumentIsRefused)
{
    EXPECT_THROW(SvgDocument_Parse(""), ToolError);
    EXPECT_THROW(SvgDocument_Parse("<svg"), ToolError);
    EXPECT_THROW(SvgDocument_Parse("<html/>"), ToolError);
    std::string deep;
    for (int i = 0; i < 500; ++i) {
        deep += "<g>";
    }
    for (int i = 0; i < 500; ++i) {
        deep += "</g>";
    }
    EXPECT_THROW(Document(deep), ToolError);
}

TEST(svg_painter, FillsStrokesAndGroupsArePainted)
{
    EXPECT_EQ(PixelOf(Document("<rect x='2' y='2' width='4' height='4' fill='red'/>"), 3, 3),
              0xFF0000);
    EXPECT_EQ(PixelOf(Document("<rect x='2' y='2' width='4' height='4' fill='red'/>"), 1, 1),
              0xFFFFFF);
    // An open path is filled as if it were closed, and stroked as it is.
    SvgDocument const open =
        Document("<path d='M1 1H7V7H1' fill='lime' stroke='blue' stroke-width='2'/>");
    EXPECT_EQ(PixelOf(open, 3, 4), 0x00FF00);
    EXPECT_EQ(PixelOf(open, 1, 4), 0x00FF00) << "no stroke along the gap";
    EXPECT_EQ(PixelOf(open, 4, 0), 0x0000FF);
    // Two shapes in a group of half opacity: the upper hides the lower.
    SvgDocument const group = Document("<g opacity='.5'><rect width='8' height='8' fill='red'/>"
                                       "<rect width='8' height='8' fill='blue'/></g>");
    EXPECT_EQ(PixelOf(group, 4, 4), 0x7F7FFF);
    EXPECT_EQ(
        PixelOf(Document("<g transform='translate(4)'><rect width='2' height='2'/></g>"), 5, 1),
        0x000000);
}

TEST(svg_painter, OptionsChangeHowShapesAreDrawn)
{
    SvgDocument const square = Document("<rect x='2' y='2' width='4' height='4'/>");
    SvgPaintOptions stroke;
    stroke.strokeWidth = 1.0;
    EXPECT_EQ(PixelOf(square, 4, 4, stroke), 0xFFFFFF) << "stroked, not filled";
    EXPECT_NE(PixelOf(square, 4, 2, stroke), 0xFFFFFF);
    SvgPaintOptions soft;
    soft.softRadius = 2.0;
    int const beside = PixelOf(square, 1, 4, soft);
    EXPECT_NE(beside, 0xFFFFFF);
    EXPECT_NE(beside, 0x000000);
    SvgPaintOptions large;
    large.scale = 2.0;
    EXPECT_EQ(PixelOf(square, 2, 2, large), 0xFFFFFF);
    EXPECT_EQ(PixelOf(square, 5, 5, large), 0x000000);
}

TEST(svg_painter, RoundCornersAreRoundHoweverSharp)
{
    // A line out and back: only a disc at its turn covers beyond it.
    SvgDocument const back =
        Document("<path d='M1 4H5L1 4.01' fill='none' stroke='black' stroke-width='4' "
                 "stroke-linejoin='round'/>");
    EXPECT_EQ(PixelOf(back, 5, 4), 0x000000);
    EXPECT_EQ(PixelOf(back, 7, 1), 0xFFFFFF);
}

TEST(svg_painter, EndsThatMeetHaveRoundCapsUnlessTheyAreClosed)
{
    // Both ends at (4, 4), the outline to the left of them: only a cap covers the pixel at their
    // right.
    std::string const out = "<path d='M4 4L1 3.5V4.5L4 4";
    std::string const bevel =
        "fill='none' stroke='black' stroke-width='4' stroke-linejoin='bevel' ";
    std::string const round = "' " + bevel + "stroke-linecap='round'/>";
    std::string const butt = "' " + bevel + "/>";
    EXPECT_EQ(PixelOf(Document(out + round), 4, 4), 0x000000);
    EXPECT_NE(PixelOf(Document(out + butt), 4, 4), 0x000000);
    EXPECT_NE(PixelOf(Document(out + "Z" + round), 4, 4), 0x000000);
    // A line without a length is a dot.
    EXPECT_EQ(PixelOf(Document("<path d='M4 4h0" + round), 4, 4), 0x000000);
    EXPECT_EQ(PixelOf(Document("<path d='M4 4h0" + butt), 4, 4), 0xFFFFFF);
}
