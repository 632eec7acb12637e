// The application object of a program with windows: its profile comes from CWinApp, its main window, its
// message loop and the commands that no window answers are here.
//
//   int main(int argc, char** argv) {
//       CWorkbench app(argc, argv);  // derives from CWindowApp
//       return app.InitInstance() ? app.Run() : app.ExitInstance();
//   }
//
// Destroy it last: windows do not live without it.
#pragma once

#include <memory>

#include "platform/core/Geometry.h"
#include "platform/registry/CWinApp.h"
#include "platform/window/CCmdTarget.h"

class CFrameWnd;

class CWindowApp : public CWinApp {
    DECLARE_DYNAMIC(CWindowApp)

  public:
    // Takes its own options out of the arguments. Messages are shown in boxes from now on.
    CWindowApp(int& argc, char** argv, const char* appName = nullptr);
    // For a process in which somebody else runs the toolkit; messages stay as they are.
    explicit CWindowApp(const char* appName = nullptr);
    ~CWindowApp() override;

    // The process's application object when it is one with windows, or null.
    static CWindowApp* Get();

    // Makes the main window. FALSE: the program cannot start.
    virtual BOOL InitInstance();
    // Handles messages until the main window is gone, then calls ExitInstance.
    int Run();
    // The program's exit code.
    virtual int ExitInstance();
    // Commands that no window answered.
    virtual bool OnCmdMsg(UINT id, CCmdUI* update);

    // Told by each frame that ends.
    void FrameGone(CFrameWnd* frame);

    CFrameWnd* m_pMainWnd = nullptr;

  private:
    struct Toolkit;
    std::unique_ptr<Toolkit> m_toolkit;
};

// Null when there is none.
CFrameWnd* AfxGetMainWnd();
// The main screen without its bars, in physical pixels.
CRect ScreenWorkArea();
// Whether a program can show windows here. Without a display CWindowApp would end the process.
bool IsDisplayAvailable();
