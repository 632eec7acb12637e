#include "app/workbench/LiveDialogs.h"

#include "app/workbench/WorkbenchIds.h"

namespace app {

namespace {

constexpr UINT kAddressEdit = 34101;
constexpr UINT kWindowEdit = 34102;
constexpr UINT kFormsText = 34103;
constexpr UINT kNumberLabel = 34111;
constexpr UINT kNumberEdit = 34112;

constexpr ControlResource kSourceControls[] = {
    {ControlKind::Text, 0, "&Address:", 7, 9, 60, 8},
    {ControlKind::Edit, kAddressEdit, "", 70, 7, 263, 14},
    {ControlKind::Text, 0, "&Length of the window (s):", 7, 29, 90, 8},
    {ControlKind::Edit, kWindowEdit, "", 100, 27, 50, 14},
    {ControlKind::Text, kFormsText, "", 7, 50, 326, 60},
    {ControlKind::DefaultButton, IDOK, "OK", 229, 117, 50, 14},
    {ControlKind::Button, IDCANCEL, "Cancel", 283, 117, 50, 14},
};
constexpr DialogResource kSourceDialog = {"Live", 340, 138, kSourceControls};

constexpr ControlResource kNumberControls[] = {
    {ControlKind::Text, kNumberLabel, "", 7, 9, 110, 8},
    {ControlKind::Edit, kNumberEdit, "", 120, 7, 60, 14},
    {ControlKind::DefaultButton, IDOK, "OK", 76, 30, 50, 14},
    {ControlKind::Button, IDCANCEL, "Cancel", 130, 30, 50, 14},
};
constexpr DialogResource kNumberDialog = {"", 187, 51, kNumberControls};

const DialogTable& SourceTable() {
    static const DialogTable table(kLiveOpen, kSourceDialog);
    return table;
}
const DialogTable& NumberTable() {
    static const DialogTable table(kLiveWindow, kNumberDialog);
    return table;
}

std::vector<CString> NamesOf(const LiveSession& session, bool receivedOnly, std::vector<std::size_t>& which) {
    std::vector<CString> names;
    auto& file = const_cast<LiveSession&>(session).File();
    for (std::size_t i = 0; i < file.series.size(); ++i) {
        if (receivedOnly && !session.IsReceived(i)) continue;
        names.push_back(file.series[i].source->GetName());
        which.push_back(i);
    }
    return names;
}

std::size_t Chosen(const CChoiceDialog::Choice& choice, const std::vector<std::size_t>& which) {
    return which[static_cast<std::size_t>(choice.chosen)];
}

}  // namespace

LiveSourceDialog::LiveSourceDialog(CWnd* parent) : CDialog(kLiveOpen, parent) { SourceTable(); }

BOOL LiveSourceDialog::OnInitDialog() {
    GetDlgItem(kFormsText)->SetWindowText(FeedAddressForms());
    return CDialog::OnInitDialog();
}

void LiveSourceDialog::DoDataExchange(CDataExchange* exchange) {
    DDX_Text(exchange, kAddressEdit, address);
    DDX_Text(exchange, kWindowEdit, window);
    DDV_MinMaxDouble(exchange, window, 0.01, 86400);
}

bool LiveSourceDialog::TakeAddress() {
    FeedAddress read;
    std::string fault;
    if (!ReadFeedAddress(address.GetString(), read, fault)) {
        AfxMessageBox(fault.c_str(), MB_OK | MB_ICONEXCLAMATION);
        return false;
    }
    wishes_ = {};
    wishes_.addresses.push_back(std::move(read));
    wishes_.window = window;
    return true;
}

void LiveSourceDialog::OnOK() {
    if (UpdateData() && TakeAddress()) EndDialog(IDOK);
}

std::optional<LiveWishes> AskForLiveSource(CWnd* parent) {
    LiveSourceDialog dialog(parent);
    CWinApp& profile = *AfxGetApp();
    dialog.address = profile.GetProfileString("Live", "Address", "tcp://localhost:9000");
    // Where a handler answers, no button has checked what it says.
    if (dialog.DoModal() != IDOK || !dialog.TakeAddress()) return {};
    profile.WriteProfileString("Live", "Address", dialog.Wishes().addresses.front().shown.c_str());
    return dialog.Wishes();
}

NumberDialog::NumberDialog(const char* dialogTitle, const char* label, double start, CWnd* parent)
    : CDialog(kLiveWindow, parent), title(dialogTitle), value(start), label_(label) {
    NumberTable();
}

BOOL NumberDialog::OnInitDialog() {
    SetWindowText(title);
    GetDlgItem(kNumberLabel)->SetWindowText(label_);
    return CDialog::OnInitDialog();
}

void NumberDialog::DoDataExchange(CDataExchange* exchange) { DDX_Text(exchange, kNumberEdit, value); }

std::optional<double> AskForNumber(const char* title, const char* label, double value, CWnd* parent) {
    NumberDialog dialog(title, label, value, parent);
    if (dialog.DoModal() != IDOK) return {};
    return dialog.value;
}

std::optional<DerivedChannel> AskForDerived(const LiveSession& session, CWnd* parent) {
    std::vector<std::size_t> which;
    const auto names = NamesOf(session, true, which);
    if (names.empty()) return {};
    CChoiceDialog dialog("Derived channel", parent);
    dialog.choices = {
        {"&First", names, 0}, {"&Operation", {"plus", "minus"}, 1}, {"&Second", names, names.size() > 1}};
    if (dialog.DoModal() != IDOK) return {};
    return DerivedChannel{dialog.choices[1].chosen == 0 ? OPERATION_ADD : OPERATION_SUBTRACT,
                          Chosen(dialog.choices[0], which), Chosen(dialog.choices[2], which)};
}

std::optional<CorrectedChannel> AskForCorrection(const LiveSession& session, CWnd* parent) {
    std::vector<std::size_t> which;
    std::vector<std::size_t> all;
    const auto names = NamesOf(session, true, which);
    std::vector<CString> others = NamesOf(session, false, all);
    if (names.empty()) return {};
    others.insert(others.begin(), "nothing");
    CChoiceDialog dialog("Corrected channel", parent);
    dialog.choices = {{"&Channel", names, 0},
                      {"&Sign", {"as it is", "inverted"}, 0},
                      {"&Add", others, 0},
                      {"S&ubtract", others, 0}};
    if (dialog.DoModal() != IDOK) return {};
    CorrectedChannel corrected{Chosen(dialog.choices[0], which), {}};
    corrected.correction.invert = dialog.choices[1].chosen == 1;
    const auto list = [&](int place, std::vector<std::size_t>& series) {
        if (const int chosen = dialog.choices[static_cast<std::size_t>(place)].chosen)
            series.push_back(all[static_cast<std::size_t>(chosen - 1)]);
    };
    list(2, corrected.correction.add);
    list(3, corrected.correction.subtract);
    const auto offset = AskForNumber("Corrected channel", "&Offset, added after the sign:", 0, parent);
    if (!offset) return {};
    corrected.correction.offset = *offset;
    return corrected;
}

}  // namespace app
