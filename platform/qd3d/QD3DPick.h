/* Picking. A window point pick finds what lies under a point of the window:
 * surfaces that cover it, lines within the edge tolerance and points within
 * the vertex tolerance (in pixels). Each geometry gives at most one hit. */
#ifndef QD3D_PICK_H
#define QD3D_PICK_H

#include "platform/qd3d/QD3DTypes.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef enum TQ3PickSort {
    kQ3PickSortNone = 0,
    kQ3PickSortNearToFar = 1,
    kQ3PickSortFarToNear = 2
} TQ3PickSort;

typedef enum TQ3PickDetailMasks {
    kQ3PickDetailNone = 0,
    kQ3PickDetailMaskPickID = 1 << 0,
    kQ3PickDetailMaskPath = 1 << 1,
    kQ3PickDetailMaskObject = 1 << 2,
    kQ3PickDetailMaskLocalToWorldMatrix = 1 << 3,
    kQ3PickDetailMaskXYZ = 1 << 4,
    kQ3PickDetailMaskDistance = 1 << 5,
    kQ3PickDetailMaskNormal = 1 << 6,
    kQ3PickDetailMaskShapePart = 1 << 7
} TQ3PickDetailMasks;
typedef TQ3Uns32 TQ3PickDetail;

typedef struct TQ3PickData {
    TQ3PickSort sort;
    TQ3PickDetail mask;
    TQ3Uns32 numHitsToReturn; /* 0: all */
} TQ3PickData;

typedef struct TQ3WindowPointPickData {
    TQ3PickData data;
    TQ3Point2D point;
    float vertexTolerance;
    float edgeTolerance;
} TQ3WindowPointPickData;

/* The groups from the submitted root down to the geometry: positions[i] is
 * the position in the group of level i. */
typedef struct TQ3HitPath {
    TQ3GroupObject rootGroup;
    TQ3Uns32 depth;
    TQ3GroupPosition* positions;
} TQ3HitPath;

TQ3PickObject Q3WindowPointPick_New(const TQ3WindowPointPickData* data);
TQ3Status Q3WindowPointPick_GetData(TQ3PickObject pick, TQ3WindowPointPickData* data);
TQ3Status Q3WindowPointPick_SetData(TQ3PickObject pick, const TQ3WindowPointPickData* data);
TQ3Status Q3WindowPointPick_GetPoint(TQ3PickObject pick, TQ3Point2D* point);
TQ3Status Q3WindowPointPick_SetPoint(TQ3PickObject pick, const TQ3Point2D* point);
TQ3ObjectType Q3Pick_GetType(TQ3PickObject pick);
TQ3Status Q3Pick_GetData(TQ3PickObject pick, TQ3PickData* data);
TQ3Status Q3Pick_GetNumHits(TQ3PickObject pick, TQ3Uns32* numHits);
TQ3Status Q3Pick_EmptyHitList(TQ3PickObject pick);
TQ3Status Q3Pick_GetPickDetailValidMask(TQ3PickObject pick, TQ3Uns32 index,
                                        TQ3PickDetail* pickDetailValidMask);
/* data receives, by detail: TQ3Uns32, TQ3HitPath (emptied with
 * Q3HitPath_EmptyData), TQ3Object (a new reference), TQ3Matrix4x4,
 * TQ3Point3D (world), float (world distance from the eye), TQ3Vector3D. */
TQ3Status Q3Pick_GetPickDetailData(TQ3PickObject pick, TQ3Uns32 index,
                                   TQ3PickDetail pickDetailValue, void* detailData);
TQ3Status Q3HitPath_EmptyData(TQ3HitPath* hitPath);

#ifdef __cplusplus
}
#endif

#endif
