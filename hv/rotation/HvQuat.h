// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The unit quaternion, and the way back from it to three angles.

#ifndef HV_ROTATION_HVQUAT_H
#define HV_ROTATION_HVQUAT_H

#include <hv/foundation/HvPoint3.h>
#include <hv/platform/HvExport.h>

/// A rotation as a quaternion, scalar part first. A plain value; its operations expect unit length.
///
/// Angles are radians: the members x, y, z of a triple are the angles about those axes, whatever
/// the order in which they act. A positive angle turns counter-clockwise seen from the tip of its
/// axis. NaN and infinity pass through all operations; nothing allocates, nothing is refused.
class HV_API HvQuat {
public:
    /// The order in which the rotations about the axes act on a point, the first letter first: XYZ
    /// is the Hamilton product qz * qy * qx. Stored in files: never renumber.
    enum RotOrder : int {
        XYZ = 0,  ///< x, then y, then z
        XZY = 1,  ///< x, then z, then y
        YXZ = 2,  ///< y, then x, then z
        YZX = 3,  ///< y, then z, then x
        ZXY = 4,  ///< z, then x, then y
        ZYX = 5   ///< z, then y, then x
    };

    double w;  ///< the real part
    double x;  ///< the imaginary part along the x axis
    double y;  ///< the imaginary part along the y axis
    double z;  ///< the imaginary part along the z axis

    /// The identity.
    constexpr HvQuat() : w(1), x(0), y(0), z(0) {}
    /// The four numbers as they are, not normalized.
    constexpr HvQuat(double qw, double qx, double qy, double qz) : w(qw), x(qx), y(qy), z(qz) {}
    /// The rotation by three angles in the order XYZ, normalized.
    explicit HvQuat(HvPoint3<double> const& angles);
    /// The rotation by three angles in any order, normalized; the identity when `order` is none of
    /// the six.
    HvQuat(HvPoint3<double> const& angles, RotOrder order);

    /// Scales to unit length and returns this object.
    ///
    /// A squared length within 1e-12 of 1 is left as it is; one below 1e-12 gives the identity. In
    /// every case `w` ends in -1 .. 1, as the arc cosine wants it; x, y and z are not cut.
    HvQuat& Normalize();

    /// The inverse of a unit quaternion: the vector part with the other sign.
    constexpr HvQuat Conjugate() const { return HvQuat(w, -x, -y, -z); }

    /// Finds the angles of this rotation that lie nearest to a reference, usually the angles of the
    /// previous frame, so that a rotation that moves steadily has angles that do.
    ///
    /// @param angles     set to the angles; may be the same object as `reference`. Left alone when
    ///                   `order` is none of the six.
    /// @param reference  the angles to stay near. Each member of the result lies within half a turn
    ///                   of its member, so its whole turns are kept.
    ///
    /// Two triples give a rotation; the one with the smaller sum of distances on the circle is
    /// taken, on a tie the one whose middle angle lies beyond the quarter turn. Where the middle
    /// angle is a quarter turn, to 1e-12 in its sine, only the sum or the difference of the outer
    /// two is determined, and both move equally far from the reference. Two things are so on
    /// purpose: the middle angle is then chosen by its own distance alone, and an undetermined sum
    /// below 1e-6 gives both outer angles the negative mean of the reference's.
    ///
    /// Accuracy: every element of the result's rotation matrix is within 5e-14 of this one's, for
    /// angles of a few turns; nearer to a pole than 1.5e-6 it may be off by that distance, since
    /// the middle angle is then set to the quarter turn. Of a quaternion that is not of unit length
    /// the angles are those that its elements happen to give. Cost: three to five inverse
    /// functions. Threads: reads only.
    void Get(HvPoint3<double>& angles, HvPoint3<double> const& reference, RotOrder order) const;
    /// The same in the order XYZ.
    void Get(HvPoint3<double>& angles, HvPoint3<double> const& reference) const;
    /// The same near (0, 0, 0).
    void Get(HvPoint3<double>& angles, RotOrder order) const;
    /// The same near (0, 0, 0) in the order XYZ.
    void Get(HvPoint3<double>& angles) const;
};

/// The Hamilton product: the rotation `b`, then the rotation `a`.
constexpr HvQuat operator*(HvQuat const& a, HvQuat const& b)
{
    return HvQuat(a.w * b.w - a.x * b.x - a.y * b.y - a.z * b.z,
                  a.w * b.x + a.x * b.w + a.y * b.z - a.z * b.y,
                  a.w * b.y - a.x * b.z + a.y * b.w + a.z * b.x,
                  a.w * b.z + a.x * b.y - a.y * b.x + a.z * b.w);
}

#endif
