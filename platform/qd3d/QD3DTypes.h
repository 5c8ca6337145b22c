/* Basic types, constants and data records of the 3D library.
 *
 * Matrices are 4x4 floats stored by rows and applied to row vectors:
 * p' = p * M. Object types are four-character codes; classes registered at
 * run time get negative types. */
#ifndef QD3D_TYPES_H
#define QD3D_TYPES_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define Q3_FOUR_CHAR(a, b, c, d)                                                                   \
    ((int32_t)(((uint32_t)(a) << 24) | ((uint32_t)(b) << 16) | ((uint32_t)(c) << 8) |              \
               (uint32_t)(d)))

typedef int32_t TQ3Int32;
typedef uint32_t TQ3Uns32;
typedef int16_t TQ3Int16;
typedef uint16_t TQ3Uns16;
typedef uint8_t TQ3Uns8;
typedef float TQ3Float32;
typedef double TQ3Float64;
typedef TQ3Int32 TQ3ObjectType;
typedef TQ3ObjectType TQ3ElementType;
typedef TQ3ObjectType TQ3AttributeType;
typedef TQ3Int32 TQ3XMethodType;

typedef enum TQ3Status { kQ3Failure = 0, kQ3Success = 1 } TQ3Status;
typedef enum TQ3Boolean { kQ3False = 0, kQ3True = 1 } TQ3Boolean;
typedef enum TQ3Switch { kQ3Off = 0, kQ3On = 1 } TQ3Switch;
typedef enum TQ3Axis { kQ3AxisX = 0, kQ3AxisY = 1, kQ3AxisZ = 2 } TQ3Axis;
typedef enum TQ3Endian { kQ3EndianBig = 0, kQ3EndianLittle = 1 } TQ3Endian;

typedef struct OpaqueTQ3Object* TQ3Object;
typedef TQ3Object TQ3SharedObject;
typedef TQ3Object TQ3ShapeObject;
typedef TQ3Object TQ3GeometryObject;
typedef TQ3Object TQ3GroupObject;
typedef TQ3Object TQ3LightObject;
typedef TQ3Object TQ3ShaderObject;
typedef TQ3Object TQ3SurfaceShaderObject;
typedef TQ3Object TQ3IlluminationShaderObject;
typedef TQ3Object TQ3StyleObject;
typedef TQ3Object TQ3TransformObject;
typedef TQ3Object TQ3CameraObject;
typedef TQ3Object TQ3ViewObject;
typedef TQ3Object TQ3DrawContextObject;
typedef TQ3Object TQ3RendererObject;
typedef TQ3Object TQ3PickObject;
typedef TQ3Object TQ3SetObject;
typedef TQ3Object TQ3AttributeSet;
typedef TQ3Object TQ3StringObject;
typedef TQ3Object TQ3StorageObject;
typedef TQ3Object TQ3TextureObject;
typedef TQ3Object TQ3FileObject;
typedef struct OpaqueTQ3GroupPosition* TQ3GroupPosition;
typedef struct OpaqueTQ3XObjectClass* TQ3XObjectClass;
typedef void (*TQ3XFunctionPointer)(void);
typedef TQ3XFunctionPointer (*TQ3XMetaHandler)(TQ3XMethodType methodType);

/* ---- Object types ------------------------------------------------------ */
enum {
    kQ3ObjectTypeInvalid = 0,
    kQ3ObjectTypeRoot = Q3_FOUR_CHAR('o', 'b', 'j', ' '),
    kQ3ObjectTypeView = Q3_FOUR_CHAR('v', 'i', 'e', 'w'),
    kQ3ObjectTypeElement = Q3_FOUR_CHAR('e', 'l', 'm', 'n'),
    kQ3ElementTypeAttribute = Q3_FOUR_CHAR('e', 'a', 't', 't'),
    kQ3ObjectTypePick = Q3_FOUR_CHAR('p', 'i', 'c', 'k'),
    kQ3PickTypeWindowPoint = Q3_FOUR_CHAR('p', 'k', 'w', 'p'),
    kQ3ObjectTypeShared = Q3_FOUR_CHAR('s', 'h', 'r', 'd'),
    kQ3SharedTypeRenderer = Q3_FOUR_CHAR('r', 'd', 'd', 'r'),
    kQ3RendererTypeGeneric = Q3_FOUR_CHAR('g', 'n', 'r', 'r'),
    kQ3RendererTypeInteractive = Q3_FOUR_CHAR('c', 't', 'w', 'n'),
    kQ3SharedTypeShape = Q3_FOUR_CHAR('s', 'h', 'a', 'p'),
    kQ3SharedTypeSet = Q3_FOUR_CHAR('s', 'e', 't', ' '),
    kQ3SetTypeAttribute = Q3_FOUR_CHAR('a', 't', 't', 'r'),
    kQ3SharedTypeDrawContext = Q3_FOUR_CHAR('d', 'c', 't', 'x'),
    kQ3DrawContextTypePixmap = Q3_FOUR_CHAR('d', 'p', 'x', 'p'),
    kQ3DrawContextTypeWin32DC = Q3_FOUR_CHAR('d', 'w', '3', '2'),
    kQ3SharedTypeTexture = Q3_FOUR_CHAR('t', 'x', 't', 'r'),
    kQ3TextureTypePixmap = Q3_FOUR_CHAR('t', 'x', 'p', 'm'),
    kQ3SharedTypeStorage = Q3_FOUR_CHAR('s', 't', 'r', 'g'),
    kQ3StorageTypeMemory = Q3_FOUR_CHAR('m', 'e', 'm', 's'),
    kQ3SharedTypeString = Q3_FOUR_CHAR('s', 't', 'r', 'n'),
    kQ3StringTypeCString = Q3_FOUR_CHAR('s', 't', 'r', 'c'),
    kQ3ShapeTypeGeometry = Q3_FOUR_CHAR('g', 'm', 't', 'r'),
    kQ3GeometryTypeBox = Q3_FOUR_CHAR('b', 'o', 'x', ' '),
    kQ3GeometryTypeCone = Q3_FOUR_CHAR('c', 'o', 'n', 'e'),
    kQ3GeometryTypeEllipsoid = Q3_FOUR_CHAR('e', 'l', 'p', 'd'),
    kQ3GeometryTypeGeneralPolygon = Q3_FOUR_CHAR('g', 'p', 'g', 'n'),
    kQ3GeometryTypeLine = Q3_FOUR_CHAR('l', 'i', 'n', 'e'),
    kQ3GeometryTypeMarker = Q3_FOUR_CHAR('m', 'r', 'k', 'r'),
    kQ3GeometryTypeNURBCurve = Q3_FOUR_CHAR('n', 'r', 'b', 'c'),
    kQ3GeometryTypePoint = Q3_FOUR_CHAR('p', 'n', 't', ' '),
    kQ3GeometryTypePolygon = Q3_FOUR_CHAR('p', 'l', 'y', 'g'),
    kQ3GeometryTypePolyLine = Q3_FOUR_CHAR('p', 'l', 'y', 'l'),
    kQ3GeometryTypeTriangle = Q3_FOUR_CHAR('t', 'r', 'n', 'g'),
    kQ3GeometryTypeTriGrid = Q3_FOUR_CHAR('t', 'r', 'i', 'g'),
    kQ3ShapeTypeGroup = Q3_FOUR_CHAR('g', 'r', 'u', 'p'),
    kQ3GroupTypeDisplay = Q3_FOUR_CHAR('d', 's', 'p', 'g'),
    kQ3DisplayGroupTypeOrdered = Q3_FOUR_CHAR('o', 'r', 'd', 'g'),
    kQ3GroupTypeLight = Q3_FOUR_CHAR('l', 'g', 'h', 'g'),
    kQ3ShapeTypeLight = Q3_FOUR_CHAR('l', 'g', 'h', 't'),
    kQ3LightTypeAmbient = Q3_FOUR_CHAR('a', 'm', 'b', 'n'),
    kQ3LightTypeDirectional = Q3_FOUR_CHAR('d', 'r', 'c', 't'),
    kQ3LightTypePoint = Q3_FOUR_CHAR('p', 'n', 't', 'l'),
    kQ3LightTypeSpot = Q3_FOUR_CHAR('s', 'p', 'o', 't'),
    kQ3ShapeTypeShader = Q3_FOUR_CHAR('s', 'h', 'd', 'r'),
    kQ3ShaderTypeSurface = Q3_FOUR_CHAR('s', 'u', 's', 'h'),
    kQ3SurfaceShaderTypeTexture = Q3_FOUR_CHAR('t', 'x', 's', 'u'),
    kQ3ShaderTypeIllumination = Q3_FOUR_CHAR('i', 'l', 's', 'h'),
    kQ3IlluminationTypePhong = Q3_FOUR_CHAR('c', 'p', 'h', 'g'),
    kQ3IlluminationTypeLambert = Q3_FOUR_CHAR('l', 'm', 'b', 't'),
    kQ3IlluminationTypeNULL = Q3_FOUR_CHAR('n', 'u', 'i', 'l'),
    kQ3ShapeTypeStyle = Q3_FOUR_CHAR('s', 't', 'y', 'l'),
    kQ3StyleTypeBackfacing = Q3_FOUR_CHAR('b', 'c', 'k', 'f'),
    kQ3StyleTypeInterpolation = Q3_FOUR_CHAR('i', 'n', 't', 'p'),
    kQ3StyleTypeFill = Q3_FOUR_CHAR('f', 'i', 's', 't'),
    kQ3StyleTypePickID = Q3_FOUR_CHAR('p', 'k', 'i', 'd'),
    kQ3StyleTypeReceiveShadows = Q3_FOUR_CHAR('r', 'c', 's', 'h'),
    kQ3StyleTypeHighlight = Q3_FOUR_CHAR('h', 'i', 'g', 'h'),
    kQ3StyleTypeSubdivision = Q3_FOUR_CHAR('s', 'b', 'd', 'v'),
    kQ3StyleTypeOrientation = Q3_FOUR_CHAR('o', 'f', 'd', 'r'),
    kQ3ShapeTypeTransform = Q3_FOUR_CHAR('x', 'f', 'r', 'm'),
    kQ3TransformTypeMatrix = Q3_FOUR_CHAR('m', 't', 'r', 'x'),
    kQ3TransformTypeScale = Q3_FOUR_CHAR('s', 'c', 'a', 'l'),
    kQ3TransformTypeTranslate = Q3_FOUR_CHAR('t', 'r', 'n', 's'),
    kQ3TransformTypeRotate = Q3_FOUR_CHAR('r', 'o', 't', 't'),
    kQ3TransformTypeRotateAboutPoint = Q3_FOUR_CHAR('r', 't', 'a', 'p'),
    kQ3TransformTypeRotateAboutAxis = Q3_FOUR_CHAR('r', 't', 'a', 'a'),
    kQ3TransformTypeQuaternion = Q3_FOUR_CHAR('q', 't', 'r', 'n'),
    kQ3ShapeTypeCamera = Q3_FOUR_CHAR('c', 'm', 'r', 'a'),
    kQ3CameraTypeOrthographic = Q3_FOUR_CHAR('o', 'r', 't', 'h'),
    kQ3CameraTypeViewAngleAspect = Q3_FOUR_CHAR('v', 'a', 'n', 'a'),
    kQ3CameraTypeViewPlane = Q3_FOUR_CHAR('v', 'w', 'p', 'l')
};

/* Attribute types; registered elements have negative types. */
enum {
    kQ3AttributeTypeNone = 0,
    kQ3AttributeTypeSurfaceUV = 1,
    kQ3AttributeTypeShadingUV = 2,
    kQ3AttributeTypeNormal = 3,
    kQ3AttributeTypeAmbientCoefficient = 4,
    kQ3AttributeTypeDiffuseColor = 5,
    kQ3AttributeTypeSpecularColor = 6,
    kQ3AttributeTypeSpecularControl = 7,
    kQ3AttributeTypeTransparencyColor = 8,
    kQ3AttributeTypeSurfaceTangent = 9,
    kQ3AttributeTypeHighlightState = 10,
    kQ3AttributeTypeSurfaceShader = 11,
    kQ3AttributeTypeNumTypes = 12
};

/* Method types that element classes answer. */
enum {
    kQ3XMethodTypeObjectTraverse = Q3_FOUR_CHAR('t', 'r', 'v', 's'),
    kQ3XMethodTypeObjectReadData = Q3_FOUR_CHAR('r', 'd', 'd', 't'),
    kQ3XMethodTypeElementCopyAdd = Q3_FOUR_CHAR('e', 'c', 'p', 'a'),
    kQ3XMethodTypeElementCopyDuplicate = Q3_FOUR_CHAR('e', 'c', 'p', 'd'),
    kQ3XMethodTypeElementCopyGet = Q3_FOUR_CHAR('e', 'c', 'p', 'g'),
    kQ3XMethodTypeElementCopyReplace = Q3_FOUR_CHAR('e', 'c', 'p', 'r'),
    kQ3XMethodTypeElementDelete = Q3_FOUR_CHAR('e', 'd', 'e', 'l')
};

typedef TQ3Status (*TQ3XObjectTraverseMethod)(TQ3Object object, void* data, TQ3ViewObject view);
typedef TQ3Status (*TQ3XObjectReadDataMethod)(TQ3Object parentObject, TQ3FileObject file);
typedef TQ3Status (*TQ3XElementCopyAddMethod)(const void* fromAPIElement, void* toInternalElement);
typedef TQ3Status (*TQ3XElementCopyReplaceMethod)(const void* fromAPIElement,
                                                  void* ofInternalElement);
typedef TQ3Status (*TQ3XElementCopyGetMethod)(const void* fromInternalElement, void* toAPIElement);
typedef TQ3Status (*TQ3XElementCopyDuplicateMethod)(const void* fromInternalElement,
                                                    void* toInternalElement);
typedef TQ3Status (*TQ3XElementDeleteMethod)(void* internalElement);

/* ---- Geometric values -------------------------------------------------- */
typedef struct TQ3Point2D {
    float x, y;
} TQ3Point2D;
typedef struct TQ3Param2D {
    float u, v;
} TQ3Param2D;
typedef struct TQ3Point3D {
    float x, y, z;
} TQ3Point3D;
typedef struct TQ3RationalPoint4D {
    float x, y, z, w;
} TQ3RationalPoint4D;
typedef struct TQ3Vector2D {
    float x, y;
} TQ3Vector2D;
typedef struct TQ3Vector3D {
    float x, y, z;
} TQ3Vector3D;
typedef struct TQ3PolarPoint {
    float r, theta;
} TQ3PolarPoint;
typedef struct TQ3Quaternion {
    float w, x, y, z;
} TQ3Quaternion;
typedef struct TQ3Matrix3x3 {
    float value[3][3];
} TQ3Matrix3x3;
typedef struct TQ3Matrix4x4 {
    float value[4][4];
} TQ3Matrix4x4;
typedef struct TQ3Tangent2D {
    TQ3Vector3D uTangent, vTangent;
} TQ3Tangent2D;
typedef struct TQ3Area {
    TQ3Point2D min, max;
} TQ3Area;
typedef struct TQ3ColorRGB {
    float r, g, b;
} TQ3ColorRGB;
typedef struct TQ3ColorARGB {
    float a, r, g, b;
} TQ3ColorARGB;

typedef struct TQ3BoundingBox {
    TQ3Point3D min, max;
    TQ3Boolean isEmpty;
} TQ3BoundingBox;

typedef struct TQ3BoundingSphere {
    TQ3Point3D origin;
    float radius;
    TQ3Boolean isEmpty;
} TQ3BoundingSphere;

typedef struct TQ3Vertex3D {
    TQ3Point3D point;
    TQ3AttributeSet attributeSet;
} TQ3Vertex3D;

typedef struct TQ3Bitmap {
    TQ3Uns8* image;
    TQ3Uns32 width, height, rowBytes;
    TQ3Endian bitOrder;
} TQ3Bitmap;

typedef enum TQ3PixelType {
    kQ3PixelTypeRGB32 = 0,
    kQ3PixelTypeARGB32 = 1,
    kQ3PixelTypeRGB16 = 2,
    kQ3PixelTypeARGB16 = 3,
    kQ3PixelTypeRGB16_565 = 4,
    kQ3PixelTypeRGB24 = 5
} TQ3PixelType;

/* 32-bit pixels are machine words 0xAARRGGBB (the alpha byte unused by
 * kQ3PixelTypeRGB32); only 32-bit pixels are supported. */
typedef struct TQ3Pixmap {
    void* image;
    TQ3Uns32 width, height, rowBytes, pixelSize;
    TQ3PixelType pixelType;
    TQ3Endian bitOrder, byteOrder;
} TQ3Pixmap;

typedef struct TQ3StoragePixmap {
    TQ3StorageObject image;
    TQ3Uns32 width, height, rowBytes, pixelSize;
    TQ3PixelType pixelType;
    TQ3Endian bitOrder, byteOrder;
} TQ3StoragePixmap;

typedef struct TQ3SubClassData {
    TQ3Uns32 numClasses;
    TQ3ObjectType* classTypes;
} TQ3SubClassData;

enum { kQ3StringMaximumLength = 1024 };
typedef char TQ3ObjectClassNameString[kQ3StringMaximumLength];

#ifdef __cplusplus
}
#endif

#endif
