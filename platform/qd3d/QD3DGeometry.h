/* Geometries. _New and _SetData copy the caller's data and take references
 * of their own to the attribute sets in it; _GetData hands out copies and
 * new references, which _EmptyData gives back. */
#ifndef QD3D_GEOMETRY_H
#define QD3D_GEOMETRY_H

#include "platform/qd3d/QD3DTypes.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef enum TQ3EndCapMasks {
    kQ3EndCapNone = 0,
    kQ3EndCapMaskTop = 1 << 0,
    kQ3EndCapMaskBottom = 1 << 1,
    kQ3EndCapMaskInterior = 1 << 2
} TQ3EndCapMasks;
typedef TQ3Uns32 TQ3EndCap;

typedef enum TQ3GeneralPolygonShapeHint {
    kQ3GeneralPolygonShapeHintComplex = 0,
    kQ3GeneralPolygonShapeHintConcave = 1,
    kQ3GeneralPolygonShapeHintConvex = 2
} TQ3GeneralPolygonShapeHint;

typedef struct TQ3PointData {
    TQ3Point3D point;
    TQ3AttributeSet pointAttributeSet;
} TQ3PointData;

typedef struct TQ3LineData {
    TQ3Vertex3D vertices[2];
    TQ3AttributeSet lineAttributeSet;
} TQ3LineData;

typedef struct TQ3PolyLineData {
    TQ3Uns32 numVertices;
    TQ3Vertex3D* vertices;
    TQ3AttributeSet* segmentAttributeSet; /* numVertices - 1 entries, or NULL */
    TQ3AttributeSet polyLineAttributeSet;
} TQ3PolyLineData;

typedef struct TQ3TriangleData {
    TQ3Vertex3D vertices[3];
    TQ3AttributeSet triangleAttributeSet;
} TQ3TriangleData;

/* A simple convex polygon; it is drawn as a fan from its first vertex. */
typedef struct TQ3PolygonData {
    TQ3Uns32 numVertices;
    TQ3Vertex3D* vertices;
    TQ3AttributeSet polygonAttributeSet;
} TQ3PolygonData;

typedef struct TQ3GeneralPolygonContourData {
    TQ3Uns32 numVertices;
    TQ3Vertex3D* vertices;
} TQ3GeneralPolygonContourData;

/* Contours combine by the even-odd rule: a contour inside another is a hole. */
typedef struct TQ3GeneralPolygonData {
    TQ3Uns32 numContours;
    TQ3GeneralPolygonContourData* contours;
    TQ3GeneralPolygonShapeHint shapeHint;
    TQ3AttributeSet generalPolygonAttributeSet;
} TQ3GeneralPolygonData;

/* numRows by numColumns vertices, row after row. Cell (r, c) makes two
 * facets, 2 * (r * (numColumns - 1) + c) and the one after it: for an even
 * r + c the triangles (r,c) (r+1,c) (r+1,c+1) and (r,c) (r+1,c+1) (r,c+1),
 * for an odd r + c the triangles (r,c) (r+1,c) (r,c+1) and (r,c+1) (r+1,c)
 * (r+1,c+1). With the first row at the top and columns running to the
 * right, every facet is counter-clockwise seen from the front. The
 * facetAttributeSet may be NULL. */
typedef struct TQ3TriGridData {
    TQ3Uns32 numRows;
    TQ3Uns32 numColumns;
    TQ3Vertex3D* vertices;
    TQ3AttributeSet* facetAttributeSet;
    TQ3AttributeSet triGridAttributeSet;
} TQ3TriGridData;

/* The box spans origin + a * orientation + b * majorAxis + c * minorAxis for
 * a, b, c in [0, 1]. faceAttributeSet holds six sets or is NULL. */
typedef struct TQ3BoxData {
    TQ3Point3D origin;
    TQ3Vector3D orientation;
    TQ3Vector3D majorAxis;
    TQ3Vector3D minorAxis;
    TQ3AttributeSet* faceAttributeSet;
    TQ3AttributeSet boxAttributeSet;
} TQ3BoxData;

/* Base ellipse at origin with the two radii, apex at origin + orientation. */
typedef struct TQ3ConeData {
    TQ3Point3D origin;
    TQ3Vector3D orientation;
    TQ3Vector3D majorRadius;
    TQ3Vector3D minorRadius;
    float uMin, uMax, vMin, vMax;
    TQ3EndCap caps;
    TQ3AttributeSet interiorAttributeSet;
    TQ3AttributeSet faceAttributeSet;
    TQ3AttributeSet bottomAttributeSet;
    TQ3AttributeSet coneAttributeSet;
} TQ3ConeData;

/* origin + cos(pi v') * -orientation + sin(pi v') * (cos(2 pi u) * major +
 * sin(2 pi u) * minor), v' = v from the bottom pole (0) to the top (1). */
typedef struct TQ3EllipsoidData {
    TQ3Point3D origin;
    TQ3Vector3D orientation;
    TQ3Vector3D majorRadius;
    TQ3Vector3D minorRadius;
    float uMin, uMax, vMin, vMax;
    TQ3EndCap caps;
    TQ3AttributeSet interiorAttributeSet;
    TQ3AttributeSet ellipsoidAttributeSet;
} TQ3EllipsoidData;

/* numPoints rational control points, numPoints + order knots. */
typedef struct TQ3NURBCurveData {
    TQ3Uns32 order;
    TQ3Uns32 numPoints;
    TQ3RationalPoint4D* controlPoints;
    float* knots;
    TQ3AttributeSet curveAttributeSet;
} TQ3NURBCurveData;

/* A bitmap drawn at the window position of location, moved by the offsets;
 * set bits take the diffuse colour. The bitmap is copied. */
typedef struct TQ3MarkerData {
    TQ3Point3D location;
    TQ3Int32 xOffset;
    TQ3Int32 yOffset;
    TQ3Bitmap bitmap;
    TQ3AttributeSet markerAttributeSet;
} TQ3MarkerData;

TQ3ObjectType Q3Geometry_GetType(TQ3GeometryObject geometry);
/* Hands out a new reference to the geometry's set, or NULL if it has none. */
TQ3Status Q3Geometry_GetAttributeSet(TQ3GeometryObject geometry, TQ3AttributeSet* attributeSet);
TQ3Status Q3Geometry_SetAttributeSet(TQ3GeometryObject geometry, TQ3AttributeSet attributeSet);
TQ3Status Q3Geometry_Submit(TQ3GeometryObject geometry, TQ3ViewObject view);

TQ3GeometryObject Q3Point_New(const TQ3PointData* pointData);
TQ3Status Q3Point_GetData(TQ3GeometryObject point, TQ3PointData* pointData);
TQ3Status Q3Point_SetData(TQ3GeometryObject point, const TQ3PointData* pointData);
TQ3Status Q3Point_EmptyData(TQ3PointData* pointData);
TQ3Status Q3Point_GetPosition(TQ3GeometryObject point, TQ3Point3D* position);
TQ3Status Q3Point_SetPosition(TQ3GeometryObject point, const TQ3Point3D* position);

TQ3GeometryObject Q3Line_New(const TQ3LineData* lineData);
TQ3Status Q3Line_GetData(TQ3GeometryObject line, TQ3LineData* lineData);
TQ3Status Q3Line_SetData(TQ3GeometryObject line, const TQ3LineData* lineData);
TQ3Status Q3Line_EmptyData(TQ3LineData* lineData);
TQ3Status Q3Line_GetVertexPosition(TQ3GeometryObject line, TQ3Uns32 index, TQ3Point3D* position);
TQ3Status Q3Line_SetVertexPosition(TQ3GeometryObject line, TQ3Uns32 index,
                                   const TQ3Point3D* position);

TQ3GeometryObject Q3PolyLine_New(const TQ3PolyLineData* polylineData);
TQ3Status Q3PolyLine_GetData(TQ3GeometryObject polyLine, TQ3PolyLineData* polyLineData);
TQ3Status Q3PolyLine_SetData(TQ3GeometryObject polyLine, const TQ3PolyLineData* polyLineData);
TQ3Status Q3PolyLine_EmptyData(TQ3PolyLineData* polyLineData);
TQ3Status Q3PolyLine_GetVertexPosition(TQ3GeometryObject polyLine, TQ3Uns32 index,
                                       TQ3Point3D* position);
TQ3Status Q3PolyLine_SetVertexPosition(TQ3GeometryObject polyLine, TQ3Uns32 index,
                                       const TQ3Point3D* position);

TQ3GeometryObject Q3Triangle_New(const TQ3TriangleData* triangleData);
TQ3Status Q3Triangle_GetData(TQ3GeometryObject triangle, TQ3TriangleData* triangleData);
TQ3Status Q3Triangle_SetData(TQ3GeometryObject triangle, const TQ3TriangleData* triangleData);
TQ3Status Q3Triangle_EmptyData(TQ3TriangleData* triangleData);

TQ3GeometryObject Q3Polygon_New(const TQ3PolygonData* polygonData);
TQ3Status Q3Polygon_GetData(TQ3GeometryObject polygon, TQ3PolygonData* polygonData);
TQ3Status Q3Polygon_SetData(TQ3GeometryObject polygon, const TQ3PolygonData* polygonData);
TQ3Status Q3Polygon_EmptyData(TQ3PolygonData* polygonData);

TQ3GeometryObject Q3GeneralPolygon_New(const TQ3GeneralPolygonData* generalPolygonData);
TQ3Status Q3GeneralPolygon_GetData(TQ3GeometryObject polygon,
                                   TQ3GeneralPolygonData* generalPolygonData);
TQ3Status Q3GeneralPolygon_SetData(TQ3GeometryObject polygon,
                                   const TQ3GeneralPolygonData* generalPolygonData);
TQ3Status Q3GeneralPolygon_EmptyData(TQ3GeneralPolygonData* generalPolygonData);

TQ3GeometryObject Q3TriGrid_New(const TQ3TriGridData* triGridData);
TQ3Status Q3TriGrid_GetData(TQ3GeometryObject triGrid, TQ3TriGridData* triGridData);
TQ3Status Q3TriGrid_SetData(TQ3GeometryObject triGrid, const TQ3TriGridData* triGridData);
TQ3Status Q3TriGrid_EmptyData(TQ3TriGridData* triGridData);

TQ3GeometryObject Q3Box_New(const TQ3BoxData* boxData);
TQ3Status Q3Box_GetData(TQ3GeometryObject box, TQ3BoxData* boxData);
TQ3Status Q3Box_SetData(TQ3GeometryObject box, const TQ3BoxData* boxData);
TQ3Status Q3Box_EmptyData(TQ3BoxData* boxData);

TQ3GeometryObject Q3Cone_New(const TQ3ConeData* coneData);
TQ3Status Q3Cone_GetData(TQ3GeometryObject cone, TQ3ConeData* coneData);
TQ3Status Q3Cone_SetData(TQ3GeometryObject cone, const TQ3ConeData* coneData);
TQ3Status Q3Cone_EmptyData(TQ3ConeData* coneData);

TQ3GeometryObject Q3Ellipsoid_New(const TQ3EllipsoidData* ellipsoidData);
TQ3Status Q3Ellipsoid_GetData(TQ3GeometryObject ellipsoid, TQ3EllipsoidData* ellipsoidData);
TQ3Status Q3Ellipsoid_SetData(TQ3GeometryObject ellipsoid, const TQ3EllipsoidData* ellipsoidData);
TQ3Status Q3Ellipsoid_EmptyData(TQ3EllipsoidData* ellipsoidData);

TQ3GeometryObject Q3NURBCurve_New(const TQ3NURBCurveData* curveData);
TQ3Status Q3NURBCurve_GetData(TQ3GeometryObject curve, TQ3NURBCurveData* nurbCurveData);
TQ3Status Q3NURBCurve_SetData(TQ3GeometryObject curve, const TQ3NURBCurveData* nurbCurveData);
TQ3Status Q3NURBCurve_EmptyData(TQ3NURBCurveData* nurbCurveData);
TQ3Status Q3NURBCurve_GetControlPoint(TQ3GeometryObject curve, TQ3Uns32 pointIndex,
                                      TQ3RationalPoint4D* point4D);
TQ3Status Q3NURBCurve_SetControlPoint(TQ3GeometryObject curve, TQ3Uns32 pointIndex,
                                      const TQ3RationalPoint4D* point4D);

TQ3GeometryObject Q3Marker_New(const TQ3MarkerData* markerData);
TQ3Status Q3Marker_GetData(TQ3GeometryObject marker, TQ3MarkerData* markerData);
TQ3Status Q3Marker_SetData(TQ3GeometryObject marker, const TQ3MarkerData* markerData);
TQ3Status Q3Marker_EmptyData(TQ3MarkerData* markerData);
TQ3Status Q3Marker_GetPosition(TQ3GeometryObject marker, TQ3Point3D* location);
TQ3Status Q3Marker_SetPosition(TQ3GeometryObject marker, const TQ3Point3D* location);

#ifdef __cplusplus
}
#endif

#endif
