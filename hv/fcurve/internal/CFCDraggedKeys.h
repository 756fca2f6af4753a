// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The keys that a dragging tool holds: what they were when the drag began, where they are now, and
// where the next step puts them.

#ifndef HV_FCURVE_INTERNAL_CFCDRAGGEDKEYS_H
#define HV_FCURVE_INTERNAL_CFCDRAGGEDKEYS_H

#include <hv/fcurve/internal/HvCurveToolAccess.h>

/// One key of the drag. On a kind whose keys hold one value both values are that value, but for the
/// first key of a stepped curve, whose left value is the curve's.
struct CFCDraggedKey {
    double startParameter;
    double startLeftValue;
    double startRightValue;
    double parameter;  ///< where the key stands now
    double leftValue;
    double rightValue;
    double previousParameter;  ///< where it stood before the last step
    double targetParameter;    ///< where the next step puts it; set by the tool before each step
    double targetLeftValue;
    double targetRightValue;
    unsigned short word;   ///< constraint word without the selection bit
    bool isSelected;       ///< the curve and the key are selected
    bool isLost;           ///< the last step did not find the key at `parameter`: it took no part
    unsigned char state;   ///< the tool's own
    unsigned char region;  ///< the tool's own
};

/// The two handles that face each other across a segment which a key divides, or divided.
struct CFCFacingHandles {
    double leftParameter;  ///< of the two keys, which must be the same for the memory to be good
    double rightParameter;
    HvPoint2<double> left;  ///< right handle of the left key
    HvPoint2<double> right;
    bool isSet;
};

/// What a key of a standard curve has besides.
struct CFCDraggedTangents {
    HvPoint2<double> leftUnit;  ///< stored left handle at the start: direction, zero for none
    HvPoint2<double> rightUnit;
    double leftLength;
    double rightLength;
    double leftGap;  ///< distance to the previous key at the start, 0 at the end of the curve
    double rightGap;
    unsigned char leftKind;       ///< kind of the span before the key at the start
    unsigned char rightKind;      ///< kind of the span after it
    unsigned char targetKind;     ///< kind that the next step gives it; initially rightKind
    unsigned char temporaryKind;  ///< of the span that it divides where it stands
    unsigned char privateByte1;
    unsigned char privateByte2;
    CFCFacingHandles atStart;    ///< beside the key when it was lifted first
    CFCFacingHandles undivided;  ///< before it was put down where it stands
    CFCFacingHandles divided;    ///< after that
};

/// What a key of a rotation has besides.
struct CFCDraggedRotation {
    double startAngle;      ///< radians, of the component dragged
    short otherSpins : 12;  ///< of the span before it at the start; its own while it is turned
    bool isTurned;          ///< the spans beside it have changed sides
    bool targetIsTurned;    ///< what the next step makes of it
};

/// The keys of a drag in the order in which they were added, which must ascend. Only kinds with
/// tangents fill `tangents`, only rotations `rotations`; element i of all arrays is the same key.
template <class Curve>
class CFCDraggedKeys {
public:
    using Traits = HvCurveKindTraits<Curve>;
    using Impl = typename Traits::Impl;
    using FSKind = HvBaseFCurve::FSKind;

    HvAltDynArray<CFCDraggedKey> keys{1};
    HvAltDynArray<CFCDraggedTangents> tangents{1};
    HvAltDynArray<CFCDraggedRotation> rotations{1};
    bool isUniform = true;  ///< all spans had one kind at the start
    FSKind firstSegmentKind = HvBaseFCurve::ConstantSegment;
    FSKind lastKeyKind = HvBaseFCurve::ConstantSegment;

    /// Looks at the kinds of the curve's spans. To be called once, before the first key is added.
    void BeginWith(Impl const& impl);
    /// Makes room for `count` keys.
    void Reserve(unsigned int count);
    /// Adds the key at index i of the curve, with targets where it stands, state and region 0.
    void Add(Impl const& impl, unsigned int i);
    unsigned int Count() const { return keys.Count(); }
};

/// Whether parameters and values of a key may move, from its constraint word.
inline bool CFCDraggedKey_IsParameterFree(unsigned short word)
{
    return (word & CFCKeyConstraint::kParameterLocked) == 0;
}
inline bool CFCDraggedKey_IsValueFree(unsigned short word)
{
    return (word & CFCKeyConstraint::kValueLocked) == 0;
}

/// Gives key i of a rotation, whatever its locks, the value that a step gives the dragged `key`:
/// where that is the value of the start, the very angle of the start, and where it is the one that
/// the key has, none.
void CFCDraggedKey_SetAngle(HvQuatFCurveImpl& impl, unsigned int i, CFCDraggedKey const& key,
                            CFCDraggedRotation const& rotation);

extern template class CFCDraggedKeys<HvBooleanFCurve>;
extern template class CFCDraggedKeys<HvIntegerFCurve>;
extern template class CFCDraggedKeys<HvRawFCurve>;
extern template class CFCDraggedKeys<HvStdFCurve>;
extern template class CFCDraggedKeys<HvQuatFCurve>;

#endif
