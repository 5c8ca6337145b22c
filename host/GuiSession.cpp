#include "host/GuiSession.h"

#include <QApplication>
#include <QScreen>
#include <cstdlib>
#include <dlfcn.h>
#include <sys/stat.h>

namespace {
QApplication* gOwnedApp = nullptr;

bool HasValue(const char* name) {
    const char* v = std::getenv(name);
    return v && *v;
}

// Opens and closes a connection to the X server named by DISPLAY, through
// the system's xcb library loaded at run time, so that a dead server is found
// before the toolkit would abort on it.
bool XServerAnswers() {
    void* xcb = dlopen("libxcb.so.1", RTLD_NOW | RTLD_LOCAL);
    if (!xcb) return false;
    using Connect = void* (*)(const char*, int*);
    using HasError = int (*)(void*);
    using Disconnect = void (*)(void*);
    auto connect = reinterpret_cast<Connect>(dlsym(xcb, "xcb_connect"));
    auto hasError = reinterpret_cast<HasError>(dlsym(xcb, "xcb_connection_has_error"));
    auto disconnect = reinterpret_cast<Disconnect>(dlsym(xcb, "xcb_disconnect"));
    bool ok = false;
    if (connect && hasError && disconnect) {
        void* c = connect(nullptr, nullptr);
        if (c) {
            ok = hasError(c) == 0;
            disconnect(c);
        }
    }
    dlclose(xcb);
    return ok;
}

bool WaylandAnswers() {
    const char* name = std::getenv("WAYLAND_DISPLAY");
    std::string path = name;
    if (path.empty()) return false;
    if (path[0] != '/') {
        const char* dir = std::getenv("XDG_RUNTIME_DIR");
        if (!dir || !*dir) return false;
        path = std::string(dir) + "/" + path;
    }
    struct stat st {};
    return stat(path.c_str(), &st) == 0 && S_ISSOCK(st.st_mode);
}
} // namespace

bool GuiSession::DisplayAvailable() {
    if (qobject_cast<QApplication*>(QCoreApplication::instance())) return true;
    if (HasValue("QT_QPA_PLATFORM")) return true;
    if (HasValue("WAYLAND_DISPLAY") && WaylandAnswers()) return true;
    return HasValue("DISPLAY") && XServerAnswers();
}

bool GuiSession::Active() {
    return qobject_cast<QApplication*>(QCoreApplication::instance());
}

GuiSession::GuiSession() {
    if (Active()) {
        ok_ = true;
        return;
    }
    if (QCoreApplication::instance() || !DisplayAvailable()) return;
    static int argc = 1;
    static char name[] = "plumet";
    static char* argv[] = {name, nullptr};
    gOwnedApp = new QApplication(argc, argv);
    ok_ = owned_ = true;
}

GuiSession::~GuiSession() {
    if (owned_) {
        delete gOwnedApp;
        gOwnedApp = nullptr;
    }
}

void GuiSession::DesktopSize(int* width, int* height) {
    *width = 1024;
    *height = 768;
    if (!Active()) return;
    if (QScreen* screen = QGuiApplication::primaryScreen()) {
        *width = screen->geometry().width();
        *height = screen->geometry().height();
    }
}
