#include "app/table/Duration.h"

#include <cmath>

#include "app/table/CellNumber.h"

namespace app {

namespace {

struct DurationUnit {
    const char* name;
    double seconds;
};
constexpr DurationUnit kUnits[] = {{"d", 86400}, {"h", 3600}, {"min", 60}, {"s", 1}};

}  // namespace

std::string DurationText(double seconds) {
    std::string text = seconds < 0 ? "-" : "";
    double rest = std::fabs(seconds);
    const double fraction = rest - std::floor(rest);
    if (rest < 60 || (fraction != 0 && rest < 3600)) return text + ShortNumber(rest) + " s";
    const char* between = "";
    for (const auto& unit : kUnits) {
        const double whole = unit.seconds == 1 ? rest : std::floor(rest / unit.seconds);
        if (whole <= 0) continue;
        text.append(between).append(ShortNumber(whole)).append(" ").append(unit.name);
        rest -= whole * unit.seconds;
        between = " ";
    }
    return text;
}

std::optional<double> ReadDuration(std::string_view text) {
    double factor = 1;
    for (const auto& unit : kUnits) {
        const std::string_view name = unit.name;
        if (text.size() <= name.size() || text.substr(text.size() - name.size()) != name) continue;
        factor = unit.seconds;
        text.remove_suffix(name.size());
        break;
    }
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    double value = 0;
    if (!ReadNumber(text, '.', value)) return std::nullopt;
    return value * factor;
}

}  // namespace app
