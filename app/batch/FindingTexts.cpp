// Findings for people, and the command that they suggest.
#include <cmath>

#include "app/batch/Findings.h"
#include "app/batch/Info.h"
#include "app/table/CellNumber.h"
#include "app/table/Duration.h"
#include "app/table/Gzip.h"

namespace app {

namespace {

using Json = nlohmann::ordered_json;

std::string XOfRow(const Table& table, const XAxis& axis, std::int64_t row) {
    return RealX(table, axis, axis.stored[static_cast<std::size_t>(row)]);
}

double LengthOf(const XAxis& axis, const Findings::Flat& flat) {
    const auto at = [&](std::int64_t row) {
        return std::int64_t{axis.stored[static_cast<std::size_t>(row)]};
    };
    return double(std::abs(at(flat.lastRow) - at(flat.firstRow))) / axis.scale.Scale();
}

std::string LengthText(const Table& table, double length) {
    if (table.HasTimes()) return DurationText(length);
    return ShortNumber(length) + (table.x.unit.empty() ? "" : " " + table.x.unit);
}

// A length as options take it, rounded down to a whole unit.
std::string LengthOption(const Table& table, double length) {
    if (!table.HasTimes()) return ShortNumber(length);
    if (length >= 7200) return ShortNumber(std::floor(length / 3600)) + "h";
    if (length >= 120) return ShortNumber(std::floor(length / 60)) + "min";
    return ShortNumber(length) + "s";
}

// A word for the shell, quoted where it must be.
std::string Word(const std::string& text) {
    const bool plain = text.find_first_not_of(
                           "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789"
                           "_./-+:=,@%") == std::string::npos;
    if (plain && !text.empty()) return text;
    std::string quoted = "'";
    for (const char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

std::string OutputName(const std::string& input, const std::string& ending) {
    const auto slash = input.find_last_of('/');
    std::string name = slash == std::string::npos ? input : input.substr(slash + 1);
    if (IsGzipName(name)) name.resize(name.size() - 3);
    const auto dot = name.find_last_of('.');
    const std::string stem = dot == std::string::npos || dot == 0 ? name : name.substr(0, dot);
    return stem + ending;
}

// The faults of one column as a selection; "" for none.
std::string Rules(const Table& table, const XAxis& axis, const Findings& findings) {
    std::string rules;
    if (findings.spikes > 0) rules = "hampel(3,5) and spike(" + ShortNumber(findings.spikeDistance) + ")";
    if (findings.longestFlat && axis.sorted) {
        const double length = LengthOf(axis, *findings.longestFlat);
        if (length > 0) rules += (rules.empty() ? "flat(" : " or flat(") + LengthOption(table, length) + ")";
    }
    return rules;
}

}  // namespace

std::vector<std::string> FindingTexts(const Table& table, const XAxis& axis, const Findings& findings) {
    std::vector<std::string> texts;
    for (const auto& sentinel : findings.sentinels)
        texts.push_back(ShortNumber(sentinel.value) + " stands far from all other values, " +
                        Counted(sentinel.count, "time") + ": no value? (--missing " +
                        ShortNumber(sentinel.value) + ")");
    if (const auto& flat = findings.longestFlat)
        texts.push_back("longest flat stretch " + LengthText(table, LengthOf(axis, *flat)) + ", " +
                        Counted(flat->values, "value") + " of " + ShortNumber(flat->value) + ", from " +
                        XOfRow(table, axis, flat->firstRow));
    for (const auto& step : findings.steps) {
        char size[32];
        std::snprintf(size, sizeof size, "%+.3g", step.size);
        texts.push_back("step of " + std::string(size) + " about " + XOfRow(table, axis, step.row));
    }
    if (findings.spikes > 0)
        texts.push_back(Counted(findings.spikes, "value") + " farther than " +
                        ShortNumber(findings.spikeDistance) + " from both neighbours, to one side");
    return texts;
}

Json FindingsJson(const Table& table, const XAxis& axis, const Findings& findings) {
    Json json{{"sentinels", Json::array()}, {"longestFlat", nullptr}, {"steps", Json::array()}};
    for (const auto& sentinel : findings.sentinels)
        json["sentinels"].push_back({{"value", sentinel.value}, {"count", sentinel.count}});
    if (const auto& flat = findings.longestFlat)
        json["longestFlat"] = {{"from", XOfRow(table, axis, flat->firstRow)},
                               {"to", XOfRow(table, axis, flat->lastRow)},
                               {"length", LengthOf(axis, *flat)},
                               {"values", flat->values},
                               {"value", flat->value}};
    for (const auto& step : findings.steps)
        json["steps"].push_back({{"at", XOfRow(table, axis, step.row)}, {"size", step.size}});
    json["spikes"] = {{"count", findings.spikes}, {"distance", findings.spikeDistance}};
    return json;
}

std::string SuggestedCommand(const Table& table, const XAxis& axis, const std::vector<Findings>& findings) {
    std::string missing;
    std::string columns;
    std::string rules;
    for (std::size_t i = 0; i < findings.size(); ++i) {
        const std::string ofColumn = Rules(table, axis, findings[i]);
        for (const auto& sentinel : findings[i].sentinels) {
            const std::string option = " --missing " + ShortNumber(sentinel.value);
            if (missing.find(option) == std::string::npos) missing += option;
        }
        if (ofColumn.empty()) continue;
        if (rules.empty()) rules = ofColumn;
        if (rules == ofColumn) columns += " -y " + Word(table.columns[i].column.name);
    }
    const std::string file = " " + Word(table.name == "standard input" ? "-" : table.name);
    if (rules.empty()) return "tavin plot" + file + missing + " -o " + Word(OutputName(table.name, ".png"));
    return "tavin clean" + file + missing + (table.columns.size() > 1 ? columns : "") + " --select " +
           Word(rules) + " --delete -o " + Word(OutputName(table.name, "-clean.csv"));
}

}  // namespace app
