// The page "Calculations" of one instrument's series: how incoming values are corrected, and which series are
// added to them and subtracted. Whoever shows it fills the members before, and reads them when the user has
// agreed.
#pragma once

#include <list>
#include <map>

#include "platform/dialog/CComboBox.h"
#include "platform/dialog/CPropertyPage.h"

class IPointSource;

class KDataAcqPage : public CPropertyPage {
  public:
    KDataAcqPage();

    BOOL OnSetActive() override;
    BOOL OnKillActive() override;
    bool OnControlMsg(UINT id, UINT code) override;

    int invertInput = 0;
    CString inputName;
    double offset = 0.0;
    std::list<IPointSource*> candidates;
    std::list<IPointSource*> addSeries;
    std::list<IPointSource*> subtractSeries;

  protected:
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;

  private:
    void Fill(CListBox& box, const std::list<IPointSource*>& series);
    static std::list<IPointSource*> SeriesIn(const CListBox& box);
    // The button says which of the lists is meant.
    void OnAdd(UINT button);
    void OnClear(UINT button);

    CComboBox candidateBox;
    CListBox addBox;
    CListBox subtractBox;
    std::map<const IPointSource*, CString> names;  // when the page was opened: a series may be gone since
};
