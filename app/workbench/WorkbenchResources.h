// Menus, commands, toolbar and icons of the workbench, registered as long as this object lives.
#pragma once

#include <memory>

namespace app {

class WorkbenchResources {
  public:
    WorkbenchResources();
    ~WorkbenchResources();

  private:
    struct Tables;
    std::unique_ptr<Tables> tables_;
};

}  // namespace app
