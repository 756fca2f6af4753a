// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A ring of pointers.

#ifndef HV_FOUNDATION_HVDLLIST_H
#define HV_FOUNDATION_HVDLLIST_H

#include <hv/foundation/HvMemory.h>

/// One link of an HvDLList.
template <class T>
struct HvDLListNode : HvAllocated {
    HvDLListNode* previous;  ///< the node before; before the head comes the tail
    HvDLListNode* next;      ///< the node behind; behind the tail comes the head
    T* item;                 ///< what the node stands for, not owned
};

/// A circular, doubly linked list of pointers; it owns its nodes, never the items.
///
/// The previous node of the head is the tail. Items are found by their address, not by their value;
/// an item that was put in twice is found once. A std::bad_alloc leaves the list as it was. Not
/// thread-safe: the owner serialises access.
template <class T>
class HvDLList : public HvAllocated {
public:
    /// The links of the list.
    using Node = HvDLListNode<T>;

    /// Where Insert puts the new item: any value but Before is after.
    enum Position : int {
        Before = 0,  ///< in front of the item that is named
        After = 1    ///< behind it
    };

    /// Empty.
    HvDLList() : head_(nullptr), count_(0) {}
    HvDLList(HvDLList const&) = delete;
    HvDLList& operator=(HvDLList const&) = delete;
    ~HvDLList() { RemoveAll(); }

    /// First node; null when the list is empty.
    Node* Head() const { return head_; }
    /// Number of items.
    unsigned int Count() const { return count_; }

    /// The node of an item, null when it is not in the list. Compares the tail first, then walks
    /// from the head. Cost: linear, constant for the tail.
    Node* Search(T* item) const
    {
        if (head_ == nullptr) {
            return nullptr;
        }
        Node* const tail = head_->previous;
        if (tail->item == item) {
            return tail;
        }
        for (Node* node = head_; node != tail; node = node->next) {
            if (node->item == item) {
                return node;
            }
        }
        return nullptr;
    }

    /// Adds an item after the tail; returns its node. Cost: constant.
    Node* Append(T* item)
    {
        Node* const node = new Node;
        node->item = item;
        if (head_ == nullptr) {
            node->previous = node;
            node->next = node;
            head_ = node;
        } else {
            LinkBetween(head_->previous, node, head_);
        }
        ++count_;
        return node;
    }

    /// Adds an item next to the node of `existing`; before the head it becomes the head. Returns
    /// its node, or null, with nothing inserted, when `existing` is not in the list.
    Node* Insert(T* item, T* existing, Position position)
    {
        Node* const place = Search(existing);
        if (place == nullptr) {
            return nullptr;
        }
        Node* const node = new Node;
        node->item = item;
        if (position == Before) {
            LinkBetween(place->previous, node, place);
            if (place == head_) {
                head_ = node;
            }
        } else {
            LinkBetween(place, node, place->next);
        }
        ++count_;
        return node;
    }

    /// Removes an item, if it is there; when it was the head, the next one becomes the head.
    void Remove(T* item)
    {
        Node* const node = Search(item);
        if (node == nullptr) {
            return;
        }
        if (--count_ == 0) {
            head_ = nullptr;
        } else {
            node->previous->next = node->next;
            node->next->previous = node->previous;
            if (node == head_) {
                head_ = node->next;
            }
        }
        delete node;
    }

    /// Empties the list. The items stay.
    void RemoveAll()
    {
        if (head_ != nullptr) {
            head_->previous->next = nullptr;  // cuts the ring, so that the walk ends
        }
        while (head_ != nullptr) {
            Node* const next = head_->next;
            delete head_;
            head_ = next;
        }
        count_ = 0;
    }

private:
    static void LinkBetween(Node* previous, Node* node, Node* next)
    {
        node->previous = previous;
        node->next = next;
        previous->next = node;
        next->previous = node;
    }

    Node* head_;
    unsigned int count_;
};

/// Walks a list from the head, as many items as the list held when the walk began.
///
/// Items may be added meanwhile. The node that comes next must not be removed under the walk; the
/// item that Next() gave last may be.
template <class T>
class HvDLListIter {
public:
    /// Starts at the head of `list`, which must outlive the iterator.
    explicit HvDLListIter(HvDLList<T> const* list)
        : list_(list), node_(list->Head()), left_(list->Count())
    {
    }

    /// The current item, and moves on; null after the last.
    T* Next()
    {
        if (left_ == 0) {
            return nullptr;
        }
        --left_;
        T* const item = node_->item;
        node_ = node_->next;
        return item;
    }

private:
    HvDLList<T> const* list_;
    HvDLListNode<T>* node_;
    unsigned int left_;
};

#endif
