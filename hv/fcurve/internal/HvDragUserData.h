// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The user data of keys that a tool lifts again and again.

#ifndef HV_FCURVE_INTERNAL_HVDRAGUSERDATA_H
#define HV_FCURVE_INTERNAL_HVDRAGUSERDATA_H

#include <hv/foundation/HvAltDynArray.h>

class CFCUserDataSet;
class HvBaseFCurve;

/// Copies of the sets of a drag's keys, made at its start: a key that is removed loses its set, and
/// gets the copy at the end of the drag. Takes no locks.
class HvDragUserData {
public:
    HvDragUserData() = default;
    ~HvDragUserData();
    HvDragUserData(HvDragUserData const&) = delete;
    HvDragUserData& operator=(HvDragUserData const&) = delete;

    /// Copies the set of the key at `parameter`, if it has one, for the dragged key `key`. Takes no
    /// memory where there is none.
    void Save(HvBaseFCurve const& curve, double parameter, unsigned int key);
    /// Gives each copy to its key, which stands at parameterOf(key); a key that is gone gets none.
    /// Each copy is given once: after std::bad_alloc the rest can be given by another call.
    template <class ParameterOf>
    void Restore(HvBaseFCurve& curve, ParameterOf parameterOf)
    {
        for (Copy& copy : copies_) {
            Give(copy, curve, parameterOf(copy.key));
        }
    }

private:
    struct Copy {
        CFCUserDataSet* set;  ///< owned; null once it is given
        unsigned int key;
    };

    static void Give(Copy& copy, HvBaseFCurve& curve, double parameter);

    HvAltDynArray<Copy> copies_{1};
};

#endif
