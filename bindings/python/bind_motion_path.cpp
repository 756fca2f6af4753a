// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Motion paths in Python.

#include "bindings.h"

#include <hv/motionpath/HvMotionPath3d.h>

#include <memory>

namespace {

using Point = HvPoint3<double>;

Point PointOf(Numbers const& p)
{
    Require(p.ndim() == 1 && p.shape(0) == 3, "a point of space has three numbers");
    return Point(p.at(0), p.at(1), p.at(2));
}

std::unique_ptr<HvMotionPath3d> MotionPathFromBytes(py::bytes const& bytes)
{
    std::string const archive = bytes;
    HvMotionPath3d* path = nullptr;
    HvMotionPath3d_CreateFromBuffer(archive.data(), archive.size(), &path);
    Require(path != nullptr, "the bytes are no archive of a motion path");
    return std::unique_ptr<HvMotionPath3d>(path);
}

/// A row (x, y, z) for each time; of a single time the row alone.
Numbers Places(HvMotionPath3d const& path, Numbers const& times, double tolerance)
{
    Require(path.NumNodes() != 0, "a path without nodes is nowhere");
    std::vector<py::ssize_t> shape(times.shape(), times.shape() + times.ndim());
    shape.push_back(3);
    Numbers places(shape);
    double const* const from = times.data();
    double* to = places.mutable_data();
    py::ssize_t const count = times.size();
    py::gil_scoped_release const released;
    for (py::ssize_t i = 0; i < count; ++i) {
        Point p;
        path.Eval(from[i], tolerance, p, 0);
        *to++ = p.x;
        *to++ = p.y;
        *to++ = p.z;
    }
    return places;
}

}  // namespace

void BindMotionPath(py::module_& module)
{
    constexpr char const* kRefused = "the path refuses: times must grow, numbers be finite";
    py::class_<HvMotionPath3d>(module, "MotionPath", "A path of space that is travelled in time.")
        .def(py::init<>())
        .def_static("from_bytes", &MotionPathFromBytes, py::arg("bytes"),
                    "The path of an archive, of any version.")
        .def("to_bytes", &ArchiveOf<HvMotionPath3d>, "The archive, of the newest version.")
        .def(
            "move_to",
            [](HvMotionPath3d& path, Numbers const& p, double t) {
                Require(path.Moveto(PointOf(p), t) != 0, kRefused);
            },
            py::arg("point"), py::arg("time"))
        .def(
            "line_to",
            [](HvMotionPath3d& path, Numbers const& p, double t) {
                Require(path.Lineto(PointOf(p), t) != 0, kRefused);
            },
            py::arg("point"), py::arg("time"))
        .def(
            "curve_to",
            [](HvMotionPath3d& path, Numbers const& c1, Numbers const& c2, Numbers const& p,
               double t) {
                Require(path.Curveto(PointOf(c1), PointOf(c2), PointOf(p), t) != 0, kRefused);
            },
            py::arg("control1"), py::arg("control2"), py::arg("point"), py::arg("time"))
        .def("__len__", &HvMotionPath3d::NumNodes)
        .def_property_readonly("times",
                               [](HvMotionPath3d const& path) {
                                   double first = 0;
                                   double last = 0;
                                   path.GetTimeInterval(first, last);
                                   return py::make_tuple(first, last);
                               })
        .def("eval", &Places, py::arg("times"), py::arg("tolerance") = 1e-6,
             "Where the object is at a time, or at each time of an array, along the arc length of\n"
             "segments flattened within `tolerance`.");
}
