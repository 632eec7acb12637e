#include "app/table/ColumnChoice.h"

#include <algorithm>

namespace app {

namespace {

bool HasValues(const Column& column) {
    return column.kind == ColumnKind::Number || column.kind == ColumnKind::Time;
}

Column AsTimeForm(Column column, const std::string& timeFormat) {
    if (timeFormat == "epoch") column.timeForm = TimeForm::EpochSeconds;
    if (timeFormat == "epoch-ms") column.timeForm = TimeForm::EpochMilliseconds;
    if (timeFormat == "epoch" || timeFormat == "epoch-ms") column.kind = ColumnKind::Time;
    return column;
}

std::string Named(const Column& column) { return "column \"" + column.name + "\""; }

// With several columns to choose from, the user says which are meant to be edited.
Failure AskWhichColumns(const Choice& choice) {
    std::string names;
    for (const auto& column : choice.columns) names += (names.empty() ? "\"" : ", \"") + column.name + "\"";
    return UsageError("which columns are to be cleaned? Name them with -y: " + names);
}

}  // namespace

Result<Choice> ChooseColumns(const Layout& layout, const ReadOptions& options) {
    const std::string& x = options.x;
    const auto& y = options.y;
    Choice choice;
    const auto& columns = layout.columns;
    if (!x.empty()) {
        const auto found = FindColumn(layout, x);
        if (!found) return found.Error();
        choice.x = columns[static_cast<std::size_t>(*found)];
    } else {
        auto first = std::find_if(columns.begin(), columns.end(),
                                  [](const auto& column) { return column.kind == ColumnKind::Time; });
        if (first == columns.end()) first = std::find_if(columns.begin(), columns.end(), HasValues);
        choice.x = *first;
    }
    choice.x = AsTimeForm(choice.x, options.timeFormat);
    if (!HasValues(choice.x))
        return Refusal(Named(choice.x) + " holds neither times nor numbers; name another with -x");
    for (const auto& name : y) {
        const auto found = FindColumn(layout, name);
        if (!found) return found.Error();
        const Column& column = columns[static_cast<std::size_t>(*found)];
        if (column.field == choice.x.field) return UsageError(Named(column) + " cannot be both x and y");
        if (column.kind != ColumnKind::Number) return Refusal(Named(column) + " holds no numbers");
        const auto same = [&](const Column& other) { return other.field == column.field; };
        if (std::none_of(choice.columns.begin(), choice.columns.end(), same))
            choice.columns.push_back(column);
    }
    if (y.empty())
        for (const auto& column : columns)
            if (column.kind == ColumnKind::Number && column.field != choice.x.field)
                choice.columns.push_back(column);
    if (choice.columns.empty())
        return Refusal("beside " + Named(choice.x) + " there is no column of numbers");
    if (options.chooseY && y.empty() && choice.columns.size() > 1) return AskWhichColumns(choice);
    return choice;
}

}  // namespace app
