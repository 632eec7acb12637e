// The pages of the processing commands: one property set each. Shown alone in a wizard by whoever runs the
// command with the values of the set.
//
// The first argument of each page is the section that its set is kept in.
#pragma once

#include "pages/TavinPage.h"
#include "platform/dialog/CButton.h"
#include "platform/dialog/CComboBox.h"
#include "settings/ProcessingProperties.h"

// Sets points to a value or moves them by an offset; a picture shows which.
class CTranslatePage : public TavinPage {
    DECLARE_DYNCREATE(CTranslatePage)

  public:
    CTranslatePage(CString section, CTranslateProperties* properties);

    BOOL OnSetActive() override;
    bool OnControlMsg(UINT id, UINT code) override;

    CStatic picture;

  protected:
    CTranslatePage() = default;
    void DoDataExchange(CDataExchange* exchange) override;

  private:
    void OnRadioTranslateFunction();
    void OnRadioOffset();
    void ShowFunction(bool isOffset);

    CTranslateProperties* set = nullptr;
};

// Scales points by one of four methods; a picture shows what the method does.
class CScalePage : public TavinPage {
    DECLARE_DYNCREATE(CScalePage)

  public:
    CScalePage(CString section, CScaleProperties* properties);
    CScalePage() = default;

    bool OnControlMsg(UINT id, UINT code) override;

    CStatic picture;
    CComboBox methodCombo;

  protected:
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;

  private:
    void OnSelchangeComboScaleMethod();

    CScaleProperties* set = nullptr;
};

class CSmoothPage : public TavinPage {
    DECLARE_DYNCREATE(CSmoothPage)

  public:
    CSmoothPage(CString section, CSmoothProperties* properties);

  protected:
    CSmoothPage() = default;
    void DoDataExchange(CDataExchange* exchange) override;

  private:
    CSmoothProperties* set = nullptr;
};

// Finds spikes by their distance from a smoothing spline.
class CWaveWindowPage : public TavinPage {
  public:
    CWaveWindowPage(CString section, CSpikeDetectProperties* properties);
    CWaveWindowPage() = default;

    bool showWindowEnabled = true;
    CButton showWindowCheck;
    CString waveLengthLabel = "Wave length";

  protected:
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;

  private:
    CSpikeDetectProperties* set = nullptr;
};

class CMedianFilterPage : public TavinPage {
  public:
    CMedianFilterPage(CString section, CMedianFilterProperties* properties);
    CMedianFilterPage() = default;

  protected:
    void DoDataExchange(CDataExchange* exchange) override;

  private:
    CMedianFilterProperties* set = nullptr;
};
