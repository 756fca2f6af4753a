// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Curves: a version is what all values are shifted by.

#include "shared_objects.h"

#include <hv/fcurve/HvFCurveArchive.h>
#include <hv/fcurve/HvIntegerFCurve.h>
#include <hv/fcurve/HvRawFCurve.h>
#include <hv/fcurve/HvStdFCurve.h>
#include <hv/foundation/HvDoubleArray.h>

#include <vector>

namespace {

constexpr unsigned int kKeys = 12;

/// The value of key `i` in version 0.
double BaseValue(unsigned int i)
{
    return static_cast<double>((i * 7) % 5);
}

/// Whether values read at the keys are all of one version.
bool AreOfOneVersion(HvDoubleArray const& values)
{
    for (unsigned int i = 0; i < values.Size(); ++i) {
        if (values[i] - BaseValue(i) != values[0] - BaseValue(0)) {
            return false;
        }
    }
    return values.Size() == kKeys;
}

bool IsCurveWhole(HvBaseFCurve const& curve)
{
    HvDoubleArray parameters;
    HvDoubleArray left;
    HvDoubleArray right;
    curve.GetKeys(parameters, left, right, 0);
    return AreOfOneVersion(right);
}

template <class Curve>
class SharedCurves : public SharedPair {
public:
    SharedCurves()
    {
        for (unsigned int i = 0; i < kKeys; ++i) {
            first_.CreateKey(i, BaseValue(i));
        }
        second_ = first_;
    }

    void Edit(unsigned int which) override { Of(which).ShiftValues(1); }
    void Assign(unsigned int to) override { Of(to) = Of(1 - to); }
    bool IsCopyWhole(unsigned int which) const override
    {
        return IsCurveWhole(*std::unique_ptr<HvBaseFCurve>(Of(which).Clone()));
    }
    bool IsArchiveWhole(unsigned int which) const override
    {
        // Every version takes as many bytes.
        std::vector<unsigned char> bytes(Of(which).GetBufferSize());
        unsigned int const written = Of(which).WriteToBuffer(bytes.data());
        HvBaseFCurve* read = nullptr;
        HvBaseFCurve_CreateFromBuffer(bytes.data(), written, &read);
        std::unique_ptr<HvBaseFCurve> const owner(read);
        return read != nullptr && IsCurveWhole(*read);
    }
    bool IsReadingWhole(unsigned int which, ScheduleRandom& random) const override
    {
        if (random() % 2 == 0) {
            return IsCurveWhole(Of(which));
        }
        HvDoubleArray parameters;
        HvDoubleArray values;
        Of(which).EvalSequence(0, kKeys - 1, 1, 0.25, parameters, values, 0);
        return AreOfOneVersion(values);
    }

private:
    Curve& Of(unsigned int which) { return which == 0 ? first_ : second_; }
    Curve const& Of(unsigned int which) const { return which == 0 ? first_ : second_; }

    Curve first_{0.0};
    Curve second_{0.0};
};

class StandardCurve : public HvStdFCurve {
public:
    explicit StandardCurve(double value) : HvStdFCurve(value, LinearSegment) {}
    using HvStdFCurve::operator=;
};

}  // namespace

std::unique_ptr<SharedPair> MakeSharedStandardCurves()
{
    return std::make_unique<SharedCurves<StandardCurve>>();
}

std::unique_ptr<SharedPair> MakeSharedIntegerCurves()
{
    return std::make_unique<SharedCurves<HvIntegerFCurve>>();
}

std::unique_ptr<SharedPair> MakeSharedRawCurves()
{
    return std::make_unique<SharedCurves<HvRawFCurve>>();
}
