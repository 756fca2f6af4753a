// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Where an object on a motion path is, slowly: arc lengths by brute force, in long double, and the
// distance polynomial in powers of time itself.

#ifndef HV_TESTS_MOTIONPATH_REFERENCE_PATH_H
#define HV_TESTS_MOTIONPATH_REFERENCE_PATH_H

#include <tests/motionpath/motion_path_support.h>

/// A path looked at through its readers alone.
class ReferencePath {
public:
    explicit ReferencePath(Path const& path)
    {
        for (unsigned int i = 0; i < path.NumPoints(); ++i) {
            points_.push_back(PointOf(path, i));
        }
        for (unsigned int i = 0; i < path.NumPoints(); i += 3) {
            times_.push_back(TimeOf(path, i));
            Path::TangentInfo left = Path::TangentFree;
            Path::TangentInfo right = Path::TangentFree;
            path.GetLeftTangentInfo(i, left);
            path.GetRightTangentInfo(i, right);
            left_.push_back(left);
            right_.push_back(right);
        }
        for (std::size_t k = 0; k + 1 < times_.size(); ++k) {
            lengths_.push_back(LengthTo(k, 1.0L));
        }
    }

    long double Length(std::size_t segment) const { return lengths_[segment]; }

    /// The place at a time strictly inside curved segment `k`.
    Point At(std::size_t k, double t) const
    {
        if (right_[k] == Path::TangentStep) {
            return points_[3 * k];
        }
        return PointAtDistance(k, DistanceAt(k, t));
    }

    long double DistanceAt(std::size_t k, long double t) const
    {
        long double const t0 = times_[k];
        long double const t1 = times_[k + 1];
        long double const length = lengths_[k];
        if (right_[k] == Path::TangentLinear && left_[k + 1] == Path::TangentLinear) {
            return length * (t - t0) / (t1 - t0);
        }
        long double v0 = 0;
        if (right_[k] != Path::TangentStop && k > 0) {
            v0 = (lengths_[k - 1] + length) / (t1 - times_[k - 1]);
        }
        long double v1 = 0;
        if (left_[k + 1] == Path::TangentLinear) {
            v1 = length / (t1 - t0);
        } else if (left_[k + 1] != Path::TangentStop && k + 2 < times_.size()) {
            v1 = (length + lengths_[k + 1]) / (times_[k + 2] - t0);
        }
        long double const h = 1 / (t1 - t0);
        long double const m = length * h;
        long double const c3 = h * h * (v0 + v1 - 2 * m);
        long double const c2 =
            h * 0.5L * ((3 * m - 2 * v0 - v1) * 2 * h * t1 - 2 * h * (-3 * m + v0 + 2 * v1) * t0);
        long double const c1 = v0 - (2 * c2 + 3 * c3 * t0) * t0;
        long double const d = -(((t0 * c3 + c2) * t0 + c1) * t0) + (c1 + (c2 + c3 * t) * t) * t;
        return std::min(std::max(d, 0.0L), length);
    }

private:
    struct Vector {
        long double x, y, z;
    };

    Vector PointAt(std::size_t k, long double u) const
    {
        long double const v = 1 - u;
        long double const w[4] = {v * v * v, 3 * v * v * u, 3 * v * u * u, u * u * u};
        Vector p = {0, 0, 0};
        for (std::size_t i = 0; i < 4; ++i) {
            Point const& q = points_[3 * k + i];
            p.x += w[i] * q.x;
            p.y += w[i] * q.y;
            p.z += w[i] * q.z;
        }
        return p;
    }

    long double SpeedAt(std::size_t k, long double u) const
    {
        long double const v = 1 - u;
        long double const w[3] = {3 * v * v, 6 * v * u, 3 * u * u};
        Vector d = {0, 0, 0};
        for (std::size_t i = 0; i < 3; ++i) {
            Point const e = points_[3 * k + i + 1] - points_[3 * k + i];
            d.x += w[i] * e.x;
            d.y += w[i] * e.y;
            d.z += w[i] * e.z;
        }
        return std::sqrt(d.x * d.x + d.y * d.y + d.z * d.z);
    }

    /// Arc length from 0 to u: Simpson's rule over 512 stretches.
    long double LengthTo(std::size_t k, long double u) const
    {
        constexpr int kStretches = 512;
        long double const h = u / kStretches;
        long double sum = SpeedAt(k, 0) + SpeedAt(k, u);
        for (int i = 0; i < kStretches; ++i) {
            sum += 4 * SpeedAt(k, (i + 0.5L) * h) + (i > 0 ? 2 * SpeedAt(k, i * h) : 0);
        }
        return sum * h / 6;
    }

    /// By bisection of the parameter.
    Point PointAtDistance(std::size_t k, long double distance) const
    {
        long double low = 0;
        long double high = 1;
        for (int i = 0; i < 45; ++i) {
            long double const middle = (low + high) / 2;
            (LengthTo(k, middle) < distance ? low : high) = middle;
        }
        Vector const p = PointAt(k, low);
        return {static_cast<double>(p.x), static_cast<double>(p.y), static_cast<double>(p.z)};
    }

    std::vector<Point> points_;
    std::vector<double> times_;
    std::vector<Path::TangentInfo> left_;
    std::vector<Path::TangentInfo> right_;
    std::vector<long double> lengths_;
};

#endif
