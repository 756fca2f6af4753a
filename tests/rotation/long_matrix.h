// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// 4x4 matrices in long double: the slow, plain reference of the transform's tests.

#ifndef HV_TESTS_ROTATION_LONG_MATRIX_H
#define HV_TESTS_ROTATION_LONG_MATRIX_H

#include <hv/rotation/HvTransfo4.h>

#include <cmath>
#include <limits>
#include <ostream>
#include <rapidcheck.h>
#include <vector>

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Element [row][column], the identity at first.
struct LongMatrix {
    long double e[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};

    LongMatrix() = default;
    explicit LongMatrix(HvTransfo4 const& t)
    {
        for (unsigned int r = 0; r < 4; ++r) {
            for (unsigned int c = 0; c < 4; ++c) {
                e[r][c] = t.GetMatrixElement(r, c);
            }
        }
    }

    static LongMatrix Translation(long double x, long double y, long double z)
    {
        LongMatrix t;
        t.e[0][3] = x;
        t.e[1][3] = y;
        t.e[2][3] = z;
        return t;
    }
    static LongMatrix Scaling(long double x, long double y, long double z)
    {
        LongMatrix t;
        t.e[0][0] = x;
        t.e[1][1] = y;
        t.e[2][2] = z;
        return t;
    }
    /// The identity with one more element set: a shear.
    LongMatrix With(int row, int column, long double value) const
    {
        LongMatrix t(*this);
        t.e[row][column] = value;
        return t;
    }
    /// Rotation about an axis by the cross-product matrix K of its unit vector, I + sin K + (1 -
    /// cos) K K: another road than the elements written out.
    static LongMatrix Rotation(long double degrees, long double x, long double y, long double z)
    {
        long double const angle = degrees * std::acos(-1.0L) / 180.0L;
        long double const n = std::sqrt(x * x + y * y + z * z);
        long double const k[3][3] = {{0, -z / n, y / n}, {z / n, 0, -x / n}, {-y / n, x / n, 0}};
        LongMatrix t;
        for (int r = 0; r < 3; ++r) {
            for (int c = 0; c < 3; ++c) {
                long double kk = 0;
                for (int i = 0; i < 3; ++i) {
                    kk += k[r][i] * k[i][c];
                }
                t.e[r][c] += std::sin(angle) * k[r][c] + (1 - std::cos(angle)) * kk;
            }
        }
        return t;
    }
};

inline LongMatrix operator*(LongMatrix const& a, LongMatrix const& b)
{
    LongMatrix product;
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            product.e[r][c] = 0;
            for (int i = 0; i < 4; ++i) {
                product.e[r][c] += a.e[r][i] * b.e[i][c];
            }
        }
    }
    return product;
}

/// Greatest difference of two matrices' elements; NaN counts as infinite.
inline long double Difference(LongMatrix const& a, LongMatrix const& b)
{
    long double greatest = 0;
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            long double const d = std::fabs(a.e[r][c] - b.e[r][c]);
            if (!(d <= greatest)) {
                greatest = d == d ? d : std::numeric_limits<long double>::infinity();
            }
        }
    }
    return greatest;
}

inline long double Difference(HvTransfo4 const& a, LongMatrix const& b)
{
    return Difference(LongMatrix(a), b);
}

/// Bit-for-bit equality, NaN included, -0 and 0 told apart by nothing that matters here.
inline bool Same(HvTransfo4 const& a, HvTransfo4 const& b)
{
    for (int i = 0; i < 16; ++i) {
        double const x = a.GetMatrixPtr()[i];
        double const y = b.GetMatrixPtr()[i];
        if (x != y && !(x != x && y != y)) {
            return false;
        }
    }
    return true;
}

/// Numbers of -10 to 10 without a short binary form.
inline rc::Gen<double> AnyNumber()
{
    return rc::gen::map(rc::gen::inRange(-9970, 9971), [](int i) { return i / 997.0; });
}

inline rc::Gen<HvPoint3<double>> AnyPoint3()
{
    return rc::gen::apply([](double x, double y, double z) { return HvPoint3<double>(x, y, z); },
                          AnyNumber(), AnyNumber(), AnyNumber());
}

inline rc::Gen<HvPoint2<double>> AnyPoint2()
{
    return rc::gen::apply([](double x, double y) { return HvPoint2<double>(x, y); }, AnyNumber(),
                          AnyNumber());
}

/// Matrices of which nothing is special, the last row included.
inline rc::Gen<HvTransfo4> AnyTransfo()
{
    return rc::gen::map(rc::gen::container<std::vector<double>>(16, AnyNumber()),
                        [](std::vector<double> const& v) { return HvTransfo4(v.data()); });
}

/// Angles of -720 to 720 degrees.
inline rc::Gen<double> AnyDegrees()
{
    return rc::gen::map(AnyNumber(), [](double v) { return v * 72.0; });
}

inline std::ostream& operator<<(std::ostream& os, HvPoint2<double> const& p)
{
    return os << "(" << p.x << ", " << p.y << ")";
}
inline std::ostream& operator<<(std::ostream& os, HvPoint3<double> const& p)
{
    return os << "(" << p.x << ", " << p.y << ", " << p.z << ")";
}

#endif
