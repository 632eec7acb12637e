// The window that lists what keys and mouse do.
#pragma once

#include "tavin/tavin.h"

namespace app {

class ShortcutsDialog : public CDialog {
  public:
    explicit ShortcutsDialog(CWnd* parent);

    struct Line {
        CString press;
        CString effect;
    };
    // The mouse first, then every command that has a key, in the order of the command table.
    static std::vector<Line> Lines();

  protected:
    BOOL OnInitDialog() override;

  private:
    const DialogTable template_;
};

}  // namespace app
