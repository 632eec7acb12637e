#include "platform/window/CWindowApp.h"

#include <QApplication>
#include <QEvent>
#include <QPalette>
#include <QScreen>

#include "platform/core/MessageBox.h"
#include "platform/core/Rounding.h"
#include "platform/gdi/DrawingToolkit.h"
#include "platform/window/CommonDialogs.h"
#include "platform/window/Graveyard.h"
#include "platform/window/Icons.h"

IMPLEMENT_DYNAMIC(CWindowApp, CWinApp)

struct CWindowApp::Toolkit {
    Toolkit(int& argc, char** argv) : application((EndDrawingToolkit(), argc), argv) {}

    QApplication application;
};

CWindowApp::CWindowApp(int& argc, char** argv, const char* appName)
    : CWinApp(appName), m_toolkit(std::make_unique<Toolkit>(argc, argv)) {
    // Not the display name, which the toolkit would add to every title.
    QApplication::setApplicationName(QString::fromUtf8(m_pszAppName));
    // The end is when the main window is gone, also while an earlier window of the program was the last one.
    QApplication::setQuitOnLastWindowClosed(false);
    KeepTitleBarIcons();
    SetMessageBoxHandler(ShowMessageBox);
}

CWindowApp::CWindowApp(const char* appName) : CWinApp(appName) {}

CWindowApp::~CWindowApp() {
    if (!m_toolkit) return;
    SetMessageBoxHandler({});
    EmptyGraveyard();
    // Keys and whatever else of the toolkit's own waits to go.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

CWindowApp* CWindowApp::Get() {
    CWinApp* application = AfxGetApp();
    const bool windowed = application && application->IsKindOf(RUNTIME_CLASS(CWindowApp));
    return windowed ? static_cast<CWindowApp*>(application) : nullptr;
}

BOOL CWindowApp::InitInstance() { return TRUE; }

int CWindowApp::Run() {
    if (m_pMainWnd) QApplication::exec();
    return ExitInstance();
}

int CWindowApp::ExitInstance() { return 0; }

bool CWindowApp::OnCmdMsg(UINT, CCmdUI*) { return false; }

void CWindowApp::FrameGone(CFrameWnd* frame) {
    if (frame != m_pMainWnd) return;
    m_pMainWnd = nullptr;
    // Not quit(), which asks the remaining windows to close: documents have been asked for already.
    if (m_toolkit) QCoreApplication::exit();
}

CFrameWnd* AfxGetMainWnd() {
    const CWindowApp* application = CWindowApp::Get();
    return application ? application->m_pMainWnd : nullptr;
}

CRect ScreenWorkArea() {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    const QRect units = screen->availableGeometry();
    const double scale = screen->devicePixelRatio();
    const auto pixels = [scale](int length) { return RoundHalfAway(length * scale); };
    return {pixels(units.left()), pixels(units.top()), pixels(units.left() + units.width()),
            pixels(units.top() + units.height())};
}
