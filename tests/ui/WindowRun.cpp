#include "tests/ui/WindowRun.h"

#include "tests/ui/FilterStart.h"

#include "host/CZarbesoPlugin.h"
#include "host/ModalRun.h"
#include "host/ModuleState.h"
#include "hosts/DisplayPixels.h"
#include "ui/controls/DialogControls.h"
#include "ui/window/WindowInstall.h"

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <gtest/gtest.h>
#include <set>

namespace {
std::function<void(VZarbesoWindow_Win&)> gScript;

WFilterWindow* MakeScripted(intptr_t parent, int16 invocation) {
    auto* window = new VZarbesoWindow_Win(parent, invocation);
    QTimer::singleShot(0, [window] {
        QApplication::setActiveWindow(window->Widget());
        gScript(*window);
        // A script that ended without ending the run would leave the loop
        // waiting for ever: fail and end it after a generous while. The timer
        // goes with the window when the run ends as it should.
        QTimer::singleShot(30000, window->Widget(), [] {
            ADD_FAILURE() << "the script has ended but the window is still open";
            PostQuit(kQuitCancel);
        });
    });
    return window;
}

void PaintGradient(FakeHost& host) {
    for (int y = 0; y < host.height; ++y)
        for (int x = 0; x < host.width; ++x) {
            uint8* p = &host.image[(std::size_t(y) * host.width + x) * host.planes];
            p[0] = static_cast<uint8>(60 + y * 120 / host.height);
            p[1] = static_cast<uint8>(110 + x * 100 / host.width);
            p[2] = static_cast<uint8>(160);
        }
}
} // namespace

WindowRun::WindowRun(int width, int height)
    : host(width, height, 3, plugInModeRGBColor, filterCaseFlatImageNoSelection) {
    PaintGradient(host);
    host.descriptor.playInfo = plugInDialogDisplay;
    host.record.displayPixels = &plumet::hosts::DisplayPixelsOnSurface;
    InstallFilterWindow();
}

WindowRun::~WindowRun() {
    SetFilterWindowFactory(nullptr);
    gScript = nullptr;
}

int16 WindowRun::Run(std::function<void(VZarbesoWindow_Win&)> script) {
    gScript = std::move(script);
    SetFilterWindowFactory(&MakeScripted);
    return DispatchStart(host);
}

namespace {
QImage Picture(const FakeHost& host, const std::vector<uint8>& pixels) {
    QImage image(host.width, host.height, QImage::Format_RGB32);
    if (pixels.size() < std::size_t(host.width) * host.height * host.planes) return image;
    for (int y = 0; y < host.height; ++y)
        for (int x = 0; x < host.width; ++x) {
            const uint8* p = &pixels[(std::size_t(y) * host.width + x) * host.planes];
            image.setPixel(x, y, qRgb(p[0], p[1], p[2]));
        }
    return image;
}
} // namespace

QImage WindowRun::Output() const {
    return Picture(host, host.outBuffer);
}

QImage WindowRun::Input() const {
    return Picture(host, host.image);
}

void SaveScreenshot(QWidget* widget, const QString& name) {
    // At a scale factor of 2 the picture has twice the pixels, and its own name.
    const qreal scale = widget->devicePixelRatioF();
    const QString suffix = scale > 1 ? QString("@%1x").arg(scale) : QString();
    widget->grab().save(QString("%1/%2%3.png").arg(PLUMET_TEST_OUTPUT, name, suffix));
}

int CountDifferent(const QImage& a, const QImage& b) {
    int n = 0;
    for (int y = 0; y < std::min(a.height(), b.height()); ++y)
        for (int x = 0; x < std::min(a.width(), b.width()); ++x)
            n += a.pixel(x, y) != b.pixel(x, y);
    return n;
}

void ExpectKeyboardReachesAndNames(const DialogControls& controls, QWidget* start,
                                   const std::string& where) {
    using plumet::ControlKind;
    QApplication::setActiveWindow(controls.Window()->window());
    start->setFocus();
    std::set<QWidget*> reached;
    for (int i = 0; i < 80; ++i) {
        QWidget* focus = QApplication::focusWidget();
        if (!focus) break;
        for (QWidget* p = focus; p; p = p->parentWidget())
            reached.insert(p);
        QTest::keyClick(focus, Qt::Key_Tab);
    }
    const plumet::DialogTemplate& t = controls.Template();
    int radios = 0, radiosReached = 0;
    for (std::size_t i = 0; i < t.count; ++i) {
        const plumet::ControlTemplate& c = t.controls[i];
        QWidget* widget = controls.Get(c.id);
        if (!widget || !widget->isVisible() || !widget->isEnabled()) continue;
        switch (c.kind) {
        case ControlKind::Edit:
        case ControlKind::DropList:
        case ControlKind::NumberCombo:
        case ControlKind::ColorButton:
        case ControlKind::ToolButton:
        case ControlKind::ListBox:
            EXPECT_FALSE(widget->accessibleName().isEmpty()) << where << ": " << c.id;
            [[fallthrough]];
        case ControlKind::Button:
        case ControlKind::DefaultButton:
        case ControlKind::CheckBox:
            EXPECT_TRUE(reached.count(widget)) << where << ": " << c.id;
            break;
        case ControlKind::Radio:
            // Tab visits one button of a group, the arrows the others.
            ++radios;
            radiosReached += int(reached.count(widget));
            break;
        default:
            break;
        }
    }
    EXPECT_TRUE(radios == 0 || radiosReached > 0) << where << ": the radio buttons";
}
