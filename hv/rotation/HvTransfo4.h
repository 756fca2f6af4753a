// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The homogeneous transform with which geometry is mapped.

#ifndef HV_ROTATION_HVTRANSFO4_H
#define HV_ROTATION_HVTRANSFO4_H

#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvPoint2.h>
#include <hv/foundation/HvPoint3.h>
#include <hv/platform/HvExport.h>

#include <iosfwd>

/// A 4x4 homogeneous transform: a plain value of sixteen double, held column after column, so that
/// the element of row r and column c is m[r + 4c] and the translation is m[12], m[13], m[14].
///
/// Points are column vectors: a mapped point is M * p. Every modifier composes its operation on the
/// right, this = this * operation, so the new operation acts first on points, in the local frame;
/// PreMultiply alone composes on the left. Angles of the Rotate... operations are degrees. Nothing
/// is remembered beside the sixteen numbers: every question is answered from them anew.
///
/// An axis of no length and a scale of zero are not guarded: where they divide, NaN results. NaN
/// and infinity pass through all operations. Nothing allocates. Not thread-safe on its own.
class HV_API HvTransfo4 {
public:
    // Life and the numbers themselves.

    /// The identity.
    HvTransfo4() { SetToIdentity(); }
    /// A copy of sixteen numbers, column after column.
    explicit HvTransfo4(double const* numbers) { SetMatrix(numbers); }

    /// Makes this the identity.
    void SetToIdentity();
    /// Makes this the identity and returns it.
    HvTransfo4& ResetToIdentity();
    /// Copies sixteen numbers in, column after column; they may be this object's own.
    HvTransfo4& SetMatrix(double const* numbers);
    /// Copies the sixteen numbers out, column after column.
    void GetMatrix(double* numbers) const;
    /// The sixteen numbers, column after column.
    double* GetMatrixPtr() { return m; }
    /// The sixteen numbers, column after column.
    double const* GetMatrixPtr() const { return m; }
    /// The element of a row and column, each 0 to 3; the caller answers for the range.
    double GetMatrixElement(unsigned int row, unsigned int column) const
    {
        return m[row + 4 * column];
    }

    // Products.

    /// Sets `out`, which must not be this object, to the transpose.
    void Transpose(HvTransfo4& out) const;
    /// this = t * this; `t` may be this object.
    HvTransfo4& PreMultiply(HvTransfo4 const& t);
    /// this = this * t; `t` may be this object.
    HvTransfo4& PostMultiply(HvTransfo4 const& t);

    // Modifiers, composed on the right.

    /// Moves by (x, y, z).
    HvTransfo4& Translate(double x, double y, double z);
    /// Moves by `offset`.
    HvTransfo4& Translate(HvPoint3<double> const& offset);
    /// Moves by `offset`.
    HvTransfo4& Translate(HvPoint3<float> const& offset);
    /// Moves by `offset` in the plane and by `z`.
    HvTransfo4& Translate(HvPoint2<double> const& offset, double z);
    /// Moves by `offset` in the plane and by `z`.
    HvTransfo4& Translate(HvPoint2<float> const& offset, double z);
    /// Moves by `offset` in the plane and by `z`.
    HvTransfo4& Translate(HvPoint2<float> const& offset, float z);

    /// Scales along the three axes.
    HvTransfo4& Scale(double sx, double sy, double sz);
    /// Scales evenly.
    HvTransfo4& Scale(double s);
    /// Scales about a centre that stays where it is.
    HvTransfo4& Scale(double sx, double sy, double sz, HvPoint3<double> const& centre);
    /// Scales about a centre that stays where it is.
    HvTransfo4& Scale(double sx, double sy, double sz, HvPoint3<float> const& centre);
    /// Scales x and y about a centre in the plane z = 0.
    HvTransfo4& ScaleXY(double sx, double sy, HvPoint2<double> const& centre);

    /// x' = x + a z, y' = y + b z, about the origin or a centre that stays where it is.
    HvTransfo4& ShearXY(double a, double b);
    /// The same about a centre that stays where it is.
    HvTransfo4& ShearXY(double a, double b, HvPoint3<double> const& centre);
    /// x' = x + a y, z' = z + b y.
    HvTransfo4& ShearXZ(double a, double b);
    /// The same about a centre that stays where it is.
    HvTransfo4& ShearXZ(double a, double b, HvPoint3<double> const& centre);
    /// y' = y + a x, z' = z + b x.
    HvTransfo4& ShearYZ(double a, double b);
    /// The same about a centre that stays where it is.
    HvTransfo4& ShearYZ(double a, double b, HvPoint3<double> const& centre);

    /// Rotates counter-clockwise about an axis through the origin; the axis need not be of unit
    /// length, a zero axis makes the matrix NaN. Source: the rotation formula of Rodrigues.
    HvTransfo4& Rotate(double degrees, double ax, double ay, double az);
    /// Rotates about the line from `a` to `b`.
    HvTransfo4& Rotate(double degrees, HvPoint3<double> const& a, HvPoint3<double> const& b);
    /// Rotates about the line from `a` to `b`.
    HvTransfo4& Rotate(double degrees, HvPoint3<float> const& a, HvPoint3<float> const& b);
    /// Rotates about the x, then the y, then the z axis: composes Rz * Ry * Rx.
    HvTransfo4& RotateXYZ(HvPoint3<double> const& degrees);
    /// Rotates about the z axis through `centre`.
    HvTransfo4& RotateXY(double degrees, HvPoint2<double> const& centre);
    /// Rotates about `centre` by the angle from the direction of `from` to the direction of `to`;
    /// does nothing when either lies within 1e-7 of `centre` in both coordinates.
    HvTransfo4& RotateXY(HvPoint2<double> const& centre, HvPoint2<double> const& from,
                         HvPoint2<double> const& to);

    // Setting the whole matrix, and taking it apart.

    /// Sets the matrix to T(centre + translation) * R(degrees) * H(shear) * S(sx, sy) * T(-centre),
    /// H being x' = x + shear y.
    void RecomposeXY(HvPoint2<double> const& centre, double sx, double sy, double shear,
                     double degrees, HvPoint2<double> const& translation);
    /// Finds the arguments with which RecomposeXY gives the xy part of this matrix.
    ///
    /// @param degrees  0 up to but not including 360.
    /// @return         1; 0 when the image of the x axis is shorter than 1e-15 or the determinant
    ///                 is nearer to 0 than 1e-15: then `sx` alone may have been written.
    int DecomposeXY(HvPoint2<double> const& centre, double& sx, double& sy, double& shear,
                    double& degrees, HvPoint2<double>& translation) const;
    /// Sets the matrix to the affine map of the plane that takes each of the three points `from` to
    /// its partner in `to`.
    ///
    /// @return  1; 0, with the matrix as it was, when `from` spans a parallelogram below 1e-15.
    int SetTo3PointTransformXY(HvPoint2<double> const* from, HvPoint2<double> const* to);
    /// Maps the unit frame onto p0 (the origin's image), p1, p2, p3 (those of the unit points).
    HvTransfo4& SetTo4PointTransform(HvPoint3<double> const& p0, HvPoint3<double> const& p1,
                                     HvPoint3<double> const& p2, HvPoint3<double> const& p3);
    /// The same with p3 = (p0.x, p0.y, 1): its z is the number 1, wherever p0 lies.
    HvTransfo4& SetTo3PointTransformXY(HvPoint3<double> const& p0, HvPoint3<double> const& p1,
                                       HvPoint3<double> const& p2);
    /// Finds the angles with which RotateXYZ gives the upper 3x3, which must be a pure rotation.
    ///
    /// @param angles  radians. On entry a reference: of the two triples that give the rotation the
    ///                one nearer to it is chosen, the second on a tie, and each member lies within
    ///                half a turn of the reference's. At the poles, where only the sum or the
    ///                difference of x and z is determined, both move equally far from it.
    void ExtractXYZRotationAngles(HvPoint3<double>& angles) const;
    /// Takes the matrix apart into lengths of the first three columns, rotation and translation.
    ///
    /// @param rotation  on entry the reference of ExtractXYZRotationAngles, in radians; on exit
    ///                  degrees. A caller who feeds the result back converts it first.
    void ExtractTransforms(HvPoint3<double>& scale, HvPoint3<double>& rotation,
                           HvPoint3<double>& translation) const;

    // Questions. NaN is answered with 0.

    /// 1 when the diagonal is within 1e-10 of 1 and all else within 1e-7 of 0, otherwise 0.
    int IsIdentity() const;
    /// 1 when the diagonal is within 1e-10 of 1 and all else but the translation within 1e-15 of 0,
    /// otherwise 0. Stricter than IsIdentity on purpose: a map so recognised is applied as a mere
    /// offset.
    int IsTranslation() const;
    /// The same with the first three of the diagonal free.
    int IsScalingAndTranslation() const;
    /// Squared length of the image of the vector (1, 1).
    double GetXYUnitVectorSquaredLength() const;
    /// Squared length, in the xy plane alone, of the image of the vector (1, 1, 1).
    double GetXYZUnitVectorSquaredLength() const;

    /// Sets `out`, which may be this object, to the inverse.
    ///
    /// @return  1; 0 when a pivot is not above 1e-15, with `out` left half-way.
    /// Source: Gauss-Jordan elimination with row pivoting.
    int Inverse(HvTransfo4& out) const;
    /// 1 when there is no inverse, otherwise 0.
    int IsSingular() const;
    /// 1 when there is an inverse whose products with this matrix pass IsIdentity on either side.
    int TestInverse() const;

    // Mapping. The float forms compute in double and round once a coordinate. The matrix's last row
    // plays no part for points: there is no perspective division.

    /// The full product with a vector of four; `in` and `out` may be the same.
    void Map(double const* in, double* out) const;

    /// The image of a point of space.
    template <class T>
    HvPoint3<T> Map(HvPoint3<T> const& p) const;
    /// Stores the image of `in`; the two may be one point.
    template <class T>
    void Map(HvPoint3<T> const& in, HvPoint3<T>& out) const;
    /// Replaces a point by its image.
    template <class T>
    void MapInPlace(HvPoint3<T>& p) const;
    /// Maps n points; `in` and `out` may be the same array, but may not overlap otherwise.
    template <class T>
    void Map(HvPoint3<T> const* in, unsigned int n, HvPoint3<T>* out) const;
    /// Replaces n points by their images.
    template <class T>
    void MapInPlace(HvPoint3<T>* points, unsigned int n) const;

    /// A point of the plane z = 0; the image's z is dropped.
    template <class T>
    HvPoint2<T> Map(HvPoint2<T> const& p) const;
    /// Stores the image of `in`; the two may be one point.
    template <class T>
    void Map(HvPoint2<T> const& in, HvPoint2<T>& out) const;
    /// Replaces a point by its image.
    template <class T>
    void MapInPlace(HvPoint2<T>& p) const;
    /// Maps n points; `in` and `out` may be the same array, but may not overlap otherwise.
    template <class T>
    void Map(HvPoint2<T> const* in, unsigned int n, HvPoint2<T>* out) const;
    /// Replaces n points by their images.
    template <class T>
    void MapInPlace(HvPoint2<T>* points, unsigned int n) const;

    /// The extent that encloses the images of the four corners; an empty extent and the whole plane
    /// are returned as they are.
    template <class T>
    HvExtent2<T> Map(HvExtent2<T> const& extent) const;
    /// Stores what Map gives; the two may be one extent.
    template <class T>
    void Map(HvExtent2<T> const& in, HvExtent2<T>& out) const;
    /// Replaces an extent by what Map gives.
    template <class T>
    void MapInPlace(HvExtent2<T>& extent) const;

private:
    /// Composes `operation`, which acts about the origin, so that it acts about `centre`.
    template <class Operation>
    HvTransfo4& ApplyAbout(HvPoint3<double> const& centre, Operation operation);

    double m[16];
};

/// Writes the four rows of the matrix, a line each: "{", the numbers with a blank between them, in
/// the stream's format, "}".
HV_API std::ostream& operator<<(std::ostream& stream, HvTransfo4 const& t);

// A point is mapped in the innermost loops of every subsystem above: these are inline.

template <class T>
inline HvPoint3<T> HvTransfo4::Map(HvPoint3<T> const& p) const
{
    double const x = p.x;
    double const y = p.y;
    double const z = p.z;
    return HvPoint3<T>(static_cast<T>(m[0] * x + m[4] * y + m[8] * z + m[12]),
                       static_cast<T>(m[1] * x + m[5] * y + m[9] * z + m[13]),
                       static_cast<T>(m[2] * x + m[6] * y + m[10] * z + m[14]));
}

template <class T>
inline void HvTransfo4::Map(HvPoint3<T> const& in, HvPoint3<T>& out) const
{
    out = Map(in);
}

template <class T>
inline void HvTransfo4::MapInPlace(HvPoint3<T>& p) const
{
    p = Map(p);
}

template <class T>
inline HvPoint2<T> HvTransfo4::Map(HvPoint2<T> const& p) const
{
    double const x = p.x;
    double const y = p.y;
    return HvPoint2<T>(static_cast<T>(m[0] * x + m[4] * y + m[12]),
                       static_cast<T>(m[1] * x + m[5] * y + m[13]));
}

template <class T>
inline void HvTransfo4::Map(HvPoint2<T> const& in, HvPoint2<T>& out) const
{
    out = Map(in);
}

template <class T>
inline void HvTransfo4::MapInPlace(HvPoint2<T>& p) const
{
    p = Map(p);
}

#endif
