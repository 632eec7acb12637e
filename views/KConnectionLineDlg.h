// Asks for one connection line, or for how several are drawn.
#pragma once

#include "platform/core/Types.h"
#include "platform/dialog/CComboBox.h"
#include "platform/dialog/CDialog.h"

class IPointSource;
namespace KConnectionLineManager {
class LineProperties;
}

class KConnectionLineDlg : public CDialog {
  public:
    // The series of the set are offered.
    KConnectionLineDlg(const KConnectionLineManager::LineProperties& set, CWnd* parent = nullptr);

    bool OnControlMsg(UINT id, UINT code) override;
    const CBrush* OnCtlColor(CDC* dc, CWnd* control, UINT kind) override;

    IPointSource* from = nullptr;
    IPointSource* to = nullptr;
    int style = 0;
    int type = 0;
    COLORREF color = 0;
    bool selectSeries = true;  // false: from and to stay what they are

  protected:
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;

  private:
    void FillSeries(CComboBox& box, const IPointSource* chosen) const;
    void TakeSeries(CDataExchange* exchange, UINT id, const CComboBox& box, IPointSource*& series,
                    const char* refusal) const;

    const KConnectionLineManager::LineProperties& set;
    CComboBox fromBox;
    CComboBox toBox;
    CComboBox typeBox;
    CComboBox styleBox;
};
