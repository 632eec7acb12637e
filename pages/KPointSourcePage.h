// The page "Data": moves series between those that a view hides and those that it shows, orders the shown
// ones, and edits how they are drawn. What is done takes effect when the page is left.
//
// A series that the view loses or gains while the page is open is neither brought back nor lost.
#pragma once

#include <list>
#include <memory>

#include "pages/TavinPage.h"
#include "platform/dialog/CButton.h"

class IPointSource;
class KDrawPropertyManager;
class KPointSourceListBox;
class KPointSourceProperties;

class KPointSourcePage : public TavinPage {
    DECLARE_DYNCREATE(KPointSourcePage)

  public:
    // `section` is where the set is kept.
    KPointSourcePage(CString section, KPointSourceProperties* properties);
    KPointSourcePage();
    ~KPointSourcePage() override;

    void SetPropertyManager(KDrawPropertyManager* properties);

    int OnLoadDefault() override;
    BOOL OnSetActive() override;
    BOOL OnKillActive() override;
    bool OnControlMsg(UINT id, UINT code) override;

    // Whether the first of the shown series is another one than when the page was made.
    bool primaryChanged = false;
    CButton downButton;
    CButton upButton;
    CButton rightButton;
    CButton leftButton;
    std::unique_ptr<KPointSourceListBox> hiddenBox;
    std::unique_ptr<KPointSourceListBox> shownBox;
    IPointSource* primary = nullptr;
    KDrawPropertyManager* manager = nullptr;
    std::list<IPointSource*>* shown = nullptr;
    std::list<IPointSource*>* hidden = nullptr;

  protected:
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;

  private:
    void MoveToShown();
    void MoveToHidden();
    void MoveUp();
    void MoveDown();
    void EditHidden();
    void EditShown();
    void ResetHidden();
    void ResetShown();
    void HandleDblclk(const KPointSourceListBox& box);
    void HandleReset(const KPointSourceListBox& box);
    void TakeLists();
    void NotePrimary();

    KPointSourceProperties* set = nullptr;
};
