// Groups: members in a linked list of positions, each held by a reference of
// the group's own; display groups submit their members in order.
#include "platform/qd3d/Q3Internal.h"
#include "platform/qd3d/Q3View.h"

#include <unordered_set>

struct OpaqueTQ3GroupPosition {
    TQ3Object object;
    TQ3Object owner;
    OpaqueTQ3GroupPosition* prev;
    OpaqueTQ3GroupPosition* next;
};

namespace q3 {
namespace {

std::unordered_set<const void*>& livePositions() {
    static std::unordered_set<const void*> live;
    return live;
}

int rankOf(TQ3ObjectType t) {
    if (isSubtype(t, kQ3ShapeTypeTransform)) return 0;
    if (isSubtype(t, kQ3ShapeTypeStyle)) return 1;
    if (isSubtype(t, kQ3SetTypeAttribute)) return 2;
    if (isSubtype(t, kQ3ShapeTypeShader)) return 3;
    if (isSubtype(t, kQ3ShapeTypeCamera)) return 4;
    if (isSubtype(t, kQ3ShapeTypeLight)) return 5;
    if (isSubtype(t, kQ3ShapeTypeGeometry)) return 6;
    if (isSubtype(t, kQ3ShapeTypeGroup)) return 7;
    return 8;
}

class GroupObject : public OpaqueTQ3Object {
  public:
    explicit GroupObject(TQ3ObjectType t) : OpaqueTQ3Object(t) {}
    ~GroupObject() override { empty(0); }

    using Pos = OpaqueTQ3GroupPosition*;
    Pos first = nullptr;
    Pos last = nullptr;
    TQ3Uns32 count = 0;
    TQ3DisplayGroupState state = kQ3DisplayGroupStateMaskIsDrawn |
                                 kQ3DisplayGroupStateMaskIsPicked |
                                 kQ3DisplayGroupStateMaskIsWritten;

    bool isDisplay() const { return isSubtype(type, kQ3GroupTypeDisplay); }
    bool isOrdered() const { return type == kQ3DisplayGroupTypeOrdered; }

    bool accepts(TQ3Object o) const {
        if (!o->shared) return false;
        if (type == kQ3GroupTypeLight) return isSubtype(o->type, kQ3ShapeTypeLight);
        if (isDisplay()) return Q3Object_IsDrawable(o) == kQ3True;
        return true;
    }

    bool contains(const OpaqueTQ3Object* target, int depth = 0) const {
        if (depth > 256) return true;
        for (Pos p = first; p; p = p->next) {
            if (p->object == target) return true;
            if (isSubtype(p->object->type, kQ3ShapeTypeGroup) &&
                static_cast<const GroupObject*>(p->object)->contains(target, depth + 1))
                return true;
        }
        return false;
    }

    bool owns(Pos p) const { return p && livePositions().count(p) && p->owner == this; }

    // Links a new node holding object before `before` (null: at the end).
    Pos link(TQ3Object object, Pos before) {
        Pos n;
        try {
            n = new OpaqueTQ3GroupPosition{object, this, nullptr, nullptr};
            livePositions().insert(n);
        } catch (...) {
            postError(kQ3ErrorOutOfMemory);
            return nullptr;
        }
        retain(object);
        n->next = before;
        n->prev = before ? before->prev : last;
        if (n->prev)
            n->prev->next = n;
        else
            first = n;
        if (before)
            before->prev = n;
        else
            last = n;
        ++count;
        edited();
        return n;
    }

    TQ3Object unlink(Pos p) {
        if (p->prev)
            p->prev->next = p->next;
        else
            first = p->next;
        if (p->next)
            p->next->prev = p->prev;
        else
            last = p->prev;
        TQ3Object o = p->object;
        livePositions().erase(p);
        delete p;
        --count;
        edited();
        return o;
    }

    // Where an ordered group keeps an object of this rank: before the first
    // member of a higher rank.
    Pos orderedSlot(TQ3Object o) const {
        int r = rankOf(o->type);
        for (Pos p = first; p; p = p->next)
            if (rankOf(p->object->type) > r) return p;
        return nullptr;
    }

    Pos add(TQ3Object o, Pos before, bool atEnd) {
        if (!accepts(o)) {
            postError(kQ3ErrorInvalidObjectType);
            return nullptr;
        }
        if (o == this || (isSubtype(o->type, kQ3ShapeTypeGroup) &&
                          static_cast<GroupObject*>(o)->contains(this))) {
            postError(kQ3ErrorInvalidParameter);
            return nullptr;
        }
        if (isOrdered()) {
            int r = rankOf(o->type);
            bool fits = !atEnd && (!before || rankOf(before->object->type) >= r) &&
                        (!(before ? before->prev : last) ||
                         rankOf((before ? before->prev : last)->object->type) <= r);
            if (!fits) before = orderedSlot(o);
        }
        return link(o, atEnd && !isOrdered() ? nullptr : before);
    }

    void empty(TQ3ObjectType ofType) {
        for (Pos p = first; p;) {
            Pos next = p->next;
            if (ofType == 0 || isSubtype(p->object->type, ofType)) release(unlink(p));
            p = next;
        }
    }

    TQ3Status submit(View& view) override;
};

TQ3Status GroupObject::submit(View& view) {
    if (type == kQ3GroupTypeLight) return kQ3Success;
    if (isDisplay()) {
        if (!(state & kQ3DisplayGroupStateMaskIsDrawn)) return kQ3Success;
        if (view.mode == Mode::Picking && !(state & kQ3DisplayGroupStateMaskIsPicked))
            return kQ3Success;
        if ((view.mode == Mode::BoundingBox || view.mode == Mode::BoundingSphere) &&
            (state & kQ3DisplayGroupStateMaskIsNotForBounding))
            return kQ3Success;
    }
    bool inlined = isDisplay() && (state & kQ3DisplayGroupStateMaskIsInline);
    if (!inlined) view.pushState();
    view.enterGroup(this, nullptr);
    TQ3Status result = kQ3Success;
    retain(this); // a member's traverse method must not free the group under us
    for (Pos p = first; p; p = p->next) {
        if (!Q3Object_IsDrawable(p->object)) continue;
        view.setPathPosition(p);
        if (p->object->submit(view) != kQ3Success) result = kQ3Failure;
    }
    view.leaveGroup();
    if (!inlined) view.popState();
    release(this);
    return result;
}

GroupObject* group(TQ3Object o) {
    return check<GroupObject>(o, kQ3ShapeTypeGroup);
}

} // namespace
} // namespace q3

using namespace q3;

extern "C" {

TQ3GroupObject Q3Group_New(void) {
    return make<GroupObject>(kQ3ShapeTypeGroup);
}
TQ3GroupObject Q3LightGroup_New(void) {
    return make<GroupObject>(kQ3GroupTypeLight);
}
TQ3GroupObject Q3DisplayGroup_New(void) {
    return make<GroupObject>(kQ3GroupTypeDisplay);
}
TQ3GroupObject Q3OrderedDisplayGroup_New(void) {
    return make<GroupObject>(kQ3DisplayGroupTypeOrdered);
}

TQ3ObjectType Q3Group_GetType(TQ3GroupObject g) {
    GroupObject* gr = group(g);
    if (!gr) return kQ3ObjectTypeInvalid;
    return gr->type == kQ3ShapeTypeGroup ? kQ3ObjectTypeInvalid
                                         : typeBelow(gr->type, kQ3ShapeTypeGroup);
}

TQ3GroupPosition Q3Group_AddObject(TQ3GroupObject g, TQ3Object object) {
    GroupObject* gr = group(g);
    if (!gr || !checkObject(object, 0)) return nullptr;
    return gr->add(object, nullptr, true);
}

TQ3GroupPosition Q3Group_AddObjectBefore(TQ3GroupObject g, TQ3GroupPosition position,
                                         TQ3Object object) {
    GroupObject* gr = group(g);
    if (!gr || !checkObject(object, 0)) return nullptr;
    if (!gr->owns(position)) {
        postError(kQ3ErrorInvalidPositionForGroup);
        return nullptr;
    }
    return gr->add(object, position, false);
}

TQ3GroupPosition Q3Group_AddObjectAfter(TQ3GroupObject g, TQ3GroupPosition position,
                                        TQ3Object object) {
    GroupObject* gr = group(g);
    if (!gr || !checkObject(object, 0)) return nullptr;
    if (!gr->owns(position)) {
        postError(kQ3ErrorInvalidPositionForGroup);
        return nullptr;
    }
    return gr->add(object, position->next, false);
}

TQ3Status Q3Group_GetPositionObject(TQ3GroupObject g, TQ3GroupPosition position,
                                    TQ3Object* object) {
    GroupObject* gr = group(g);
    if (!gr || !object) {
        if (gr) postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    *object = nullptr;
    if (!gr->owns(position)) {
        postError(kQ3ErrorInvalidPositionForGroup);
        return kQ3Failure;
    }
    *object = retain(position->object);
    return kQ3Success;
}

TQ3Status Q3Group_SetPositionObject(TQ3GroupObject g, TQ3GroupPosition position, TQ3Object object) {
    GroupObject* gr = group(g);
    if (!gr || !checkObject(object, 0)) return kQ3Failure;
    if (!gr->owns(position)) {
        postError(kQ3ErrorInvalidPositionForGroup);
        return kQ3Failure;
    }
    if (!gr->accepts(object)) {
        postError(kQ3ErrorInvalidObjectType);
        return kQ3Failure;
    }
    replaceRef(position->object, object);
    gr->edited();
    return kQ3Success;
}

TQ3Object Q3Group_RemovePosition(TQ3GroupObject g, TQ3GroupPosition position) {
    GroupObject* gr = group(g);
    if (!gr) return nullptr;
    if (!gr->owns(position)) {
        postError(kQ3ErrorInvalidPositionForGroup);
        return nullptr;
    }
    return gr->unlink(position);
}

TQ3Status Q3Group_GetFirstPosition(TQ3GroupObject g, TQ3GroupPosition* position) {
    GroupObject* gr = group(g);
    if (!gr || !position) {
        if (gr) postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    *position = gr->first;
    return kQ3Success;
}

TQ3Status Q3Group_GetLastPosition(TQ3GroupObject g, TQ3GroupPosition* position) {
    GroupObject* gr = group(g);
    if (!gr || !position) {
        if (gr) postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    *position = gr->last;
    return kQ3Success;
}

TQ3Status Q3Group_GetNextPosition(TQ3GroupObject g, TQ3GroupPosition* position) {
    GroupObject* gr = group(g);
    if (!gr || !position) {
        if (gr) postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    if (!gr->owns(*position)) {
        postError(kQ3ErrorInvalidPositionForGroup);
        *position = nullptr;
        return kQ3Failure;
    }
    *position = (*position)->next;
    return kQ3Success;
}

TQ3Status Q3Group_GetPreviousPosition(TQ3GroupObject g, TQ3GroupPosition* position) {
    GroupObject* gr = group(g);
    if (!gr || !position) {
        if (gr) postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    if (!gr->owns(*position)) {
        postError(kQ3ErrorInvalidPositionForGroup);
        *position = nullptr;
        return kQ3Failure;
    }
    *position = (*position)->prev;
    return kQ3Success;
}

TQ3Status Q3Group_CountObjects(TQ3GroupObject g, TQ3Uns32* n) {
    return Q3Group_CountObjectsOfType(g, kQ3ObjectTypeShared, n);
}

TQ3Status Q3Group_EmptyObjects(TQ3GroupObject g) {
    GroupObject* gr = group(g);
    if (!gr) return kQ3Failure;
    gr->empty(0);
    return kQ3Success;
}

TQ3Status Q3Group_GetFirstPositionOfType(TQ3GroupObject g, TQ3ObjectType t,
                                         TQ3GroupPosition* position) {
    GroupObject* gr = group(g);
    if (!gr || !position) {
        if (gr) postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    *position = nullptr;
    for (auto p = gr->first; p; p = p->next)
        if (isSubtype(p->object->type, t)) {
            *position = p;
            break;
        }
    return kQ3Success;
}

TQ3Status Q3Group_GetNextPositionOfType(TQ3GroupObject g, TQ3ObjectType t,
                                        TQ3GroupPosition* position) {
    if (Q3Group_GetNextPosition(g, position) != kQ3Success) return kQ3Failure;
    while (*position && !isSubtype((*position)->object->type, t))
        *position = (*position)->next;
    return kQ3Success;
}

TQ3Status Q3Group_CountObjectsOfType(TQ3GroupObject g, TQ3ObjectType t, TQ3Uns32* n) {
    GroupObject* gr = group(g);
    if (!gr || !n) {
        if (gr) postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    *n = 0;
    for (auto p = gr->first; p; p = p->next)
        if (isSubtype(p->object->type, t)) ++*n;
    return kQ3Success;
}

TQ3Status Q3Group_EmptyObjectsOfType(TQ3GroupObject g, TQ3ObjectType t) {
    GroupObject* gr = group(g);
    if (!gr) return kQ3Failure;
    gr->empty(t == 0 ? kQ3ObjectTypeShared : t);
    return kQ3Success;
}

TQ3Status Q3Group_GetFirstObjectPosition(TQ3GroupObject g, TQ3Object object,
                                         TQ3GroupPosition* position) {
    GroupObject* gr = group(g);
    if (!gr || !position) {
        if (gr) postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    *position = nullptr;
    for (auto p = gr->first; p; p = p->next)
        if (p->object == object) {
            *position = p;
            break;
        }
    return kQ3Success;
}

TQ3Status Q3Group_GetNextObjectPosition(TQ3GroupObject g, TQ3Object object,
                                        TQ3GroupPosition* position) {
    if (Q3Group_GetNextPosition(g, position) != kQ3Success) return kQ3Failure;
    while (*position && (*position)->object != object)
        *position = (*position)->next;
    return kQ3Success;
}

TQ3Status Q3Group_Submit(TQ3GroupObject g, TQ3ViewObject view) {
    if (!group(g)) return kQ3Failure;
    return Q3Object_Submit(g, view);
}

TQ3Status Q3DisplayGroup_GetState(TQ3GroupObject g, TQ3DisplayGroupState* state) {
    auto* gr = check<GroupObject>(g, kQ3GroupTypeDisplay);
    if (!gr || !state) {
        if (gr) postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    *state = gr->state;
    return kQ3Success;
}

TQ3Status Q3DisplayGroup_SetState(TQ3GroupObject g, TQ3DisplayGroupState state) {
    auto* gr = check<GroupObject>(g, kQ3GroupTypeDisplay);
    if (!gr) return kQ3Failure;
    gr->state = state;
    gr->edited();
    return kQ3Success;
}

TQ3Status Q3DisplayGroup_Submit(TQ3GroupObject g, TQ3ViewObject view) {
    if (!check<GroupObject>(g, kQ3GroupTypeDisplay)) return kQ3Failure;
    return Q3Object_Submit(g, view);
}

} // extern "C"

namespace q3 {
// The lights of a light group, in order (for the view).
void collectLights(TQ3Object lightGroup, std::vector<TQ3Object>& out) {
    if (!isLive(lightGroup) || !isSubtype(lightGroup->type, kQ3ShapeTypeGroup)) return;
    for (auto p = static_cast<GroupObject*>(lightGroup)->first; p; p = p->next)
        if (isSubtype(p->object->type, kQ3ShapeTypeLight)) out.push_back(p->object);
}
} // namespace q3
