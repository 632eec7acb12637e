// A dialog whose pages share one place: behind tabs, or one by one as a wizard (PSH_WIZARD), which ends with
// Finish. The pages are the caller's.
#pragma once

#include <vector>

#include "platform/dialog/CDialog.h"

class CPropertyPage;

// m_psh.dwFlags.
constexpr DWORD PSH_WIZARD = 0x20;
constexpr DWORD PSH_NOAPPLYNOW = 0x80;
constexpr DWORD PSH_WIZARD97 = 0x01000000;

// SetWizardButtons.
constexpr DWORD PSWIZB_FINISH = 0x4;
constexpr DWORD PSWIZB_DISABLEDFINISH = 0x8;

// The sheet's controls beside IDOK and IDCANCEL.
constexpr UINT AFX_IDC_TAB_CONTROL = 0x3020;
constexpr UINT ID_APPLY_NOW = 0x3021;
constexpr int ID_WIZFINISH = 0x3025;

class CPropertySheet : public CDialog {
    DECLARE_DYNAMIC(CPropertySheet)

  public:
    explicit CPropertySheet(UINT captionId, CWnd* parent = nullptr, UINT selectPage = 0);
    explicit CPropertySheet(LPCSTR caption, CWnd* parent = nullptr, UINT selectPage = 0);
    ~CPropertySheet() override;

    // Before the sheet is shown. Null and a page of another sheet are ignored.
    void AddPage(CPropertyPage* page);
    void RemovePage(CPropertyPage* page);
    int GetPageCount() const { return static_cast<int>(m_pages.size()); }
    // Null for a number without a page.
    CPropertyPage* GetPage(int page) const;
    int GetActiveIndex() const { return m_active; }
    CPropertyPage* GetActivePage() const { return GetPage(m_active); }
    // FALSE: the page shown refuses to be left, or the other one to be shown.
    BOOL SetActivePage(int page);
    BOOL SetActivePage(CPropertyPage* page);

    void SetWizardMode() { m_psh.dwFlags |= PSH_WIZARD; }
    bool IsWizard() const { return (m_psh.dwFlags & (PSH_WIZARD | PSH_WIZARD97)) != 0; }
    // Wizards have Finish and Cancel.
    void SetWizardButtons(DWORD flags);
    void SetFinishText(LPCSTR text);
    // Null in a wizard.
    CWnd* GetTabControl() const { return GetDlgItem(AFX_IDC_TAB_CONTROL); }

    // IDOK or IDCANCEL; ID_WIZFINISH of a wizard.
    int DoModal() override { return CDialog::DoModal(); }
    bool OnControlMsg(UINT id, UINT code) override;
    // Whether any page has something to apply: the button Apply shows it.
    void ShowWhetherModified();

    struct {
        DWORD dwFlags = 0;
    } m_psh;

  protected:
    CString Caption() const override { return m_caption; }
    // The buttons and the active page are there.
    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;
    // What the button Apply does. FALSE: a page refused.
    virtual BOOL OnApplyNow();

    // Makes the pages' windows.
    virtual void BuildPropPageArray();
    // Gives every page and button its place.
    virtual void ResizePropPages();

    int OnCreate(CREATESTRUCT* create) override;
    void GiveFocus() override;

  private:
    bool Has(const CPropertyPage* page) const;
    void BuildTabs();
    void BuildButtons();
    void OnFinish();
    bool LeaveActivePage();
    bool ApplyPages();
    void ShowPage(int page);

    std::vector<CPropertyPage*> m_pages;
    CString m_caption;
    UINT m_first;
    int m_active = -1;
};
