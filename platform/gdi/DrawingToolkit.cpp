#include "platform/gdi/DrawingToolkit.h"

#include <QGuiApplication>
#include <memory>

namespace {

class OwnApplication {
  public:
    OwnApplication() : m_application(m_count, m_arguments) {}

  private:
    // The application keeps references to both.
    char m_name[6] = "tavin";
    char m_option[10] = "-platform";
    char m_platform[10] = "offscreen";
    char* m_arguments[4] = {m_name, m_option, m_platform, nullptr};
    int m_count = 3;
    QGuiApplication m_application;
};

// Not taken down at the process's end: fonts that static objects keep may go later.
OwnApplication*& Own() {
    static OwnApplication* own = nullptr;
    return own;
}

}  // namespace

void EnsureDrawingToolkit() {
    if (!QCoreApplication::instance()) Own() = new OwnApplication;
}

void EndDrawingToolkit() {
    delete Own();
    Own() = nullptr;
}
