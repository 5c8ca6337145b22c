// The secondary windows: Numeric Controls beside the main window, the modal
// dialogs, Help and the about box.
#include "host/Alerts.h"
#include "host/GuiSession.h"
#include "host/ModalRun.h"
#include "host/ModuleState.h"
#include "tests/ui/WindowRun.h"
#include "ui/controls/DialogControls.h"
#include "ui/controls/NumericField.h"
#include "ui/dialogs/AboutBox.h"
#include "ui/dialogs/DeletePathsDialog.h"
#include "ui/dialogs/HelpWindow.h"
#include "ui/dialogs/NamingDialog.h"
#include "ui/dialogs/NumericControls.h"
#include "ui/dialogs/OptionsDialog.h"
#include "ui/dialogs/PolygonOptionsDialog.h"
#include "ui/dialogs/TemplateDialog.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QScrollBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <functional>
#include <gtest/gtest.h>
#include <vector>

namespace {
std::vector<int> gAlerts;
std::function<void(TemplateDialog*)> gDialogScript;

struct Dialogs : ::testing::Test {
    GuiSession gui;
    void SetUp() override {
        gAlerts.clear();
        SetMessageSink([](int id, const std::string&) { gAlerts.push_back(id); });
        TemplateDialog::SetObserver([](TemplateDialog* d) {
            if (gDialogScript) gDialogScript(d);
        });
    }
    void TearDown() override {
        SetMessageSink(nullptr);
        TemplateDialog::SetObserver(nullptr);
        gDialogScript = nullptr;
    }
};

void Type(NumericControls& nc, int id, const char* text) {
    QLineEdit* edit = nc.Controls().Combo(id)->lineEdit();
    QApplication::setActiveWindow(&nc);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, text);
}

void Press(QAbstractButton* button) {
    QApplication::setActiveWindow(button->window());
    button->setFocus();
    button->click();
}
} // namespace

TEST_F(Dialogs, NumericControlsFollowsTheViewAndAppliesWhatIsTyped) {
    WindowRun run;
    run.Run([](VZarbesoWindow_Win& w) {
        Press(w.Controls().Button(1023));
        NumericControls* nc = w.GetNumericControls();
        ASSERT_TRUE(nc);
        EXPECT_EQ(gNumericControls, nc);
        SaveScreenshot(nc, "numeric-text");
        QTabBar* tabs = nc->Controls().Tabs(1100)->tabBar();
        ExpectKeyboardReachesAndNames(nc->Controls(), tabs, "Numeric Controls, Text");
        auto field = [nc](int id) { return nc->Controls().Combo(id)->currentText(); };

        // A drag of the text tool moves Slide through the view's broadcast.
        w.GetView()->SetLayout(TextLayoutValue::kSlide, 73, true, true);
        EXPECT_EQ(field(1109), "73");
        // Typing applies at each key; Reset All goes back to the start.
        Type(*nc, 1116, "42");
        EXPECT_FLOAT_EQ(w.GetView()->GetLayout(TextLayoutValue::kDepth), 42);
        Press(nc->Controls().Button(1133));
        EXPECT_FLOAT_EQ(w.GetView()->GetLayout(TextLayoutValue::kSlide), 50);
        EXPECT_FLOAT_EQ(w.GetView()->GetLayout(TextLayoutValue::kDepth), 4);

        // Double clicking the truck tool turns to the Camera tab.
        QTest::mouseDClick(w.Controls().Get(1008), Qt::LeftButton);
        EXPECT_EQ(nc->CurrentPage(), NumericControls::kCameraPage);
        SaveScreenshot(nc, "numeric-camera");
        ExpectKeyboardReachesAndNames(nc->Controls(), tabs, "Numeric Controls, Camera");
        EXPECT_EQ(field(1147), "0") << "Move X of the Home view";
        Type(*nc, 1147, "50");
        TQ3Matrix4x4 pan;
        w.GetView()->GetAll(nullptr, nullptr, &pan);
        EXPECT_FLOAT_EQ(pan.value[3][0], 10);
        // Orbiting the camera refills the tab.
        const QString orbitX = field(1152);
        const TQ3Matrix4x4 turn = MatrixFromRotation(0.5f, 0, 0);
        w.GetView()->ApplyTo(K3DViewAdorner::kOrbit, K3DViewAdorner::kApply, &turn, false);
        EXPECT_NE(field(1152), orbitX);
        EXPECT_EQ(w.Controls().Combo(1026)->currentIndex(), kViewRowCustom);
        // Roll wraps at 359, Angle stops at 175.
        NumericField* rollField = nc->Field(1151);
        rollField->Show(359);
        rollField->Step(1);
        EXPECT_EQ(field(1151), "0");
        nc->Field(1150)->Show(175);
        nc->Field(1150)->Step(1);
        EXPECT_EQ(field(1150), "175");
        // A second opening brings the same window, on its tab.
        Press(w.Controls().Button(1023));
        EXPECT_EQ(w.GetNumericControls(), nc);
        EXPECT_EQ(nc->CurrentPage(), NumericControls::kCameraPage);
        PostQuit(kQuitCancel);
    });
    EXPECT_EQ(gNumericControls, nullptr) << "the dialog goes with the window";
}

TEST_F(Dialogs, EveryModalDialogIsNamedAndTheKeyboardReachesIt) {
    gDialogScript = [](TemplateDialog* d) {
        ExpectKeyboardReachesAndNames(d->Controls(), d->Controls().Get(2),
                                      d->windowTitle().toStdString());
        // A button is named by its text; the label beside it describes it.
        if (QWidget* reset = d->Controls().Get(1314)) {
            EXPECT_EQ(
                QAccessible::queryAccessibleInterface(reset)->text(QAccessible::Name).toStdString(),
                "Reset");
        }
        d->reject();
    };
    std::string name = "Arc";
    bool polygon = true, tips = true;
    int count = 5, size = 3;
    AskCustomViewName(nullptr, name);
    AskCustomPathName(nullptr, name);
    AskPolygonOptions(nullptr, polygon, count);
    AskOptions(nullptr, tips, size, [] {});
    QComboBox paths;
    for (int row = 0; row < 13; ++row)
        paths.addItem(row == 9 ? "Arc" : "Line");
    AskDeletePaths(nullptr, &paths);
}

TEST_F(Dialogs, PolygonOptionsRefusesCountsOutsideThreeToTwenty) {
    std::vector<int> results;
    gDialogScript = [&](TemplateDialog* d) {
        SaveScreenshot(d, "polygon-options");
        QLineEdit* field = d->Controls().Edit(1212);
        for (const char* text : {"2", "21", "20"}) {
            field->setText(text);
            d->Controls().Button(1)->click();
        }
    };
    bool polygon = true;
    int sides = 5;
    EXPECT_TRUE(AskPolygonOptions(nullptr, polygon, sides));
    EXPECT_EQ(sides, 20);
    EXPECT_EQ(gAlerts, (std::vector<int>{16007, 16008}));
}

TEST_F(Dialogs, NamingDialogTakesANameAndAnEmptyNameCountsAsCancel) {
    gDialogScript = [](TemplateDialog* d) {
        SaveScreenshot(d, "naming-view");
        QLineEdit* edit = d->Controls().Edit(1200);
        EXPECT_EQ(edit->text(), "Custom View  1");
        edit->setText("Low angle");
        d->Controls().Button(1)->click();
    };
    std::string name = "Custom View  1";
    EXPECT_TRUE(AskCustomViewName(nullptr, name));
    EXPECT_EQ(name, "Low angle");
    gDialogScript = [](TemplateDialog* d) {
        d->Controls().Edit(1201)->clear();
        d->Controls().Button(1)->click();
    };
    EXPECT_FALSE(AskCustomPathName(nullptr, name));
    EXPECT_EQ(name, "Low angle");
}

TEST_F(Dialogs, DeletePathsMarksOnlyOnOkAndOptionsCancelKeepsItsValues) {
    QComboBox paths;
    for (const char* row :
         {"Line", "Ellipse", "Wave", "Decaying Wave", "Bump", "Helix", "Spherical Helix", "Vortex",
          "---", "Loop", "Arc", "S", "---", "New Path...", "Delete Path..."})
        paths.addItem(row);
    for (bool ok : {false, true}) {
        gDialogScript = [ok](TemplateDialog* d) {
            SaveScreenshot(d, "delete-paths");
            auto* list = qobject_cast<QListWidget*>(d->Controls().Get(1302));
            EXPECT_EQ(list->count(), 3);
            list->item(0)->setSelected(true);
            list->item(2)->setSelected(true);
            d->Controls().Button(1301)->click();
            EXPECT_EQ(list->count(), 1);
            d->Controls().Button(ok ? 1 : 2)->click();
        };
        EXPECT_EQ(AskDeletePaths(nullptr, &paths), ok);
    }
    EXPECT_EQ(paths.itemData(9).toInt(), kRowMarkedForDeletion);
    EXPECT_FALSE(paths.itemData(10).isValid());
    EXPECT_EQ(paths.itemData(11).toInt(), kRowMarkedForDeletion);

    int resets = 0;
    gDialogScript = [](TemplateDialog* d) {
        SaveScreenshot(d, "options");
        d->Controls().Button(1314)->click();
        d->Controls().SetChecked(1312, true);
        d->Controls().SetChecked(1313, false);
        d->Controls().Button(2)->click();
    };
    bool tips = true;
    int size = 3;
    EXPECT_TRUE(AskOptions(nullptr, tips, size, [&resets] { ++resets; }));
    EXPECT_EQ(resets, 1) << "Reset acts at once";
    EXPECT_TRUE(tips);
    EXPECT_EQ(size, 3) << "Cancel keeps the values the dialog opened with";
}

TEST_F(Dialogs, HelpScrollsWithinItsPictureAndTheAboutBoxShowsItsOwn) {
    HelpWindow* help = OpenHelp(nullptr);
    EXPECT_EQ(OpenHelp(help), help);
    SaveScreenshot(help, "help");
    EXPECT_EQ(help->maximumWidth(), help->LargestSize().width());
    EXPECT_EQ(help->minimumSize(), QSize(200, 200));
    QTest::keyClick(help, Qt::Key_PageDown);
    QTest::keyClick(help, Qt::Key_Down);
    EXPECT_EQ(help->verticalScrollBar()->value(), 55);
    QTest::keyClick(help, Qt::Key_Home);
    EXPECT_EQ(help->verticalScrollBar()->value(), 0);
    delete help;

    AboutBox about(nullptr);
    SaveScreenshot(&about, "about");
    const QImage picture = about.grab().toImage();
    EXPECT_GT(picture.width(), 400);
    EXPECT_NE(picture.pixel(10, 10), picture.pixel(picture.width() / 2, picture.height() / 2));
}
