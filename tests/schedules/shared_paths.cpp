// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Paths in the plane and in space: a version is what all points are moved by along x.

#include "shared_objects.h"

#include <hv/foundation/HvPoint2fArray.h>
#include <hv/foundation/HvPoint3dArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/motionpath/HvMotionPath3d.h>
#include <hv/rotation/HvTransfo4.h>
#include <hv/shape/HvPath2f.h>
#include <hv/shape/HvShapeArchive.h>

#include <vector>

namespace {

constexpr unsigned int kSides = 9;

/// The x of point `i` in version 0, a small whole number: moves by 1 stay exact in `float`.
float BaseX(unsigned int i)
{
    return static_cast<float>((i * 5) % 7);
}

bool IsPathWhole(HvPath2f const& path)
{
    std::vector<HvPoint2<float>> points(kSides + 1);
    path.GetPoints(0, kSides, points.data());
    for (unsigned int i = 0; i <= kSides; ++i) {
        if (points[i].x - BaseX(i % kSides) != points[0].x - BaseX(0)) {
            return false;
        }
    }
    return true;
}

class SharedPaths : public SharedPair {
public:
    SharedPaths()
    {
        first_.Moveto({BaseX(0), 0});
        for (unsigned int i = 1; i < kSides; ++i) {
            first_.Lineto({BaseX(i), static_cast<float>(i)});
        }
        first_.Lineto({BaseX(0), 0});
        first_.Closeto();
        second_ = first_;
    }

    void Edit(unsigned int which) override { Of(which).Translate({1, 0}); }
    /// One way only: shapes lock the target, then the source, and leave it to their callers not to
    /// assign two of them to each other at once.
    void Assign(unsigned int) override { second_ = first_; }
    bool IsCopyWhole(unsigned int which) const override { return IsPathWhole(HvPath2f(Of(which))); }
    bool IsArchiveWhole(unsigned int which) const override
    {
        std::vector<unsigned char> bytes(Of(which).GetBufferSize());
        Of(which).WriteToBuffer(bytes.data());
        HvPath2f read(0);
        // Behind the length comes the body.
        read.ReadFromBufferBody(bytes.data() + 4);
        return read.NumPoints() == kSides + 1 && IsPathWhole(read);
    }
    bool IsReadingWhole(unsigned int which, ScheduleRandom& random) const override
    {
        if (random() % 2 == 0) {
            return IsPathWhole(Of(which));
        }
        HvPoint2fArray points;
        HvPointTagArray tags;
        Of(which).AltFlatten(0.25, points, tags);
        for (unsigned int i = 0; i < points.Size(); ++i) {
            if (points[i].x - BaseX(i % kSides) != points[0].x - BaseX(0)) {
                return false;
            }
        }
        return points.Size() == kSides + 1;
    }

private:
    HvPath2f& Of(unsigned int which) { return which == 0 ? first_ : second_; }
    HvPath2f const& Of(unsigned int which) const { return which == 0 ? first_ : second_; }

    HvPath2f first_{0};
    HvPath2f second_{0};
};

constexpr unsigned int kNodes = 6;

/// The nodes lie one apart in time and have whole coordinates; y tells their number.
bool IsMotionWhole(HvPoint3dArray const& places)
{
    for (unsigned int i = 0; i < places.Size(); ++i) {
        if (places[i].x - static_cast<double>(BaseX(i)) !=
            places[0].x - static_cast<double>(BaseX(0))) {
            return false;
        }
    }
    return places.Size() == kNodes;
}

bool IsMotionWhole(HvMotionPath3d const& path)
{
    HvPoint3dArray places;
    path.EvalSequence(0, kNodes - 1, 1, 0.01, places, 0);
    return IsMotionWhole(places);
}

class SharedMotionPaths : public SharedPair {
public:
    SharedMotionPaths()
    {
        for (unsigned int i = 0; i < kNodes; ++i) {
            HvPoint3<double> const place(static_cast<double>(BaseX(i)), i, 0);
            i == 0 ? first_.Moveto(place, 0) : first_.Lineto(place, i);
        }
        second_ = first_;
    }

    void Edit(unsigned int which) override
    {
        HvTransfo4 step;
        step.Translate(1.0, 0.0, 0.0);
        Of(which).Transform(step);
    }
    void Assign(unsigned int to) override { Of(to) = Of(1 - to); }
    bool IsCopyWhole(unsigned int which) const override
    {
        return IsMotionWhole(HvMotionPath3d(Of(which)));
    }
    bool IsArchiveWhole(unsigned int which) const override
    {
        std::vector<unsigned char> bytes(Of(which).GetBufferSize());
        unsigned int const written = Of(which).WriteToBuffer(bytes.data());
        HvMotionPath3d* read = nullptr;
        HvMotionPath3d_CreateFromBuffer(bytes.data(), written, &read);
        std::unique_ptr<HvMotionPath3d> const owner(read);
        return read != nullptr && IsMotionWhole(*read);
    }
    bool IsReadingWhole(unsigned int which, ScheduleRandom&) const override
    {
        return IsMotionWhole(Of(which));
    }

private:
    HvMotionPath3d& Of(unsigned int which) { return which == 0 ? first_ : second_; }
    HvMotionPath3d const& Of(unsigned int which) const { return which == 0 ? first_ : second_; }

    HvMotionPath3d first_;
    HvMotionPath3d second_;
};

}  // namespace

std::unique_ptr<SharedPair> MakeSharedPaths()
{
    return std::make_unique<SharedPaths>();
}

std::unique_ptr<SharedPair> MakeSharedMotionPaths()
{
    return std::make_unique<SharedMotionPaths>();
}
