// The workspace between the scene and the file: what OK saves comes back in
// the next run, with and without the window, and the first run's defaults.
#include "curves/VCNurbsCurve.h"
#include "curves/VCustomPathData.h"
#include "host/Alerts.h"
#include "host/ModuleState.h"
#include "scene/K3DSystem.h"
#include "scene/VCBezierCurveModel.h"
#include "scene/VCLight.h"
#include "tests/TempConfigFolder.h"
#include "tests/scene/SceneTestSupport.h"
#include "tests/ui/FilterStart.h"
#include "text/FontList.h"
#include "ui/NoWindowRun.h"
#include "ui/VZarbesoDocument.h"
#include "ui/controls/DialogControls.h"
#include "ui/persistence/VZarbesoWorkspace.h"
#include "ui/window/VZarbesoWindow.h"

#include <QApplication>
#include <QDialog>
#include <QImage>
#include <QTimer>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <random>

namespace {
// A host whose filter has started, so that documents can bind to its image.
class WorkspaceScene : public ::testing::Test {
  protected:
    void SetUp() override {
        for (int y = 0; y < host.height; ++y)
            for (int x = 0; x < host.width; ++x) {
                uint8* p = &host.image[(std::size_t(y) * host.width + x) * 3];
                p[0] = uint8(40 + y), p[1] = uint8(90 + x / 3), p[2] = 150;
            }
        ASSERT_EQ(StartFilter(host, [] { return true; }), 0);
    }

    // The document as a run of the window starts it.
    std::unique_ptr<VZarbesoDocument> Start() {
        auto document = std::make_unique<VZarbesoDocument>(true);
        document->InitControls();
        document->ApplyWorkspace();
        document->BindImage(false);
        return document;
    }

    std::vector<uint8> Output(const char* name) const {
        SaveHostOutput(host, name);
        return host.outBuffer;
    }

    TempConfigFolder config;
    FakeHost host{240, 150, 3, plugInModeRGBColor, filterCaseFlatImageNoSelection};
    VC3DSystem system;
};

// A font other than the default one, by its row.
std::int32_t OtherFontRow() {
    const std::uint32_t serif = FindFontListPosition("DejaVu Serif");
    const std::uint32_t row = serif ? serif : (GetDefaultFont() % GetFontList().GetCount()) + 1;
    return std::int32_t(row) - 1;
}
} // namespace

TEST_F(WorkspaceScene, ARunWithoutTheWindowRendersWhatOkSaved) {
    std::vector<uint8> confirmed;
    {
        std::unique_ptr<VZarbesoDocument> d = Start();
        VZarbesoView& view = *d->GetView();
        d->SetText("Plumet Wave");
        d->SelectFontRow(OtherFontRow());
        d->SelectPathRow(2); // Wave
        d->SetPathValue(1, 55, false);
        d->SetPathValue(2, 35, true);
        d->SetFaceColor({0xE000, 0x4000, 0x1000});
        d->SetSideColor({0x2000, 0x9000, 0x3000});
        d->SetTransparency(15);
        d->SetIntensity(30);
        d->SetAmbientColor({0xFFFF, 0xE000, 0xC000});
        for (const auto& [place, green] :
             {std::pair{KVector3D{-8, 4, 6, 0}, 0.2f}, std::pair{KVector3D{7, -2, 5, 0}, 0.9f}}) {
            VCLight* light = view.GetSceneManager()->AddLight(&view);
            ASSERT_NE(light, nullptr);
            light->Translate(place);
            light->SetColor(0.9f, green, 0.5f);
        }
        view.SetLayout(TextLayoutValue::kSlide, 37, false, true);
        view.SetLayout(TextLayoutValue::kTilt, 20, false, true);
        view.SetLayout(TextLayoutValue::kWidth, 13, false, true);
        view.SetLayout(TextLayoutValue::kDepth, 9, true, true);
        // A camera of the user's own, kept as a custom view.
        const TQ3Matrix4x4 orbit = MatrixFromRotation(0.25f, -0.35f, 0.05f);
        view.ApplyTo(K3DViewAdorner::kOrbit, K3DViewAdorner::kApply, &orbit, false);
        d->AddCustomView(d->ProposeCustomViewName());
        ASSERT_TRUE(d->ConfirmRun());
        confirmed = Output("workspace-ok.png");
    }
    ASSERT_EQ(static_cast<PluginParameters*>(host.record.parameters)->invocation, 0);

    host.outBuffer.assign(host.outBuffer.size(), 0);
    ASSERT_TRUE(RunWithoutWindow());
    const std::vector<uint8> repeated = Output("workspace-repeat.png");
    ASSERT_EQ(repeated.size(), confirmed.size());
    std::size_t differ = 0, changed = 0;
    for (std::size_t i = 0; i < repeated.size(); ++i) {
        differ += repeated[i] != confirmed[i];
        changed += repeated[i] != host.image[i];
    }
    EXPECT_EQ(differ, 0u) << "the repeat is the picture of the last OK";
    EXPECT_GT(changed, repeated.size() / 20) << "and it shows the text";

    // The first run's defaults give another picture.
    std::filesystem::remove(config.File(kPreferencesFileName));
    host.outBuffer.assign(host.outBuffer.size(), 0);
    ASSERT_TRUE(RunWithoutWindow());
    const std::vector<uint8> defaults = Output("workspace-defaults.png");
    EXPECT_NE(defaults, confirmed);
}

TEST_F(WorkspaceScene, FirstRunShowsTheDefaultsAndANextRunWhatOkKept) {
    {
        std::unique_ptr<VZarbesoDocument> d = Start();
        const VZarbesoView& view = *d->GetView();
        EXPECT_STREQ(view.GetText(), "Lumerra 3D");
        EXPECT_EQ(view.GetLayout(TextLayoutValue::kSlide), 50.0f);
        EXPECT_EQ(d->controls.viewRow, 0) << "Home";
        EXPECT_EQ(d->controls.pathRow, 0) << "the Line";
        EXPECT_EQ(d->controls.surfaceRow, 0);
        EXPECT_TRUE(d->GetSwitch(VSwitch::kImage));

        d->SelectPathRow(1); // Ellipse
        ASSERT_TRUE(d->ConvertPath(d->ProposeCustomPathName()));
        d->SelectSurfaceRow(3); // Leopard Skin
        d->SetLink(true);
        d->SetSwitch(VSwitch::kGrid, false);
        d->AddCustomView("Mine");
        VZarbesoView& lit = *d->GetView();
        for (int i = 0; i < 3; ++i)
            lit.GetSceneManager()->AddLight(&lit)->Translate({float(i), 2, 3, 0});
        d->SaveWorkspace();
        // A Cancel after this saves nothing more.
        d->SetText("Not saved");
    }
    std::unique_ptr<VZarbesoDocument> d = Start();
    VZarbesoView& view = *d->GetView();
    EXPECT_STREQ(view.GetText(), "Lumerra 3D");
    EXPECT_EQ(d->controls.viewRow, kViewRowCustom) << "the View combo reads Custom View";
    EXPECT_EQ(d->GetCustomViewCount(), 0) << "custom views last one run";
    EXPECT_EQ(d->controls.pathRow, kFirstCustomPathRow);
    EXPECT_EQ(d->GetPathRows()[kFirstCustomPathRow], "Custom Path  1");
    EXPECT_TRUE(view.HasCurveModel());
    EXPECT_TRUE(view.GetCurve()->IsClosed()) << "the converted Ellipse is closed";
    EXPECT_EQ(d->controls.surfaceRow, 3);
    EXPECT_NE(view.GetTexture(), nullptr);
    EXPECT_EQ(d->controls.link, 1);
    EXPECT_FALSE(d->GetSwitch(VSwitch::kGrid));
    ASSERT_EQ(view.GetSceneManager()->GetLightCount(), 3u);
    KVector3D where;
    view.GetSceneManager()->GetLight(3)->GetPosition(where);
    EXPECT_EQ(where.x, 2.0f);
    EXPECT_EQ(where.z, 3.0f);

    // Reset brings the defaults back and keeps the custom paths.
    d->ResetAll();
    EXPECT_EQ(d->controls.pathRow, 0);
    EXPECT_EQ(d->controls.viewRow, 0);
    EXPECT_EQ(view.GetTexture(), nullptr);
    EXPECT_TRUE(d->GetSwitch(VSwitch::kGrid));
    EXPECT_EQ(view.GetSceneManager()->GetLightCount(), 0u) << "a first run has no lights";
    EXPECT_EQ(d->GetPathRows()[kFirstCustomPathRow], "Custom Path  1");
}

TEST_F(WorkspaceScene, CustomViewsKeepTheLastFour) {
    std::unique_ptr<VZarbesoDocument> d = Start();
    EXPECT_EQ(d->ProposeCustomViewName(), "Custom View  1");
    VZarbesoView& view = *d->GetView();
    for (int i = 0; i < 5; ++i) {
        const TQ3Matrix4x4 orbit = MatrixFromRotation(0.1f * float(i + 1), 0, 0);
        view.SetAll(nullptr, &orbit, nullptr);
        d->AddCustomView(d->ProposeCustomViewName());
    }
    const std::vector<std::string> rows = d->GetViewRows();
    ASSERT_EQ(d->GetCustomViewCount(), 4);
    EXPECT_EQ(rows[kFirstCustomViewRow], "Custom View  2") << "the first view made room";
    EXPECT_EQ(rows.back(), "Set View...");
    EXPECT_EQ(d->FindViewRow("custom view  5"), kFirstCustomViewRow + 3);
    EXPECT_EQ(d->controls.viewRow, kFirstCustomViewRow + 3);

    // Choosing the second row moves the camera to what it kept.
    d->SelectViewRow(kFirstCustomViewRow + 1);
    TQ3Matrix4x4 orbit;
    view.GetAll(nullptr, &orbit, nullptr);
    const TQ3Matrix4x4 kept = MatrixFromRotation(0.3f, 0, 0);
    EXPECT_NEAR(orbit.value[1][2], kept.value[1][2], 1e-6);
    EXPECT_EQ(d->controls.viewRow, kFirstCustomViewRow + 1);
    d->SelectViewRow(kFirstCustomViewRow + 4); // the hyphens
    EXPECT_EQ(d->controls.viewRow, kFirstCustomViewRow + 1);
}

TEST_F(WorkspaceScene, CustomPathsAreCapturedReopenedAndDeleted) {
    std::unique_ptr<VZarbesoDocument> d = Start();
    VZarbesoView& view = *d->GetView();
    d->SelectPathRow(0);
    ASSERT_TRUE(d->ConvertPath("Straight"));
    // A converted Line is a straight cubic whose letters stand upright.
    KVector3D tangent, normal;
    ASSERT_TRUE(view.GetCurve()->GetStartFrame(tangent, normal));
    EXPECT_NEAR(normal.y, 1.0f, 1e-5);

    d->SelectPathRow(6); // Spherical Helix
    ASSERT_TRUE(d->ConvertPath(d->ProposeCustomPathName()));
    KVector3D twisted;
    view.GetCurve()->GetStartFrame(tangent, twisted);
    d->SelectPathRow(2); // leaving it captures it
    d->SelectPathRow(kFirstCustomPathRow + 1);
    KVector3D reopened;
    view.GetCurve()->GetStartFrame(tangent, reopened);
    EXPECT_NEAR(reopened.Dot(twisted), 1.0f, 1e-5) << "the start frame keeps its twist";
    EXPECT_EQ(view.GetCustomPath(2)->isBezier, 1);
    // Kept as its 19 Bezier pieces, each with its own four points.
    EXPECT_EQ(view.GetCustomPath(2)->pointCount, 76);
    EXPECT_EQ(view.GetCustomPath(2)->knotCount, 80);

    EXPECT_EQ(d->FindPathRow("straight"), kFirstCustomPathRow);
    d->DeleteCustomPathRows({kFirstCustomPathRow});
    EXPECT_EQ(d->controls.pathRow, kFirstCustomPathRow) << "the second path moved up";
    EXPECT_EQ(d->GetPathRows()[kFirstCustomPathRow], "Custom Path  1");
    d->DeleteCustomPathRows({kFirstCustomPathRow});
    EXPECT_EQ(d->controls.pathRow, 0) << "with the path in use gone, the Line";
    EXPECT_EQ(d->GetPathRows().size(), 11u) << "no custom rows and no second separator";
    EXPECT_TRUE(view.HasPath());

    // A record of one NURBS curve reopens as such, and a path captured from
    // it is not made of Bezier pieces.
    VCustomPathData nurbs;
    const KVector3D p[4] = {{-5, 0, 0, 1}, {-2, 3, 0, 1}, {2, -3, 0, 1}, {5, 0, 0, 1}};
    const double k[8] = {0, 0, 0, 0, 1, 1, 1, 1};
    nurbs.SetCurve(4, p, 8, k, 0, {1, 0, 0, 0}, {0, 1, 0, 0});
    view.StoreCustomPath(0, "Plain", &nurbs);
    d->SelectPathRow(kFirstCustomPathRow);
    ASSERT_TRUE(view.HasCurveModel());
    ASSERT_TRUE(d->NewCustomPath("Copy"));
    EXPECT_EQ(view.GetCustomPath(2)->isBezier, 0);
}

namespace {
std::vector<std::string> gAlerts;
void KeepAlert(int, const std::string& text) {
    gAlerts.push_back(text);
}
} // namespace

TEST_F(WorkspaceScene, ACustomTextureComesBackAndFallsBackWhenItsFileHasGone) {
    SetMessageSink(&KeepAlert);
    const std::string file = config.File("bricks.png");
    QImage bricks(16, 8, QImage::Format_RGB32);
    bricks.fill(qRgb(200, 60, 40));
    ASSERT_TRUE(bricks.save(QString::fromStdString(file)));
    {
        std::unique_ptr<VZarbesoDocument> d = Start();
        EXPECT_FALSE(d->AddCustomTexture(config.File("missing.png")));
        EXPECT_EQ(d->controls.surfaceRow, kSurfaceRowColor);
        ASSERT_TRUE(d->AddCustomTexture(file));
        EXPECT_EQ(d->GetSurfaceRows()[kFirstCustomTextureRow], "bricks.png");
        d->SaveWorkspace();
    }
    {
        std::unique_ptr<VZarbesoDocument> d = Start();
        EXPECT_EQ(d->controls.surfaceRow, kFirstCustomTextureRow);
        EXPECT_NE(d->GetView()->GetTexture(), nullptr);
    }
    std::filesystem::remove(file);
    std::unique_ptr<VZarbesoDocument> d = Start();
    EXPECT_EQ(d->controls.surfaceRow, kSurfaceRowColor) << "the texture is gone: Color";
    EXPECT_EQ(d->GetView()->GetTexture(), nullptr);
    ASSERT_EQ(gAlerts.size(), 2u) << "one alert for each file that did not load";
    EXPECT_NE(gAlerts[1].find("cannot load texture file: \n" + file + "\nTry"), std::string::npos);
    SetMessageSink(nullptr);
}

TEST_F(WorkspaceScene, ADrawnPathComesBackWholeAndTheTextFollowsItWithoutTheWindow) {
    VC3DSystem tools; // the tools' picker and view matrix; the filter's start ended its own
    std::vector<QPointF> line;
    std::vector<KVector3D> points;
    std::vector<double> knots;
    {
        std::unique_ptr<VZarbesoDocument> d = Start();
        VZarbesoView& view = *d->GetView();
        d->SetText("Plumet on S");
        view.SetLayout(TextLayoutValue::kSlide, 0, true, true);
        ASSERT_TRUE(d->NewCustomPath("S"));
        view.SetTool(kToolCurveDraw);
        // Up out of the left anchor, into the right one from below.
        Gesture(view, {{25, 80}, {55, 15}});
        Gesture(view, {{215, 70}, {245, 5}});
        ASSERT_NE(view.GetBezierModel(), nullptr);
        const VCNurbsCurve& curve = *view.GetBezierModel()->GetCurve();
        points.assign(curve.ctrlPoints->points.get(),
                      curve.ctrlPoints->points.get() + curve.GetControlPointCount());
        knots.assign(curve.knots->values.get(), curve.knots->values.get() + curve.knots->count);
        line = ProjectPath(view, *view.GetCurve());
        d->SaveWorkspace();
    }
    {
        std::unique_ptr<VZarbesoDocument> d = Start();
        VZarbesoView& view = *d->GetView();
        EXPECT_EQ(d->GetPathRows()[d->controls.pathRow], "S");
        ASSERT_NE(view.GetBezierModel(), nullptr) << "a drawn path reopens as its pieces";
        const VCNurbsCurve& curve = *view.GetBezierModel()->GetCurve();
        ASSERT_EQ(curve.GetControlPointCount(), std::int32_t(points.size()));
        ASSERT_EQ(curve.knots->count, std::int32_t(knots.size()));
        for (std::size_t i = 0; i < points.size(); ++i) {
            const KVector3D& p = curve.ctrlPoints->points[i];
            EXPECT_TRUE(p.x == points[i].x && p.y == points[i].y && p.z == points[i].z &&
                        p.w == points[i].w)
                << "point " << i;
        }
        for (std::size_t i = 0; i < knots.size(); ++i)
            EXPECT_EQ(curve.knots->values[i], knots[i]) << "knot " << i;
    }
    host.outBuffer.assign(host.outBuffer.size(), 0);
    ASSERT_TRUE(RunWithoutWindow());
    const std::vector<uint8> out = Output("drawn-s-curve.png");
    // The letters are what differs from the image. They stand upright on
    // the curve: in most columns the lowest letter pixel lies on it (not in
    // those that cross only the upper part of a letter).
    std::vector<int> lowest(std::size_t(host.width), -1);
    for (int y = 0; y < host.height; ++y)
        for (int x = 0; x < host.width; ++x) {
            const std::size_t i = (std::size_t(y) * host.width + x) * 3;
            if (out[i] != host.image[i] || out[i + 1] != host.image[i + 1] ||
                out[i + 2] != host.image[i + 2])
                lowest[std::size_t(x)] = y;
        }
    int columns = 0, onCurve = 0;
    for (int x = 0; x < host.width; ++x) {
        if (lowest[std::size_t(x)] < 0) continue;
        ++columns;
        // The curve's row in this column, from its nearest sample.
        const QPointF* at = &line.front();
        for (const QPointF& q : line)
            if (std::fabs(q.x() - x) < std::fabs(at->x() - x)) at = &q;
        onCurve += std::fabs(at->y() - lowest[std::size_t(x)]) <= 6;
    }
    ASSERT_GT(columns, 150) << "the text runs along the curve";
    EXPECT_GT(double(onCurve) / columns, 0.7);
}

namespace {
// The main window, answered by a click on Cancel once it shows.
WFilterWindow* CancelledWindow(intptr_t parent, int16 invocation) {
    auto* window = new VZarbesoWindow_Win(parent, invocation);
    QTimer::singleShot(0, [window] {
        QApplication::setActiveWindow(window->Widget());
        window->Controls().Get(1018)->setFocus();
        window->Command(1018);
    });
    return window;
}
} // namespace

// (OK saving and rendering is shown by the window tests.)
TEST_F(WorkspaceScene, CancelOfTheWindowSavesNothing) {
    SetFilterWindowFactory(&CancelledWindow);
    auto* params = static_cast<PluginParameters*>(host.record.parameters);
    params->invocation = 2;
    EXPECT_FALSE(RunFilterDialog(nullptr, 2));
    EXPECT_EQ(params->invocation, 0);
    EXPECT_EQ(VZarbesoWorkspace(true).app.saved, 0);
    SetFilterWindowFactory(nullptr);
}

TEST_F(WorkspaceScene, RecordsOfAnyContentAreAppliedWithoutHarm) {
    // Sound checksums over random bytes: every field may hold anything,
    // numbers that are no numbers included.
    std::mt19937 rng(3);
    for (int round = 0; round < 4; ++round) {
        {
            VZarbesoWorkspace w(false);
            for (auto [record, size] : std::initializer_list<std::pair<void*, std::size_t>>{
                     {&w.app, sizeof w.app},
                     {&w.camera, sizeof w.camera},
                     {&w.lighting, sizeof w.lighting},
                     {&w.font, sizeof w.font},
                     {&w.paths, sizeof w.paths},
                     {&w.text, sizeof w.text},
                     {&w.textAlignment, sizeof w.textAlignment},
                     {&w.switches, sizeof w.switches},
                     {&w.rendering, sizeof w.rendering},
                     {&w.analyticPrefs, sizeof w.analyticPrefs}})
                for (std::size_t i = 0; i < size; ++i)
                    static_cast<std::uint8_t*>(record)[i] = std::uint8_t(rng());
            w.app.saved = 1;
            if (round % 2) w.camera.viewRow = -1; // Home, with the rest still random
            ASSERT_TRUE(w.WriteToFile());
        }
        std::unique_ptr<VZarbesoDocument> d = Start();
        EXPECT_LE(d->GetView()->GetSceneManager()->GetLightCount(), 5u);
        EXPECT_LE(std::strlen(d->GetView()->GetText()), 126u);
        EXPECT_TRUE(d->GetView()->HasPath());
        EXPECT_TRUE(d->ConfirmRun()) << "round " << round;
    }
}
