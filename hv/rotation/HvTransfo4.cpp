// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The transform: its numbers, products, printing.

#include <hv/rotation/HvTransfo4.h>

#include <cstring>
#include <ostream>

namespace {

constexpr double kIdentity[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

/// One column of a product: the matrix `a` times the column `b`, sums taken from left to right.
inline void MultiplyColumn(double const* a, double const* b, double* out)
{
    out[0] = a[0] * b[0] + a[4] * b[1] + a[8] * b[2] + a[12] * b[3];
    out[1] = a[1] * b[0] + a[5] * b[1] + a[9] * b[2] + a[13] * b[3];
    out[2] = a[2] * b[0] + a[6] * b[1] + a[10] * b[2] + a[14] * b[3];
    out[3] = a[3] * b[0] + a[7] * b[1] + a[11] * b[2] + a[15] * b[3];
}

/// The product of two matrices, written out without loops; `out` is neither of them.
inline void Multiply(double const* a, double const* b, double* out)
{
    MultiplyColumn(a, b, out);
    MultiplyColumn(a, b + 4, out + 4);
    MultiplyColumn(a, b + 8, out + 8);
    MultiplyColumn(a, b + 12, out + 12);
}

}  // namespace

void HvTransfo4::SetToIdentity()
{
    std::memcpy(m, kIdentity, sizeof m);
}

HvTransfo4& HvTransfo4::ResetToIdentity()
{
    SetToIdentity();
    return *this;
}

HvTransfo4& HvTransfo4::SetMatrix(double const* numbers)
{
    std::memmove(m, numbers, sizeof m);
    return *this;
}

void HvTransfo4::GetMatrix(double* numbers) const
{
    std::memmove(numbers, m, sizeof m);
}

void HvTransfo4::Transpose(HvTransfo4& out) const
{
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            out.m[column + 4 * row] = m[row + 4 * column];
        }
    }
}

HvTransfo4& HvTransfo4::PreMultiply(HvTransfo4 const& t)
{
    double product[16];
    Multiply(t.m, m, product);
    return SetMatrix(product);
}

HvTransfo4& HvTransfo4::PostMultiply(HvTransfo4 const& t)
{
    double product[16];
    Multiply(m, t.m, product);
    return SetMatrix(product);
}

std::ostream& operator<<(std::ostream& stream, HvTransfo4 const& t)
{
    for (unsigned int row = 0; row < 4; ++row) {
        stream << "{" << t.GetMatrixElement(row, 0) << " " << t.GetMatrixElement(row, 1) << " "
               << t.GetMatrixElement(row, 2) << " " << t.GetMatrixElement(row, 3) << "}"
               << std::endl;
    }
    return stream;
}
