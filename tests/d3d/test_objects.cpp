// The object layer: failures become the thrown codes, wrappers own exactly
// one reference, attribute sets, names and tags on geometry.
#include "d3d/DAttributeSet.h"
#include "d3d/DGeometryObject.h"
#include "d3d/DGroupObject.h"
#include "tests/d3d/D3DTestSupport.h"

#include <string>

using Objects = D3DTest;

TEST_F(Objects, LibraryFailuresBecomeTheirCodes) {
    EXPECT_EQ(ThrownCode([] { CheckStatus(kQ3Failure); }), kFailLF3q);
    EXPECT_EQ(ThrownCode([] { CheckStatus(kQ3Success); }), 0);
    EXPECT_EQ(ThrownCode([] { CheckObject(nullptr); }), kFailPlin);
    // A library refusal inside a wrapper comes out as lF3q and nothing else:
    // the library does not know attribute type 999.
    DAttributeSet set;
    TQ3ColorRGB color{};
    // An absent attribute is no failure.
    EXPECT_FALSE(set.Get(kQ3AttributeTypeDiffuseColor, &color));
    int value = 1;
    EXPECT_EQ(ThrownCode([&] { set.Add(999, &value); }), kFailLF3q);
    EXPECT_EQ(ThrownCode([&] { set.Clear(kQ3AttributeTypeDiffuseColor); }), kFailLF3q);
    // The library's error was read and dropped.
    EXPECT_EQ(Q3Error_Get(nullptr), kQ3ErrorNone);
}

TEST_F(Objects, WrapperHoldsExactlyItsOwnReference) {
    DPlainGroup group;
    {
        DAttributeSet set;
        EXPECT_EQ(Q3Shared_GetReferenceCount(set.object), 1u);
        group.AddObject(set);
        EXPECT_EQ(Q3Shared_GetReferenceCount(set.object), 2u);
        DAttributeSet second(set.object);
        EXPECT_EQ(second.object, set.object);
        EXPECT_EQ(Q3Shared_GetReferenceCount(set.object), 3u);
    }
    // The group's reference keeps the set alive after both wrappers went.
    EXPECT_EQ(group.CountObjects(), 1u);
    auto members = Members(group.object);
    ASSERT_EQ(members.size(), 1u);
    EXPECT_EQ(Q3Shared_GetReferenceCount(members[0]), 2u);
    DisposeAll(members);
}

TEST_F(Objects, NamesAndTagsOnGeometryKeepItsColour) {
    DLineObject line({0, 0, 0}, {1, 0, 0}, 1, 0, 0);
    std::string name;
    std::int32_t number = 0;
    EXPECT_FALSE(DGeometryObject::GetName(line.object, name));
    line.SetName("ScaleHotBox");
    line.SetName("RotateHotBox"); // replaces the first and gives its string back
    ASSERT_TRUE(DGeometryObject::GetName(line.object, name));
    EXPECT_EQ(name, "RotateHotBox");
    TQ3AttributeSet held = nullptr;
    Q3Geometry_GetAttributeSet(line.object, &held);
    TQ3ColorRGB color{};
    EXPECT_EQ(Q3AttributeSet_Get(held, kQ3AttributeTypeDiffuseColor, &color), kQ3Success);
    EXPECT_FLOAT_EQ(color.r, 1.0f);
    Q3Object_Dispose(held);

    DLineObject tagged({0, 0, 0}, {1, 0, 0}, -1, 0, 0);
    tagged.SetTag("OrbitHotBox", -7);
    ASSERT_TRUE(DGeometryObject::GetTag(tagged.object, name, number));
    EXPECT_EQ(name, "OrbitHotBox");
    EXPECT_EQ(number, -7);
    EXPECT_FALSE(DGeometryObject::GetName(tagged.object, name)); // a tag is not a name

    DPlainGroup group;
    EXPECT_FALSE(DGeometryObject::GetName(group.object, name));
    EXPECT_FALSE(DGeometryObject::GetName(nullptr, name));
    EXPECT_FALSE(DGeometryObject::GetTag(group.object, name, number));
}

TEST_F(Objects, TagsAreCopiedWhenSetsAreMerged) {
    // Merging sets duplicates their elements: the string is shared with a
    // reference of each set's own, and the number goes along.
    DLineObject line({0, 0, 0}, {1, 0, 0}, -1, 0, 0);
    line.SetTag("CentroidAxes", 42);
    TQ3AttributeSet tagged = nullptr;
    Q3Geometry_GetAttributeSet(line.object, &tagged);
    ASSERT_NE(tagged, nullptr);
    DAttributeSet empty, merged;
    ASSERT_EQ(Q3AttributeSet_Inherit(tagged, empty.object, merged.object), kQ3Success);
    Q3Object_Dispose(tagged);
    line.SetTag("other", 1);

    DLineObject second({0, 0, 0}, {1, 0, 0}, -1, 0, 0);
    Q3Geometry_SetAttributeSet(second.object, merged.object);
    std::string text;
    std::int32_t number = -1;
    ASSERT_TRUE(DGeometryObject::GetTag(second.object, text, number));
    EXPECT_EQ(text, "CentroidAxes");
    EXPECT_EQ(number, 42);
}

TEST_F(Objects, ElementsRegisterOnceAndUnregister) {
    const TQ3ElementType name = GetNameAttributeType(), tag = GetTagAttributeType();
    EXPECT_LT(name, 0);
    EXPECT_LT(tag, 0);
    EXPECT_NE(name, tag);
    RegisterCustomElements();
    EXPECT_EQ(GetNameAttributeType(), name);
    EXPECT_TRUE(Q3ObjectHierarchy_IsNameRegistered("NameAttribute"));
    EXPECT_TRUE(Q3ObjectHierarchy_IsNameRegistered("TagAttribute"));
    UnregisterCustomElements();
    EXPECT_FALSE(Q3ObjectHierarchy_IsNameRegistered("NameAttribute"));
    EXPECT_EQ(GetNameAttributeType(), 0);
    RegisterCustomElements();
}

TEST(ObjectsAcrossStarts, NamesNeedTheElementsWhichComeBackAfterTheLibraryRestarts) {
    // Without the elements a name cannot be set; the end of the library
    // drops the registered classes, and the next start registers them again
    // rather than trusting what it had.
    Q3Initialize();
    {
        DLineObject line({0, 0, 0}, {1, 0, 0}, -1, 0, 0);
        EXPECT_EQ(ThrownCode([&] { line.SetName("x"); }), kFailLF3q);
        std::string text;
        EXPECT_FALSE(DGeometryObject::GetName(line.object, text));
    }
    RegisterCustomElements();
    Q3Exit();
    EXPECT_EQ(GetNameAttributeType(), 0);
    Q3Initialize();
    RegisterCustomElements();
    EXPECT_NE(GetNameAttributeType(), 0);
    {
        DLineObject line({0, 0, 0}, {1, 0, 0}, -1, 0, 0);
        line.SetName("again");
        std::string text;
        EXPECT_TRUE(DGeometryObject::GetName(line.object, text));
    }
    UnregisterCustomElements();
    Q3Exit();
}

TEST_F(Objects, HierarchyNamesOfTheElements) {
    DObjectHierarchy hierarchy;
    std::string text;
    hierarchy.GetStringFromType(GetNameAttributeType(), text);
    EXPECT_EQ(text, "NameAttribute");
    TQ3ObjectType type = 0;
    hierarchy.GetTypeFromString("TagAttribute", &type);
    EXPECT_EQ(type, GetTagAttributeType());
    EXPECT_EQ(ThrownCode([&] { hierarchy.GetTypeFromString("NoSuchClass", &type); }), kFailLF3q);
}
