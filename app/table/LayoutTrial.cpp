#include "app/table/LayoutTrial.h"

#include <algorithm>
#include <map>
#include <optional>

namespace app {

namespace {

constexpr std::size_t kTrialRows = 300;
constexpr std::size_t kSampleRows = 1000;
constexpr char kDelimiters[] = {'\t', ';', '|', ',', kBlanks};
constexpr char kGroupings[] = {',', '.', ' ', '\''};

// Tells what a cell holds.
class CellReader {
  public:
    CellReader(const ReadOptions& options, char decimalSign)
        : missing_(options.missing, decimalSign), decimalSign_(decimalSign) {
        if (options.timeFormat.find('%') != std::string::npos)
            if (auto pattern = TimePattern::Compile(options.timeFormat)) pattern_ = std::move(*pattern);
    }

    // `grouping` is the sign between thousands of a Grouped cell.
    CellKind KindOf(std::string_view cell, char& grouping) const {
        double number = 0;
        ReadTime time;
        if (missing_.IsMissing(cell)) return CellKind::Empty;
        if (pattern_ && pattern_->Read(cell, time)) return CellKind::Time;
        if (ReadNumber(cell, decimalSign_, number))
            return missing_.IsMissing(number) ? CellKind::Empty : CellKind::Number;
        for (const char sign : kGroupings) {
            grouping = sign;
            if (sign != decimalSign_ && ReadGrouped(cell, decimalSign_, sign, number))
                return CellKind::Grouped;
        }
        for (const TimeForm form :
             {TimeForm::Iso, TimeForm::DayFirst, TimeForm::MonthFirst, TimeForm::Compact})
            if (ReadTimeOf(form, cell, time)) return CellKind::Time;
        return ReadClockAlone(cell, time) ? CellKind::Clock : CellKind::Text;
    }

  private:
    MissingValues missing_;
    char decimalSign_;
    std::optional<TimePattern> pattern_;
};

struct Kinds {
    std::vector<CellKind> cells;
    std::vector<char> groupings;
    int values = 0;
};

// The number of fields that holds the most values.
std::size_t UsualFieldCount(const Sample& sample, const std::vector<Kinds>& kinds) {
    std::map<std::size_t, int> weights;
    for (std::size_t r = 0; r < sample.size(); ++r)
        if (sample[r].cells.size() > 1) weights[sample[r].cells.size()] += kinds[r].values;
    const auto most = std::max_element(weights.begin(), weights.end(),
                                       [](const auto& a, const auto& b) { return a.second < b.second; });
    return most == weights.end() || most->second == 0 ? 0 : most->first;
}

bool HasDigits(std::string_view cell) {
    return std::count_if(cell.begin(), cell.end(), [](char c) { return c >= '0' && c <= '9'; }) >= 2;
}

void Count(std::vector<Tally>& tallies, const SampleRecord& row, const Kinds& kinds) {
    for (std::size_t i = 0; i < row.cells.size() && i < tallies.size(); ++i) {
        tallies[i].Add(kinds.cells[i]);
        tallies[i].digits += kinds.cells[i] == CellKind::Text && HasDigits(row.cells[i]);
        if (kinds.cells[i] != CellKind::Grouped) continue;
        if (tallies[i].grouping == 0) tallies[i].groupedCell = row.cells[i];
        tallies[i].grouping = kinds.groupings[i];
    }
}

// Whether a row has values where the rows below have them: headings, units and what precedes them do not.
bool LooksLikeData(const Kinds& kinds, const std::vector<Tally>& tallies) {
    int values = 0;
    int texts = 0;
    bool first = true;
    for (std::size_t i = 0; i < kinds.cells.size() && i < tallies.size(); ++i) {
        if (!tallies[i].HasValues()) continue;
        if (first && kinds.cells[i] == CellKind::Text) return false;
        first = false;
        values += IsValue(kinds.cells[i]);
        texts += kinds.cells[i] == CellKind::Text;
    }
    return values > 0 && values >= texts;
}

std::size_t FirstData(const Trial& trial, const std::vector<Kinds>& kinds, const ReadOptions& options) {
    const Sample& sample = trial.sample;
    // The headings of a short table would outvote its values: the lower half of the rows says what they are.
    std::vector<std::size_t> rows;
    for (std::size_t r = 0; r < sample.size(); ++r)
        if (sample[r].cells.size() == trial.fields) rows.push_back(r);
    std::vector<Tally> below(trial.fields);
    for (std::size_t i = rows.size() / 2; i < rows.size(); ++i) Count(below, sample[rows[i]], kinds[rows[i]]);
    const std::int64_t after = options.headerLine.value_or(0);
    for (const std::size_t r : rows)
        if (sample[r].record.line > after && LooksLikeData(kinds[r], below)) return r;
    return sample.size();
}

double Score(const Trial& trial) {
    if (trial.data >= trial.sample.size()) return 0;
    double rows = 0;
    double regular = 0;
    double all = 0;
    for (std::size_t r = 0; r < trial.sample.size(); ++r) {
        const bool row = trial.sample[r].record.kind != Record::Comment;
        all += row;
        if (r < trial.data) continue;
        rows += row;
        regular += trial.sample[r].cells.size() == trial.fields;
    }
    double readable = 0;
    double cells = 0;
    int columnsWithValues = 0;
    for (const auto& tally : trial.tallies) {
        readable += tally.Values();
        cells += tally.Values() + tally.texts;
        columnsWithValues += tally.HasValues();
    }
    // A column of times whose form is not known is named as such further on.
    const bool times = std::any_of(trial.tallies.begin(), trial.tallies.end(), [](const auto& tally) {
        return !tally.HasValues() && tally.digits > 0 && tally.digits >= tally.texts / 2;
    });
    if (columnsWithValues + times < 2 || columnsWithValues == 0) return 0;
    // Blanks stand inside of cells, too: they delimit where nothing else does.
    const double likely = trial.delimiter == kBlanks ? 0.7 : 1;
    return likely * regular / rows * (0.1 + readable / cells) * (0.5 + 0.5 * rows / all);
}

Trial Judged(char delimiter, char decimalSign, Sample sample, const ReadOptions& options) {
    Trial trial{delimiter, decimalSign, std::move(sample), 0, 0, {}, 0};
    const CellReader reader(options, decimalSign);
    std::vector<Kinds> kinds(trial.sample.size());
    for (std::size_t r = 0; r < trial.sample.size(); ++r)
        for (const auto& cell : trial.sample[r].cells) {
            char grouping = 0;
            kinds[r].cells.push_back(reader.KindOf(cell, grouping));
            kinds[r].groupings.push_back(grouping);
            kinds[r].values += IsValue(kinds[r].cells.back());
        }
    trial.fields = UsualFieldCount(trial.sample, kinds);
    trial.data = trial.fields < 2 ? trial.sample.size() : FirstData(trial, kinds, options);
    trial.tallies.resize(trial.fields);
    for (std::size_t r = trial.data; r < trial.sample.size(); ++r)
        Count(trial.tallies, trial.sample[r], kinds[r]);
    trial.score = Score(trial);
    return trial;
}

}  // namespace

void Tally::Add(CellKind kind) {
    numbers += kind == CellKind::Number || kind == CellKind::Grouped;
    grouped += kind == CellKind::Grouped;
    times += kind == CellKind::Time;
    clocks += kind == CellKind::Clock;
    texts += kind == CellKind::Text;
}

std::string_view Trial::Cell(std::size_t index, std::size_t field) const {
    const auto& cells = sample[index].cells;
    return field < cells.size() ? std::string_view(cells[field]) : std::string_view();
}

Sample TakeSample(std::string_view text, Start start, char delimiter, std::size_t records) {
    Sample sample;
    Records reader(text, delimiter, start.begin, start.line);
    SampleRecord row;
    while (sample.size() < records &&
           reader.Next(row.record, [&](int, std::string_view cell) { row.cells.emplace_back(cell); })) {
        if (row.record.kind != Record::Row) row.cells.clear();
        sample.push_back(std::move(row));
        row.cells.clear();
    }
    return sample;
}

Trial BestTrial(std::string_view text, Start start, const ReadOptions& options, Trial& rival) {
    Trial best;
    for (const char delimiter : kDelimiters) {
        if (options.delimiter && *options.delimiter != delimiter) continue;
        const Sample sample = TakeSample(text, start, delimiter, kTrialRows);
        // A decimal comma may stand between commas, in quotes.
        for (const char sign : {'.', ','}) {
            if (options.decimalSign && *options.decimalSign != sign) continue;
            Trial trial = Judged(delimiter, sign, sample, options);
            if (trial.score > best.score || best.sample.empty()) {
                best = std::move(trial);
                rival = {};
            } else if (trial.score > 0 && trial.score == best.score && trial.delimiter == best.delimiter) {
                rival = std::move(trial);
            }
        }
    }
    if (best.score > 0 && best.sample.size() >= kTrialRows)
        best = Judged(best.delimiter, best.decimalSign,
                      TakeSample(text, start, best.delimiter, kTrialRows + kSampleRows), options);
    return best;
}

}  // namespace app
