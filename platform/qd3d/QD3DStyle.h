/* Styles: each holds one value that holds for what follows it in a pass. */
#ifndef QD3D_STYLE_H
#define QD3D_STYLE_H

#include "platform/qd3d/QD3DTypes.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef enum TQ3SubdivisionMethod {
    kQ3SubdivisionMethodConstant = 0,   /* c1 (and c2) divisions */
    kQ3SubdivisionMethodWorldSpace = 1, /* c1 the longest segment, world units */
    kQ3SubdivisionMethodScreenSpace = 2 /* c1 the longest segment, pixels */
} TQ3SubdivisionMethod;

typedef struct TQ3SubdivisionStyleData {
    TQ3SubdivisionMethod method;
    float c1;
    float c2;
} TQ3SubdivisionStyleData;

/* None lights each face once; Vertex lights the vertices and blends across
 * the face. The interactive renderer draws Pixel as Vertex. */
typedef enum TQ3InterpolationStyle {
    kQ3InterpolationStyleNone = 0,
    kQ3InterpolationStyleVertex = 1,
    kQ3InterpolationStylePixel = 2
} TQ3InterpolationStyle;

typedef enum TQ3BackfacingStyle {
    kQ3BackfacingStyleBoth = 0,
    kQ3BackfacingStyleRemove = 1,
    kQ3BackfacingStyleFlip = 2
} TQ3BackfacingStyle;

typedef enum TQ3FillStyle {
    kQ3FillStyleFilled = 0,
    kQ3FillStyleEdges = 1,
    kQ3FillStylePoints = 2
} TQ3FillStyle;

typedef enum TQ3OrientationStyle {
    kQ3OrientationStyleCounterClockwise = 0,
    kQ3OrientationStyleClockwise = 1
} TQ3OrientationStyle;

TQ3ObjectType Q3Style_GetType(TQ3StyleObject style);
TQ3Status Q3Style_Submit(TQ3StyleObject style, TQ3ViewObject view);

TQ3StyleObject Q3SubdivisionStyle_New(const TQ3SubdivisionStyleData* data);
TQ3Status Q3SubdivisionStyle_GetData(TQ3StyleObject style, TQ3SubdivisionStyleData* data);
TQ3Status Q3SubdivisionStyle_SetData(TQ3StyleObject style, const TQ3SubdivisionStyleData* data);
TQ3Status Q3SubdivisionStyle_Submit(const TQ3SubdivisionStyleData* data, TQ3ViewObject view);

TQ3StyleObject Q3InterpolationStyle_New(TQ3InterpolationStyle interpolationStyle);
TQ3Status Q3InterpolationStyle_Get(TQ3StyleObject style, TQ3InterpolationStyle* value);
TQ3Status Q3InterpolationStyle_Set(TQ3StyleObject style, TQ3InterpolationStyle value);
TQ3Status Q3InterpolationStyle_Submit(TQ3InterpolationStyle value, TQ3ViewObject view);

TQ3StyleObject Q3BackfacingStyle_New(TQ3BackfacingStyle backfacingStyle);
TQ3Status Q3BackfacingStyle_Get(TQ3StyleObject style, TQ3BackfacingStyle* value);
TQ3Status Q3BackfacingStyle_Set(TQ3StyleObject style, TQ3BackfacingStyle value);
TQ3Status Q3BackfacingStyle_Submit(TQ3BackfacingStyle value, TQ3ViewObject view);

TQ3StyleObject Q3FillStyle_New(TQ3FillStyle fillStyle);
TQ3Status Q3FillStyle_Get(TQ3StyleObject style, TQ3FillStyle* value);
TQ3Status Q3FillStyle_Set(TQ3StyleObject style, TQ3FillStyle value);
TQ3Status Q3FillStyle_Submit(TQ3FillStyle value, TQ3ViewObject view);

TQ3StyleObject Q3OrientationStyle_New(TQ3OrientationStyle frontFacingDirection);
TQ3Status Q3OrientationStyle_Get(TQ3StyleObject style, TQ3OrientationStyle* value);
TQ3Status Q3OrientationStyle_Set(TQ3StyleObject style, TQ3OrientationStyle value);
TQ3Status Q3OrientationStyle_Submit(TQ3OrientationStyle value, TQ3ViewObject view);

/* The set's attributes replace those of a geometry whose highlight state
 * attribute is on. The style holds a reference of its own (or NULL). */
TQ3StyleObject Q3HighlightStyle_New(TQ3AttributeSet highlightAttribute);
TQ3Status Q3HighlightStyle_Get(TQ3StyleObject style, TQ3AttributeSet* highlightAttribute);
TQ3Status Q3HighlightStyle_Set(TQ3StyleObject style, TQ3AttributeSet highlightAttribute);
TQ3Status Q3HighlightStyle_Submit(TQ3AttributeSet highlightAttribute, TQ3ViewObject view);

TQ3StyleObject Q3ReceiveShadowsStyle_New(TQ3Boolean receives);
TQ3Status Q3ReceiveShadowsStyle_Get(TQ3StyleObject style, TQ3Boolean* receives);
TQ3Status Q3ReceiveShadowsStyle_Set(TQ3StyleObject style, TQ3Boolean receives);
TQ3Status Q3ReceiveShadowsStyle_Submit(TQ3Boolean receives, TQ3ViewObject view);

TQ3StyleObject Q3PickIDStyle_New(TQ3Uns32 id);
TQ3Status Q3PickIDStyle_Get(TQ3StyleObject style, TQ3Uns32* id);
TQ3Status Q3PickIDStyle_Set(TQ3StyleObject style, TQ3Uns32 id);
TQ3Status Q3PickIDStyle_Submit(TQ3Uns32 id, TQ3ViewObject view);

#ifdef __cplusplus
}
#endif

#endif
