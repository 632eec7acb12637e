#include "pages/KPointSourcePage.h"

#include <algorithm>
#include <vector>

#include "pages/DataPageResources.h"
#include "pages/KPointSourceListBox.h"
#include "pages/KPointSourceProperties.h"
#include "platform/dialog/CDataExchange.h"
#include "sources/IPointSource.h"

IMPLEMENT_DYNCREATE(KPointSourcePage, TavinPage)

KPointSourcePage::KPointSourcePage(CString section, KPointSourceProperties* display)
    : TavinPage(section, display, true, kDataDialog, 0),
      hiddenBox(std::make_unique<KPointSourceListBox>()),
      shownBox(std::make_unique<KPointSourceListBox>()),
      set(display) {
    if (!set) return;
    shown = set->shown;
    hidden = set->hidden;
    primary = shown->empty() ? nullptr : shown->front();
    SetPropertyManager(set->manager);
}

KPointSourcePage::KPointSourcePage() : KPointSourcePage(CString(), nullptr) {}

KPointSourcePage::~KPointSourcePage() = default;

void KPointSourcePage::SetPropertyManager(KDrawPropertyManager* newManager) {
    manager = newManager;
    hiddenBox->SetManager(manager);
    shownBox->SetManager(manager);
}

BOOL KPointSourcePage::OnInitDialog() {
    const BOOL result = TavinPage::OnInitDialog();
    hiddenBox->SubclassDlgItem(kHiddenList, this);
    shownBox->SubclassDlgItem(kShownList, this);
    rightButton.SetIcon("417", "Show the selected series");
    leftButton.SetIcon("416", "Hide the selected series");
    upButton.SetIcon("418", "Move the selected series up");
    downButton.SetIcon("419", "Move the selected series down");
    return result;
}

void KPointSourcePage::DoDataExchange(CDataExchange* exchange) {
    TavinPage::DoDataExchange(exchange);
    DDX_Control(exchange, kMoveDown, downButton);
    DDX_Control(exchange, kMoveUp, upButton);
    DDX_Control(exchange, kMoveToShown, rightButton);
    DDX_Control(exchange, kMoveToHidden, leftButton);
    if (!exchange->m_bSaveAndValidate || !shown || !hidden) return;
    TakeLists();
    NotePrimary();
}

// Only the order and the sides are the user's: which series there are is the view's affair, and may have
// changed since the boxes were filled.
void KPointSourcePage::TakeLists() {
    const std::vector<IPointSource*> asked[] = {hiddenBox->Series(), shownBox->Series()};
    std::list<IPointSource*>* const lists[] = {hidden, shown};
    std::list<IPointSource*> taken[2];
    for (int side = 0; side < 2; ++side)
        for (IPointSource* const source : asked[side])
            for (auto* const list : lists) {
                const auto found = std::find(list->begin(), list->end(), source);
                if (found == list->end()) continue;
                taken[side].splice(taken[side].end(), *list, found);
                break;
            }
    for (int side = 0; side < 2; ++side) lists[side]->splice(lists[side]->begin(), taken[side]);
}

void KPointSourcePage::NotePrimary() {
    if (shown && (shown->empty() ? nullptr : shown->front()) != primary) primaryChanged = true;
}

int KPointSourcePage::OnLoadDefault() {
    const int loaded = TavinPage::OnLoadDefault();
    NotePrimary();
    return loaded;
}

BOOL KPointSourcePage::OnSetActive() {
    const BOOL result = TavinPage::OnSetActive();
    if (hidden) hiddenBox->Fill(*hidden);
    if (shown) shownBox->Fill(*shown);
    return result;
}

BOOL KPointSourcePage::OnKillActive() {
    if (!TavinPage::OnKillActive()) return FALSE;
    hiddenBox->Clear();
    shownBox->Clear();
    return TRUE;
}

bool KPointSourcePage::OnControlMsg(UINT id, UINT code) {
    using P = KPointSourcePage;
    static constexpr ControlRow<P> kControls[] = {
        {BN_CLICKED, kMoveToShown, kMoveToShown, &P::MoveToShown},
        {BN_CLICKED, kMoveToHidden, kMoveToHidden, &P::MoveToHidden},
        {BN_CLICKED, kMoveUp, kMoveUp, &P::MoveUp},
        {BN_CLICKED, kMoveDown, kMoveDown, &P::MoveDown},
        {LBN_DBLCLK, kHiddenList, kHiddenList, &P::EditHidden},
        {BN_CLICKED, kHiddenProperties, kHiddenProperties, &P::EditHidden},
        {LBN_DBLCLK, kShownList, kShownList, &P::EditShown},
        {BN_CLICKED, kShownProperties, kShownProperties, &P::EditShown},
        {BN_CLICKED, kHiddenReset, kHiddenReset, &P::ResetHidden},
        {BN_CLICKED, kShownReset, kShownReset, &P::ResetShown},
    };
    return RouteControl(*this, kControls, id, code) || TavinPage::OnControlMsg(id, code);
}

void KPointSourcePage::MoveToShown() { hiddenBox->MoveSelected(*shownBox); }
void KPointSourcePage::MoveToHidden() { shownBox->MoveSelected(*hiddenBox); }
void KPointSourcePage::MoveUp() { shownBox->MoveSelectedUp(); }
void KPointSourcePage::MoveDown() { shownBox->MoveSelectedDown(); }
void KPointSourcePage::EditHidden() { HandleDblclk(*hiddenBox); }
void KPointSourcePage::EditShown() { HandleDblclk(*shownBox); }
void KPointSourcePage::ResetHidden() { HandleReset(*hiddenBox); }
void KPointSourcePage::ResetShown() { HandleReset(*shownBox); }

void KPointSourcePage::HandleDblclk(const KPointSourceListBox& box) {
    if (!set) return;
    const std::vector<IPointSource*> selected = box.SelectedSeries();
    const auto first = std::find_if(selected.begin(), selected.end(),
                                    [this](const IPointSource* source) { return set->Has(source); });
    if (first == selected.end() || !set->EditProperties(*first)) return;
    for (IPointSource* const other : selected)
        if (other != *first && set->Has(other) && set->Has(*first)) set->CopyProperties(*first, other);
    Invalidate();
}

void KPointSourcePage::HandleReset(const KPointSourceListBox& box) {
    for (IPointSource* const source : box.SelectedSeries())
        if (set && set->Has(source)) source->Reset();
}
