// The page of a view's connection lines. Lines that are added or removed wait until the page is left; what
// "Edit..." changes takes effect at once.
#pragma once

#include <list>
#include <memory>
#include <vector>

#include "pages/TavinPage.h"
#include "platform/dialog/CListBox.h"
#include "views/KConnectionLine.h"

class KConnectionLineDlg;
namespace KConnectionLineManager {
class LineProperties;
}

class KConnectionLinePage : public TavinPage {
  public:
    KConnectionLinePage(CString section, KConnectionLineManager::LineProperties* properties);

    // What is stored takes the place of all lines; a section without any changes nothing.
    int OnLoadDefault() override;
    BOOL OnSetActive() override;
    BOOL OnKillActive() override;
    void OnCancel() override;
    bool OnControlMsg(UINT id, UINT code) override;

    // Ends the lines of the series that are waiting, and takes all of its lines out of the list.
    void RemoveSource(const IPointSource* source);

    std::list<std::unique_ptr<KConnectionLine>> added;
    std::list<KConnectionLine*> removed;  // of the set or added

  protected:
    BOOL OnInitDialog() override;

  private:
    void OnAdd();
    void OnEdit();
    void OnRemove();
    // At the end for a place of -1.
    void ShowLine(KConnectionLine* line, int place = -1);
    KConnectionLine* LineAt(int place) const;
    std::vector<int> SelectedPlaces() const;
    bool HasSeries(const KConnectionLineDlg& dialog) const;
    void Forget();

    KConnectionLineManager::LineProperties* set;
    CListBox box;
};
