#include "app/workbench/Workbench.h"

#include <cstdio>

#include "app/table/Result.h"
#include "app/workbench/CWorkbenchFrame.h"
#include "app/workbench/WorkbenchResources.h"

namespace app {

namespace {

class CWorkbenchApp : public CWindowApp {
  public:
    CWorkbenchApp(int& argc, char** argv) : CWindowApp(argc, argv, "Tavin") {}

    bool Start(const std::vector<std::string>& paths) {
        auto* const frame = new CWorkbenchFrame;
        m_pMainWnd = frame;
        if (!frame->CreateWorkbench()) return false;
        frame->ShowAsBefore();
        frame->OpenFiles(paths);
        return true;
    }
};

}  // namespace

int RunWorkbench(int argc, char** argv, const std::vector<std::string>& paths) {
    if (!IsDisplayAvailable()) {
        std::fprintf(stderr,
                     "tavin: the workbench needs a display, and there is none. Without one:\n"
                     "  tavin info FILE                 says what a file holds\n"
                     "  tavin plot FILE -o OUT.png      draws it\n"
                     "  tavin clean FILE ... -o OUT     cleans it\n");
        return kRefused;
    }
    const WorkbenchResources resources;
    CWorkbenchApp application(argc, argv);
    application.SetRegistryKey("Tavin");
    return application.Start(paths) ? application.Run() : kRefused;
}

}  // namespace app
