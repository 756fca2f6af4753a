// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Two-dimensional paths in Python.

#include "bindings.h"

#include <hv/bezier/HvBezierTool.h>
#include <hv/foundation/HvPoint2fArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/pathbuild/HvShapeFactory.h>
#include <hv/raster/HvUByteRaster.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvPath2f.h>
#include <hv/shape/HvPath2fSink.h>
#include <hv/vectorize/HvVectorizer.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

namespace {

using Point = HvPoint2<float>;
using PathPtr = std::unique_ptr<HvPath2f>;
using Coverage = py::array_t<unsigned char, py::array::c_style | py::array::forcecast>;

Point PointOf(double x, double y)
{
    return Point(static_cast<float>(x), static_cast<float>(y));
}

PathPtr EmptyPath()
{
    return std::make_unique<HvPath2f>(0u);
}

PathPtr FittedPath(Numbers const& points, double tolerance, double cornerDegrees, bool closed)
{
    constexpr double kRadians = 0.017453292519943295;
    py::ssize_t const count = RowsOf(points, 2);
    HvPoint2fArray array;
    for (py::ssize_t i = 0; i < count; ++i) {
        array.Add(PointOf(points.at(i, 0), points.at(i, 1)));
    }
    double const cosine = std::cos(cornerDegrees * kRadians);
    PathPtr path = EmptyPath();
    HvPath2fSink sink(*path);
    HvBezierTool tool;
    unsigned int const added = closed
                                   ? tool.ClosedFit(array, cosine * cosine, 3, tolerance, 0, sink)
                                   : tool.OpenFit(array, cosine * cosine, 3, tolerance, 0, sink, 0);
    Require(added != 0,
            "no curve fits: two points or more, all finite, and a tolerance of 0 or more");
    return path;
}

/// The size of an array of rows of pixels, as the library counts it.
int PixelsOf(py::ssize_t length)
{
    Require(length > 0 && length <= std::numeric_limits<short>::max(),
            "a raster has 1 to 32767 pixels on each side");
    return static_cast<int>(length);
}

PathPtr TracedPath(Coverage const& pixels, unsigned char value, py::object const& tolerance)
{
    Require(pixels.ndim() == 2, "the pixels must be an array of rows");
    HvUByteRaster raster(PixelsOf(pixels.shape(1)), PixelsOf(pixels.shape(0)), 0);
    std::copy(pixels.data(), pixels.data() + pixels.size(), raster.data);
    HvVectorizer const vectorizer(0, 0);
    PathPtr path = EmptyPath();
    if (tolerance.is_none()) {
        vectorizer.Vectorize(raster, value, HvExtent2<float>(), *path);
    } else {
        HvGC gc;
        gc.flatness = tolerance.cast<double>();
        vectorizer.VectorizeAndFit(raster, value, HvExtent2<float>(), gc, *path);
    }
    return path;
}

PathPtr PathFromBytes(py::bytes const& bytes)
{
    std::string const archive = bytes;
    HvShape2f* read = nullptr;
    HvShape2f_CreateFromBuffer(archive.data(), archive.size(), &read);
    std::unique_ptr<HvShape2f> shape(read);
    HvShape2f const* const path = shape ? shape->QueryShapeKind(HvShape2f::Path) : nullptr;
    Require(path != nullptr, "the bytes are no archive of a path");
    return std::make_unique<HvPath2f>(static_cast<HvPath2f const&>(*path));
}

/// Closes the last outline, by a line where it has not come back to its start.
void Close(HvPath2f& path)
{
    unsigned int const count = path.NumPoints();
    Require(count != 0 && (path.Closeto() != 0 || path.CloseSubpath(count - 1) != 0),
            "there is no outline to close");
}

void CurveTo(HvPath2f& path, py::args const& args)
{
    Require(args.size() == 4 || args.size() == 6, "one or two control points and the end, as x, y");
    auto const point = [&](std::size_t i) {
        return PointOf(args[2 * i].cast<double>(), args[2 * i + 1].cast<double>());
    };
    if (args.size() == 4) {
        path.Curveto(point(0), point(1));
    } else {
        path.Curveto(point(0), point(1), point(2));
    }
}

py::array_t<float> RowsOfPoints(Point const* points, unsigned int count)
{
    py::array_t<float> rows({py::ssize_t{count}, py::ssize_t{2}});
    for (unsigned int i = 0; i < count; ++i) {
        rows.mutable_at(i, 0) = points[i].x;
        rows.mutable_at(i, 1) = points[i].y;
    }
    return rows;
}

py::array_t<float> PointsOf(HvPath2f const& path)
{
    HvPoint2fArray points(path.NumPoints());
    for (unsigned int i = 0; i < path.NumPoints(); ++i) {
        points.Add(path.GetPoint(i));
    }
    return RowsOfPoints(points.Data(), points.Size());
}

/// One array of points for each subpath.
py::list Polylines(HvPath2f const& path, double tolerance)
{
    HvGC gc;
    gc.flatness = tolerance;
    HvPoint2fArray points;
    HvPointTagArray tags;
    path.Flatten(gc, points, tags);
    py::list polylines;
    unsigned int first = 0;
    for (unsigned int i = 0; i < points.Size(); ++i) {
        if (tags[i] == HvPointTagStart) {
            first = i;
        } else if (tags[i] == HvPointTagEnd) {
            polylines.append(RowsOfPoints(points.Data() + first, i + 1 - first));
        }
    }
    return polylines;
}

/// A raster of zeros that `paint` has written.
template <class Paint>
Coverage Painted(py::ssize_t width, py::ssize_t height, Paint const& paint)
{
    Coverage pixels({height, width});
    HvUByteRaster raster(pixels.mutable_data(), PixelsOf(width), PixelsOf(height), false, 0);
    py::gil_scoped_release const released;
    paint(raster);
    return pixels;
}

Coverage Fill(HvPath2f const& path, py::ssize_t width, py::ssize_t height, bool smooth,
              bool evenOdd)
{
    HvGC gc;
    gc.fillRule = evenOdd ? 0 : 1;
    return Painted(width, height, [&](HvUByteRaster& raster) {
        if (smooth) {
            path.AAFill(gc, raster, nullptr);
        } else {
            path.Fill(gc, raster, nullptr);
        }
    });
}

Coverage Stroke(HvPath2f const& path, py::ssize_t width, py::ssize_t height, double strokeWidth)
{
    HvGC gc;
    gc.strokeWidth = strokeWidth;
    return Painted(width, height, [&](HvUByteRaster& raster) { path.Stroke(gc, raster); });
}

}  // namespace

void BindPath(py::module_& module)
{
    py::class_<HvPath2f>(module, "Path", "Lines and Bezier curves in the plane; y points down.")
        .def(py::init(&EmptyPath))
        .def_static("fit", &FittedPath, py::arg("points"), py::arg("tolerance") = 1.0,
                    py::arg("corner") = 25.0, py::arg("closed") = false,
                    "Cubics within `tolerance` of the rows (x, y); a turn by more than `corner`\n"
                    "degrees stays a corner.")
        .def_static("trace", &TracedPath, py::arg("pixels"), py::arg("value") = 255,
                    py::arg("tolerance") = py::none(),
                    "The outlines of the pixels that have the value: polygons along their sides,\n"
                    "or curves within `tolerance` of these.")
        .def_static("from_bytes", &PathFromBytes, py::arg("bytes"),
                    "The path of an archive, of any version.")
        .def("to_bytes", &ArchiveOf<HvPath2f>, "The archive, of the newest version.")
        .def("copy", [](HvPath2f const& path) { return std::make_unique<HvPath2f>(path); })
        .def(
            "move_to", [](HvPath2f& path, double x, double y) { path.Moveto(PointOf(x, y)); },
            py::arg("x"), py::arg("y"))
        .def(
            "line_to", [](HvPath2f& path, double x, double y) { path.Lineto(PointOf(x, y)); },
            py::arg("x"), py::arg("y"))
        .def("curve_to", &CurveTo, "(x1, y1, [x2, y2,] x, y): a quadratic, or a cubic.")
        .def("close", &Close, "Ends the outline at its start, by a line if need be.")
        .def("__len__", &HvPath2f::NumPoints)
        .def_property_readonly("points", &PointsOf, "A row (x, y) for each point and control.")
        .def_property_readonly("num_subpaths", &HvPath2f::NumSubpaths)
        .def_property_readonly("num_segments", &HvPath2f::NumSegments)
        .def_property_readonly(
            "bounds",
            [](HvPath2f const& path) {
                HvExtent2<double> extent;
                path.GetTightExtent(extent);
                return py::make_tuple(extent.min.x, extent.min.y, extent.max.x, extent.max.y);
            },
            "(least x, least y, greatest x, greatest y) of the outline.")
        .def("flatten", &Polylines, py::arg("tolerance") = 0.1,
             "A list with an array of rows (x, y) for each subpath.")
        .def("fill", &Fill, py::arg("width"), py::arg("height"), py::arg("smooth") = true,
             py::arg("even_odd") = false,
             "Coverage of the closed subpaths, 0 to 255, an array of `height` rows.")
        .def("stroke", &Stroke, py::arg("width"), py::arg("height"), py::arg("stroke_width") = 1.0,
             "Coverage of the outline drawn with a pen of that width.")
        .def(
            "translate", [](HvPath2f& path, double x, double y) { path.Translate(PointOf(x, y)); },
            py::arg("x"), py::arg("y"))
        .def(
            "rotate",
            [](HvPath2f& path, double degrees, double x, double y) {
                path.Rotate(degrees, PointOf(x, y));
            },
            py::arg("degrees"), py::arg("x") = 0.0, py::arg("y") = 0.0, "About (x, y).")
        .def(
            "scale",
            [](HvPath2f& path, double sx, double sy, double x, double y) {
                path.Scale(sx, sy, PointOf(x, y));
            },
            py::arg("sx"), py::arg("sy"), py::arg("x") = 0.0, py::arg("y") = 0.0, "About (x, y).");
}
