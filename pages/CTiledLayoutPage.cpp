#include "pages/CTiledLayoutPage.h"

#include "pages/PageControls.h"
#include "pages/PageResources.h"
#include "settings/CTiledLayoutProperties.h"

namespace {

constexpr UINT kDialogId = 408;
enum ControlId : UINT { kRows = 4012, kSourcesPerTile = 4013, kColumns = 4142 };

constexpr ControlResource kTemplate[] = {
    {ControlKind::Text, 0, "Number of &columns:", 7, 9, 90, 8},
    {ControlKind::Edit, kColumns, "", 103, 7, 40, 12},
    {ControlKind::Text, 0, "Number of &rows:", 7, 26, 90, 8},
    {ControlKind::Edit, kRows, "", 103, 24, 40, 12},
    {ControlKind::Text, 0, "S&ources in each tile:", 7, 43, 90, 8},
    {ControlKind::Edit, kSourcesPerTile, "", 103, 41, 40, 12},
};
const DialogResource kDialog = {"Tiled Layout", 150, 60, kTemplate, TavinModule()};
const DialogTable dialog(kDialogId, kDialog);

using P = CTiledLayoutProperties;
constexpr pages::Control<P> kControls[] = {
    pages::IntEdit(kRows, &P::NumRows, 2, 20),
    pages::IntEdit(kColumns, &P::NumColumns, 2, 20),
    pages::IntEdit(kSourcesPerTile, &P::NumSourcesPerTile, 1, 100),
};

}  // namespace

IMPLEMENT_DYNCREATE(CTiledLayoutPage, TavinPage)

CTiledLayoutPage::CTiledLayoutPage(CString key, CTiledLayoutProperties* set)
    : TavinPage(key, set, true, kDialogId, 0), layout(set) {}

void CTiledLayoutPage::DoDataExchange(CDataExchange* exchange) {
    TavinPage::DoDataExchange(exchange);
    if (layout) pages::ExchangeControls(*exchange, *layout, kControls);
}
