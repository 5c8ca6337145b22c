// Objects: reference counts, the class tree, registered elements, attribute
// sets, strings, storage, and the answers to bad input.
#include "platform/qd3d/QD3DRendererExtension.h"
#include "tests/qd3d/Q3TestSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <string>

namespace {

using Objects = q3test::LibraryTest;

TEST_F(Objects, ReferenceCountsHandOverAndGiveBack) {
    TQ3AttributeSet set = Q3AttributeSet_New();
    ASSERT_NE(set, nullptr);
    EXPECT_EQ(Q3Shared_GetReferenceCount(set), 1u);
    TQ3Object again = Q3Shared_GetReference(set);
    EXPECT_EQ(again, set);
    EXPECT_EQ(Q3Shared_GetReferenceCount(set), 2u);

    // a group keeps a reference of its own: the caller's dispose leaves it alive
    TQ3GroupObject group = Q3DisplayGroup_New();
    ASSERT_NE(Q3Group_AddObject(group, set), nullptr);
    EXPECT_EQ(Q3Shared_GetReferenceCount(set), 3u);
    Q3Object_Dispose(set);
    Q3Object_Dispose(again);
    EXPECT_EQ(Q3Shared_GetReferenceCount(set), 1u);
    TQ3GroupPosition pos;
    Q3Group_GetFirstPosition(group, &pos);
    TQ3Object member = nullptr;
    ASSERT_EQ(Q3Group_GetPositionObject(group, pos, &member), kQ3Success);
    EXPECT_EQ(member, set);
    EXPECT_EQ(Q3Shared_GetReferenceCount(set), 2u);
    Q3Object_Dispose(member);
    Q3Object_Dispose(group); // takes the set with it
}

TEST_F(Objects, DisposedObjectIsRefusedNotTouched) {
    TQ3AttributeSet set = Q3AttributeSet_New();
    Q3Object_Dispose(set);
    TQ3ColorRGB c{1, 0, 0};
    EXPECT_EQ(Q3AttributeSet_Add(set, kQ3AttributeTypeDiffuseColor, &c), kQ3Failure);
    EXPECT_EQ(Q3Error_Get(nullptr), kQ3ErrorInvalidObject);
    EXPECT_EQ(Q3Object_Dispose(set), kQ3Failure);
    EXPECT_EQ(Q3Object_Dispose(nullptr), kQ3Failure);
    EXPECT_EQ(Q3Error_Get(nullptr), kQ3ErrorNULLParameter);
}

TEST_F(Objects, TypeTreeAndQueries) {
    TQ3BoxData bd{{0, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 0}, nullptr, nullptr};
    TQ3GeometryObject box = Q3Box_New(&bd);
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(Q3Object_IsType(box, Q3_FOUR_CHAR('g', 'm', 't', 'r')));
    EXPECT_FALSE(Q3Object_IsType(box, kQ3ShapeTypeGroup));
    TQ3RotateAboutPointTransformData rd{kQ3AxisZ, 1.0f, {1, 2, 3}};
    TQ3TransformObject rt = Q3RotateAboutPointTransform_New(&rd);
    // a transform is not a geometry: the geometry call refuses it
    EXPECT_EQ(Q3Geometry_GetType(rt), kQ3ObjectTypeInvalid);
    EXPECT_EQ(Q3Error_Get(nullptr), kQ3ErrorInvalidObjectType);

    TQ3ObjectClassNameString name;
    ASSERT_EQ(Q3ObjectHierarchy_GetStringFromType(kQ3GeometryTypeBox, name), kQ3Success);
    TQ3ObjectType back = 0;
    ASSERT_EQ(Q3ObjectHierarchy_GetTypeFromString(name, &back), kQ3Success);
    EXPECT_EQ(back, kQ3GeometryTypeBox);
    EXPECT_EQ(Q3ObjectHierarchy_GetStringFromType(0x12345678, name), kQ3Failure);
    Q3Object_Dispose(box);
    Q3Object_Dispose(rt);
}

TEST_F(Objects, RendererClassesAreListedWithNickNames) {
    TQ3SubClassData sub{};
    ASSERT_EQ(Q3ObjectHierarchy_GetSubClassData(kQ3SharedTypeRenderer, &sub), kQ3Success);
    bool interactive = false, generic = false;
    for (TQ3Uns32 i = 0; i < sub.numClasses; ++i) {
        interactive |= sub.classTypes[i] == Q3_FOUR_CHAR('c', 't', 'w', 'n');
        generic |= sub.classTypes[i] == Q3_FOUR_CHAR('g', 'n', 'r', 'r');
    }
    EXPECT_TRUE(interactive && generic);
    Q3ObjectHierarchy_EmptySubClassData(&sub);
    EXPECT_EQ(sub.classTypes, nullptr);

    TQ3ObjectClassNameString nick;
    ASSERT_EQ(Q3RendererClass_GetNickNameString(kQ3RendererTypeInteractive, nick), kQ3Success);
    EXPECT_GT(std::strlen(nick), 0u);
    EXPECT_EQ(Q3Renderer_NewFromType(kQ3GeometryTypeBox), nullptr);
}

// An element that holds a reference to a string object, copied by reference
// count as a caller of the library does for names.
TQ3Status nameCopy(const void* from, void* to) {
    TQ3Object s;
    std::memcpy(&s, from, sizeof s);
    TQ3Object r = s ? Q3Shared_GetReference(s) : nullptr;
    std::memcpy(to, &r, sizeof r);
    return kQ3Success;
}
TQ3Status nameReplace(const void* from, void* to) {
    TQ3Object s, old;
    std::memcpy(&s, from, sizeof s);
    std::memcpy(&old, to, sizeof old);
    TQ3Object r = s ? Q3Shared_GetReference(s) : nullptr;
    if (old) Q3Object_Dispose(old);
    std::memcpy(to, &r, sizeof r);
    return kQ3Success;
}
TQ3Status nameDelete(void* element) {
    TQ3Object s;
    std::memcpy(&s, element, sizeof s);
    if (s) Q3Object_Dispose(s);
    return kQ3Success;
}
TQ3XFunctionPointer nameMeta(TQ3XMethodType m) {
    switch (m) {
    case kQ3XMethodTypeElementCopyAdd:
    case kQ3XMethodTypeElementCopyGet:
    case kQ3XMethodTypeElementCopyDuplicate:
        return reinterpret_cast<TQ3XFunctionPointer>(nameCopy);
    case kQ3XMethodTypeElementCopyReplace:
        return reinterpret_cast<TQ3XFunctionPointer>(nameReplace);
    case kQ3XMethodTypeElementDelete:
        return reinterpret_cast<TQ3XFunctionPointer>(nameDelete);
    default:
        return nullptr;
    }
}

TEST_F(Objects, RegisteredElementKeepsItsReferencesBalanced) {
    TQ3ElementType type = 0;
    TQ3XObjectClass cls =
        Q3XElementClass_Register(&type, "TestNameAttribute", sizeof(TQ3Object), nameMeta);
    ASSERT_NE(cls, nullptr);
    TQ3ObjectType fetched = 0;
    ASSERT_EQ(Q3XObjectClass_GetType(cls, &fetched), kQ3Success);
    EXPECT_EQ(fetched, type);
    EXPECT_LT(type, 0);
    EXPECT_EQ(Q3XElementClass_Register(&type, "TestNameAttribute", 4, nameMeta), nullptr);

    TQ3StringObject text = Q3CString_New("Plumet");
    TQ3AttributeSet set = Q3AttributeSet_New();
    ASSERT_EQ(Q3Set_Add(set, type, &text), kQ3Success);
    EXPECT_EQ(Q3Shared_GetReferenceCount(text), 2u);
    ASSERT_EQ(Q3Set_Add(set, type, &text), kQ3Success); // replace: still one held
    EXPECT_EQ(Q3Shared_GetReferenceCount(text), 2u);
    TQ3Object got = nullptr;
    ASSERT_EQ(Q3Set_Get(set, type, &got), kQ3Success);
    char* s = nullptr;
    ASSERT_EQ(Q3CString_GetString(got, &s), kQ3Success);
    EXPECT_STREQ(s, "Plumet");
    Q3CString_EmptyData(&s);
    Q3Object_Dispose(got);

    TQ3AttributeSet copy = Q3AttributeSet_New(), empty = Q3AttributeSet_New();
    ASSERT_EQ(Q3AttributeSet_Inherit(empty, set, copy), kQ3Success);
    EXPECT_EQ(Q3Shared_GetReferenceCount(text), 3u);
    Q3Object_Dispose(copy);
    Q3Object_Dispose(empty);
    ASSERT_EQ(Q3Set_Clear(set, type), kQ3Success);
    EXPECT_EQ(Q3Shared_GetReferenceCount(text), 1u);
    EXPECT_EQ(Q3Set_Get(set, type, &got), kQ3Failure);
    Q3Object_Dispose(set);
    Q3Object_Dispose(text);
    EXPECT_EQ(Q3XObjectHierarchy_UnregisterClass(cls), kQ3Success);
    EXPECT_FALSE(Q3ObjectHierarchy_IsNameRegistered("TestNameAttribute"));
}

TEST(Library, LastExitForgetsRegisteredClasses) {
    for (int run = 0; run < 2; ++run) {
        ASSERT_EQ(Q3Initialize(), kQ3Success);
        ASSERT_EQ(Q3Initialize(), kQ3Success); // starts nest
        TQ3ElementType type = 0;
        EXPECT_NE(Q3XElementClass_Register(&type, "TestRunElement", 4, nullptr), nullptr) << run;
        Q3Exit();
        EXPECT_TRUE(Q3ObjectHierarchy_IsNameRegistered("TestRunElement"));
        Q3Exit();
        EXPECT_FALSE(Q3ObjectHierarchy_IsNameRegistered("TestRunElement"));
        EXPECT_TRUE(Q3ObjectHierarchy_IsTypeRegistered(kQ3RendererTypeInteractive));
    }
    EXPECT_EQ(Q3Exit(), kQ3Failure); // not started
    Q3Error_Get(nullptr);
}

TEST_F(Objects, AttributeSetsCopyInAndOut) {
    TQ3AttributeSet set = Q3AttributeSet_New();
    TQ3ColorRGB red{1, 0, 0}, out{};
    TQ3Vector3D n{0, 0, 1};
    EXPECT_EQ(Q3AttributeSet_Get(set, kQ3AttributeTypeDiffuseColor, &out), kQ3Failure);
    ASSERT_EQ(Q3AttributeSet_Add(set, kQ3AttributeTypeDiffuseColor, &red), kQ3Success);
    ASSERT_EQ(Q3AttributeSet_Add(set, kQ3AttributeTypeNormal, &n), kQ3Success);
    red.g = 1; // the set holds a copy
    ASSERT_EQ(Q3AttributeSet_Get(set, kQ3AttributeTypeDiffuseColor, &out), kQ3Success);
    EXPECT_EQ(out.g, 0.0f);
    TQ3AttributeType t = kQ3AttributeTypeNone;
    int count = 0;
    while (Q3AttributeSet_GetNextAttributeType(set, &t) == kQ3Success && t != kQ3AttributeTypeNone)
        ++count;
    EXPECT_EQ(count, 2);
    EXPECT_EQ(Q3AttributeSet_Add(set, 9999, &red), kQ3Failure); // unknown type
    EXPECT_EQ(Q3AttributeSet_Add(set, kQ3AttributeTypeDiffuseColor, nullptr), kQ3Failure);
    Q3AttributeSet_Empty(set);
    EXPECT_FALSE(Q3AttributeSet_Contains(set, kQ3AttributeTypeNormal));

    // a surface shader attribute holds its shader
    TQ3StorageObject storage =
        Q3MemoryStorage_New(reinterpret_cast<const unsigned char*>("abcd"), 4);
    TQ3StoragePixmap sp{storage, 1, 1, 4, 32, kQ3PixelTypeRGB32, kQ3EndianBig, kQ3EndianBig};
    TQ3TextureObject tex = Q3PixmapTexture_New(&sp);
    TQ3ShaderObject shader = Q3TextureShader_New(tex);
    ASSERT_EQ(Q3AttributeSet_Add(set, kQ3AttributeTypeSurfaceShader, &shader), kQ3Success);
    EXPECT_EQ(Q3Shared_GetReferenceCount(shader), 2u);
    Q3Object_Dispose(set);
    EXPECT_EQ(Q3Shared_GetReferenceCount(shader), 1u);
    TQ3TextureObject got = nullptr;
    ASSERT_EQ(Q3TextureShader_GetTexture(shader, &got), kQ3Success);
    EXPECT_EQ(got, tex);
    Q3Object_Dispose(got);
    Q3Object_Dispose(shader);
    Q3Object_Dispose(tex);
    Q3Object_Dispose(storage);
}

TEST_F(Objects, MemoryStorageUsesTheCallersBufferInPlace) {
    unsigned char buffer[16] = {1, 2, 3};
    TQ3StorageObject s = Q3MemoryStorage_NewBuffer(buffer, 16, 16);
    unsigned char* back = nullptr;
    TQ3Uns32 valid = 0, size = 0;
    ASSERT_EQ(Q3MemoryStorage_GetBuffer(s, &back, &valid, &size), kQ3Success);
    EXPECT_EQ(back, buffer);
    EXPECT_EQ(valid, 16u);
    unsigned char read[4];
    TQ3Uns32 got = 0;
    ASSERT_EQ(Q3Storage_GetData(s, 14, 4, read, &got), kQ3Success);
    EXPECT_EQ(got, 2u);
    EXPECT_EQ(Q3Storage_GetData(s, 17, 4, read, &got), kQ3Failure);
    EXPECT_EQ(Q3MemoryStorage_NewBuffer(buffer, 17, 16), nullptr);
    Q3Object_Dispose(s);
}

TEST_F(Objects, ErrorsReportLatestAndFirst) {
    Q3Error_Get(nullptr);
    Q3Object_Dispose(nullptr);                                // NULL parameter
    Q3Geometry_GetType(reinterpret_cast<TQ3Object>(&before)); // not an object at all
    TQ3Error first = kQ3ErrorNone;
    EXPECT_EQ(Q3Error_Get(&first), kQ3ErrorInvalidObject);
    EXPECT_EQ(first, kQ3ErrorNULLParameter);
    EXPECT_EQ(Q3Error_Get(&first), kQ3ErrorNone);
}

TEST_F(Objects, ConstructorsRefuseBadData) {
    TQ3Vertex3D v[2] = {{{0, 0, 0}, nullptr}, {{NAN, 0, 0}, nullptr}};
    TQ3LineData ld{{v[0], v[1]}, nullptr};
    EXPECT_EQ(Q3Line_New(&ld), nullptr);
    EXPECT_EQ(Q3Line_New(nullptr), nullptr);
    TQ3PolygonData pd{2, v, nullptr};
    EXPECT_EQ(Q3Polygon_New(&pd), nullptr);
    TQ3GroupObject g = Q3Group_New();
    TQ3Vertex3D w[3] = {{{0, 0, 0}, g}, {{1, 0, 0}, nullptr}, {{0, 1, 0}, nullptr}};
    TQ3TriangleData td{{w[0], w[1], w[2]}, nullptr};
    EXPECT_EQ(Q3Triangle_New(&td), nullptr); // a group is no attribute set
    Q3Object_Dispose(g);
    TQ3SubdivisionStyleData sd{kQ3SubdivisionMethodConstant, 0, 5};
    EXPECT_EQ(Q3SubdivisionStyle_New(&sd), nullptr);
    EXPECT_EQ(Q3FillStyle_New(static_cast<TQ3FillStyle>(7)), nullptr);
    float knots[3] = {0, 1, 2};
    TQ3RationalPoint4D pts[2] = {{0, 0, 0, 1}, {1, 0, 0, 1}};
    TQ3NURBCurveData nd{2, 2, pts, knots, nullptr}; // needs 4 knots; read only within 2 + 2
    float goodKnots[4] = {0, 0, 1, 1};
    nd.knots = goodKnots;
    TQ3GeometryObject curve = Q3NURBCurve_New(&nd);
    EXPECT_NE(curve, nullptr);
    float badKnots[4] = {0, 1, 0.5f, 1};
    nd.knots = badKnots;
    EXPECT_EQ(Q3NURBCurve_New(&nd), nullptr);
    Q3Object_Dispose(curve);
    Q3Error_Get(nullptr);
}

} // namespace
