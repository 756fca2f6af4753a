// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What a file of archives holds: shapes, and curves between them.

#include <tools/curve/archive_report.h>

#include <hv/fcurve/HvRawFCurve.h>
#include <hv/fcurve/HvStdFCurve.h>
#include <hv/pathbuild/HvPath2fProp1d.h>
#include <hv/shape/HvOval2f.h>
#include <hv/shape/HvRect2f.h>
#include <tools/ToolError.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

using Point = HvPoint2<float>;

template <class Object>
std::string Archive(Object const& object)
{
    std::string bytes(object.GetBufferSize(), '\0');
    object.WriteToBuffer(bytes.data());
    return bytes;
}

HvPath2fProp1d Stroke()
{
    HvPath2fProp1d path(0u);
    path.Moveto({1, 2});
    path.Lineto({5, 2});
    path.Moveto({0, 0});
    path.Lineto({1, 0});
    path.Lineto({0, 0});
    path.Closeto();
    path.SetPropCurve(0, HvRawFCurve(0, 1, 4, 2.5));
    return path;
}

std::string Report(std::string const& bytes, bool brief)
{
    std::ostringstream out;
    ArchiveReport_Write(out, "file", bytes, brief);
    return out.str();
}

}  // namespace

TEST(archive_report, TellsEachKindOfShape)
{
    HvPath2fProp1d const stroke = Stroke();
    std::string const bytes = Archive(HvPath2f(stroke)) +
                              Archive(HvRect2f(Point(0, 0), Point(2, 1))) +
                              Archive(HvOval2f(Point(0, 0), Point(2, 1))) + Archive(stroke);
    EXPECT_EQ(Report(bytes, true),
              "shape 0 at byte 0: path, 61 bytes, 5 points, 2 subpaths\n"
              "shape 1 at byte 61: rectangle, 32 bytes\n"
              "shape 2 at byte 93: oval, 32 bytes\n"
              "shape 3 at byte 125: path with a property, 173 bytes, 5 points, "
              "2 subpaths\n"
              "file: 4 shapes, 298 bytes\n");
}

TEST(archive_report, TellsTheSubpathsOfAPath)
{
    EXPECT_EQ(Report(Archive(Stroke()), false),
              "shape 0 at byte 0: path with a property, 173 bytes, 5 points, 2 subpaths\n"
              "  subpath  first  points  x  y  ends    property\n"
              "        0      0       2  1  2  open    2 keys to 4\n"
              "        1      2       3  0  0  closed  -\n"
              "file: 1 shape, 173 bytes\n");
}

TEST(archive_report, TellsTheControlPointsOfARectangle)
{
    std::string const report = Report(Archive(HvRect2f(Point(0, 0), Point(2, 1))), false);
    EXPECT_NE(report.find("point"), std::string::npos);
    EXPECT_NE(report.find("  8  "), std::string::npos) << report;
}

TEST(archive_report, ShapesAndCurvesMayBeMixed)
{
    HvStdFCurve const curve(0, 0, 10, 5, HvBaseFCurve::LinearSegment, HvBaseFCurve::LinearSegment);
    std::string const report =
        Report(Archive(curve) + Archive(Stroke()) + Archive(HvRawFCurve(0, 1)), true);
    EXPECT_EQ(report.find("curve 0 at byte 0: standard"), 0u) << report;
    EXPECT_NE(report.find("\nshape 0 at byte "), std::string::npos);
    EXPECT_NE(report.find("\ncurve 1 at byte "), std::string::npos);
    EXPECT_NE(report.find("\nfile: 2 curves, 1 shape, "), std::string::npos);
}

TEST(archive_report, RefusedShapesAreToldWithPlaceAndReason)
{
    std::string bytes = Archive(Stroke());
    std::size_t const good = bytes.size();
    bytes += bytes;
    bytes[good + 6] = 7;
    bytes[good + 7] = 0;
    std::ostringstream out;
    try {
        ArchiveReport_Write(out, "file", bytes, true);
        FAIL() << "not refused";
    } catch (ToolError const& error) {
        EXPECT_STREQ(error.what(),
                     "file: shape 1, which starts at byte 173, is refused at byte 179: "
                     "there is no such version of it");
    }
    EXPECT_EQ(out.str().find("shape 0 at byte 0"), 0u) << "what is good is shown";
}
