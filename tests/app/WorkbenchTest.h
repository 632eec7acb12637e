// The workbench under real events, without a display: a main frame, a folder with one file, and the messages
// that were shown.
#pragma once

#include "app/workbench/CSeriesView.h"
#include "app/workbench/CWorkbenchFrame.h"
#include "app/workbench/WorkbenchResources.h"
#include "tests/app/Files.h"
#include "tests/window/WindowTest.h"

namespace app {

// Ten days of readings, one an hour, in two columns.
std::string TenDays();

class WorkbenchTest : public WindowTest {
  protected:
    WorkbenchTest();
    ~WorkbenchTest() override;

    void Begin();
    void End();
    // Opens days.csv.
    CSeriesView& Open();
    // In the active view.
    void Key(int key, int modifiers = 0);
    CCmdUI State(UINT id) { return QueryCommand(*frame, id); }
    std::string Pane(int pane) const { return frame->StatusText(pane).GetString(); }

    Folder folder;
    CWindowApp application{"Tavin"};
    WorkbenchResources resources;
    CWorkbenchFrame* frame = nullptr;
    std::vector<std::string> messages;
    MessageBoxHandler boxes;
};

}  // namespace app
