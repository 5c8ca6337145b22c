// The module's property list, read as a host reads it.
#include "host/PiPL.h"
#include "sdk/PIFilter.h"

#include <cstring>
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

namespace {
uint32_t Get32(const uint8_t* p) {
    return p[0] | p[1] << 8 | p[2] << 16 | uint32_t(p[3]) << 24;
}

std::map<uint32_t, std::vector<uint8_t>> Parse(const uint8_t* data, std::size_t size) {
    std::map<uint32_t, std::vector<uint8_t>> props;
    EXPECT_EQ(Get32(data), 0u);
    const uint32_t count = Get32(data + 4);
    std::size_t at = 8;
    for (uint32_t i = 0; i < count; ++i) {
        EXPECT_LE(at + 16, size);
        EXPECT_EQ(Get32(data + at), uint32_t(PIAdobeVendorID));
        const uint32_t key = Get32(data + at + 4);
        const uint32_t length = Get32(data + at + 12);
        props[key].assign(data + at + 16, data + at + 16 + length);
        at += 16 + ((length + 3) & ~3u);
    }
    EXPECT_EQ(at, size);
    return props;
}
} // namespace

TEST(PiPL, ExportedListNamesTheFilter) {
    const std::string path = std::string(PLUMET_BINARY_DIR) + "/host/plumet.8bf";
    void* module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(module, nullptr) << dlerror();
    auto* data = static_cast<const uint8_t*>(dlsym(module, PIPL_RESOURCE_SYMBOL));
    auto* size = static_cast<const uint32_t*>(dlsym(module, PIPL_RESOURCE_SIZE_SYMBOL));
    ASSERT_TRUE(data && size);
    ASSERT_EQ(*size, BuildFilterPiPL().size());
    EXPECT_EQ(0, std::memcmp(data, BuildFilterPiPL().data(), *size));

    auto props = Parse(data, *size);
    ASSERT_EQ(props.size(), 7u);
    // Codes are stored as numbers, so their characters read backwards.
    EXPECT_EQ(std::string(props[PIKindProperty].begin(), props[PIKindProperty].end()), "MFB8");
    const auto& name = props[PINameProperty];
    ASSERT_EQ(name.size(), 16u);
    EXPECT_EQ(name[0], 14);
    EXPECT_EQ(std::string(name.begin() + 1, name.begin() + 15), "FlyWORD Plumet");
    const auto& category = props[PICategoryProperty];
    ASSERT_EQ(category.size(), 12u);
    EXPECT_EQ(std::string(category.begin() + 1, category.begin() + 1 + category[0]), "Lumerra 3D");
    EXPECT_EQ(Get32(props[PIVersionProperty].data()), 0x00040000u);
    EXPECT_STREQ(reinterpret_cast<const char*>(props[PIWin64X86CodeProperty].data()), "ENTRYPOINT");
    EXPECT_EQ(props[PIImageModesProperty][0], 0x18);
    EXPECT_EQ(props[PIImageModesProperty][1], 0x00);
    const auto& cases = props[PIFilterCaseInfoProperty];
    ASSERT_EQ(cases.size(), 28u);
    const uint8_t flags1[7] = {0, 0, 0, 2, 2, 0, 0};
    for (int i = 0; i < 7; ++i) {
        EXPECT_EQ(cases[i * 4], 1);
        EXPECT_EQ(cases[i * 4 + 1], 1);
        EXPECT_EQ(cases[i * 4 + 2], flags1[i]) << "case " << i + 1;
        EXPECT_EQ(cases[i * 4 + 3], 0);
    }
    dlclose(module);
}
