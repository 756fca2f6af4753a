// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The implementation that every key-based curve shares: finding keys, folding and extrapolating.
// It takes no locks: the curve that owns it holds them while it calls in.

#ifndef HV_FCURVE_INTERNAL_CFCBASEIMPL_H
#define HV_FCURVE_INTERNAL_CFCBASEIMPL_H

#include <hv/fcurve/internal/CFCKeyStore.h>
#include <hv/foundation/HvMemory.h>

class HvBoolArray;
class HvDoubleArray;
class HvPoint2dArray;
class HvPointTagArray;
class HvTransfo4;
template <class T>
struct HvExtent2;

/// A parameter within this distance of a key evaluates as the key.
constexpr double kKeySnapParameter = 1e-12;
/// A scale of values nearer to zero than this would flatten the curve beyond what can be scaled
/// back; it is refused.
constexpr double kSmallestValueScale = 1e-7;
/// The whole parameter axis, and a clamp that limits nothing: the largest finite double.
constexpr double kHvMaxDouble = 1.7976931348623157e308;

/// The limits of a value type that clamp nothing.
template <class T>
struct CFCValueLimits;
template <>
struct CFCValueLimits<bool> {
    static constexpr bool kLower = false;
    static constexpr bool kUpper = true;
};
template <>
struct CFCValueLimits<int> {
    static constexpr int kLower = -2147483647 - 1;
    static constexpr int kUpper = 2147483647;
};
template <>
struct CFCValueLimits<double> {
    static constexpr double kLower = -kHvMaxDouble;
    static constexpr double kUpper = kHvMaxDouble;
};

/// T is the value type, K the key, S the store of keys.
///
/// Invariant: key parameters ascend strictly. Lookups stay in bounds whatever the parameters are,
/// NaN and broken order included. Indices that a caller gives are below the number of keys.
template <class T, class K, class S>
class CFCBaseImpl : public S, public HvAllocated {
public:
    using Store = S;

    T valueWhenNoKeys;
    T lowerClamp = CFCValueLimits<T>::kLower;
    T upperClamp = CFCValueLimits<T>::kUpper;
    unsigned int hintSlot;  ///< thread-local slot of the search hint; a copy never shares it
    unsigned char extrapolation = HvBaseFCurve::ConstantExtrapolation;
    unsigned char defaultBezierTangentConstraint = 0;
    unsigned char readOnly = 0;
    unsigned char timeCurve = 1;
    unsigned char selected = 0;

    explicit CFCBaseImpl(T whenNoKeys);
    /// Copies keys and fields; the hint slot is new.
    CFCBaseImpl(CFCBaseImpl const& other);
    /// Copies keys and fields, not the hint slot. Unchanged when memory runs out.
    CFCBaseImpl& operator=(CFCBaseImpl const& other);
    ~CFCBaseImpl();
    /// Exchanges keys and fields; each side keeps its hint slot.
    void Swap(CFCBaseImpl& other) noexcept;

    // Fields as the shell asks for them: not every kind keeps them in its implementation.

    T ValueWhenNoKeys() const { return valueWhenNoKeys; }
    HvBaseFCurve::ExtrapolationMethod Method() const
    {
        return static_cast<HvBaseFCurve::ExtrapolationMethod>(extrapolation);
    }
    bool IsReadOnly() const { return readOnly != 0; }
    void SetReadOnly(bool on) { readOnly = on ? 1 : 0; }
    bool IsCurveSelected() const { return selected != 0; }
    void SetCurveSelected(bool on) { selected = on ? 1 : 0; }

    unsigned int NumKeys() const { return this->keys.Count(); }
    double Parameter(unsigned int i) const { return this->keys[i].parameter; }
    double FirstParameter() const { return Parameter(0); }
    double LastParameter() const { return Parameter(NumKeys() - 1); }
    /// Whether the extrapolation repeats the key range: a cycling method and two keys or more.
    bool Cycles() const;

    // Finding keys. None may be called without keys, unless it says so.

    /// Returns the number of keys whose parameter is not above p and sets `exact` when the last of
    /// them stands at p. A window around the thread's hint answers near parameters in sequence;
    /// otherwise binary search.
    unsigned int LocateParameter(double p, int& exact) const;
    /// The nearest key, the left one on a tie.
    unsigned int GetNearestKeyIndex(double p) const;
    /// The keys of [lo, hi]; 0, with `last` untouched, when there are none.
    int GetKeyIndicesInClosedInterval(double lo, double hi, unsigned int& first,
                                      unsigned int& last) const;
    /// The keys of an interval with open or closed ends.
    int GetKeyIndicesInInterval(double lo, double hi, unsigned int& first, unsigned int& last,
                                int openAtLo, int openAtHi) const;
    /// The key nearest to p within `tolerance`, the earliest on a tie; 0 when there is none, also
    /// without keys.
    int FindKey(double p, double tolerance, unsigned int& index) const;
    /// FindKey for a p that LocateParameter has told of already: `notAbove` keys are not above it,
    /// and it is `exact` when the last of them stands at it.
    int FindKeyBeside(double p, double tolerance, unsigned int notAbove, bool exact,
                      unsigned int& index) const;
    /// Whether a key of the interval has any of `bits` (for `all`: all of them) in its word; also
    /// without keys.
    int HasConstraintInInterval(unsigned short bits, bool all, double from, double to,
                                int openAtFrom, int openAtTo) const;
    /// 1 when each parameter is smaller than the next.
    int HasAscendingParameters() const;
    /// Drops each key whose parameter does not ascend, as saving does before it sizes the buffer.
    void RepairOrder();

    // Outside the keys.

    /// Maps p into the key range and snaps it to a key; p itself unless the curve cycles.
    double FoldParameter(double p) const;
    /// The same without the snap.
    double FoldIntoKeyRange(double p) const;
    /// The value at a parameter, right-continuous.
    T EvalRightUsingExtrapolationMethod(double p) const;
    /// The same, left-continuous.
    double EvalLeftUsingExtrapolationMethod(double p) const;

    // Extents to redraw. They augment `extent` by keys with their neighbours, handles included; 0,
    // with `extent` as it was, when no key contributes.

    /// The surroundings of the key that stands at exactly p.
    int ComputeKeyExtent(double p, HvExtent2<double>& extent) const;
    /// The surroundings of the last key below p and of the first above it.
    int ComputeNeighboringKeysExtent(double p, HvExtent2<double>& extent) const;
    int ComputeAllKeysExtent(HvExtent2<double>& extent) const;
    /// How many neighbours on each side a key's change reaches: the tangents of an automatic
    /// neighbour change with it, and so does the segment beyond that neighbour. Keys without
    /// tangents reach the next key.
    static constexpr unsigned int kExtentReach = std::is_same<K, CFCStdKey>::value ? 2 : 1;
    /// The keys `first` to `last` themselves, with both values and all handles.
    void AugmentByKeys(unsigned int first, unsigned int last, HvExtent2<double>& extent) const;

    // Flattening. Those that add pieces append to `out`.

    unsigned int Flatten(HvTransfo4 const& transfo, double tolerance, HvPoint2dArray& points,
                         HvPointTagArray& tags, int clamp) const;
    void FlattenFromTo(HvExtent2<double> const& extent, HvTransfo4 const& transfo, double tolerance,
                       HvPoint2dArray& points, HvPointTagArray& tags, HvBoolArray& flags) const;
    void AddFromParameterToFirstKey(double from, CFCFlattenOutput& out) const;
    void AddFromLastKeyToParameter(double to, CFCFlattenOutput& out) const;
    void AddFromParameterToParameterBeforeFirstKey(double from, double to,
                                                   CFCFlattenOutput& out) const;
    void AddFromParameterToParameterAfterLastKey(double from, double to,
                                                 CFCFlattenOutput& out) const;
    unsigned int EvalSequence(double from, double to, double step, double tolerance,
                              HvDoubleArray& parameters, HvDoubleArray& values, int clamp) const;
    /// `value` limited to the clamping values.
    double ClampValue(double value) const
    {
        double const lower = static_cast<double>(lowerClamp);
        double const upper = static_cast<double>(upperClamp);
        return value > upper ? upper : lower > value ? lower : value;
    }

    // Reshaping. The curve that owns the implementation is an argument of all that reshape keys,
    // because the user data of keys that go or move go or move with them.

    /// Convolves the values of the keys of [from, to] with a kernel, as the store does it; handles
    /// move along. Returns 1, also where there is no key. Not for boolean curves.
    int SmoothSequence(double from, double to, double const* kernel, unsigned int kernelSize,
                       HvBaseFCurve& curve);

private:
    // Parts of Flatten and FlattenFromTo.
    void FlattenKeys(HvTransfo4 const& transfo, double tolerance, HvPoint2dArray& points,
                     HvPointTagArray& tags) const;
    void ClampFlattened(HvTransfo4 const& transfo, HvPoint2dArray& points, HvPointTagArray& tags,
                        unsigned int first) const;
    void FlattenAt(double x, HvExtent2<double> const& extent, HvTransfo4 const& transfo,
                   HvPoint2dArray& points, HvPointTagArray& tags, HvBoolArray& flags) const;
    void FlattenUncycled(double a, double b, CFCFlattenOutput& out) const;
    bool FlattenCycled(double a, double b, HvTransfo4 const& transfo, CFCFlattenOutput& out) const;
    void FlattenBody(double a, double b, CFCFlattenOutput& out) const;
    unsigned int SegmentOf(double x) const;
    double FoldIntoCycle(double x, double boundary) const;
    HvExtent2<double> Hull() const;
    double OutsideValue(double x, HvBaseFCurve::KeySide side) const;

    /// Where a parameter stands among the keys.
    struct Location {
        unsigned int count;  ///< keys not above the parameter
        bool exact;          ///< the last of them stands at it
        unsigned int hint;   ///< where the next search of this thread begins
    };

    Location Locate(double p, unsigned int hint) const;
    Location LocateAroundHint(double p, unsigned int hint) const;
    Location Bisect(double p) const;
    unsigned int CountKeysNotAbove(double p, unsigned int first) const;
    unsigned int EarliestAtSameDistance(double p, double lo, unsigned int index) const;
};

#endif
