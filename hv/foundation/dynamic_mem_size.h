// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// How much memory a structure holds beyond its own object.

#ifndef HV_FOUNDATION_DYNAMIC_MEM_SIZE_H
#define HV_FOUNDATION_DYNAMIC_MEM_SIZE_H

#include <hv/foundation/HvAltDynArray.h>
#include <hv/foundation/HvDynArray.h>
#include <hv/foundation/HvTypedArray.h>

#include <map>
#include <type_traits>
#include <utility>
#include <vector>

// A policy says what counts as held by a value. A pair of policies serves a std::pair, and the
// elements of a std::map; the policy of a std::vector serves its elements.

/// The value itself, by the rule of its type; a pointer holds nothing.
struct CXQMemBaseType {};

/// What a pointer points at, by the policy P, and the object pointed at; a null pointer holds
/// nothing.
template <class P>
struct CXQMemDereference {
};

/// The rule of a type under a policy: `static unsigned long Get(X const&)`, the bytes held outside
/// the object. A class that holds storage specialises it beside its own definition; without a rule
/// only types that can hold nothing compile. The third argument is there for rules that serve every
/// type with some property.
template <class X, class Policy, class = void>
struct XQDynamicMemRule {
    static_assert(std::is_trivially_destructible<X>::value,
                  "a type that holds storage needs a rule of its own");

    /// Nothing: such a type holds no storage.
    static unsigned long Get(X const&) { return 0; }
};

/// Bytes that `x` holds outside the object itself.
template <class X, class Policy = CXQMemBaseType>
unsigned long XQGetDynamicMemSize(X const& x)
{
    return XQDynamicMemRule<X, Policy>::Get(x);
}

/// Bytes that `x` holds, with the object itself.
template <class X, class Policy = CXQMemBaseType>
unsigned long XQGetMemSize(X const& x)
{
    return static_cast<unsigned long>(sizeof(X)) + XQGetDynamicMemSize<X, Policy>(x);
}

/// Bytes of what a pointer of type P points at, with the object pointed at; 0 for null.
template <class P>
unsigned long XQGetDynamicMemSizeDeref(P const& pointer)
{
    return XQGetDynamicMemSize<P, CXQMemDereference<CXQMemBaseType>>(pointer);
}

/// Bytes of one node of a balanced tree that carries an X.
template <class X>
constexpr unsigned long XQComputeSTLTreeNodeSize()
{
    struct Node {
        int color;
        void* parent;
        void* left;
        void* right;
        alignas(X) unsigned char value[sizeof(X)];
    };
    return static_cast<unsigned long>(sizeof(Node));
}

/// A pointer whose target counts, with what the target holds.
template <class T, class P>
struct XQDynamicMemRule<T*, CXQMemDereference<P>> {
    static unsigned long Get(T* pointer)
    {
        return pointer == nullptr ? 0 : XQGetMemSize<std::remove_cv_t<T>, P>(*pointer);
    }
};

/// Whether X is one of the typed arrays, told by its base.
template <class T>
std::true_type XQIsTypedArray(HvTypedArray<T> const*);
/// The answer for every other type.
std::false_type XQIsTypedArray(void const*);

/// A typed array: what it has allocated.
template <class X>
struct XQDynamicMemRule<
    X, CXQMemBaseType,
    std::enable_if_t<decltype(XQIsTypedArray(static_cast<X const*>(nullptr)))::value>> {
    static unsigned long Get(X const& array)
    {
        return static_cast<unsigned long>(array.Capacity()) * sizeof(array[0]);
    }
};

/// An array of records: what it has allocated.
template <class T>
struct XQDynamicMemRule<HvAltDynArray<T>, CXQMemBaseType> {
    static unsigned long Get(HvAltDynArray<T> const& array)
    {
        return static_cast<unsigned long>(array.Capacity()) * sizeof(T);
    }
};

/// Every slot up to the capacity holds a live element.
template <class T>
struct XQDynamicMemRule<HvDynArray<T>, CXQMemBaseType> {
    static unsigned long Get(HvDynArray<T> const& array)
    {
        unsigned long bytes = static_cast<unsigned long>(array.Capacity()) * sizeof(T);
        for (unsigned int i = 0; i < array.Capacity(); ++i) {
            bytes += XQGetDynamicMemSize<T>(array[i]);
        }
        return bytes;
    }
};

/// A pair: what its two members hold.
template <class A, class B, class PolicyA, class PolicyB>
struct XQDynamicMemRule<std::pair<A, B>, std::pair<PolicyA, PolicyB>> {
    static unsigned long Get(std::pair<A, B> const& pair)
    {
        return XQGetDynamicMemSize<std::remove_cv_t<A>, PolicyA>(pair.first) +
               XQGetDynamicMemSize<std::remove_cv_t<B>, PolicyB>(pair.second);
    }
};

template <class A, class B>
struct XQDynamicMemRule<std::pair<A, B>, CXQMemBaseType>
    : XQDynamicMemRule<std::pair<A, B>, std::pair<CXQMemBaseType, CXQMemBaseType>> {
};

/// Under CXQMemBaseType both members of an element count by the rule of their types.
template <class K, class V, class Less, class Allocator, class Policy>
struct XQDynamicMemRule<std::map<K, V, Less, Allocator>, Policy> {
    static unsigned long Get(std::map<K, V, Less, Allocator> const& map)
    {
        using Element = std::pair<K const, V>;
        unsigned long bytes =
            static_cast<unsigned long>(map.size()) * XQComputeSTLTreeNodeSize<Element>();
        for (Element const& element : map) {
            bytes += XQGetDynamicMemSize<Element, Policy>(element);
        }
        return bytes;
    }
};

/// A vector: what it has allocated, and what its elements hold.
template <class T, class Allocator, class Policy>
struct XQDynamicMemRule<std::vector<T, Allocator>, Policy> {
    static unsigned long Get(std::vector<T, Allocator> const& vector)
    {
        unsigned long bytes = static_cast<unsigned long>(vector.capacity()) * sizeof(T);
        for (T const& element : vector) {
            bytes += XQGetDynamicMemSize<T, Policy>(element);
        }
        return bytes;
    }
};

#endif
