#include "curves/VNURBSCurveList.h"

#include <new>

VNURBSCurveList::~VNURBSCurveList() {
    while (tail)
        Remove(tail);
}

bool VNURBSCurveList::Contains(const ListNode* node) const {
    if (!node) return false;
    for (const ListNode* n = head; n; n = n->next)
        if (n == node) return true;
    return false;
}

VNURBSCurveList::ListNode* VNURBSCurveList::Next(const ListNode* node) const {
    return node ? node->next : head;
}

bool VNURBSCurveList::Insert(ListNode* after, std::unique_ptr<VCNurbsCurve>& curve) {
    if (!curve) return false;
    if (after && !Contains(after)) return false;
    ListNode* node = new (std::nothrow) ListNode();
    if (!node) return false;
    node->curve = std::move(curve);
    if (!after) {
        node->next = head;
        if (head) head->previous = node;
        head = node;
        if (!tail) tail = node;
    } else {
        node->previous = after;
        node->next = after->next;
        if (after->next)
            after->next->previous = node;
        else
            tail = node;
        after->next = node;
    }
    current = node;
    ++count;
    return true;
}

bool VNURBSCurveList::Remove(ListNode* node) {
    if (!Contains(node)) return false;
    if (node->previous)
        node->previous->next = node->next;
    else
        head = node->next;
    if (node->next)
        node->next->previous = node->previous;
    else
        tail = node->previous;
    if (current == node) current = node->next ? node->next : node->previous;
    delete node;
    --count;
    return true;
}

bool VNURBSCurveList::RemoveCurrent() {
    return Remove(current);
}

bool VNURBSCurveList::RemoveUpTo(ListNode* node) {
    if (!Contains(node)) return false;
    while (head) {
        ListNode* first = head;
        Remove(first);
        if (first == node) break;
    }
    return true;
}
