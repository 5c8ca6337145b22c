// Each page's controls reach their view operation, with the checks of typed
// numbers, the host's colour picker and the View row.
#include "host/Alerts.h"
#include "host/ModalRun.h"
#include "platform/finalrender/LightWorksSL.h"
#include "scene/VCBezierCurveModel.h"
#include "scene/VNurbsCurShapeManipulators.h"
#include "tests/ui/WindowRun.h"
#include "text/FontList.h"
#include "ui/controls/ColorButton.h"
#include "ui/controls/DialogControls.h"
#include "ui/controls/NumericField.h"
#include "ui/dialogs/TemplateDialog.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>
#include <vector>

namespace {
std::vector<int> gAlerts;

struct Pages : ::testing::Test {
    void SetUp() override {
        gAlerts.clear();
        SetMessageSink([](int id, const std::string&) { gAlerts.push_back(id); });
    }
    void TearDown() override {
        SetMessageSink(nullptr);
        TemplateDialog::SetObserver(nullptr);
    }
};

// The host's colour picker: it always answers orange, in its 8-bit terms.
OSErr HostPicksOrange(ColorServicesInfo* info) {
    if (info->selector != plugIncolorServicesChooseColor || !info->selectorParameter.pickerPrompt)
        return filterBadParameters;
    info->colorComponents[0] = 250;
    info->colorComponents[1] = 120;
    info->colorComponents[2] = 10;
    return noErr;
}

void Choose(QComboBox* combo, int row) {
    combo->setCurrentIndex(row);
    emit combo->activated(row);
}

void Type(QComboBox* combo, const char* text) {
    QApplication::setActiveWindow(combo->window());
    combo->lineEdit()->setFocus();
    combo->lineEdit()->selectAll();
    QTest::keyClicks(combo->lineEdit(), text);
}
} // namespace

TEST_F(Pages, FontAndPathReachTheView) {
    WindowRun run;
    run.Run([](VZarbesoWindow_Win& w) {
        DialogControls& c = w.Controls();
        VZarbesoView& v = *w.GetView();
        const int font = c.Combo(1043)->currentIndex();
        Choose(c.Combo(1043), font == 0 ? 1 : 0);
        EXPECT_NE(GetCurrentFont(), std::uint32_t(font + 1));

        c.Tabs(1000)->setCurrentIndex(1);
        EXPECT_FALSE(c.Get(1056)->isVisible()) << "Line has no values";
        EXPECT_TRUE(c.Get(1062)->isVisible());
        const QImage line = w.GetViewWidget()->grab().toImage();
        Choose(c.Combo(1051), 2); // Wave
        EXPECT_TRUE(c.Get(1054)->isVisible());
        EXPECT_TRUE(c.Get(1059)->isVisible());
        EXPECT_FALSE(c.Get(1052)->isVisible());
        EXPECT_EQ(c.Combo(1056)->currentText(), "30");
        Type(c.Combo(1056), "55");
        EXPECT_EQ(w.pathValues[3][0], 55);
        SaveScreenshot(w.Widget(), "window-wave");
        EXPECT_GT(CountDifferent(line, w.GetViewWidget()->grab().toImage()), 500);
        const VCurve* wave = v.GetCurve();
        Choose(c.Combo(1051), 8); // the separator changes nothing
        EXPECT_EQ(c.Combo(1051)->currentIndex(), 2);
        EXPECT_EQ(v.GetCurve(), wave);
        PostQuit(kQuitCancel);
    });
}

TEST_F(Pages, SurfaceChecksNumbersAndFollowsTheLink) {
    WindowRun run;
    run.host.record.colorServices = &HostPicksOrange;
    run.Run([](VZarbesoWindow_Win& w) {
        DialogControls& c = w.Controls();
        VZarbesoView& v = *w.GetView();
        c.Tabs(1000)->setCurrentIndex(2);
        const int beeps = NumericField::BeepCount();
        Type(c.Combo(1089), "150");
        EXPECT_GT(NumericField::BeepCount(), beeps);
        EXPECT_EQ(c.Combo(1089)->currentText(), "15") << "the last key is refused";
        Type(c.Combo(1089), "40");
        EXPECT_FLOAT_EQ(v.GetOpacity(), 60);

        c.Button(1087)->click(); // Link on: a new Sides colour is the Faces colour too
        c.Button(1086)->click();
        const std::array<std::uint16_t, 3> orange = {250 * 256, 120 * 256, 10 * 256};
        EXPECT_EQ(v.GetSideColor(), orange);
        EXPECT_EQ(v.GetFaceColor(), orange);
        EXPECT_EQ(c.Color(1084)->Color(), QColor(250, 120, 10));

        Choose(c.Combo(1082), 3); // Leopard Skin
        EXPECT_TRUE(v.GetTexture());
        EXPECT_FALSE(c.Get(1084)->isEnabled());
        SaveScreenshot(w.Widget(), "window-texture");
        Choose(c.Combo(1082), 0);
        EXPECT_FALSE(v.GetTexture());
        EXPECT_TRUE(c.Get(1087)->isEnabled());
        EXPECT_EQ(v.GetFaceColor(), orange);

        // A custom texture whose file has gone: the alert, and back to Color.
        auto* entry = new VTextureFileName;
        std::snprintf(entry->path, sizeof entry->path, "/nonexistent/marble.bmp");
        w.customTextures.Append(entry);
        w.UpdateControls();
        Choose(c.Combo(1082), kFirstCustomTextureRow);
        EXPECT_EQ(gAlerts, std::vector<int>{17007});
        EXPECT_EQ(c.Combo(1082)->currentIndex(), 0);
        PostQuit(kQuitCancel);
    });
}

TEST_F(Pages, SceneAndViewRowReachTheLightsAndTheCamera) {
    WindowRun run;
    run.host.record.colorServices = &HostPicksOrange;
    run.Run([](VZarbesoWindow_Win& w) {
        DialogControls& c = w.Controls();
        VZarbesoSceneManager& scene = *w.GetView()->GetSceneManager();
        c.Tabs(1000)->setCurrentIndex(3);
        Type(c.Combo(1095), "4");
        EXPECT_FLOAT_EQ(scene.GetAmbientBrightness(), 0.04f);
        QTest::keyClick(c.Combo(1095)->lineEdit(), '0');
        EXPECT_FLOAT_EQ(scene.GetAmbientBrightness(), 0.40f);
        c.Button(1092)->click();
        EXPECT_NEAR(scene.ambientColor[0], 250 * 256, 1);
        EXPECT_EQ(c.Combo(1097)->currentText(), "LightWorks SuperLite for FlyWORD");
        // Options... shows the renderer's own settings; OK keeps what was chosen.
        QTimer::singleShot(0, [] {
            QWidget* dialog = QApplication::activeModalWidget();
            SaveScreenshot(dialog, "renderer-settings");
            dialog->findChild<QComboBox*>()->setCurrentIndex(0); // no anti-aliasing
            dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
        });
        c.Button(1098)->click();
        const QRenderer& renderer = *w.GetRenderer();
        TQ3Uns32 samples = 0;
        Q3LightWorks_SL_GetSamplesPerSide(renderer.table.Find(renderer.finalType)->object,
                                          &samples);
        EXPECT_EQ(samples, 1u);

        TQ3Matrix4x4 home, top;
        w.GetView()->GetAll(nullptr, &home, nullptr);
        Choose(c.Combo(1026), 2);
        w.GetView()->GetAll(nullptr, &top, nullptr);
        EXPECT_NE(home.value[1][1], top.value[1][1]);
        EXPECT_EQ(c.Combo(1026)->currentIndex(), 2) << "a chosen view keeps its row";
        c.Button(1031)->click();
        EXPECT_FALSE(scene.GetGridVisible());
        c.Button(1028)->click();
        EXPECT_FALSE(w.GetView()->IsOffscreen());

        // Set View... keeps the camera under a name.
        TemplateDialog::SetObserver([](TemplateDialog* d) { d->Controls().Button(1)->click(); });
        Choose(c.Combo(1026), c.Combo(1026)->count() - 1);
        EXPECT_EQ(w.GetCustomViewCount(), 1);
        EXPECT_EQ(c.Combo(1026)->currentText(), "Custom View  1");
        SaveScreenshot(w.Widget(), "window-scene");
        PostQuit(kQuitCancel);
    });
}

TEST_F(Pages, ConvertKeepsTheAnalyticPathAsACustomOneThatDeletePathTakesAway) {
    WindowRun run;
    run.Run([](VZarbesoWindow_Win& w) {
        DialogControls& c = w.Controls();
        c.Tabs(1000)->setCurrentIndex(1);
        Choose(c.Combo(1051), 2); // Wave
        TemplateDialog::SetObserver([](TemplateDialog* d) {
            if (QLineEdit* name = d->Controls().Edit(1201)) name->setText("Surf");
            d->Controls().Button(1)->click();
        });
        c.Button(1062)->click();
        EXPECT_EQ(c.Combo(1051)->currentText(), "Surf");
        EXPECT_EQ(w.currentTool, 13) << "the point tool, to edit it";
        EXPECT_TRUE(c.Get(1063)->isVisible());
        EXPECT_FALSE(c.Get(1056)->isVisible());
        SaveScreenshot(w.Widget(), "window-custom-path");

        // Delete Path..., with the one path marked.
        TemplateDialog::SetObserver([](TemplateDialog* d) {
            auto* list = d->findChild<QListWidget*>();
            list->item(0)->setSelected(true);
            d->Controls().Button(1301)->click();
            d->Controls().Button(1)->click();
        });
        Choose(c.Combo(1051), c.Combo(1051)->count() - 1);
        EXPECT_EQ(w.GetView()->GetCustomPathCount(), 0);
        EXPECT_EQ(c.Combo(1051)->currentIndex(), 0) << "the Line once its path is gone";
        PostQuit(kQuitCancel);
    });
}

TEST_F(Pages, TheWindowGrowsForAnImageLargerThanItsFrameAndPreviewShowsTheRender) {
    QSize grown, normal;
    WindowRun(540, 400).Run([&](VZarbesoWindow_Win& w) {
        grown = w.Widget()->size();
        EXPECT_EQ(w.GetViewWidget()->size(), QSize(540, 400)) << "the image at its size";
        // Preview draws with the final renderer until the scene changes.
        const QImage before = w.GetViewWidget()->grab().toImage();
        w.Controls().Button(1021)->click();
        EXPECT_TRUE(w.GetView()->IsRenderShowing());
        EXPECT_GT(CountDifferent(before, w.GetViewWidget()->grab().toImage()), 100);
        SaveScreenshot(w.Widget(), "window-preview");
        w.Controls().Button(1031)->click();
        EXPECT_FALSE(w.GetView()->IsRenderShowing());
        PostQuit(kQuitCancel);
    });
    WindowRun(300, 200).Run([&](VZarbesoWindow_Win& w) {
        normal = w.Widget()->size();
        const QRect frame = w.Controls().Get(1012)->geometry();
        EXPECT_NEAR(w.GetViewWidget()->geometry().center().x(), frame.center().x(), 2)
            << "a small image stands in the middle of the frame";
        PostQuit(kQuitCancel);
    });
    EXPECT_EQ(normal, QSize(603, 439)) << "402 by 270 dialog units";
    EXPECT_EQ(grown, normal + QSize(540 - 515, 400 - 324));
}

TEST_F(Pages, NewPathIsDrawnInTheViewAndKeptForTheNextRun) {
    WindowRun run;
    run.Run([](VZarbesoWindow_Win& w) {
        DialogControls& c = w.Controls();
        QWidget* view = w.GetViewWidget();
        c.Tabs(1000)->setCurrentIndex(1);
        TemplateDialog::SetObserver([](TemplateDialog* d) {
            if (QLineEdit* name = d->Controls().Edit(1201)) name->setText("Loop");
            d->Controls().Button(1)->click();
        });
        Choose(c.Combo(1051), c.Combo(1051)->count() - 2); // New Path...
        EXPECT_EQ(c.Combo(1051)->currentText(), "Loop");
        EXPECT_TRUE(c.IsChecked(1067));
        EXPECT_EQ(w.currentTool, 15);
        for (QPoint at : {QPoint(60, 200), QPoint(150, 120), QPoint(250, 200), QPoint(340, 120)})
            QTest::mouseClick(view, Qt::LeftButton, {}, at);
        ASSERT_NE(w.GetView()->GetBezierModel(), nullptr);
        EXPECT_EQ(w.GetView()->GetBezierModel()->GetPieceCount(), 3);
        SaveScreenshot(w.Widget(), "window-drawn-path");

        // Polygon Options turns the polygon tool into a star of 6 points.
        TemplateDialog::SetObserver([](TemplateDialog* d) {
            d->Controls().SetChecked(1211, true);
            d->Controls().Edit(1212)->setText("6");
            d->Controls().Button(1)->click();
        });
        QTest::mouseDClick(c.Get(1069), Qt::LeftButton);
        EXPECT_EQ(w.currentTool, 18);
        EXPECT_TRUE(c.Get(1070)->isVisible());
        EXPECT_FALSE(c.Get(1069)->isVisible());
        EXPECT_EQ(GetStarPoints(), 6);
        QApplication::setActiveWindow(w.Widget());
        c.Get(1017)->setFocus();
        w.Command(1017);
        PostQuit(kQuitCancel); // only if OK did not end the run
    });
    QString path;
    run.Run([&](VZarbesoWindow_Win& w) {
        path = w.Controls().Combo(1051)->currentText();
        PostQuit(kQuitCancel);
    });
    EXPECT_EQ(path, "Loop");
}
