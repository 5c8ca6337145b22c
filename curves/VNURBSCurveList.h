// A doubly linked list of curves, each owned by its node, with a current node.
#pragma once

#include "curves/VCNurbsCurve.h"

#include <cstdint>
#include <memory>

class VNURBSCurveList {
  public:
    struct ListNode {
        ListNode* next = nullptr;
        ListNode* previous = nullptr;
        std::unique_ptr<VCNurbsCurve> curve;
    };

    VNURBSCurveList() = default;
    // Removes the nodes from the tail up to the head.
    virtual ~VNURBSCurveList();

    VNURBSCurveList(const VNURBSCurveList&) = delete;
    VNURBSCurveList& operator=(const VNURBSCurveList&) = delete;

    // A new node behind after (at the head for null), owning curve; it
    // becomes the current node. False, and curve untouched, for a null
    // curve, an after that is not in the list or no memory.
    bool Insert(ListNode* after, std::unique_ptr<VCNurbsCurve>& curve);
    // Unlinks and deletes node with its curve; false for a node not in the list.
    bool Remove(ListNode* node);
    bool RemoveCurrent();
    // Removes every node from the head up to and including node; false, and
    // nothing removed, for a node not in the list.
    bool RemoveUpTo(ListNode* node);
    bool Contains(const ListNode* node) const;
    // The node after node; the head for null.
    ListNode* Next(const ListNode* node) const;

    ListNode* head = nullptr;
    ListNode* tail = nullptr;
    ListNode* current = nullptr;
    std::int32_t count = 0;
};
