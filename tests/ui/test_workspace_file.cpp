// The workspace's records in the preferences file: the round trip, the
// reading order, damage of every kind, and runs at the same time.
#include "curves/VCustomPathData.h"
#include "curves/VCustomPathsFile.h"
#include "tests/TempConfigFolder.h"
#include "tests/curves/SameCustomPath.h"
#include "ui/persistence/VZarbesoWorkspace.h"

#include <cstring>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {
// Every byte of every record set to something other than its default.
void FillRecords(VZarbesoWorkspace& w, std::uint8_t seed) {
    auto fill = [&](auto& record) {
        auto* bytes = reinterpret_cast<std::uint8_t*>(&record);
        for (std::size_t i = 0; i < sizeof record; ++i)
            bytes[i] = std::uint8_t(seed + i * 7);
    };
    fill(w.app), fill(w.model), fill(w.modelPosition), fill(w.camera), fill(w.lighting);
    fill(w.font), fill(w.paths), fill(w.text), fill(w.textAlignment), fill(w.switches);
    fill(w.rendering), fill(w.analyticPrefs);
    w.app.saved = 1;
}

struct RecordView {
    const char* key;
    const void* bytes;
    std::size_t size;
};

// The records of a workspace as bytes, by key.
std::vector<RecordView> Records(const VZarbesoWorkspace& w) {
    return {{"App", &w.app, sizeof w.app},
            {"Model", &w.model, sizeof w.model},
            {"Model Position", &w.modelPosition, sizeof w.modelPosition},
            {"Camera", &w.camera, sizeof w.camera},
            {"Lighting", &w.lighting, sizeof w.lighting},
            {"Font", &w.font, sizeof w.font},
            {"Paths", &w.paths, sizeof w.paths},
            {"Text", &w.text, sizeof w.text},
            {"Text Alignment", &w.textAlignment, sizeof w.textAlignment},
            {"Switches", &w.switches, sizeof w.switches},
            {"Rendering", &w.rendering, sizeof w.rendering},
            {"Analytic Prefs", &w.analyticPrefs, sizeof w.analyticPrefs}};
}

bool Same(const RecordView& a, const RecordView& b) {
    return a.size == b.size && !std::memcmp(a.bytes, b.bytes, a.size);
}

std::unique_ptr<VCustomPathData> MakePath(const char* name, int points, std::uint8_t isBezier) {
    std::vector<KVector3D> p;
    for (int i = 0; i < points; ++i)
        p.push_back({float(i), float(i * i) * 0.5f, -1.25f * i, 1.0f + 0.125f * i});
    std::vector<double> k(std::size_t(points + 4));
    for (std::size_t i = 0; i < k.size(); ++i)
        k[i] = std::min<double>(std::max<int>(int(i) - 3, 0), points - 3) / 3.0;
    auto d = std::make_unique<VCustomPathData>();
    d->SetCurve(points, p.data(), int(k.size()), k.data(), 1, {1, 0, 0, 0}, {0, 0.6f, 0.8f, 0});
    d->SetName(name);
    d->isBezier = isBezier;
    return d;
}

// A workspace written with every record, two custom paths and a texture.
void WriteFull(VZarbesoWorkspace& w) {
    FillRecords(w, 3);
    w.AddCustomPath(*MakePath("Custom Path  1", 7, 1));
    w.AddCustomPath(*MakePath("Swirl", 22, 0));
    w.AddCustomTexture(0, "/home/someone/bricks.bmp");
    ASSERT_TRUE(w.WriteToFile());
}

} // namespace

TEST(WorkspaceFile, EveryRecordAndListComesBackUnchangedOnceOkSavedIt) {
    TempConfigFolder config;
    VZarbesoWorkspace written(false);
    WriteFull(written);
    VZarbesoWorkspace read(true);
    const auto w = Records(written), r = Records(read);
    for (std::size_t i = 0; i < w.size(); ++i)
        EXPECT_TRUE(Same(w[i], r[i])) << w[i].key;
    ASSERT_EQ(read.customPathCount, 2);
    EXPECT_TRUE(SameCustomPath(read.GetCustomPath(0), written.GetCustomPath(0)));
    EXPECT_TRUE(SameCustomPath(read.GetCustomPath(1), written.GetCustomPath(1)));
    std::uint16_t id = 9;
    char path[256];
    ASSERT_TRUE(read.GetCustomTexture(0, id, path));
    EXPECT_EQ(id, 0);
    EXPECT_STREQ(path, "/home/someone/bricks.bmp");

    // A file whose "App" says nothing was confirmed keeps the defaults, but
    // its custom paths and textures are read.
    written.app.saved = 0;
    ASSERT_TRUE(written.WriteToFile());
    const VZarbesoWorkspace defaults(false), unsaved(true);
    const auto d = Records(defaults), u = Records(unsaved);
    for (std::size_t i = 1; i < d.size(); ++i)
        EXPECT_TRUE(Same(d[i], u[i])) << d[i].key;
    EXPECT_EQ(unsaved.customTextureCount, 1);
    EXPECT_EQ(unsaved.customPathCount, 2);
}

TEST(WorkspaceFile, DamageFallsBackToTheDefaultsAndLosesNothingElse) {
    TempConfigFolder config;
    VZarbesoWorkspace written(false);
    WriteFull(written);
    const VZarbesoWorkspace defaults(false);
    const auto intact = config.Read(kPreferencesFileName);
    ASSERT_GE(intact.size(), 1536u) << "a full set takes three pages or more";

    // Each record is either as written or the default: a flipped key only
    // loses its own record, anything else loses the whole set. Custom paths
    // have their own file and always survive.
    const auto w = Records(written), d = Records(defaults);
    auto check = [&](const std::vector<unsigned char>& bytes, const std::string& what) {
        config.Write(kPreferencesFileName, bytes);
        VZarbesoWorkspace read(true);
        const auto r = Records(read);
        bool anyDefault = false;
        for (std::size_t i = 0; i < r.size(); ++i) {
            if (Same(r[i], w[i])) continue;
            anyDefault = true;
            EXPECT_TRUE(Same(r[i], d[i])) << r[i].key << " after " << what;
        }
        EXPECT_EQ(read.customPathCount, 2) << what;
        return anyDefault;
    };
    int fellBack = 0;
    for (std::size_t i = 0; i < intact.size(); i += 3) {
        auto bytes = intact;
        bytes[i] ^= 0x5A;
        fellBack += check(bytes, "flip at " + std::to_string(i));
    }
    EXPECT_GT(fellBack, 300) << "flips in the records' values reach every record";
    for (std::size_t n = 0; n < intact.size(); n += 29)
        check(std::vector<unsigned char>(intact.begin(), intact.begin() + long(n)),
              "cut at " + std::to_string(n));

    // A value flipped in "Text" makes every record fall back, "App" too.
    auto bytes = intact;
    const auto* text = reinterpret_cast<const unsigned char*>(written.text.text);
    const auto at = std::search(bytes.begin(), bytes.end(), text, text + 4);
    ASSERT_NE(at, bytes.end());
    *at ^= 1;
    config.Write(kPreferencesFileName, bytes);
    VZarbesoWorkspace read(true);
    const auto r = Records(read);
    for (std::size_t i = 0; i < r.size(); ++i)
        EXPECT_TRUE(Same(r[i], d[i])) << r[i].key;
}

TEST(WorkspaceFile, RunsAtTheSameTimeNeverReadAHalfWrittenFile) {
    TempConfigFolder config;
    // Two writers, each writing its own consistent sets over and over, and a
    // reader that checks that every set it reads is one of them.
    auto writer = [](int id) {
        for (int round = 0; round < 60; ++round) {
            VZarbesoWorkspace w(false);
            w.app.saved = 1;
            std::snprintf(w.text.text, sizeof w.text.text, "writer %d round %d", id, round);
            w.textAlignment.values[0] = float(id * 1000 + round);
            for (int i = 0; i <= round % 5; ++i)
                w.AddCustomPath(*MakePath("P", 5 + round, 1));
            w.WriteToFile();
        }
    };
    std::vector<pid_t> children;
    for (int id = 1; id <= 2; ++id) {
        const pid_t pid = fork();
        if (pid == 0) {
            writer(id);
            _exit(0);
        }
        children.push_back(pid);
    }
    int reads = 0, seenWritten = 0;
    bool bad = false;
    while (!bad) {
        int status = 0;
        bool running = false;
        for (pid_t pid : children)
            running |= waitpid(pid, &status, WNOHANG) == 0;
        VZarbesoWorkspace w(true);
        ++reads;
        if (w.app.saved) {
            ++seenWritten;
            int id = 0, round = 0;
            bad = std::sscanf(w.text.text, "writer %d round %d", &id, &round) != 2 ||
                  w.textAlignment.values[0] != float(id * 1000 + round);
        } else {
            bad = seenWritten > 0; // defaults after a good set: a torn read
        }
        bad = bad || (w.customPathCount > 0 && w.GetCustomPath(0)->pointCount < 5);
        if (!running) break;
    }
    for (pid_t pid : children)
        waitpid(pid, nullptr, 0);
    EXPECT_FALSE(bad) << "after " << reads << " reads";
    EXPECT_GT(seenWritten, 0);
    VZarbesoWorkspace last(true);
    EXPECT_EQ(last.app.saved, 1);
    EXPECT_EQ(last.textAlignment.values[0] == 1059.0f || last.textAlignment.values[0] == 2059.0f,
              true);
}
