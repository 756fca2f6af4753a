// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The work of the tangent mover.

#ifndef HV_FCURVE_INTERNAL_HVSTDTGTMOVERIMPL_H
#define HV_FCURVE_INTERNAL_HVSTDTGTMOVERIMPL_H

#include <hv/fcurve/HvStdFCurve.h>
#include <hv/foundation/HvExtent2.h>

/// The boundary of what makes a cubic rise, in one of its two inner abscissas: with the others of
/// a, b, c, d given, the values between which b lies. Both are drawn inwards by a millionth of
/// their distance, or more where rounding asks for it, so that the segment is valid at both.
///
/// @return  1; 0 with r0 and r1 as they were when no b serves.
int ValidHandleAbscissaFromRight(double a, double c, double d, double& r0, double& r1);
/// The same for c with a, b, d given.
int ValidHandleAbscissaFromLeft(double a, double b, double d, double& r0, double& r1);

class HvStdTgtMoverImpl : public HvAllocated {
public:
    using Point = HvPoint2<double>;
    using KeySide = HvBaseFCurve::KeySide;

    HvStdTgtMoverImpl(HvStdFCurve& curve, double x, KeySide side, double tolerance);

    int Update(Point const& handle, int keepContinuity, int keepLengthContinuity, double scale,
               HvExtent2<double>& invalid);
    /// Update for a handle on that side, as it is known to be.
    int UpdateLeft(Point const& handle, int keepContinuity, int keepLengthContinuity, double scale,
                   HvExtent2<double>& invalid);
    int UpdateRight(Point const& handle, int keepContinuity, int keepLengthContinuity, double scale,
                    HvExtent2<double>& invalid);
    /// The right handle `p` that goes with the left handle `q` of the key.
    void CandidateP1FromCandidateQ2(Point& q, double scale, int keepContinuity,
                                    int keepLengthContinuity, Point* p) const;
    /// The left handle `p` that goes with the right handle `q` of the key.
    void CandidateQ2FromCandidateP1(Point& q, double scale, int keepContinuity,
                                    int keepLengthContinuity, Point* p) const;

private:
    /// What a step asks for besides the position.
    struct Wishes {
        bool continuity;
        bool lengthContinuity;
        double scale;
    };
    /// The handles around the key, all facing it or each other across a segment. The drag is worked
    /// out on the left side of the key; for a right handle all x change their signs, so `near` is
    /// what lies on the dragged side of the key and `far` what lies on the other:
    ///
    ///     nearKey --> nearHandle   dragged <-- key --> opposite   farHandle <-- farKey
    struct Handles {
        Point nearHandle;
        Point dragged;
        Point opposite;
        Point farHandle;
    };

    Point Turned(Point const& P) const { return Point(sign_ * P.x, P.y); }
    void ClearDerivingConstraints(HvExtent2<double>& invalid);
    int Drag(Point const& handle, Wishes const& wishes, HvExtent2<double>& invalid);
    bool FindCandidate(Point const& wanted, unsigned short word, double scale,
                       Point& candidate) const;
    bool Rises(double a, double b, double c, double d) const;
    bool FindSecond(double a, double& b, double c, double d) const;
    bool FindThird(double a, double b, double& c, double d) const;
    bool FitNearSegment(Handles& handles) const;
    bool FitFarSegment(Handles& handles) const;
    Point FollowingHandle(Point const& dragged, Wishes const& wishes) const;
    Point FollowingDirection(Point const& dragged, Wishes const& wishes) const;
    Handles Current() const;
    void Store(Handles const& handles, bool farToo, HvExtent2<double>& invalid);

    HvStdFCurve& curve_;
    KeySide side_;
    double sign_;  ///< 1 for a left handle, -1 for a right one
    unsigned int index_ = 0;
    double parameter_ = 0;
    bool usable_ = false;
    bool firstUpdate_ = true;
    bool hasNear_ = false;
    bool hasFar_ = false;
    Handles start_;     ///< at construction; every step begins here
    Handles working_;   ///< as last stored
    Point keyDragged_;  ///< the key's point on the dragged side
    Point keyOpposite_;
    Point nearKey_;
    Point farKey_;
};

#endif
