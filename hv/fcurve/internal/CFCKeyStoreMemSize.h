// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the key stores hold outside of themselves.

#ifndef HV_FCURVE_INTERNAL_CFCKEYSTOREMEMSIZE_H
#define HV_FCURVE_INTERNAL_CFCKEYSTOREMEMSIZE_H

#include <hv/fcurve/internal/CFCKeyStore.h>
#include <hv/foundation/dynamic_mem_size.h>

template <class T, class K>
struct XQDynamicMemRule<CFCKeyStoreA<T, K>, CXQMemBaseType> {
    static unsigned long Get(CFCKeyStoreA<T, K> const& store)
    {
        return XQGetDynamicMemSize(store.keys) + XQGetDynamicMemSize(store.constraints);
    }
};

template <class T, class K>
struct XQDynamicMemRule<CFCKeyStoreB<T, K>, CXQMemBaseType> {
    static unsigned long Get(CFCKeyStoreB<T, K> const& store)
    {
        return XQGetDynamicMemSize(store.keys) + XQGetDynamicMemSizeDeref(store.constraints);
    }
};

template <class T, class K>
struct XQDynamicMemRule<CFCKeyStoreC<T, K>, CXQMemBaseType> {
    static unsigned long Get(CFCKeyStoreC<T, K> const& store)
    {
        return XQGetDynamicMemSize(store.keys);
    }
};

#endif
