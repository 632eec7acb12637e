#include "app/workbench/ImportDialog.h"

#include <algorithm>
#include <iterator>

#include "app/table/OpenTable.h"
#include "app/table/Records.h"

namespace app {

namespace {

constexpr char kDelimiters[] = {',', ';', '\t', kBlanks, '|'};
constexpr char kDecimalSigns[] = {'.', ','};
constexpr const char* kDecimalTexts[] = {"point", "comma"};
constexpr std::size_t kPreviewRows = 9;
// Enough for the reader's guesses, which look at a thousand rows.
constexpr std::size_t kSampleBytes = std::size_t{1} << 20;

// In the dialog's order. The first option of all but the x column is the reader's guess.
enum ChoiceIndex {
    kEncodingChoice,
    kDelimiterChoice,
    kDecimalChoice,
    kSkipChoice,
    kHeaderChoice,
    kTimeChoice,
    kZoneChoice,
    kXChoice,
    kChoices
};
constexpr int kNoHeader = 1;  // of the options for the headings; then come the lines
constexpr int kListedLines = 20;

constexpr const char* kEncodings[] = {"UTF-8", "ISO-8859-1", "windows-1252", "UTF-16LE", "UTF-16BE"};
constexpr const char* kZones[] = {"UTC",
                                  "Europe/London",
                                  "Europe/Berlin",
                                  "Europe/Helsinki",
                                  "Asia/Kolkata",
                                  "Asia/Shanghai",
                                  "Asia/Tokyo",
                                  "Australia/Sydney",
                                  "America/New_York",
                                  "America/Chicago",
                                  "America/Denver",
                                  "America/Los_Angeles",
                                  "America/Sao_Paulo"};

std::string Titled(const Column& column) {
    return column.name + (column.unit.empty() ? "" : " [" + column.unit + "]");
}

bool CanBeRead(const Column& column) {
    return column.kind == ColumnKind::Number || column.kind == ColumnKind::Time;
}

// The place of the value among the options behind the guess; 0 for the guess.
template <class T, std::size_t N, class Wanted>
int IndexOf(const T (&values)[N], const Wanted& wanted) {
    const auto* const found =
        std::find_if(std::begin(values), std::end(values), [&](T value) { return wanted == value; });
    return found == std::end(values) ? 0 : static_cast<int>(found - std::begin(values)) + 1;
}

int IndexOfForm(const std::string& name) {
    const auto* const form = FindTimeForm(name);
    return form ? static_cast<int>(form - std::begin(kTimeFormNames)) + 1 : 0;
}

bool IsPattern(const std::string& timeFormat) { return timeFormat.find('%') != std::string::npos; }

// The start of line `number` for a list; empty where there is none.
std::string LineText(std::string_view text, int number) {
    constexpr std::size_t kMost = 50;
    for (; number > 1 && !text.empty(); --number)
        text.remove_prefix(std::min(text.find('\n'), text.size() - 1) + 1);
    return std::string(text.substr(0, std::min(kMost, text.find_first_of("\r\n"))));
}

class ImportDialog : public CChoiceDialog {
  public:
    ImportDialog(const ReadOptions& start, InputText sample, CWnd* parent);

    ReadOptions Chosen() const;
    void OnChange() override;

  private:
    ReadOptions WithoutColumns() const;
    void LoadSample(const std::string& encoding);
    void ListColumns(const Layout& layout, const app::Choice& chosen);
    void ShowRows(const Layout& layout);
    void NameGuesses(const Layout& layout);
    void Refuse(const std::string& why);

    ReadOptions start_;
    InputText sample_;
    std::string loadedEncoding_;  // as asked for
    int listedLines_;             // for headings and for lines to skip
    std::size_t fields_ = 0;
    std::vector<Column> columns_;  // as listed now
};

ImportDialog::ImportDialog(const ReadOptions& start, InputText sample, CWnd* parent)
    : CChoiceDialog("Open a file of measurements", parent),
      start_(start),
      sample_(std::move(sample)),
      loadedEncoding_(start.encoding),
      listedLines_(std::max({kListedLines, start.skip, static_cast<int>(start.headerLine.value_or(0))})) {
    choices.resize(kChoices);
    choices[kEncodingChoice] = {"&Encoding:", {}, IndexOf(kEncodings, start.encoding)};
    choices[kDelimiterChoice] = {"&Delimiter:", {}, IndexOf(kDelimiters, start.delimiter)};
    choices[kDecimalChoice] = {"Deci&mal sign:", {}, IndexOf(kDecimalSigns, start.decimalSign)};
    choices[kSkipChoice] = {"S&kip:", {}, start.skip};
    const auto line = static_cast<int>(start.headerLine.value_or(-1));
    choices[kHeaderChoice] = {"&Headings:", {}, line < 0 ? 0 : kNoHeader + line};
    choices[kTimeChoice] = {"&Times:", {}, IndexOfForm(start.timeFormat), true};
    if (IsPattern(start.timeFormat)) {
        choices[kTimeChoice].chosen = Choice::kTyped;
        choices[kTimeChoice].typed = CString(start.timeFormat);
    }
    choices[kZoneChoice] = {"&Zone:", {}, IndexOf(kZones, start.zone)};
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
    options.headerLine.reset();
    if (const int i = chosen(kEncodingChoice)) options.encoding = kEncodings[i - 1];
    if (const int i = chosen(kDelimiterChoice)) options.delimiter = kDelimiters[i - 1];
    if (const int i = chosen(kDecimalChoice)) options.decimalSign = kDecimalSigns[i - 1];
    options.skip = chosen(kSkipChoice);
    if (const int i = chosen(kHeaderChoice)) options.headerLine = i - kNoHeader;
    if (const int i = chosen(kZoneChoice)) options.zone = kZones[i - 1];
    const int time = chosen(kTimeChoice);
    options.timeFormat = time > 0    ? kTimeFormNames[time - 1].name
                         : time == 0 ? ""
                                     : choices[kTimeChoice].typed.GetString();
    return options;
}

// A column by its number, a time composed of several by all of theirs.
std::string NumbersOf(const Column& column) {
    std::string numbers = std::to_string(column.field + 1);
    for (std::size_t i = 1; i < column.parts.size(); ++i)
        numbers += "+" + std::to_string(column.parts[i].field + 1);
    return numbers;
}

ReadOptions ImportDialog::Chosen() const {
    ReadOptions options = WithoutColumns();
    // By number: names may be there twice.
    const auto x = static_cast<std::size_t>(choices[kXChoice].chosen);
    if (x < columns_.size()) options.x = NumbersOf(columns_[x]);
    for (std::size_t i = 0; i < items.size() && i < columns_.size(); ++i)
        if (items[i].ticked && items[i].enabled) options.y.push_back(std::to_string(columns_[i].field + 1));
    return options;
}

void ImportDialog::LoadSample(const std::string& encoding) {
    if (encoding == loadedEncoding_) return;
    ReadOptions options = start_;
    options.encoding = encoding;
    auto sample = LoadText(options, kSampleBytes);
    if (!sample) return;
    sample_ = std::move(*sample);
    loadedEncoding_ = encoding;
}

void ImportDialog::OnChange() {
    ReadOptions wanted = WithoutColumns();
    if (columns_.empty()) {
        wanted.x = start_.x;
        wanted.y = start_.y;
    } else {
        wanted = Chosen();
    }
    if (const auto failure = CheckTimeFormat(wanted.timeFormat)) return Refuse(failure->message);
    LoadSample(wanted.encoding);
    const auto layout = GuessLayout(sample_.bytes, sample_.name, wanted, sample_.encoding);
    if (!layout) return Refuse(layout.Error().message);
    const bool sameColumns = layout->columns.size() == fields_;
    if (!sameColumns && !columns_.empty()) wanted = WithoutColumns();
    fields_ = layout->columns.size();
    // The columns of x leave the series, whatever was ticked.
    ReadOptions alone = wanted;
    alone.y.clear();
    if (const auto x = ChooseColumns(*layout, alone))
        std::erase_if(wanted.y, [&](const auto& y) {
            const auto found = FindColumn(*layout, y);
            return found && IsPartOf(layout->columns[static_cast<std::size_t>(*found)], x->x);
        });
    auto chosen = ChooseColumns(*layout, wanted);
    if (!chosen) chosen = ChooseColumns(*layout, WithoutColumns());
    NameGuesses(*layout);
    if (!chosen) return Refuse(chosen.Error().message);
    const bool none = sameColumns && wanted.y.empty();
    ListColumns(*layout, *chosen);
    if (none)
        for (auto& item : items) item.ticked = false;
    ShowRows(*layout);
    acceptable = !none;
    note = none ? "Tick at least one series." : "";
    for (const auto& doubt : layout->notes)
        if (!none && doubt.kind == ReadNote::Doubt) note = CString(doubt.text);
}

void ImportDialog::Refuse(const std::string& why) {
    acceptable = false;
    note = CString(why);
    preview.clear();
    if (choices[kDelimiterChoice].options.empty()) NameGuesses(Layout());
}

void ImportDialog::NameGuesses(const Layout& layout) {
    const auto list = [this](ChoiceIndex choice, const std::string& guess, const auto& texts) {
        auto& options = choices[choice].options;
        options = {CString("guess: " + guess)};
        for (const auto* text : texts) options.emplace_back(text);
    };
    list(kEncodingChoice, sample_.encoding.Name(), kEncodings);
    list(kDecimalChoice, layout.decimalSign == ',' ? "comma" : "point", kDecimalTexts);
    list(kZoneChoice, start_.zone.empty() ? "UTC, or as the times say" : start_.zone, kZones);
    auto& delimiter = choices[kDelimiterChoice];
    delimiter.options = {CString("guess: " + std::string(DelimiterName(layout.delimiter)))};
    for (const char c : kDelimiters) delimiter.options.emplace_back(DelimiterName(c));
    auto& header = choices[kHeaderChoice].options;
    header = {CString(layout.hasHeader ? "guess: line " + std::to_string(layout.headerLine) +
                                             (layout.hasUnitsRow ? " and units" : "")
                                       : std::string("guess: none")),
              "none"};
    auto& skip = choices[kSkipChoice].options;
    skip = {"no line"};
    for (int line = 1; line <= listedLines_; ++line) {
        const std::string text = std::to_string(line) + ": " + LineText(sample_.bytes, line);
        header.emplace_back("line " + text);
        skip.emplace_back("up to line " + text);
    }
    auto& times = choices[kTimeChoice].options;
    times = {"guess, or type a form such as %d.%m.%Y %H:%M"};
    for (const auto& form : kTimeFormNames) times.emplace_back(form.meaning);
}

void ImportDialog::ListColumns(const Layout& layout, const app::Choice& chosen) {
    columns_.clear();
    items.clear();
    choices[kXChoice].options.clear();
    const auto list = [&](const Column& column) {
        const bool isX = column.field == chosen.x.field && column.parts.size() == chosen.x.parts.size();
        const bool isY = std::any_of(chosen.columns.begin(), chosen.columns.end(),
                                     [&](const Column& y) { return y.field == column.field; });
        if (isX) choices[kXChoice].chosen = static_cast<int>(columns_.size());
        const bool time = column.kind == ColumnKind::Time;
        choices[kXChoice].options.emplace_back(Titled(column) + (time ? " (times)" : ""));
        items.push_back({CString(Titled(column)), isY, !time && !IsPartOf(column, chosen.x)});
        columns_.push_back(column);
    };
    if (!chosen.x.parts.empty())
        list(chosen.x);
    else if (layout.composed)
        list(*layout.composed);
    for (const Column& column : layout.columns)
        if (CanBeRead(column)) list(column);
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
    auto sample = LoadText(start, kSampleBytes);
    if (!sample) {
        AfxMessageBox(sample.Error().message.c_str(), MB_OK | MB_ICONEXCLAMATION);
        return std::nullopt;
    }
    ImportDialog dialog(start, std::move(*sample), parent);
    if (dialog.DoModal() != IDOK || !dialog.acceptable) return std::nullopt;
    return dialog.Chosen();
}

}  // namespace app
