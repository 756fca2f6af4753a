// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The text of SVG elements.

#include <tools/plot/SvgWriter.h>

#include <gtest/gtest.h>

TEST(SvgWriter, WritesElementsInOrder)
{
    SvgWriter svg(100, 50, ".a {}\n", "Title", "About");
    svg.Rect("a", 1, 2, 3, 4);
    svg.Line("b", {0, 0}, {1.236, -0.001});
    svg.Polyline("c", {{0, 1}, {2, 3}});
    svg.Circle("d", {5, 6}, 7);
    svg.Diamond("e", {10, 10}, 2, "tip");
    svg.Text("f", {1, 1}, "words");
    EXPECT_EQ(svg.Finish(),
              "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 100.00 50.00\" "
              "width=\"100.00\" height=\"50.00\" role=\"img\">\n"
              "<title>Title</title>\n<desc>About</desc>\n<style>\n.a {}\n</style>\n"
              "<rect class=\"a\" x=\"1.00\" y=\"2.00\" width=\"3.00\" height=\"4.00\"/>\n"
              "<line class=\"b\" x1=\"0.00\" y1=\"0.00\" x2=\"1.24\" y2=\"0.00\"/>\n"
              "<polyline class=\"c\" points=\"0.00,1.00 2.00,3.00\"/>\n"
              "<circle class=\"d\" cx=\"5.00\" cy=\"6.00\" r=\"7.00\"/>\n"
              "<polygon class=\"e\" points=\"10.00,8.00 12.00,10.00 10.00,12.00 8.00,10.00\">"
              "<title>tip</title></polygon>\n"
              "<text class=\"f\" x=\"1.00\" y=\"1.00\">words</text>\n"
              "</svg>\n");
}

TEST(SvgWriter, EscapesWhatMeansSomethingInXml)
{
    EXPECT_EQ(SvgWriter_Escape("a<b> & \"c\"\x01\x1b"), "a&lt;b&gt; &amp; &quot;c&quot;");
    SvgWriter svg(1, 1, "", "</title><script>", "&");
    svg.Text("", {0, 0}, "<g>");
    std::string const text = svg.Finish();
    EXPECT_EQ(text.find("<script>"), std::string::npos);
    EXPECT_EQ(text.find("<g>"), std::string::npos);
}
