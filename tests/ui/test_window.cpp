// The main window driven as a user would, on the offscreen platform: keys,
// clicks and the flows of OK, Cancel and Escape.
#include "host/Alerts.h"
#include "host/KeyRouter.h"
#include "host/ModalRun.h"
#include "host/ModuleState.h"
#include "tests/ui/WindowRun.h"
#include "ui/controls/DialogControls.h"
#include "ui/dialogs/NumericControls.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {
std::vector<int> gAlerts, gQuestions;
int gAnswer = kAnswerNo;

struct Window : ::testing::Test {
    void SetUp() override {
        gAlerts.clear();
        gQuestions.clear();
        SetMessageSink([](int id, const std::string&) { gAlerts.push_back(id); });
        SetQuestionSink([](int id, const std::string&) {
            gQuestions.push_back(id);
            return gAnswer;
        });
    }
    void TearDown() override {
        SetMessageSink(nullptr);
        SetQuestionSink(nullptr);
    }
};

void Click(QWidget* widget) {
    widget->setFocus();
    QTest::mouseClick(widget, Qt::LeftButton);
}
} // namespace

TEST_F(Window, EnterInTheTextFieldRebuildsTheLettersAndOkRendersThem) {
    WindowRun run;
    QImage before, after;
    std::string typed;
    const int16 result = run.Run([&](VZarbesoWindow_Win& w) {
        QLineEdit* text = w.Controls().Edit(1041);
        text->setFocus();
        text->selectAll();
        // letters of the tool keys stay letters, also while the window is
        // not the active one
        QTest::keyClicks(text, "Wo");
        QApplication::setActiveWindow(nullptr);
        QTest::keyClicks(text, "od");
        QApplication::setActiveWindow(w.Widget());
        EXPECT_EQ(KeyRouter::LastStage(), KeyStage::MainWindow);
        before = w.GetViewWidget()->grab().toImage();
        QTest::keyClick(text, Qt::Key_Return);
        after = w.GetViewWidget()->grab().toImage();
        typed = w.GetView()->GetText();
        SaveScreenshot(w.Widget(), "window-typed");
        Click(w.Controls().Get(1017));
    });
    EXPECT_EQ(result, 0) << "OK ends the run as confirmed";
    EXPECT_EQ(typed, "Wood");
    EXPECT_GT(CountDifferent(before, after), 500) << "Enter draws the new letters";
    EXPECT_GT(CountDifferent(run.Output(), run.Input()), 1000)
        << "the text is rendered into the image";
    EXPECT_EQ(gPluginParameters->invocation, 0) << "a repeat runs without the window";

    // The next start from the menu shows what this one confirmed.
    QString shown;
    int16 invocation = 0;
    run.Run([&](VZarbesoWindow_Win& w) {
        shown = w.Controls().Edit(1041)->text();
        invocation = gPluginParameters->invocation;
        PostQuit(kQuitCancel);
    });
    EXPECT_EQ(shown, "Wood");
    EXPECT_EQ(invocation, 2) << "a later run, without the splash";
}

TEST_F(Window, OkWithoutTextWarnsAndStaysEscapeAsksCancelDoesNot) {
    WindowRun run;
    bool stayed = false;
    const int16 result = run.Run([&](VZarbesoWindow_Win& w) {
        w.Controls().Edit(1041)->clear();
        Click(w.Controls().Get(1017));
        stayed = w.Widget()->isVisible();
        gAnswer = kAnswerNo;
        QTest::keyClick(w.Widget(), Qt::Key_Escape);
        EXPECT_EQ(gQuestions.size(), 1u);
        Click(w.Controls().Get(1018));
    });
    EXPECT_EQ(result, 1) << "Cancel ends the run as cancelled";
    EXPECT_EQ(gAlerts, std::vector<int>{17003});
    EXPECT_TRUE(stayed);
    EXPECT_EQ(gQuestions, std::vector<int>{17000}) << "the Cancel button does not ask";

    WindowRun again;
    gAnswer = kAnswerYes;
    EXPECT_EQ(again.Run([](VZarbesoWindow_Win& w) { QTest::keyClick(w.Widget(), Qt::Key_Escape); }),
              1);
}

// Escape pressed while OK or Preview renders stops the render, not the
// window: no question, no picture, the window stays as it was and has the
// keys again; OK then runs to the end. The key is pressed from the host's
// progressProc once the render is under way and its progress bar shows.
namespace {
QWidget* gEscapeTo = nullptr; // the window that gets Escape at the next progress
void PressEscapeOnce(int32 done, int32) {
    if (!gEscapeTo || done == 0) return;
    // a render that takes a while: its progress bar shows and takes the keys
    QTest::qSleep(450);
    QApplication::postEvent(gEscapeTo, new QKeyEvent(QEvent::KeyPress, Qt::Key_Escape, {}));
    gEscapeTo = nullptr;
}
} // namespace

TEST_F(Window, EscapeStopsARenderAndTheWindowStays) {
    WindowRun run(1600, 1000); // larger than the screen: the window shows it reduced
    run.host.record.progressProc = &PressEscapeOnce;
    bool okStopped = false, stayed = false, active = false, previewShowing = true;
    bool escapeUsed = false;
    int widthBefore = 0, widthAfter = 0;
    const int16 result = run.Run([&](VZarbesoWindow_Win& w) {
        widthBefore = w.GetView()->GetHostBinding().width;
        gEscapeTo = w.Widget();
        Click(w.Controls().Get(1017));
        okStopped = w.RenderStopped();
        stayed = w.Widget()->isVisible();
        active = QTest::qWaitForWindowActive(w.Widget());
        widthAfter = w.GetView()->GetHostBinding().width;
        gEscapeTo = w.Widget();
        Click(w.Controls().Get(1021));
        escapeUsed = gEscapeTo == nullptr;
        previewShowing = w.GetView()->IsRenderShowing();
        Click(w.Controls().Get(1017));
    });
    gEscapeTo = nullptr;
    EXPECT_TRUE(okStopped);
    EXPECT_TRUE(stayed);
    EXPECT_TRUE(active) << "the window has the keys again once the progress bar went";
    EXPECT_LT(widthBefore, 1600);
    EXPECT_EQ(widthAfter, widthBefore) << "the view is bound to the reduced image again";
    EXPECT_TRUE(escapeUsed) << "Preview tells the host its progress";
    EXPECT_FALSE(previewShowing);
    EXPECT_TRUE(gQuestions.empty()) << "Escape went to the render";
    EXPECT_EQ(result, 0) << "the second OK renders and ends the run";
    EXPECT_GT(CountDifferent(run.Output(), run.Input()), 1000);
}

TEST_F(Window, ToolButtonsAndTheirKeysSelectTheTool) {
    WindowRun run;
    run.Run([](VZarbesoWindow_Win& w) {
        DialogControls& c = w.Controls();
        const std::pair<int, char> tools[] = {{1010, 'o'}, {1007, 'm'}, {1009, 'c'}, {1008, 't'},
                                              {1002, 'l'}, {1003, 'w'}, {1005, 's'}, {1006, 'd'},
                                              {1004, 'r'}, {1001, 'v'}};
        const int numbers[] = {0, 1, 2, 3, 7, 8, 9, 10, 11, 12};
        for (std::size_t i = 0; i < std::size(tools); ++i) {
            Click(c.Get(tools[i].first));
            EXPECT_EQ(w.currentTool, numbers[i]) << "button " << tools[i].first;
            Click(c.Get(1001));
            c.Get(1022)->setFocus();
            QTest::keyClick(c.Get(1022), tools[i].second);
            EXPECT_EQ(w.currentTool, numbers[i]) << "key " << tools[i].second;
            EXPECT_TRUE(c.IsChecked(tools[i].first));
            EXPECT_EQ(c.Button(tools[i].first)->accessibleName().isEmpty(), false);
        }
        // A letter typed on a combo picks its row, as in the text field.
        c.Get(1026)->setFocus();
        QTest::keyClick(c.Get(1026), 'd');
        EXPECT_EQ(w.currentTool, 12);
        // Going to any page but Path gives the light tool back.
        Click(c.Get(1006));
        c.Tabs(1000)->setCurrentIndex(2);
        EXPECT_EQ(w.currentTool, 12);
        PostQuit(kQuitCancel);
    });
}

TEST_F(Window, ArrowKeysNudgeTheTextWithItsTool) {
    WindowRun run;
    run.Run([](VZarbesoWindow_Win& w) {
        VZarbesoView& v = *w.GetView();
        QWidget* button = w.Controls().Get(1021);
        button->setFocus();
        auto shown = [&v](TextLayoutValue which) { return v.GetLayout(which); };
        const float slide = shown(TextLayoutValue::kSlide);
        QTest::keyClick(button, Qt::Key_Up); // the light tool ignores arrows
        EXPECT_EQ(shown(TextLayoutValue::kSlide), slide);
        QTest::keyClick(button, 'w');
        QTest::keyClick(button, Qt::Key_Up);
        QTest::keyClick(button, Qt::Key_Right);
        EXPECT_FLOAT_EQ(shown(TextLayoutValue::kSlide), slide + 2);
        QTest::keyClick(button, 'r');
        QTest::keyClick(button, Qt::Key_Left, Qt::ControlModifier);
        EXPECT_FLOAT_EQ(shown(TextLayoutValue::kTilt), -5);
        const float width = shown(TextLayoutValue::kWidth),
                    height = shown(TextLayoutValue::kHeight);
        QTest::keyClick(button, 's');
        QTest::keyClick(button, Qt::Key_Up, Qt::ShiftModifier);
        EXPECT_FLOAT_EQ(shown(TextLayoutValue::kWidth), width + 1);
        EXPECT_FLOAT_EQ(shown(TextLayoutValue::kHeight), height + 1);
        PostQuit(kQuitCancel);
    });
}

TEST_F(Window, TheMouseInTheViewPlacesMovesAndDeletesALight) {
    WindowRun run;
    run.Run([](VZarbesoWindow_Win& w) {
        DialogControls& c = w.Controls();
        QWidget* view = w.GetViewWidget();
        VZarbesoSceneManager& scene = *w.GetView()->GetSceneManager();
        Click(c.Get(1002));
        QTest::mouseClick(view, Qt::LeftButton, {}, QPoint(150, 100));
        ASSERT_EQ(scene.GetLightCount(), 1u);
        EXPECT_EQ(w.currentTool, 12) << "placing a light gives the move tool back";
        EXPECT_TRUE(c.IsChecked(1001));
        SaveScreenshot(w.Widget(), "window-light");
        KVector3D before, after;
        scene.GetLight(1)->GetPosition(before);
        QTest::mousePress(view, Qt::LeftButton, {}, QPoint(150, 100));
        QTest::mouseMove(view, QPoint(170, 110));
        QTest::mouseRelease(view, Qt::LeftButton, {}, QPoint(190, 120));
        scene.GetLight(1)->GetPosition(after);
        EXPECT_GT(after.x, before.x + 0.1f) << "the light followed the pointer right";
        EXPECT_LT(after.y, before.y - 0.05f) << "and down";
        ASSERT_EQ(scene.GetSelection()->GetCount(), 1u);
        view->setFocus();
        QTest::keyClick(view, Qt::Key_Delete);
        EXPECT_EQ(scene.GetLightCount(), 0u) << "Delete takes the selected light";
        // Ctrl+Delete takes them all.
        QTest::keyClick(c.Get(1023), 'l');
        QTest::mouseClick(view, Qt::LeftButton, {}, QPoint(100, 100));
        QTest::keyClick(c.Get(1023), 'l');
        QTest::mouseClick(view, Qt::LeftButton, {}, QPoint(200, 100));
        ASSERT_EQ(scene.GetLightCount(), 2u);
        c.Get(1023)->setFocus();
        QTest::keyClick(c.Get(1023), Qt::Key_Delete, Qt::ControlModifier);
        EXPECT_EQ(scene.GetLightCount(), 0u);
        PostQuit(kQuitCancel);
    });
}

TEST_F(Window, DragsInTheViewDriveTheToolsAndNumericControlsFollows) {
    WindowRun run;
    run.Run([](VZarbesoWindow_Win& w) {
        DialogControls& c = w.Controls();
        QWidget* view = w.GetViewWidget();
        const QPoint middle = view->rect().center();
        auto drag = [view, middle](QPoint by) {
            QTest::mousePress(view, Qt::LeftButton, {}, middle);
            QTest::mouseMove(view, middle + by / 2);
            QTest::mouseMove(view, middle + by);
            QTest::mouseRelease(view, Qt::LeftButton, {}, middle + by);
        };
        // Numeric Controls, by Enter on its button while the window is not
        // the active one: the button, not OK, takes the key
        c.Get(1023)->setFocus();
        QApplication::setActiveWindow(nullptr);
        QTest::keyClick(c.Get(1023), Qt::Key_Return);
        QApplication::setActiveWindow(w.Widget());
        NumericControls* nc = w.GetNumericControls();
        ASSERT_TRUE(nc && nc->isVisible());
        auto field = [nc](int id) { return nc->Controls().Combo(id)->currentText(); };

        QTest::keyClick(c.Get(1023), 'w');
        const QString slide = field(1109);
        const QImage before = w.GetViewWidget()->grab().toImage();
        drag({60, 0});
        EXPECT_NE(field(1109), slide) << "the text slid, and Slide followed";
        EXPECT_GT(CountDifferent(before, w.GetViewWidget()->grab().toImage()), 300)
            << "and the view shows it";

        QTest::keyClick(c.Get(1023), 'o');
        const QString orbit = field(1152) + " " + field(1153);
        drag({40, 40});
        EXPECT_NE(field(1152) + " " + field(1153), orbit)
            << "the camera orbited, and Orbit followed";
        EXPECT_EQ(c.Combo(1026)->currentIndex(), kViewRowCustom);
        PostQuit(kQuitCancel);
    });
}

TEST_F(Window, EveryControlIsNamedAndTheKeyboardReachesIt) {
    WindowRun run;
    run.Run([](VZarbesoWindow_Win& w) {
        for (int page = 0; page < 4; ++page) {
            w.Controls().Tabs(1000)->setCurrentIndex(page);
            if (page == 1) w.Controls().Combo(1051)->setCurrentIndex(2); // Wave, with values
            if (page == 1) emit w.Controls().Combo(1051)->activated(2);
            SaveScreenshot(w.Widget(), QString("window-page%1").arg(page));
            ExpectKeyboardReachesAndNames(w.Controls(), w.Controls().Tabs(1000)->tabBar(),
                                          "page " + std::to_string(page));
        }
        EXPECT_EQ(w.Controls().Get(1041)->accessibleName(), "Text:");
        EXPECT_EQ(w.Controls().Get(1005)->accessibleName(), "Change 3D text width and height (S)");
        EXPECT_EQ(w.Controls().Get(1056)->accessibleName(), "Wavelength:") << "the label shown";
        PostQuit(kQuitCancel);
    });
}
