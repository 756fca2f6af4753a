// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The bench of a key lift: where one stretch of a curve's keys is worked on and copied back.

#ifndef HV_FCURVE_INTERNAL_CFCKEYBENCH_H
#define HV_FCURVE_INTERNAL_CFCKEYBENCH_H

#include <hv/fcurve/internal/CFCDraggedKeys.h>

/// A key's turn to be lifted or put down.
struct CFCKeyTurn {
    unsigned int stretch;
    unsigned int position;
    unsigned int key;  ///< index into the dragged keys
};

/// Lifts and puts down the keys of one stretch after the other. On the bench keys behind the
/// current place lie on a second pile, so that a key goes or comes at the end of an array.
///
/// This one is for the kinds whose keys are made and removed one by one, because their neighbours
/// see it; rotations have their own below.
template <class Curve>
class CFCKeyBench {
public:
    using Traits = HvCurveKindTraits<Curve>;
    using Impl = typename Traits::Impl;

    /// @param impl     the curve worked on.
    /// @param dragged  the keys that the turns speak of.
    /// @param lifted   which keys of the curve a step lifts, as rising indices.
    CFCKeyBench(Impl& impl, CFCDraggedKeys<Curve>& dragged,
                HvAltDynArray<unsigned int> const& lifted);

    /// Whether keys of the curve can be worked on.
    bool CanWork() const { return true; }
    unsigned int Capacity() const;
    /// Makes room for a stretch of `numKeys`.
    void Reserve(unsigned int numKeys);
    /// A step consists of Begin, Work for each of its stretches, and End. None of them fails.
    void Begin();
    /// Lifts `count` keys in the reverse order of `lifts`, puts them down in the order of `puts`,
    /// and writes the keys `first` to `last` of the curve.
    void Work(unsigned int first, unsigned int last, CFCKeyTurn const* lifts,
              CFCKeyTurn const* puts, unsigned int count);
    void End() { isFirstStep_ = false; }

private:
    struct Guard {
        double parameter;
        double leftValue;
        HvPoint2<double> unit;
        double length;
        bool isSet;
        bool isRestored;  ///< in this step
    };

    void Load(unsigned int first, unsigned int last);
    void Store(unsigned int first);
    void Seek(double parameter);
    void Lift(unsigned int key);
    void PutDown(unsigned int key);
    void Create(CFCDraggedKey const& key, CFCDraggedTangents& tangents);
    CFCFacingHandles HandlesBeside(unsigned int left, unsigned int right) const;
    void GiveHandlesBack(CFCDraggedTangents const& tangents, CFCFacingHandles const& now,
                         unsigned int i);
    void GiveHandlesOfStart(CFCFacingHandles const& start, unsigned int k);
    bool IsLifted(double parameter) const;
    void RememberGuards(unsigned int i);
    void RestoreGuards(unsigned int i);

    Impl& impl_;
    CFCDraggedKeys<Curve>& dragged_;
    HvAltDynArray<unsigned int> const& lifted_;
    Curve benchCurve_;
    Impl& bench_;
    typename Impl::Store pile_;   ///< keys of the bench behind the current place, last first
    bool benchHasFirst_ = false;  ///< the bench begins with the first key of the curve
    bool benchHasLast_ = false;
    bool isFirstStep_ = true;
    Guard leftGuard_{};
    Guard rightGuard_{};
};

/// The bench of rotations. A key is not made anew for being moved: it is the same record at another
/// time, with all three angles, its locks, selection, tension, continuity, bias and spins, whatever
/// has become of them since the drag began. What stays is left alone, because keys have no handles.
/// A key that a stretch turns round about its pivot is passed the other way: its bias changes its
/// sign, and it has the spins of the span that was before it.
///
/// A drag of values through one component sets the key's angle of that component and leaves the
/// other two: the key is another rotation then, which the two other curves show between their keys,
/// where they keep their values. Each step gives the angle anew from its start, and back there it
/// is the start's to the bit, though degrees are kept as radians.
template <>
class CFCKeyBench<HvQuatFCurve> {
public:
    using Impl = HvQuatFCurveImpl;

    CFCKeyBench(Impl& impl, CFCDraggedKeys<HvQuatFCurve>& dragged,
                HvAltDynArray<unsigned int> const& lifted)
        : impl_(impl), dragged_(dragged), lifted_(lifted)
    {
    }

    /// Keys in disorder, which a rotation may have, have no places.
    bool CanWork() const { return impl_.Curve().IsValid() != 0; }
    unsigned int Capacity() const;
    void Reserve(unsigned int numKeys);
    void Begin() {}
    void Work(unsigned int first, unsigned int last, CFCKeyTurn const* lifts,
              CFCKeyTurn const* puts, unsigned int count);
    void End() {}

private:
    HvQuatKey Moved(HvQuatKey key, unsigned int k);

    Impl& impl_;
    CFCDraggedKeys<HvQuatFCurve>& dragged_;
    HvAltDynArray<unsigned int> const& lifted_;
    HvAltDynArray<HvQuatKey> moved_{1};  ///< those of the stretch that move, by their new times
    HvAltDynArray<HvQuatKey> keys_{1};   ///< the others, then all of them
};

extern template class CFCKeyBench<HvBooleanFCurve>;
extern template class CFCKeyBench<HvIntegerFCurve>;
extern template class CFCKeyBench<HvRawFCurve>;
extern template class CFCKeyBench<HvStdFCurve>;

#endif
