#include "platform/gdi/DrawingToolkit.h"

#include <QGuiApplication>
#include <memory>

namespace {

class OwnApplication {
  public:
    OwnApplication() : application_(count_, arguments_) {}

  private:
    // The application keeps references to both.
    char name_[6] = "tavin";
    char option_[10] = "-platform";
    char platform_[10] = "offscreen";
    char* arguments_[4] = {name_, option_, platform_, nullptr};
    int count_ = 3;
    QGuiApplication application_;
};

// Not taken down at the process's end: fonts that static objects keep may go later.
OwnApplication*& Own() {
    static OwnApplication* own = nullptr;
    return own;
}

}  // namespace

void EnsureDrawingToolkit() {
    if (QCoreApplication::instance()) return;
    // A batch run has no session; what the toolkit says about that is nothing to the user.
    const QtMessageHandler before =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    Own() = new OwnApplication;
    qInstallMessageHandler(before);
}

void EndDrawingToolkit() {
    delete Own();
    Own() = nullptr;
}
