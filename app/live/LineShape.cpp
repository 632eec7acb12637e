#include "app/live/LineShape.h"

#include <algorithm>
#include <cstdlib>

#include "app/table/Records.h"

namespace app {

namespace {

// The lines as they are, each without its end.
template <class Line>
void EachLine(std::string_view lines, Line&& take) {
    while (!lines.empty()) {
        const auto end = std::min(lines.find('\n'), lines.size() - 1) + 1;
        take(lines.substr(0, LengthWithoutBreak(lines.substr(0, end))));
        lines.remove_prefix(end);
    }
}

std::string_view Trimmed(std::string_view text) {
    const auto begin = text.find_first_not_of(" \t");
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(" \t") + 1 - begin);
}

// Lines that hold a number each, and perhaps a name above them.
std::optional<Layout> OneColumn(std::string_view lines, const ReadOptions& options) {
    for (const char sign : {'.', ','}) {
        if (options.decimalSign && *options.decimalSign != sign) continue;
        Layout layout;
        layout.decimalSign = sign;
        layout.delimiter = options.delimiter.value_or(sign == ',' ? ';' : ',');
        Column column;
        column.name = "value";
        column.kind = ColumnKind::Number;
        const MissingValues missing(options.missing, sign);
        int numbers = 0;
        int others = 0;
        EachLine(lines, [&](std::string_view line) {
            const auto text = Trimmed(line);
            double value = 0;
            if (text.empty() || text.front() == '#') return;
            if (ReadNumber(text, sign, value)) {
                ++numbers;
            } else if (numbers == 0 && others == 0 && text.find(layout.delimiter) == std::string_view::npos) {
                layout.hasHeader = true;
                column.name = text;
                layout.dataBegin = static_cast<std::size_t>(line.data() - lines.data()) + line.size() + 1;
            } else if (!missing.IsMissing(text)) {
                ++others;
            }
        });
        if (numbers == 0 || others > numbers / 10) continue;
        layout.columns = {column};
        return layout;
    }
    return std::nullopt;
}

// Of the two readings of a date the one that is nearer to now: what is live is of today.
void DecideDayOrder(Layout& layout, ReadOptions& options, Microseconds now) {
    const auto open = std::ranges::find_if(layout.columns, &Column::dayOrderOpen);
    if (open == layout.columns.end() || !options.timeFormat.empty()) return;
    ReadTime day;
    ReadTime month;
    if (!ReadTimeOf(TimeForm::DayFirst, open->example, day) ||
        !ReadTimeOf(TimeForm::MonthFirst, open->example, month))
        return;
    options.timeFormat = std::llabs(day.at - now) <= std::llabs(month.at - now) ? "dmy" : "mdy";
}

Result<Choice> ChooseValues(const Layout& layout, const ReadOptions& options) {
    Choice choice;
    choice.x.name = "time";
    choice.x.field = -1;
    const auto isNumber = [](const Column& column) { return column.kind == ColumnKind::Number; };
    for (const auto& name : options.y) {
        const auto found = FindColumn(layout, name);
        if (!found) return found.Error();
        const Column& column = layout.columns[static_cast<std::size_t>(*found)];
        if (!isNumber(column)) return Refusal("column \"" + column.name + "\" holds no numbers");
        choice.columns.push_back(column);
    }
    if (options.y.empty()) std::ranges::copy_if(layout.columns, std::back_inserter(choice.columns), isNumber);
    if (choice.columns.empty()) return Refusal("there is no column of numbers");
    return choice;
}

std::string Quoted(const std::string& cell, char delimiter) {
    if (cell.find(delimiter) == std::string::npos && cell.find('"') == std::string::npos) return cell;
    std::string quoted = "\"";
    for (const char c : cell) quoted.append(c == '"' ? 2 : 1, c);
    return quoted + "\"";
}

}  // namespace

std::string LineShape::Heading() const {
    std::string text;
    if (!IsArrival()) {
        for (const auto& line : top) text += line + "\n";
        return text;
    }
    text = "time";
    for (const auto& column : layout.columns) {
        // A name that is a number would make the line look like data.
        double number = 0;
        const std::string name =
            ReadNumber(column.name, '.', number) ? "channel " + column.name : column.name;
        text += layout.delimiter +
                Quoted(column.unit.empty() ? name : name + " [" + column.unit + "]", layout.delimiter);
    }
    return text + "\n";
}

Result<LineShape> GuessLineShape(std::string_view lines, const std::string& name, const ReadOptions& asked,
                                 Microseconds now) {
    LineShape shape;
    ReadOptions options = asked;
    shape.encoding = options.encoding.empty() ? GuessEncoding(lines) : TextEncoding(options.encoding);
    auto layout = GuessLayout(lines, name, options, shape.encoding);
    // With commas said to be decimal signs, a number is no row of two.
    const bool commas = options.decimalSign == ',' && !options.delimiter;
    auto one = !layout || (commas && layout->delimiter == ',') ? OneColumn(lines, options) : std::nullopt;
    if (layout && !one) {
        DecideDayOrder(*layout, options, now);
        if (options.timeFormat != asked.timeFormat)
            layout = GuessLayout(lines, name, options, shape.encoding);
    }
    if (one) {
        shape.layout = std::move(*one);
        if (shape.layout.hasHeader) shape.top = {shape.layout.columns.front().name};
    } else if (layout) {
        shape.layout = std::move(*layout);
        for (std::size_t i = 0; i < shape.layout.top.size(); ++i) {
            const auto begin = shape.layout.top[i].begin;
            const auto end =
                i + 1 < shape.layout.top.size() ? shape.layout.top[i + 1].begin : shape.layout.dataBegin;
            const auto line = lines.substr(begin, end - begin);
            shape.top.emplace_back(line.substr(0, LengthWithoutBreak(line)));
        }
    } else {
        return layout.Error();
    }
    const auto isTime = [](const Column& column) { return column.kind == ColumnKind::Time; };
    const bool named = !options.x.empty() || (!options.timeFormat.empty() && options.timeFormat != "number");
    const bool arrival =
        !named && !shape.layout.composed && std::ranges::none_of(shape.layout.columns, isTime);
    auto choice = arrival ? ChooseValues(shape.layout, options) : ChooseColumns(shape.layout, options);
    if (!choice) return choice.Error().About(name);
    shape.choice = std::move(*choice);
    return shape;
}

}  // namespace app
