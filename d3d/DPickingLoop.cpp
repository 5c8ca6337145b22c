#include "d3d/DPickingLoop.h"

#include "d3d/DViewerObject.h"

#include <memory>

DPickingLoop::~DPickingLoop() {
    delete pick;
}

void DPickingLoop::PickAt(const MouseEvent& event) {
    if (!extViewer) CheckObject(nullptr);
    TQ3Point2D point{0, 0};
    extViewer->GetPickPoint(point, event);
    delete pick;
    pick = nullptr;
    pick = new DPointPickObject(point);
    distance = 0;
    hit = false;
    RunPass();
    ReadHits();
    delete pick;
    pick = nullptr;
}

void DPickingLoop::StartPass() {
    if (!pick) CheckObject(nullptr);
    CheckStatus(Q3View_StartPicking(View(), pick->object));
}

TQ3ViewStatus DPickingLoop::EndPass() {
    return Q3View_EndPicking(View());
}

void DPickingLoop::SubmitObjects() {
    extViewer->SubmitGeometry();
}

std::uint32_t DPickingLoop::GetHitCount() const {
    if (!pick) return 0;
    TQ3Uns32 n = 0;
    if (Q3Pick_GetNumHits(pick->object, &n) != kQ3Success) {
        Q3Error_Get(nullptr);
        return 0;
    }
    return n;
}

void DPickingLoop::GetHit(std::uint32_t index, DHitData& out) const {
    if (!pick) CheckObject(nullptr);
    TQ3PickDetail valid = 0;
    CheckStatus(Q3Pick_GetPickDetailValidMask(pick->object, index, &valid));
    out.validMask = valid;
    const TQ3PickDetail needed = kQ3PickDetailMaskObject | kQ3PickDetailMaskPath;
    if ((valid & needed) != needed) return;
    TQ3Object object = pick->object;
    CheckStatus(Q3Pick_GetPickDetailData(object, index, kQ3PickDetailMaskObject, &out.object));
    CheckStatus(Q3Pick_GetPickDetailData(object, index, kQ3PickDetailMaskPath, &out.path));
    if (valid & kQ3PickDetailMaskLocalToWorldMatrix)
        CheckStatus(Q3Pick_GetPickDetailData(object, index, kQ3PickDetailMaskLocalToWorldMatrix,
                                             &out.localToWorld));
    if (valid & kQ3PickDetailMaskPickID)
        CheckStatus(Q3Pick_GetPickDetailData(object, index, kQ3PickDetailMaskPickID, &out.pickId));
    if (valid & kQ3PickDetailMaskXYZ)
        CheckStatus(Q3Pick_GetPickDetailData(object, index, kQ3PickDetailMaskXYZ, &out.point));
    if (valid & kQ3PickDetailMaskDistance)
        CheckStatus(
            Q3Pick_GetPickDetailData(object, index, kQ3PickDetailMaskDistance, &out.distance));
}

void DPickingLoop::Store(const DHitData& accepted) {
    distance = accepted.distance;
    hitPoint = {accepted.point.x, accepted.point.y, accepted.point.z, 1.0f};
    hitMatrix = accepted.localToWorld;
    hit = true;
}

void DPickingLoop::ReadHits() {
    const std::uint32_t count = GetHitCount();
    if (count == 0) return;
    BeginHits();
    bool found = false;
    if (count > 1) {
        // A body (part byte 0) under the pointer beats a handle in front of
        // it; the nearest hit of all is still told to HandleHit.
        DHitData first;
        GetHit(0, first);
        for (std::uint32_t i = 0; i < count && !found; ++i) {
            DHitData candidate;
            GetHit(i, candidate);
            if ((candidate.pickId & kPartMask) == 0 && WantsHit(candidate)) {
                HandleHit(first);
                Store(candidate);
                found = true;
            }
        }
    }
    for (std::uint32_t i = 0; i < count && !found; ++i) {
        DHitData candidate;
        GetHit(i, candidate);
        if (WantsHit(candidate)) {
            Store(candidate);
            found = true;
        }
    }
    EndHits();
}
