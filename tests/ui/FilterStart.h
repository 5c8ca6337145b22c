// Starts the filter over a test host through its selectors, and saves what
// it wrote as a picture.
#pragma once

#include "host/CZarbesoPlugin.h"
#include "host/ModalRun.h"
#include "tests/host/FakeHost.h"

#include <QImage>
#include <QString>

// Parameters, Prepare and Start over the host. Answers the first selector's
// error, or 0.
inline int16 DispatchStart(FakeHost& host) {
    for (int16 s : {filterSelectorParameters, filterSelectorPrepare, filterSelectorStart}) {
        CZarbesoPlugin plugin;
        int16 result = 0;
        int32 data = 0;
        plugin.Dispatch(s, &host.record, &data, &result);
        if (result) return result;
    }
    return 0;
}

// The same, with `runner` as the run without a window.
inline int16 StartFilter(FakeHost& host, NoWindowRunner runner) {
    SetNoWindowRunner(runner);
    return DispatchStart(host);
}

// Writes the host's output buffer into the test output folder.
inline void SaveHostOutput(const FakeHost& host, const char* name) {
    QImage img(host.width, host.height, QImage::Format_ARGB32);
    for (int y = 0; y < host.height; ++y)
        for (int x = 0; x < host.width; ++x) {
            const uint8* p = &host.outBuffer[(std::size_t(y) * host.width + x) * host.planes];
            img.setPixel(x, y, qRgba(p[0], p[1], p[2], host.planes == 4 ? p[3] : 255));
        }
    img.save(QString("%1/%2").arg(PLUMET_TEST_OUTPUT).arg(name));
}
