// Objects, reference counts, the class table and the error record.
#include "platform/qd3d/Q3Internal.h"

#include <cmath>
#include <cstring>
#include <map>
#include <unordered_set>

namespace q3 {
namespace {

struct Errors {
    TQ3Error first = kQ3ErrorNone;
    TQ3Error latest = kQ3ErrorNone;
};

Errors& errors() {
    static Errors e;
    return e;
}

std::unordered_set<const void*>& liveObjects() {
    static std::unordered_set<const void*> live;
    return live;
}

std::uint64_t& stamp() {
    static std::uint64_t s = 1;
    return s;
}

int& initCount() {
    static int n = 0;
    return n;
}

std::map<TQ3ObjectType, ClassInfo>& classTable();

void add(std::map<TQ3ObjectType, ClassInfo>& t, TQ3ObjectType type, TQ3ObjectType parent,
         const char* name, const char* nick = "") {
    ClassInfo c;
    c.type = type;
    c.parent = parent;
    c.name = name;
    c.nickName = nick;
    t[type] = c;
}

void addBuiltins(std::map<TQ3ObjectType, ClassInfo>& t) {
    add(t, kQ3ObjectTypeRoot, 0, "Root");
    add(t, kQ3ObjectTypeView, kQ3ObjectTypeRoot, "View");
    add(t, kQ3ObjectTypeElement, kQ3ObjectTypeRoot, "Element");
    add(t, kQ3ElementTypeAttribute, kQ3ObjectTypeElement, "Attribute");
    add(t, kQ3ObjectTypePick, kQ3ObjectTypeRoot, "Pick");
    add(t, kQ3PickTypeWindowPoint, kQ3ObjectTypePick, "WindowPointPick");
    add(t, kQ3ObjectTypeShared, kQ3ObjectTypeRoot, "Shared");
    add(t, kQ3SharedTypeRenderer, kQ3ObjectTypeShared, "Renderer");
    add(t, kQ3SharedTypeShape, kQ3ObjectTypeShared, "Shape");
    add(t, kQ3SharedTypeSet, kQ3ObjectTypeShared, "Set");
    add(t, kQ3SetTypeAttribute, kQ3SharedTypeSet, "AttributeSet");
    add(t, kQ3SharedTypeDrawContext, kQ3ObjectTypeShared, "DrawContext");
    add(t, kQ3DrawContextTypePixmap, kQ3SharedTypeDrawContext, "PixmapDrawContext");
    add(t, kQ3DrawContextTypeWin32DC, kQ3SharedTypeDrawContext, "Win32DCDrawContext");
    add(t, kQ3SharedTypeTexture, kQ3ObjectTypeShared, "Texture");
    add(t, kQ3TextureTypePixmap, kQ3SharedTypeTexture, "PixmapTexture");
    add(t, kQ3SharedTypeStorage, kQ3ObjectTypeShared, "Storage");
    add(t, kQ3StorageTypeMemory, kQ3SharedTypeStorage, "MemoryStorage");
    add(t, kQ3SharedTypeString, kQ3ObjectTypeShared, "String");
    add(t, kQ3StringTypeCString, kQ3SharedTypeString, "CString");
    add(t, kQ3ShapeTypeGeometry, kQ3SharedTypeShape, "Geometry");
    add(t, kQ3GeometryTypeBox, kQ3ShapeTypeGeometry, "Box");
    add(t, kQ3GeometryTypeCone, kQ3ShapeTypeGeometry, "Cone");
    add(t, kQ3GeometryTypeEllipsoid, kQ3ShapeTypeGeometry, "Ellipsoid");
    add(t, kQ3GeometryTypeGeneralPolygon, kQ3ShapeTypeGeometry, "GeneralPolygon");
    add(t, kQ3GeometryTypeLine, kQ3ShapeTypeGeometry, "Line");
    add(t, kQ3GeometryTypeMarker, kQ3ShapeTypeGeometry, "Marker");
    add(t, kQ3GeometryTypeNURBCurve, kQ3ShapeTypeGeometry, "NURBCurve");
    add(t, kQ3GeometryTypePoint, kQ3ShapeTypeGeometry, "Point");
    add(t, kQ3GeometryTypePolygon, kQ3ShapeTypeGeometry, "Polygon");
    add(t, kQ3GeometryTypePolyLine, kQ3ShapeTypeGeometry, "PolyLine");
    add(t, kQ3GeometryTypeTriangle, kQ3ShapeTypeGeometry, "Triangle");
    add(t, kQ3GeometryTypeTriGrid, kQ3ShapeTypeGeometry, "TriGrid");
    add(t, kQ3ShapeTypeGroup, kQ3SharedTypeShape, "Group");
    add(t, kQ3GroupTypeDisplay, kQ3ShapeTypeGroup, "DisplayGroup");
    add(t, kQ3DisplayGroupTypeOrdered, kQ3GroupTypeDisplay, "OrderedDisplayGroup");
    add(t, kQ3GroupTypeLight, kQ3ShapeTypeGroup, "LightGroup");
    add(t, kQ3ShapeTypeLight, kQ3SharedTypeShape, "Light");
    add(t, kQ3LightTypeAmbient, kQ3ShapeTypeLight, "AmbientLight");
    add(t, kQ3LightTypeDirectional, kQ3ShapeTypeLight, "DirectionalLight");
    add(t, kQ3LightTypePoint, kQ3ShapeTypeLight, "PointLight");
    add(t, kQ3LightTypeSpot, kQ3ShapeTypeLight, "SpotLight");
    add(t, kQ3ShapeTypeShader, kQ3SharedTypeShape, "Shader");
    add(t, kQ3ShaderTypeSurface, kQ3ShapeTypeShader, "SurfaceShader");
    add(t, kQ3SurfaceShaderTypeTexture, kQ3ShaderTypeSurface, "TextureShader");
    add(t, kQ3ShaderTypeIllumination, kQ3ShapeTypeShader, "IlluminationShader");
    add(t, kQ3IlluminationTypePhong, kQ3ShaderTypeIllumination, "PhongIllumination");
    add(t, kQ3IlluminationTypeLambert, kQ3ShaderTypeIllumination, "LambertIllumination");
    add(t, kQ3IlluminationTypeNULL, kQ3ShaderTypeIllumination, "NULLIllumination");
    add(t, kQ3ShapeTypeStyle, kQ3SharedTypeShape, "Style");
    add(t, kQ3StyleTypeBackfacing, kQ3ShapeTypeStyle, "BackfacingStyle");
    add(t, kQ3StyleTypeInterpolation, kQ3ShapeTypeStyle, "InterpolationStyle");
    add(t, kQ3StyleTypeFill, kQ3ShapeTypeStyle, "FillStyle");
    add(t, kQ3StyleTypePickID, kQ3ShapeTypeStyle, "PickIDStyle");
    add(t, kQ3StyleTypeReceiveShadows, kQ3ShapeTypeStyle, "ReceiveShadowsStyle");
    add(t, kQ3StyleTypeHighlight, kQ3ShapeTypeStyle, "HighlightStyle");
    add(t, kQ3StyleTypeSubdivision, kQ3ShapeTypeStyle, "SubdivisionStyle");
    add(t, kQ3StyleTypeOrientation, kQ3ShapeTypeStyle, "OrientationStyle");
    add(t, kQ3ShapeTypeTransform, kQ3SharedTypeShape, "Transform");
    add(t, kQ3TransformTypeMatrix, kQ3ShapeTypeTransform, "MatrixTransform");
    add(t, kQ3TransformTypeScale, kQ3ShapeTypeTransform, "ScaleTransform");
    add(t, kQ3TransformTypeTranslate, kQ3ShapeTypeTransform, "TranslateTransform");
    add(t, kQ3TransformTypeRotate, kQ3ShapeTypeTransform, "RotateTransform");
    add(t, kQ3TransformTypeRotateAboutPoint, kQ3ShapeTypeTransform, "RotateAboutPointTransform");
    add(t, kQ3TransformTypeRotateAboutAxis, kQ3ShapeTypeTransform, "RotateAboutAxisTransform");
    add(t, kQ3TransformTypeQuaternion, kQ3ShapeTypeTransform, "QuaternionTransform");
    add(t, kQ3ShapeTypeCamera, kQ3SharedTypeShape, "Camera");
    add(t, kQ3CameraTypeOrthographic, kQ3ShapeTypeCamera, "OrthographicCamera");
    add(t, kQ3CameraTypeViewAngleAspect, kQ3ShapeTypeCamera, "ViewAngleAspectCamera");
    add(t, kQ3CameraTypeViewPlane, kQ3ShapeTypeCamera, "ViewPlaneCamera");
}

std::map<TQ3ObjectType, ClassInfo>& classTable() {
    static std::map<TQ3ObjectType, ClassInfo> table = [] {
        std::map<TQ3ObjectType, ClassInfo> t;
        addBuiltins(t);
        return t;
    }();
    return table;
}

TQ3ObjectType& nextCustomType() {
    static TQ3ObjectType next = -1;
    return next;
}

} // namespace

void registerBuiltinRenderers(); // Q3Renderer.cpp

const ClassInfo* findClass(TQ3ObjectType type) {
    return findClassMutable(type);
}

ClassInfo* findClassMutable(TQ3ObjectType type) {
    registerBuiltinRenderers();
    auto& t = classTable();
    auto it = t.find(type);
    return it == t.end() ? nullptr : &it->second;
}

bool isSubtype(TQ3ObjectType type, TQ3ObjectType ancestor) {
    auto& t = classTable();
    for (int depth = 0; type != 0 && depth < 64; ++depth) {
        if (type == ancestor) return true;
        auto it = t.find(type);
        if (it == t.end()) return false;
        type = it->second.parent;
    }
    return false;
}

TQ3ObjectType typeBelow(TQ3ObjectType type, TQ3ObjectType parent) {
    auto& t = classTable();
    for (int depth = 0; type != 0 && depth < 64; ++depth) {
        auto it = t.find(type);
        if (it == t.end()) return 0;
        if (it->second.parent == parent) return type;
        type = it->second.parent;
    }
    return 0;
}

TQ3XObjectClass registerClass(ClassInfo info, TQ3ObjectType* outType) {
    auto& t = classTable();
    if (info.name.empty() || info.name.size() >= kQ3StringMaximumLength) {
        postError(kQ3ErrorInvalidObjectName);
        return nullptr;
    }
    for (auto& [type, c] : t)
        if (c.name == info.name) {
            postError(kQ3ErrorClassAlreadyRegistered);
            return nullptr;
        }
    if (info.type == 0) {
        while (t.count(nextCustomType()))
            --nextCustomType();
        info.type = nextCustomType()--;
    } else if (t.count(info.type)) {
        postError(kQ3ErrorClassAlreadyRegistered);
        return nullptr;
    }
    if (!t.count(info.parent)) {
        postError(kQ3ErrorInvalidObjectClass);
        return nullptr;
    }
    info.builtin = false;
    auto& stored = t[info.type] = info;
    if (outType) *outType = stored.type;
    return reinterpret_cast<TQ3XObjectClass>(&stored);
}

void postError(TQ3Error error) {
    auto& e = errors();
    if (e.first == kQ3ErrorNone) e.first = error;
    e.latest = error;
}

std::uint64_t attributeStamp() {
    return stamp();
}
void bumpAttributeStamp() {
    ++stamp();
}

bool isLive(const void* object) {
    return object && liveObjects().count(object) != 0;
}

OpaqueTQ3Object* checkObject(TQ3Object object, TQ3ObjectType type) {
    if (!object) {
        postError(kQ3ErrorNULLParameter);
        return nullptr;
    }
    if (!isLive(object) || object->magic != kLiveMagic) {
        postError(kQ3ErrorInvalidObject);
        return nullptr;
    }
    if (type != 0 && !isSubtype(object->type, type)) {
        postError(kQ3ErrorInvalidObjectType);
        return nullptr;
    }
    return object;
}

TQ3Object retain(TQ3Object object) {
    if (object) {
        if (object->shared)
            ++object->refCount;
        else
            return nullptr;
    }
    return object;
}

void release(TQ3Object object) {
    if (!object || !isLive(object)) return;
    if (!object->shared || --object->refCount == 0) delete object;
}

void replaceRef(TQ3Object& slot, TQ3Object object) {
    if (object) retain(object);
    TQ3Object old = slot;
    slot = object;
    release(old);
}

bool finite(float v) {
    return std::isfinite(v);
}
bool finite(const TQ3Point3D& p) {
    return finite(p.x) && finite(p.y) && finite(p.z);
}
bool finite(const TQ3Vector3D& v) {
    return finite(v.x) && finite(v.y) && finite(v.z);
}

} // namespace q3

OpaqueTQ3Object::OpaqueTQ3Object(TQ3ObjectType leafType)
    : magic(q3::kLiveMagic), type(leafType), shared(q3::isSubtype(leafType, kQ3ObjectTypeShared)) {
    q3::liveObjects().insert(this);
}

OpaqueTQ3Object::~OpaqueTQ3Object() {
    magic = 0;
    q3::liveObjects().erase(this);
}

TQ3Status OpaqueTQ3Object::submit(q3::View&) {
    return kQ3Success;
}

using namespace q3;

extern "C" {

TQ3Status Q3Initialize(void) {
    registerBuiltinRenderers();
    ++initCount();
    return kQ3Success;
}

TQ3Status Q3Exit(void) {
    if (initCount() == 0) {
        postError(kQ3ErrorNotInitialized);
        return kQ3Failure;
    }
    if (--initCount() == 0) {
        // the end of the library: classes that others registered go, so that
        // a later start may register them again
        auto& t = classTable();
        for (auto it = t.begin(); it != t.end();)
            it = it->second.builtin ? std::next(it) : t.erase(it);
    }
    return kQ3Success;
}

TQ3Boolean Q3IsInitialized(void) {
    return initCount() > 0 ? kQ3True : kQ3False;
}

TQ3Error Q3Error_Get(TQ3Error* firstError) {
    auto& e = errors();
    TQ3Error latest = e.latest;
    if (firstError) *firstError = e.first;
    e.first = e.latest = kQ3ErrorNone;
    return latest;
}

TQ3Boolean Q3Error_IsFatalError(TQ3Error error) {
    return error == kQ3ErrorInternalError || error == kQ3ErrorOutOfMemory ? kQ3True : kQ3False;
}

TQ3Uns32 Q3Memory_CountObjects(void) {
    return static_cast<TQ3Uns32>(liveObjects().size());
}

TQ3Status Q3Object_Dispose(TQ3Object object) {
    if (!checkObject(object, 0)) return kQ3Failure;
    release(object);
    return kQ3Success;
}

TQ3ObjectType Q3Object_GetType(TQ3Object object) {
    if (!checkObject(object, 0)) return kQ3ObjectTypeInvalid;
    return typeBelow(object->type, kQ3ObjectTypeRoot);
}

TQ3ObjectType Q3Object_GetLeafType(TQ3Object object) {
    if (!checkObject(object, 0)) return kQ3ObjectTypeInvalid;
    return object->type;
}

TQ3Boolean Q3Object_IsType(TQ3Object object, TQ3ObjectType type) {
    if (!checkObject(object, 0)) return kQ3False;
    return isSubtype(object->type, type) ? kQ3True : kQ3False;
}

TQ3Boolean Q3Object_IsDrawable(TQ3Object object) {
    if (!checkObject(object, 0)) return kQ3False;
    TQ3ObjectType t = object->type;
    bool drawable = isSubtype(t, kQ3ShapeTypeGeometry) || isSubtype(t, kQ3GroupTypeDisplay) ||
                    isSubtype(t, kQ3ShapeTypeStyle) || isSubtype(t, kQ3ShapeTypeShader) ||
                    isSubtype(t, kQ3ShapeTypeTransform) || isSubtype(t, kQ3SetTypeAttribute);
    return drawable ? kQ3True : kQ3False;
}

TQ3ObjectType Q3Shared_GetType(TQ3SharedObject object) {
    if (!checkObject(object, kQ3ObjectTypeShared)) return kQ3ObjectTypeInvalid;
    return typeBelow(object->type, kQ3ObjectTypeShared);
}

TQ3ObjectType Q3Shape_GetType(TQ3ShapeObject object) {
    if (!checkObject(object, kQ3SharedTypeShape)) return kQ3ObjectTypeInvalid;
    return typeBelow(object->type, kQ3SharedTypeShape);
}

TQ3SharedObject Q3Shared_GetReference(TQ3SharedObject object) {
    if (!checkObject(object, kQ3ObjectTypeShared)) return nullptr;
    return retain(object);
}

TQ3Uns32 Q3Shared_GetReferenceCount(TQ3SharedObject object) {
    if (!checkObject(object, kQ3ObjectTypeShared)) return 0;
    return object->refCount;
}

TQ3Status Q3Shared_Edited(TQ3SharedObject object) {
    if (!checkObject(object, kQ3ObjectTypeShared)) return kQ3Failure;
    object->edited();
    return kQ3Success;
}

TQ3Uns32 Q3Shared_GetEditIndex(TQ3SharedObject object) {
    if (!checkObject(object, kQ3ObjectTypeShared)) return 0;
    return object->editIndex;
}

TQ3Status Q3ObjectHierarchy_GetTypeFromString(const char* name, TQ3ObjectType* type) {
    if (!name || !type) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    findClass(0);
    for (auto& [t, c] : classTable())
        if (c.name == name) {
            *type = t;
            return kQ3Success;
        }
    *type = kQ3ObjectTypeInvalid;
    postError(kQ3ErrorInvalidObjectName);
    return kQ3Failure;
}

TQ3Status Q3ObjectHierarchy_GetStringFromType(TQ3ObjectType type, TQ3ObjectClassNameString out) {
    if (!out) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    out[0] = 0;
    const ClassInfo* c = findClass(type);
    if (!c) {
        postError(kQ3ErrorInvalidObjectClass);
        return kQ3Failure;
    }
    std::strncpy(out, c->name.c_str(), kQ3StringMaximumLength - 1);
    out[kQ3StringMaximumLength - 1] = 0;
    return kQ3Success;
}

TQ3Boolean Q3ObjectHierarchy_IsTypeRegistered(TQ3ObjectType type) {
    return findClass(type) ? kQ3True : kQ3False;
}

TQ3Boolean Q3ObjectHierarchy_IsNameRegistered(const char* name) {
    if (!name) return kQ3False;
    findClass(0);
    for (auto& [t, c] : classTable())
        if (c.name == name) return kQ3True;
    return kQ3False;
}

TQ3Status Q3ObjectHierarchy_GetSubClassData(TQ3ObjectType type, TQ3SubClassData* data) {
    if (!data) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    data->numClasses = 0;
    data->classTypes = nullptr;
    if (!findClass(type)) {
        postError(kQ3ErrorInvalidObjectClass);
        return kQ3Failure;
    }
    std::vector<TQ3ObjectType> found;
    for (auto& [t, c] : classTable())
        if (c.parent == type) found.push_back(t);
    if (found.empty()) return kQ3Success;
    auto* types = static_cast<TQ3ObjectType*>(std::malloc(found.size() * sizeof(TQ3ObjectType)));
    if (!types) {
        postError(kQ3ErrorOutOfMemory);
        return kQ3Failure;
    }
    std::memcpy(types, found.data(), found.size() * sizeof(TQ3ObjectType));
    data->numClasses = static_cast<TQ3Uns32>(found.size());
    data->classTypes = types;
    return kQ3Success;
}

TQ3Status Q3ObjectHierarchy_EmptySubClassData(TQ3SubClassData* data) {
    if (!data) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    std::free(data->classTypes);
    data->classTypes = nullptr;
    data->numClasses = 0;
    return kQ3Success;
}

TQ3XObjectClass Q3XElementClass_Register(TQ3ElementType* elementType, const char* name,
                                         TQ3Uns32 sizeOfElement, TQ3XMetaHandler metaHandler) {
    if (!elementType || !name) {
        postError(kQ3ErrorNULLParameter);
        return nullptr;
    }
    if (sizeOfElement == 0 || sizeOfElement > (1u << 20)) {
        postError(kQ3ErrorInvalidParameter);
        return nullptr;
    }
    ClassInfo c;
    c.parent = kQ3ElementTypeAttribute;
    c.name = name;
    c.elementSize = sizeOfElement;
    c.metaHandler = metaHandler;
    return registerClass(c, elementType);
}

TQ3Status Q3XElementType_GetElementSize(TQ3ElementType type, TQ3Uns32* size) {
    const ClassInfo* c = findClass(type);
    if (!size || !c || c->elementSize == 0) {
        postError(size ? kQ3ErrorInvalidObjectClass : kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    *size = c->elementSize;
    return kQ3Success;
}

TQ3Status Q3XObjectClass_GetType(TQ3XObjectClass objectClass, TQ3ObjectType* type) {
    if (!objectClass || !type) {
        postError(kQ3ErrorNULLParameter);
        return kQ3Failure;
    }
    for (auto& [t, c] : classTable())
        if (reinterpret_cast<const void*>(&c) == objectClass) {
            *type = t;
            return kQ3Success;
        }
    postError(kQ3ErrorInvalidObjectClass);
    return kQ3Failure;
}

TQ3XObjectClass Q3XObjectHierarchy_FindClassByType(TQ3ObjectType type) {
    ClassInfo* c = findClassMutable(type);
    return c ? reinterpret_cast<TQ3XObjectClass>(c) : nullptr;
}

TQ3Status Q3XObjectHierarchy_UnregisterClass(TQ3XObjectClass objectClass) {
    TQ3ObjectType type;
    if (Q3XObjectClass_GetType(objectClass, &type) != kQ3Success) return kQ3Failure;
    auto& t = classTable();
    const ClassInfo& c = t[type];
    if (c.builtin) {
        postError(kQ3ErrorAccessRestricted);
        return kQ3Failure;
    }
    for (auto& [other, info] : t)
        if (info.parent == type) {
            postError(kQ3ErrorAccessRestricted);
            return kQ3Failure;
        }
    t.erase(type);
    return kQ3Success;
}

TQ3Object Q3File_ReadObject(TQ3FileObject file) {
    postError(file ? kQ3ErrorFileNotOpen : kQ3ErrorNULLParameter);
    return nullptr;
}

} // extern "C"
