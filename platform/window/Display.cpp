// Whether there is a display to be had. The toolkit ends the process when there is none, so the display
// server is asked first.
#include <dlfcn.h>

#include <cstdlib>
#include <string_view>

#include "platform/window/CWindowApp.h"

namespace {

std::string_view Setting(const char* name) {
    const char* const value = std::getenv(name);
    return value ? value : "";
}

// Loaded by name: the toolkit brings it along where it has that server's support, and nobody else needs it.
bool AnswersX() {
    void* const library = dlopen("libxcb.so.1", RTLD_NOW | RTLD_LOCAL);
    if (!library) return false;
    const auto connect = reinterpret_cast<void* (*)(const char*, int*)>(dlsym(library, "xcb_connect"));
    const auto failed = reinterpret_cast<int (*)(void*)>(dlsym(library, "xcb_connection_has_error"));
    const auto disconnect = reinterpret_cast<void (*)(void*)>(dlsym(library, "xcb_disconnect"));
    if (!connect || !failed || !disconnect) return false;
    void* const connection = connect(nullptr, nullptr);
    const bool answers = failed(connection) == 0;
    disconnect(connection);
    return answers;
}

}  // namespace

bool IsDisplayAvailable() {
    const std::string_view chosen = Setting("QT_QPA_PLATFORM");
    if (!chosen.empty() && chosen.substr(0, 3) != "xcb") return true;
    if (chosen.empty() && !Setting("WAYLAND_DISPLAY").empty()) return true;
    return !Setting("DISPLAY").empty() && AnswersX();
}
