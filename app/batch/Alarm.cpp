#include "app/batch/Alarm.h"

#include <limits>

#include "app/batch/Command.h"
#include "app/table/CellNumber.h"

namespace app {

using Json = nlohmann::ordered_json;

namespace {

struct Quantity {
    const char* name;
    const char* whole;  // of which it is a share; null: it is a count
};
constexpr Quantity kQuantities[] = {{"rows", nullptr},
                                    {"differing", nullptr},
                                    {"missing", "rows"},
                                    {"flagged", "points"},
                                    {"changed", "points"}};

const Quantity* FindQuantity(const std::string& name) {
    for (const auto& quantity : kQuantities)
        if (name == quantity.name) return &quantity;
    return nullptr;
}

bool ReadBound(std::string text, bool isShare, double& bound) {
    if (text.empty()) return true;
    const bool percent = isShare && text.back() == '%';
    if (percent) text.pop_back();
    if (!ReadNumber(text, '.', bound) || bound < 0) return false;
    if (percent) bound /= 100;
    return true;
}

std::string Shown(double value, bool isShare) {
    return isShare ? NumberText(100 * value, 2) + " %" : NumberText(value, 0);
}

std::string Sentence(const Alarm& alarm, double value, const std::string& where) {
    const bool low = value < alarm.least;
    return alarm.quantity + where + ": " + Shown(value, alarm.isShare) + (low ? ", below " : ", above ") +
           Shown(low ? alarm.least : alarm.most, alarm.isShare);
}

}  // namespace

Result<Alarm> ReadAlarm(const std::string& text) {
    const auto equals = text.find('=');
    const auto colon = text.find(':', equals == std::string::npos ? 0 : equals);
    Alarm alarm{text, text.substr(0, equals), false, 0, std::numeric_limits<double>::infinity()};
    const Quantity* const quantity = FindQuantity(alarm.quantity);
    if (!quantity) return UnknownWord("--alarm", alarm.quantity, "rows differing missing flagged changed");
    alarm.isShare = quantity->whole != nullptr;
    const bool read = equals != std::string::npos && colon != std::string::npos &&
                      ReadBound(text.substr(equals + 1, colon - equals - 1), alarm.isShare, alarm.least) &&
                      ReadBound(text.substr(colon + 1), alarm.isShare, alarm.most) &&
                      alarm.least <= alarm.most;
    if (read) return alarm;
    return UsageError("--alarm " + text + ": expected " + alarm.quantity +
                      (alarm.isShare ? "=MIN:MAX with shares, as in " + alarm.quantity + "=:5%"
                                     : "=MIN:MAX with counts, as in " + alarm.quantity + "=100:"));
}

std::vector<std::string> Alarms(const std::vector<Alarm>& alarms, const Json& summary) {
    std::vector<std::string> sentences;
    const auto hold = [&](const Alarm& alarm, double value, const std::string& where) {
        if (value < alarm.least || value > alarm.most) sentences.push_back(Sentence(alarm, value, where));
    };
    for (const auto& alarm : alarms) {
        const Quantity& quantity = *FindQuantity(alarm.quantity);
        if (!quantity.whole) {
            hold(alarm, summary.value(alarm.quantity, 0.0), "");
            continue;
        }
        for (const auto& column : summary.at("columns")) {
            const bool ofRows = std::string(quantity.whole) == "rows";
            const double whole = ofRows ? summary.value("rows", 0.0) : column.value("points", 0.0);
            const double share = whole > 0 ? column.value(alarm.quantity, 0.0) / whole : 0;
            hold(alarm, share, " of \"" + column.value("column", "") + "\"");
        }
    }
    return sentences;
}

}  // namespace app
