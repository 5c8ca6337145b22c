// Runs the filter with its real window over a small host inside the test:
// the script drives the window once the loop runs, and ends the run.
#pragma once

#include "tests/TempConfigFolder.h"
#include "tests/host/FakeHost.h"
#include "ui/window/VZarbesoWindow.h"
#include "ui/window/ViewWidget.h"

#include <QImage>
#include <QString>
#include <functional>
#include <string>

class DialogControls;

struct WindowRun {
    WindowRun(int width = 400, int height = 260);
    ~WindowRun();

    // Runs Parameters, Prepare and Start with the window; the script gets
    // the window on the first turn of the loop. Answers Start's result.
    int16 Run(std::function<void(VZarbesoWindow_Win&)> script);

    // The host's image and its output as pictures.
    QImage Input() const;
    QImage Output() const;

    TempConfigFolder config; // the preferences of these runs only
    FakeHost host;
};

// Saves a widget's picture under the tests' output folder.
void SaveScreenshot(QWidget* widget, const QString& name);
// Tabs round the window of `controls` from `start` and expects every shown,
// enabled control that takes input to be reached, and every field to carry a
// name for assistive tools; `where` names the window in the failures.
void ExpectKeyboardReachesAndNames(const DialogControls& controls, QWidget* start,
                                   const std::string& where);
// Counts the pixels whose colour differs between two pictures of one size.
int CountDifferent(const QImage& a, const QImage& b);
