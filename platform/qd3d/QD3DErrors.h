/* Library errors: each failing call posts one; Q3Error_Get reads them. */
#ifndef QD3D_ERRORS_H
#define QD3D_ERRORS_H

#include "platform/qd3d/QD3DTypes.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef enum TQ3Error {
    kQ3ErrorNone = 0,
    kQ3ErrorInternalError = -28500,
    kQ3ErrorNotInitialized,
    kQ3ErrorAlreadyInitialized,
    kQ3ErrorOutOfMemory,
    kQ3ErrorNULLParameter,
    kQ3ErrorInvalidParameter,
    kQ3ErrorInvalidObject,
    kQ3ErrorInvalidObjectType,
    kQ3ErrorInvalidObjectClass,
    kQ3ErrorInvalidObjectName,
    kQ3ErrorInvalidPositionForGroup,
    kQ3ErrorParameterOutOfRange,
    kQ3ErrorBoundsNotStarted,
    kQ3ErrorPickingNotStarted,
    kQ3ErrorRenderingNotStarted,
    kQ3ErrorViewNotStarted,
    kQ3ErrorViewIsStarted,
    kQ3ErrorRendererNotSet,
    kQ3ErrorDrawContextNotSet,
    kQ3ErrorCameraNotSet,
    kQ3ErrorAccessRestricted,
    kQ3ErrorUnsupportedPixelType,
    kQ3ErrorUnsupportedFunctionality,
    kQ3ErrorAttributeNotContained,
    kQ3ErrorAttributeInvalidType,
    kQ3ErrorDegenerateGeometry,
    kQ3ErrorStringTooLong,
    kQ3ErrorClassAlreadyRegistered,
    kQ3ErrorFileNotOpen
} TQ3Error;

/* Answers the latest error and stores the first one since the last call in
 * firstError (which may be NULL); both are cleared afterwards. */
TQ3Error Q3Error_Get(TQ3Error* firstError);
TQ3Boolean Q3Error_IsFatalError(TQ3Error error);

#ifdef __cplusplus
}
#endif

#endif
