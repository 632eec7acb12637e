#include "app/workbench/ShortcutsDialog.h"

#include "app/workbench/WorkbenchIds.h"

namespace app {

namespace {

constexpr UINT kList = 34001;

constexpr ControlResource kControls[] = {
    {ControlKind::Columns, kList, "", 7, 7, 326, 200},
    {ControlKind::DefaultButton, IDOK, "Close", 283, 213, 50, 14},
};
constexpr DialogResource kDialog = {"Keys and mouse", 340, 234, kControls};

constexpr const char* kGestures[][2] = {
    {"Wheel", "Zoom at the pointer; gently with Ctrl"},
    {"Hold X or Y", "Zoom that axis only"},
    {"Middle button, Space+left button", "Move the view; middle double click: show everything"},
    {"Shift+wheel, horizontal wheel", "Move sideways"},
    {"Ctrl+click, Ctrl+drag", "A ruler"},
    {"Click on the legend",
     "Fold it; drag it to a corner, or to the middle to have it where the fewest data lie"},
    {"Arrow and page keys", "Scroll"},
};

}  // namespace

ShortcutsDialog::ShortcutsDialog(CWnd* parent)
    : CDialog(kShortcuts, parent), template_(kShortcuts, kDialog) {}

std::vector<ShortcutsDialog::Line> ShortcutsDialog::Lines() {
    std::vector<Line> lines;
    for (const auto& [press, effect] : kGestures) lines.push_back({press, effect});
    for (const CommandResource& command : CommandResources()) {
        const std::string text = command.text;
        const auto tab = text.find('\t');
        if (tab == std::string::npos) continue;
        lines.push_back({CString(text.substr(tab + 1)), command.hint ? command.hint : ""});
    }
    return lines;
}

BOOL ShortcutsDialog::OnInitDialog() {
    CListCtrl list;
    list.SubclassDlgItem(kList, this);
    list.InsertColumn(0, "Press");
    list.InsertColumn(1, "Effect");
    for (const Line& line : Lines()) {
        const int row = list.InsertItem(list.GetItemCount(), line.press);
        list.SetItemText(row, 1, line.effect);
    }
    list.FitColumns();
    return CDialog::OnInitDialog();
}

}  // namespace app
