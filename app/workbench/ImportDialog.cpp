#include "app/workbench/ImportDialog.h"

#include <algorithm>
#include <iterator>

#include "app/table/OpenTable.h"
#include "app/table/Records.h"

namespace app {

namespace {

constexpr char kDelimiters[] = {',', ';', '\t', kBlanks, '|'};
constexpr char kDecimalSigns[] = {'.', ','};
constexpr std::size_t kPreviewRows = 9;
// Enough for the reader's guesses, which look at a thousand rows.
constexpr std::size_t kSampleBytes = std::size_t{1} << 20;

// In the dialog's order. The first option of all but the x column is the reader's guess.
enum ChoiceIndex { kDelimiterChoice, kDecimalChoice, kHeaderChoice, kTimeChoice, kXChoice };

constexpr const char* kTimeForms[] = {"iso", "epoch", "epoch-ms", "number"};
constexpr const char* kTimeFormTexts[] = {"ISO 8601 (2024-03-14T08:00)", "seconds since 1970",
                                          "milliseconds since 1970", "plain numbers"};

std::string Titled(const Column& column) {
    return column.name + (column.unit.empty() ? "" : " [" + column.unit + "]");
}

bool CanBeRead(const Column& column) {
    return column.kind == ColumnKind::Number || column.kind == ColumnKind::Time;
}

template <std::size_t N>
int IndexOf(const char (&values)[N], std::optional<char> value) {
    const auto* const found =
        value ? std::find(std::begin(values), std::end(values), *value) : std::end(values);
    return found == std::end(values) ? 0 : static_cast<int>(found - std::begin(values)) + 1;
}

class ImportDialog : public CChoiceDialog {
  public:
    ImportDialog(const ReadOptions& start, InputText sample, CWnd* parent);

    ReadOptions Chosen() const;
    void OnChange() override;

  private:
    ReadOptions WithoutColumns() const;
    void ListColumns(const Layout& layout, const app::Choice& chosen);
    void ShowRows(const Layout& layout);
    void NameGuesses(const Layout& layout);
    void Refuse(const std::string& why);

    ReadOptions start_;
    InputText sample_;
    std::vector<Column> columns_;  // as listed now
};

ImportDialog::ImportDialog(const ReadOptions& start, InputText sample, CWnd* parent)
    : CChoiceDialog("Open a file of measurements", parent), start_(start), sample_(std::move(sample)) {
    choices.resize(5);
    choices[kDelimiterChoice] = {"&Delimiter:", {}, IndexOf(kDelimiters, start.delimiter)};
    choices[kDecimalChoice] = {"Deci&mal sign:", {}, IndexOf(kDecimalSigns, start.decimalSign)};
    choices[kHeaderChoice] = {"&Header:", {}, start.header ? (*start.header ? 1 : 2) : 0};
    const auto* const form = std::find(std::begin(kTimeForms), std::end(kTimeForms), start.timeFormat);
    choices[kTimeChoice] = {
        "&Times:", {}, form == std::end(kTimeForms) ? 0 : static_cast<int>(form - kTimeForms) + 1};
    choices[kXChoice] = {"&X column:", {}, 0};
    itemsLabel = "&Series (y):";
}

ReadOptions ImportDialog::WithoutColumns() const {
    ReadOptions options = start_;
    options.x.clear();
    options.y.clear();
    const auto chosen = [this](ChoiceIndex i) { return choices[i].chosen; };
    options.delimiter.reset();
    options.decimalSign.reset();
    options.header.reset();
    if (const int i = chosen(kDelimiterChoice)) options.delimiter = kDelimiters[i - 1];
    if (const int i = chosen(kDecimalChoice)) options.decimalSign = kDecimalSigns[i - 1];
    if (const int i = chosen(kHeaderChoice)) options.header = i == 1;
    if (const int i = chosen(kTimeChoice))
        options.timeFormat = kTimeForms[i - 1];
    else if (options.timeFormat.find('%') == std::string::npos)
        options.timeFormat.clear();
    return options;
}

ReadOptions ImportDialog::Chosen() const {
    ReadOptions options = WithoutColumns();
    // By number: names may be there twice.
    const auto x = static_cast<std::size_t>(choices[kXChoice].chosen);
    if (x < columns_.size()) options.x = std::to_string(columns_[x].field + 1);
    for (std::size_t i = 0; i < items.size() && i < columns_.size(); ++i)
        if (items[i].ticked && items[i].enabled) options.y.push_back(std::to_string(columns_[i].field + 1));
    return options;
}

void ImportDialog::OnChange() {
    ReadOptions wanted = columns_.empty() ? start_ : Chosen();
    const auto layout = GuessLayout(sample_.bytes, sample_.name, wanted);
    if (!layout) return Refuse("This is no table of at least two columns of numbers or times.");
    const bool sameColumns = layout->columns.size() == columns_.size();
    if (!sameColumns && !columns_.empty()) wanted = WithoutColumns();
    // The x column leaves the series, whatever was ticked.
    const auto x = FindColumn(*layout, wanted.x);
    if (x)
        std::erase_if(wanted.y,
                      [&](const auto& y) { return FindColumn(*layout, y) && *FindColumn(*layout, y) == *x; });
    auto chosen = ChooseColumns(*layout, wanted);
    if (!chosen) chosen = ChooseColumns(*layout, WithoutColumns());
    if (!chosen) return Refuse(chosen.Error().message);
    const bool none = sameColumns && wanted.y.empty();
    NameGuesses(*layout);
    ListColumns(*layout, *chosen);
    if (none)
        for (auto& item : items) item.ticked = false;
    ShowRows(*layout);
    acceptable = !none;
    note = none ? "Tick at least one series." : "";
}

void ImportDialog::Refuse(const std::string& why) {
    acceptable = false;
    note = CString(why);
    preview.clear();
    if (choices[kDelimiterChoice].options.empty()) NameGuesses(Layout());
}

void ImportDialog::NameGuesses(const Layout& layout) {
    auto& delimiter = choices[kDelimiterChoice];
    delimiter.options = {CString("guess: " + std::string(DelimiterName(layout.delimiter)))};
    for (const char c : kDelimiters) delimiter.options.emplace_back(DelimiterName(c));
    choices[kDecimalChoice].options = {layout.decimalSign == ',' ? "guess: comma" : "guess: point", "point",
                                       "comma"};
    choices[kHeaderChoice].options = {layout.hasUnitsRow ? "guess: names and units"
                                      : layout.hasHeader ? "guess: names"
                                                         : "guess: none",
                                      "the first row names the columns", "none"};
    choices[kTimeChoice].options = {"guess"};
    for (const char* text : kTimeFormTexts) choices[kTimeChoice].options.emplace_back(text);
}

void ImportDialog::ListColumns(const Layout& layout, const app::Choice& chosen) {
    columns_.clear();
    items.clear();
    choices[kXChoice].options.clear();
    for (const Column& column : layout.columns) {
        if (!CanBeRead(column)) continue;
        const bool isX = column.field == chosen.x.field;
        const bool isY = std::any_of(chosen.columns.begin(), chosen.columns.end(),
                                     [&](const Column& y) { return y.field == column.field; });
        if (isX) choices[kXChoice].chosen = static_cast<int>(columns_.size());
        const bool time = column.kind == ColumnKind::Time;
        choices[kXChoice].options.emplace_back(Titled(column) + (time ? " (times)" : ""));
        items.push_back({CString(Titled(column)), isY, !isX && !time});
        columns_.push_back(column);
    }
}

void ImportDialog::ShowRows(const Layout& layout) {
    preview.clear();
    Row heading;
    for (const Column& column : layout.columns) heading.emplace_back(Titled(column));
    preview.push_back(heading);
    Records records(sample_.bytes, layout.delimiter, layout.dataBegin);
    Record record;
    Row row;
    while (preview.size() < kPreviewRows &&
           records.Next(record, [&](int, std::string_view cell) { row.emplace_back(cell); })) {
        if (record.kind == Record::Row) preview.push_back(row);
        row.clear();
    }
}

}  // namespace

std::optional<ReadOptions> AskHowToRead(const ReadOptions& start, CWnd* parent) {
    auto sample = LoadText(start.path, kSampleBytes);
    if (!sample) {
        AfxMessageBox(sample.Error().message.c_str(), MB_OK | MB_ICONEXCLAMATION);
        return std::nullopt;
    }
    ImportDialog dialog(start, std::move(*sample), parent);
    if (dialog.DoModal() != IDOK || !dialog.acceptable) return std::nullopt;
    return dialog.Chosen();
}

}  // namespace app
