// The modal run on the toolkit's event loop: how it ends and where keys go.
#include "host/KeyRouter.h"
#include "host/ModalRun.h"
#include "host/ModuleState.h"
#include "host/WFilterWindow.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace {
// What the test does once the loop runs.
std::function<void(WFilterWindow*)> gScript;
int gWindowsMade = 0;

// Schedules the script for the first turn of the loop.
WFilterWindow* Scripted(WFilterWindow* window) {
    ++gWindowsMade;
    QTimer::singleShot(0, [window] { gScript(window); });
    return window;
}

// A window with a text field and a button, whose accelerators act unless the
// focus is in the text field, as the main window's do.
class KeyWindow : public WFilterWindow {
  public:
    KeyWindow() : widget(std::make_unique<QWidget>()) {
        auto* layout = new QVBoxLayout(widget.get());
        field = new QLineEdit;
        button = new QPushButton("tool");
        layout->addWidget(field);
        layout->addWidget(button);
    }
    QWidget* Widget() override { return widget.get(); }
    void OnAccelerator(int id) override {
        gAcceleratorHandled = 0;
        if (qobject_cast<QLineEdit*>(QApplication::focusWidget())) return;
        commands.push_back(id);
        gAcceleratorHandled = 1;
    }
    std::unique_ptr<QWidget> widget;
    QLineEdit* field;
    QPushButton* button;
    std::vector<int> commands;
};

WFilterWindow* MakeKeyWindow(intptr_t, int16) {
    return Scripted(new KeyWindow);
}

struct ModalRun : ::testing::Test {
    void SetUp() override { gWindowsMade = 0; }
    void TearDown() override {
        SetFilterWindowFactory(nullptr);
        gScript = nullptr;
    }
};
} // namespace

TEST_F(ModalRun, TheCodeThatEndsTheLoopIsTheResult) {
    SetFilterWindowFactory(&MakeKeyWindow);
    gScript = [](WFilterWindow*) { PostQuit(kQuitOK); };
    EXPECT_TRUE(RunFilterDialog(nullptr, 1));
    gScript = [](WFilterWindow*) { PostQuit(kQuitCancel); };
    EXPECT_FALSE(RunFilterDialog(nullptr, 2));
    EXPECT_EQ(gWindowsMade, 2);
    // Without a window nothing is made and the run is confirmed.
    EXPECT_TRUE(RunFilterDialog(nullptr, 0));
    EXPECT_EQ(gWindowsMade, 2);
    // A window that cannot be made ends the run as cancelled.
    SetFilterWindowFactory([](intptr_t, int16) -> WFilterWindow* { return nullptr; });
    EXPECT_FALSE(RunFilterDialog(nullptr, 1));
}

TEST_F(ModalRun, KeysGoToAcceleratorsThenWindowThenNumericControls) {
    SetFilterWindowFactory(&MakeKeyWindow);
    std::vector<KeyStage> stages;
    std::vector<int> commands;
    QString typed, typedInDialog;
    gScript = [&](WFilterWindow* w) {
        auto* kw = static_cast<KeyWindow*>(w);
        QApplication::setActiveWindow(kw->widget.get());
        kw->field->setFocus();
        QTest::keyClick(kw->field, Qt::Key_V); // a letter in a text field stays a letter
        stages.push_back(KeyRouter::LastStage());
        kw->button->setFocus();
        QTest::keyClick(kw->button, Qt::Key_V); // elsewhere it selects a tool
        stages.push_back(KeyRouter::LastStage());
        QTest::keyClick(kw->button, Qt::Key_Up, Qt::ShiftModifier);
        stages.push_back(KeyRouter::LastStage());
        QTest::keyClick(kw->button, Qt::Key_F5); // no accelerator
        stages.push_back(KeyRouter::LastStage());

        QWidget numeric;
        auto* edit = new QLineEdit(&numeric);
        gNumericControls = &numeric;
        QTest::keyClick(edit, Qt::Key_5);
        stages.push_back(KeyRouter::LastStage());
        QWidget stray;
        QTest::keyClick(&stray, Qt::Key_5);
        stages.push_back(KeyRouter::LastStage());
        gNumericControls = nullptr;
        // A dialog that took a key and closed is not looked at again.
        auto* closed = new QLineEdit;
        QTest::keyClick(closed, Qt::Key_5);
        delete closed;
        QTest::keyClick(kw->button, Qt::Key_F5);
        typedInDialog = edit->text();
        typed = kw->field->text();
        commands = kw->commands;
        PostQuit(kQuitOK);
    };
    EXPECT_TRUE(RunFilterDialog(nullptr, 1));
    EXPECT_EQ(typed, "v");
    EXPECT_EQ(typedInDialog, "5");
    EXPECT_EQ(commands, (std::vector<int>{2000, 2013}));
    EXPECT_EQ(stages, (std::vector<KeyStage>{KeyStage::MainWindow, KeyStage::Accelerator,
                                             KeyStage::Accelerator, KeyStage::MainWindow,
                                             KeyStage::NumericControls, KeyStage::Dispatch}));
}

TEST(AcceleratorKeys, LettersInEitherCaseAndNamedKeys) {
    unsigned mods = 99;
    EXPECT_EQ(AcceleratorKeyFor(Qt::Key_V, "V", Qt::ShiftModifier, &mods), 'V');
    EXPECT_EQ(mods, 0u);
    EXPECT_EQ(AcceleratorKeyFor(Qt::Key_Left, "", Qt::ControlModifier, &mods), 0x1003);
    EXPECT_EQ(mods, 2u);
    EXPECT_EQ(AcceleratorKeyFor(Qt::Key_5, "5", Qt::NoModifier, &mods), 0);
    EXPECT_EQ(AcceleratorKeyFor(Qt::Key_V, "v", Qt::AltModifier, &mods), 0)
        << "Alt+V is a mnemonic";
}
