// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the files of the module share: one function for each class, arrays in and out, refusals.

#ifndef HV_BINDINGS_PYTHON_BINDINGS_H
#define HV_BINDINGS_PYTHON_BINDINGS_H

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>

#include <cstddef>
#include <string>
#include <vector>

namespace py = pybind11;

void BindCurve(py::module_& module);
void BindPath(py::module_& module);
void BindMotionPath(py::module_& module);

/// Numbers of any kind and layout come in as a block of doubles.
using Numbers = py::array_t<double, py::array::c_style | py::array::forcecast>;

/// The library says 0 when it refuses, with the object as it was; Python hears a ValueError.
inline void Require(bool done, char const* refused)
{
    if (!done) {
        throw py::value_error(refused);
    }
}

/// The rows of an array of points: its shape must be (n, size).
inline py::ssize_t RowsOf(Numbers const& points, py::ssize_t size)
{
    Require(points.ndim() == 2 && points.shape(1) == size, "the points must be an array of rows");
    return points.shape(0);
}

/// What `evaluate(x)` gives for each number of an array, in the array's shape; of a single number a
/// float. Other threads of Python run meanwhile.
template <class Evaluate>
py::object ForEach(Numbers const& x, Evaluate const& evaluate)
{
    Numbers values(std::vector<py::ssize_t>(x.shape(), x.shape() + x.ndim()));
    double const* const from = x.data();
    double* const to = values.mutable_data();
    py::ssize_t const count = x.size();
    {
        py::gil_scoped_release const released;
        for (py::ssize_t i = 0; i < count; ++i) {
            to[i] = evaluate(from[i]);
        }
    }
    return x.ndim() == 0 ? py::object(py::float_(*values.data())) : py::object(values);
}

/// The archive of an object, its length included.
template <class Object>
py::bytes ArchiveOf(Object const& object)
{
    std::string bytes(object.GetBufferSize(), '\0');
    object.WriteToBuffer(&bytes[0]);
    return py::bytes(bytes);
}

#endif
