#include "app/workbench/Workbench.h"

#include <cstdio>

#include "app/table/Result.h"
#include "app/workbench/CLiveFrame.h"
#include "app/workbench/CWorkbenchFrame.h"
#include "app/workbench/WorkbenchResources.h"

namespace app {

namespace {

class CWorkbenchApp : public CWindowApp {
  public:
    CWorkbenchApp(int& argc, char** argv) : CWindowApp(argc, argv, "Tavin") {}

    // Null: it could not be made.
    CWorkbenchFrame* Start() {
        auto* const frame = new CWorkbenchFrame;
        m_pMainWnd = frame;
        if (!frame->CreateWorkbench()) return nullptr;
        frame->ShowAsBefore();
        return frame;
    }
};

}  // namespace

// Until the user leaves the program that `open` has opened something in.
template <class Open>
static int RunProgram(int argc, char** argv, Open&& open) {
    const WorkbenchResources resources;
    CWorkbenchApp application(argc, argv);
    application.SetRegistryKey("Tavin");
    CWorkbenchFrame* const frame = application.Start();
    if (!frame) return kRefused;
    open(*frame);
    return application.Run();
}

int RunLiveWindow(int argc, char** argv, const LiveWishes& wishes) {
    return RunProgram(argc, argv, [&](CWorkbenchFrame& frame) { frame.OpenLive(wishes); });
}

int RunWorkbench(int argc, char** argv, const std::vector<std::string>& paths) {
    if (!IsDisplayAvailable()) {
        std::fprintf(stderr,
                     "tavin: the workbench needs a display, and there is none. Without one:\n"
                     "  tavin info FILE                 says what a file holds\n"
                     "  tavin plot FILE -o OUT.png      draws it\n"
                     "  tavin clean FILE ... -o OUT     cleans it\n");
        return kRefused;
    }
    return RunProgram(argc, argv, [&](CWorkbenchFrame& frame) { frame.OpenFiles(paths); });
}

}  // namespace app
