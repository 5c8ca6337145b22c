/* Groups: plain, light, display and ordered display groups. Each member is
 * held with a reference of the group's own. */
#ifndef QD3D_GROUP_H
#define QD3D_GROUP_H

#include "platform/qd3d/QD3DTypes.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef enum TQ3DisplayGroupStateMasks {
    kQ3DisplayGroupStateNone = 0,
    kQ3DisplayGroupStateMaskIsDrawn = 1 << 0,
    kQ3DisplayGroupStateMaskIsInline = 1 << 1,
    kQ3DisplayGroupStateMaskUseBoundingBox = 1 << 2,
    kQ3DisplayGroupStateMaskUseBoundingSphere = 1 << 3,
    kQ3DisplayGroupStateMaskIsPicked = 1 << 4,
    kQ3DisplayGroupStateMaskIsWritten = 1 << 5,
    kQ3DisplayGroupStateMaskIsNotForBounding = 1 << 6
} TQ3DisplayGroupStateMasks;
typedef TQ3Uns32 TQ3DisplayGroupState;

TQ3GroupObject Q3Group_New(void);
TQ3GroupObject Q3LightGroup_New(void);
TQ3GroupObject Q3DisplayGroup_New(void);
TQ3GroupObject Q3OrderedDisplayGroup_New(void);
TQ3ObjectType Q3Group_GetType(TQ3GroupObject group);

/* Adding answers the new position, or NULL when the object does not fit
 * the group (a light group holds lights, a display group drawable objects). */
TQ3GroupPosition Q3Group_AddObject(TQ3GroupObject group, TQ3Object object);
TQ3GroupPosition Q3Group_AddObjectBefore(TQ3GroupObject group, TQ3GroupPosition position,
                                         TQ3Object object);
TQ3GroupPosition Q3Group_AddObjectAfter(TQ3GroupObject group, TQ3GroupPosition position,
                                        TQ3Object object);
/* Hands out a new reference, which the caller disposes of. */
TQ3Status Q3Group_GetPositionObject(TQ3GroupObject group, TQ3GroupPosition position,
                                    TQ3Object* object);
TQ3Status Q3Group_SetPositionObject(TQ3GroupObject group, TQ3GroupPosition position,
                                    TQ3Object object);
/* Takes the member out and hands the group's reference to the caller. */
TQ3Object Q3Group_RemovePosition(TQ3GroupObject group, TQ3GroupPosition position);
TQ3Status Q3Group_GetFirstPosition(TQ3GroupObject group, TQ3GroupPosition* position);
TQ3Status Q3Group_GetLastPosition(TQ3GroupObject group, TQ3GroupPosition* position);
TQ3Status Q3Group_GetNextPosition(TQ3GroupObject group, TQ3GroupPosition* position);
TQ3Status Q3Group_GetPreviousPosition(TQ3GroupObject group, TQ3GroupPosition* position);
TQ3Status Q3Group_CountObjects(TQ3GroupObject group, TQ3Uns32* nObjects);
TQ3Status Q3Group_EmptyObjects(TQ3GroupObject group);
TQ3Status Q3Group_GetFirstPositionOfType(TQ3GroupObject group, TQ3ObjectType isType,
                                         TQ3GroupPosition* position);
TQ3Status Q3Group_GetNextPositionOfType(TQ3GroupObject group, TQ3ObjectType isType,
                                        TQ3GroupPosition* position);
TQ3Status Q3Group_CountObjectsOfType(TQ3GroupObject group, TQ3ObjectType isType,
                                     TQ3Uns32* nObjects);
TQ3Status Q3Group_EmptyObjectsOfType(TQ3GroupObject group, TQ3ObjectType isType);
TQ3Status Q3Group_GetFirstObjectPosition(TQ3GroupObject group, TQ3Object object,
                                         TQ3GroupPosition* position);
TQ3Status Q3Group_GetNextObjectPosition(TQ3GroupObject group, TQ3Object object,
                                        TQ3GroupPosition* position);
TQ3Status Q3Group_Submit(TQ3GroupObject group, TQ3ViewObject view);

TQ3Status Q3DisplayGroup_GetState(TQ3GroupObject group, TQ3DisplayGroupState* state);
TQ3Status Q3DisplayGroup_SetState(TQ3GroupObject group, TQ3DisplayGroupState state);
TQ3Status Q3DisplayGroup_Submit(TQ3GroupObject group, TQ3ViewObject view);

#ifdef __cplusplus
}
#endif

#endif
