// The start page: what to do while no file is open. Its entries are commands, chosen with the mouse or with
// arrow keys and Enter.
#pragma once

#include <vector>

#include "tavin/tavin.h"

namespace app {

class CStartView : public CView {
  protected:
    void OnInitialUpdate() override;
    void OnDraw(CDC* dc) override;
    void OnLButtonDown(UINT flags, CPoint point) override;
    void OnMouseMove(UINT flags, CPoint point) override;
    void OnKeyDown(UINT key, UINT repeat, UINT flags) override;

  private:
    struct Entry {
        UINT command;
        CString text;
        CString detail;
        CRect place = {};  // where it was drawn last
    };

    void Choose(int entry);
    int EntryAt(CPoint point) const;
    // The window may be gone afterwards.
    void Run(int entry);

    std::vector<Entry> entries_;
    int chosen_ = 0;
};

class CStartFrame : public CMDIChildWnd {
  protected:
    BOOL OnCreateClient(CREATESTRUCT* create, CCreateContext* context) override;
};

}  // namespace app
