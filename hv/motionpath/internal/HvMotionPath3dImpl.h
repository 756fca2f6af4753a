// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What a motion path is behind its lock.

#ifndef HV_MOTIONPATH_INTERNAL_HVMOTIONPATH3DIMPL_H
#define HV_MOTIONPATH_INTERNAL_HVMOTIONPATH3DIMPL_H

#include <hv/foundation/HvDynArray.h>
#include <hv/foundation/HvLPVoidArray.h>
#include <hv/motionpath/HvMotionPath3d.h>
#include <hv/motionpath/HvTwoSidedTangent.h>
#include <hv/motionpath/internal/HvSegmentPolylines.h>

#include <cstdint>

class HvByteWriter;

/// The arrays of a motion path and all that is done with them; HvMotionPath3d, which describes the
/// operations, calls it under its lock. With N points there are N / 3 + 1 nodes, or none.
///
/// The arrays always fit each other: an operation reserves room in all of them before it changes
/// one. Points are changed through EditPoints alone, which forgets what was flattened.
class HvMotionPath3dImpl : public HvAllocated {
public:
    using Point = HvPoint3<double>;
    using TangentInfo = HvMotionPath3d::TangentInfo;
    using PointKind = HvMotionPath3d::PointKind;

    // Bits of a node's flags. Stored in files: never renumber.

    /// The segment that starts at the node is straight and timed linearly.
    static constexpr std::uint8_t sm_LINENODE = 1;
    /// The node keeps its two control points collinear.
    static constexpr std::uint8_t sm_G1LOCK = 2;

    HvMotionPath3dImpl();
    /// Copies all but what was flattened.
    HvMotionPath3dImpl(HvMotionPath3dImpl const& other);
    HvMotionPath3dImpl& operator=(HvMotionPath3dImpl const&) = delete;

    // Reading.

    unsigned int NumPoints() const { return points.Size(); }
    unsigned int NumNodes() const { return times.Size(); }
    bool IsNode(unsigned int point) const { return point < NumPoints() && point % 3 == 0; }
    int GetControlPoint(unsigned int point, Point& p) const;
    int GetControlPoints(unsigned int first, unsigned int last, Point* p, double* t) const;
    int GetControlPointKind(unsigned int point, PointKind& kind) const;
    int GetNode(unsigned int point, Point& p, double& t) const;
    void* GetClientData(unsigned int point) const;
    void SetClientData(unsigned int point, void* data);
    double GetFirstTime() const;
    double GetLastTime() const;
    int GetTangentInfo(unsigned int point, TangentInfo HvTwoSidedTangent::*side,
                       TangentInfo& info) const;
    int SetTangentInfo(unsigned int point, TangentInfo HvTwoSidedTangent::*side, TangentInfo info);

    // Finding and evaluating.

    /// How many node times are not above `t`; `exact` tells whether the last of them is equal. 0
    /// for NaN.
    unsigned int LocateTimeValue(double t, int& exact) const;
    void GetBracketingIndices(double t, unsigned int& left, int& leftValid, unsigned int& right,
                              int& rightValid) const;
    int GetNodeIndexFromInitialTime(double t, double tolerance, unsigned int& point) const;
    int GetClosestControlPointIndex(Point const& p, double radius, unsigned int& point) const;
    void Eval(double t, double tolerance, Point& out) const { Eval(t, tolerance, polylines, out); }
    void EvalSequence(double first, double last, double step, double tolerance,
                      HvPoint3dArray& out) const;

    // Building.

    int Moveto(Point const& p, double t);
    int Lineto(Point const& p, double t);
    int PreLineto(Point const& p, double t);
    int Curveto(Point const& c1, Point const& c2, Point const& p, double t);
    int PreCurveto(Point const& c1, Point const& c2, Point const& p, double t);
    int InsertNode(double t, double tolerance, double nearTime, unsigned int& point, int& exact);
    unsigned int RemoveNodes(unsigned int first, unsigned int last);
    int ScaleAndOffsetInitialTimes(double scale, double offset);

    // Moving points.

    int ReplaceNode(unsigned int point, Point const& p, double t, double minGap);
    int ReplaceControlPoint(unsigned int point, Point const& p, int keepLength);
    int ReplaceControlPointIgnoringLock(unsigned int point, Point const& p);
    int ReplaceTangentVectorDirections(unsigned int point, Point const& v);
    void Transform(HvTransfo4 const& transfo);

    // Locking and smoothing.

    int IsG1ContinuityLocked(unsigned int point) const;
    int UnlockG1Continuity(unsigned int point);
    int LockG1Continuity(unsigned int point);
    void LockG1ContinuityAtAllNodes();
    int LinearizeSegment(unsigned int point);
    int IsCubicSegmentLinearlyParameterized(unsigned int point) const;
    int SmoothSegment(unsigned int point);
    int AdjustFirstTwoCubics(Point& direction);
    int AdjustLastTwoCubics(Point& direction);

    // Display.

    /// Appends the projection to an empty `path`.
    void Project(HvMotionPath3d::Projection plane, HvPath2f& path) const;
    void Render(double first, double last, unsigned int samples, HvPoint3dArray& positions,
                HvUByteArray& kinds, HvDoubleArray& sampleTimes, HvULongArray& nodes) const;

    // Saving.

    unsigned int GetBufferSize() const;
    void Write(HvByteWriter& writer) const;
    /// The path of a body; null, and the reader has failed, when it is none.
    static std::unique_ptr<HvMotionPath3dImpl> Read(HvByteReader& body);

private:
    bool IsLine(unsigned int node) const { return (nodeFlags[node] & sm_LINENODE) != 0; }
    bool IsLocked(unsigned int node) const { return (nodeFlags[node] & sm_G1LOCK) != 0; }
    /// Whether a segment starts at the point `point`.
    bool IsSegment(unsigned int point) const { return IsNode(point) && point + 3 < NumPoints(); }

    HvPoint3dArray& EditPoints() noexcept
    {
        polylines.Drop();
        return points;
    }
    /// Makes room for `newPoints` points and one node, so that InsertPoints and InsertNodeData
    /// cannot fail.
    void ReserveNode(unsigned int newPoints);
    void InsertPoints(unsigned int at, Point const* inserted, unsigned int count) noexcept;
    void InsertNodeData(unsigned int node, double t, std::uint8_t flags) noexcept;
    bool CanAppendAt(double t) const;
    bool CanPrependAt(double t) const;
    void Append(Point const& c1, Point const& c2, Point const& p, double t);
    void Prepend(Point const& p, Point const& c1, Point const& c2, double t, std::uint8_t flags);
    bool SplitCurve(unsigned int s, double t, double tolerance, Point* split) const;

    /// Makes the two controls of the node at `point` collinear with it; 0 when it stopped.
    int AlignHandlesAt(unsigned int point);
    void RotateOpposite(unsigned int node, unsigned int moved, unsigned int opposite,
                        Point const& p, int keepLength);
    /// Replaces a node in space; its controls go along when it is locked.
    void MoveNode(unsigned int point, Point const& p);
    bool NeighbourDirection(unsigned int node, unsigned int control, unsigned int farNode,
                            bool isLine, Point& direction) const;

    int AdjustTwoCubics(unsigned int first, Point& direction);

    void ReadPoints(HvByteReader& body, unsigned int count);
    void ReadNodes(HvByteReader& body, unsigned int count, std::uint32_t version);

    /// What a sample is whose time LocateTimeValue has located.
    HvMotionPath3d::SampleKind SampleKindAt(unsigned int r, int exact) const;

    // With the polylines to use: those of the path, or others, so that a glance at another
    // tolerance leaves them alone.

    void Eval(double t, double tolerance, HvSegmentPolylines& lines, Point& out) const;
    /// The point of a curved segment, `s` its first point, at a time inside it. 0, with the
    /// segment's first point, when it has no length.
    int EvalOnCubic(unsigned int s, double t, double tolerance, HvSegmentPolylines& lines,
                    Point& out) const;
    double DistanceAlong(unsigned int segment, double t, double length, double tolerance,
                         HvSegmentPolylines& lines) const;
    double NodeSpeed(unsigned int node, double tolerance, HvSegmentPolylines& lines) const;

    HvPoint3dArray points;                   ///< node, control, control, node, ...
    HvLPVoidArray clientData;                ///< one for each point
    HvDoubleArray times;                     ///< one for each node, strictly rising
    HvUByteArray nodeFlags;                  ///< one for each node
    HvDynArray<HvTwoSidedTangent> tangents;  ///< one for each node
    mutable HvSegmentPolylines polylines;    ///< of `points` as they are
};

#endif
