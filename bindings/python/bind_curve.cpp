// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The standard function curve in Python.

#include "bindings.h"

#include <hv/fcurve/HvFCurveArchive.h>
#include <hv/fcurve/HvStdFCurve.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvPoint2dArray.h>

#include <memory>

namespace {

using Kind = HvBaseFCurve::FSKind;
using Method = HvBaseFCurve::ExtrapolationMethod;
using Through = HvStdFCurve::DPMethod;

std::unique_ptr<HvStdFCurve> CurveThrough(Numbers const& points, Through method, double tolerance)
{
    py::ssize_t const count = RowsOf(points, 2);
    HvPoint2dArray array;
    for (py::ssize_t i = 0; i < count; ++i) {
        array.Add(HvPoint2<double>(points.at(i, 0), points.at(i, 1)));
    }
    return std::make_unique<HvStdFCurve>(array, method, tolerance, HvBaseFCurve::CubicSegment,
                                         HvBaseFCurve::CubicSegment);
}

std::unique_ptr<HvStdFCurve> CurveFromBytes(py::bytes const& bytes)
{
    std::string const archive = bytes;
    HvBaseFCurve* read = nullptr;
    HvBaseFCurve_CreateFromBuffer(archive.data(), archive.size(), &read);
    std::unique_ptr<HvBaseFCurve> curve(read);
    Require(curve && curve->GetKind() == HvBaseFCurve::Standard,
            "the bytes are no archive of a standard curve");
    return std::unique_ptr<HvStdFCurve>(static_cast<HvStdFCurve*>(curve.release()));
}

Numbers KeysOf(HvStdFCurve const& curve)
{
    HvDoubleArray parameters;
    HvDoubleArray left;
    HvDoubleArray right;
    py::ssize_t const count = curve.GetKeys(parameters, left, right, 0);
    Numbers keys({count, py::ssize_t{3}});
    for (unsigned int i = 0; i < parameters.Size(); ++i) {
        keys.mutable_at(i, 0) = parameters[i];
        keys.mutable_at(i, 1) = left[i];
        keys.mutable_at(i, 2) = right[i];
    }
    return keys;
}

void BindEnumerations(py::module_& module)
{
    py::enum_<Kind>(module, "Segment", "The shape of the segment that starts at a key.")
        .value("CONSTANT", HvBaseFCurve::ConstantSegment)
        .value("LINEAR", HvBaseFCurve::LinearSegment)
        .value("CUBIC", HvBaseFCurve::CubicSegment);
    py::enum_<Method>(module, "Extrapolation", "What a curve does outside its keys.")
        .value("CONSTANT", HvBaseFCurve::ConstantExtrapolation)
        .value("LINEAR", HvBaseFCurve::LinearExtrapolation)
        .value("CYCLE", HvBaseFCurve::CycleExtrapolation)
        .value("RELATIVE_CYCLE", HvBaseFCurve::RelativeCycleExtrapolation);
    py::enum_<Through>(module, "Through", "How a curve is laid through points.")
        .value("CATMULL_ROM", HvStdFCurve::InterpCatmullRom)
        .value("C2_SPLINE", HvStdFCurve::InterpCubicC2)
        .value("LINES", HvStdFCurve::ApproxLinearFitC0)
        .value("CUBIC_FIT", HvStdFCurve::ApproxCubicFitG1);
}

}  // namespace

void BindCurve(py::module_& module)
{
    BindEnumerations(module);
    py::class_<HvStdFCurve>(module, "Curve", "A function curve: a value for each parameter.")
        .def(py::init<double, Kind>(), "A curve without keys.", py::arg("value") = 0.0,
             py::arg("kind") = HvBaseFCurve::CubicSegment)
        .def_static("through", &CurveThrough, py::arg("points"),
                    py::arg("method") = HvStdFCurve::InterpCatmullRom, py::arg("tolerance") = 0.0,
                    "A curve through, or within `tolerance` of, the rows (parameter, value).")
        .def_static("from_bytes", &CurveFromBytes, py::arg("bytes"),
                    "The curve of an archive, of any version.")
        .def("to_bytes", &ArchiveOf<HvStdFCurve>, "The archive, of the newest version.")
        .def("copy", [](HvStdFCurve const& curve) { return std::make_unique<HvStdFCurve>(curve); })
        .def("__len__", &HvStdFCurve::GetNumKeys)
        .def("keys", &KeysOf, "A row (parameter, left value, right value) for each key.")
        .def(
            "add_key",
            [](HvStdFCurve& curve, double x, double y, Kind kind) {
                Require(curve.CreateKey(x, y, kind, kind) != 0, "the curve refuses this key");
            },
            py::arg("x"), py::arg("y"), py::arg("kind") = HvBaseFCurve::CubicSegment,
            "Makes a key, or gives the key at x this value.")
        .def(
            "insert_key",
            [](HvStdFCurve& curve, double x) {
                Require(curve.CreateNonModifyingKey(x, 0) != 0, "the curve refuses this key");
            },
            py::arg("x"), "Makes a key on the curve.")
        .def(
            "remove_key",
            [](HvStdFCurve& curve, double x, double tolerance) {
                Require(curve.RemoveKey(x, tolerance) != 0, "there is no key that could go");
            },
            py::arg("x"), py::arg("tolerance") = 0.0)
        .def(
            "eval",
            [](HvStdFCurve const& curve, Numbers const& x, bool clamp) {
                return ForEach(x, [&](double at) { return curve.Eval(at, clamp ? 1 : 0); });
            },
            py::arg("x"), py::arg("clamp") = false,
            "The value at x, or at each number of an array.")
        .def(
            "inverse",
            [](HvStdFCurve const& curve, double value) {
                double parameter = 0;
                Require(curve.EvalInverse(value, parameter, 0) != 0, "the curve is not bijective");
                return parameter;
            },
            py::arg("value"), "Where a bijective curve has the value.")
        .def("integral", &HvStdFCurve::EvalIntegral, py::arg("start"), py::arg("end"))
        .def_property("extrapolation", &HvStdFCurve::GetExtrapolationMethod,
                      [](HvStdFCurve& curve, Method method) {
                          Require(curve.SetExtrapolationMethod(method) != 0,
                                  "the curve refuses this extrapolation");
                      });
}
