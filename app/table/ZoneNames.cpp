#include "app/table/ZoneNames.h"

#include <strings.h>

#include <algorithm>

namespace app {

namespace {

constexpr int Hours(double hours) { return static_cast<int>(hours * 60); }

constexpr struct {
    std::string_view letters;
    int minutes;
} kZones[] = {{"Z", 0},
              {"UT", 0},
              {"UTC", 0},
              {"GMT", 0},
              {"WET", 0},
              {"WEST", Hours(1)},
              {"CET", Hours(1)},
              {"CEST", Hours(2)},
              {"MEZ", Hours(1)},
              {"MESZ", Hours(2)},
              {"MET", Hours(1)},
              {"MEST", Hours(2)},
              {"EET", Hours(2)},
              {"EEST", Hours(3)},
              {"SAST", Hours(2)},
              {"MSK", Hours(3)},
              {"PKT", Hours(5)},
              {"NPT", Hours(5.75)},
              {"HKT", Hours(8)},
              {"SGT", Hours(8)},
              {"AWST", Hours(8)},
              {"JST", Hours(9)},
              {"KST", Hours(9)},
              {"ACST", Hours(9.5)},
              {"ACDT", Hours(10.5)},
              {"AEST", Hours(10)},
              {"AEDT", Hours(11)},
              {"NZST", Hours(12)},
              {"NZDT", Hours(13)},
              {"NST", Hours(-3.5)},
              {"NDT", Hours(-2.5)},
              {"EST", Hours(-5)},
              {"EDT", Hours(-4)},
              {"MST", Hours(-7)},
              {"MDT", Hours(-6)},
              {"PST", Hours(-8)},
              {"PDT", Hours(-7)},
              {"AKST", Hours(-9)},
              {"AKDT", Hours(-8)},
              {"HST", Hours(-10)}};

constexpr struct {
    std::string_view letters;
    const char* readings;
} kDoubtful[] = {{"CST", "-06:00 in North America, +08:00 in China or -05:00 in Cuba"},
                 {"CDT", "-05:00 in North America or -04:00 in Cuba"},
                 {"AST", "-04:00 at the Atlantic or +03:00 in Arabia"},
                 {"ADT", "-03:00 at the Atlantic or +04:00 in Arabia"},
                 {"BST", "+01:00 in Britain or +06:00 in Bangladesh"},
                 {"IST", "+05:30 in India, +02:00 in Israel or +01:00 in Ireland"},
                 {"GST", "+04:00 at the Gulf or -02:00 in South Georgia"},
                 {"SST", "-11:00 in Samoa or +08:00 in Singapore"},
                 {"AMT", "-04:00 at the Amazon or +04:00 in Armenia"}};

template <class Rows>
auto Find(const Rows& rows, std::string_view letters) {
    return std::find_if(std::begin(rows), std::end(rows), [&](const auto& row) {
        return row.letters.size() == letters.size() &&
               ::strncasecmp(row.letters.data(), letters.data(), letters.size()) == 0;
    });
}

}  // namespace

std::optional<int> ZoneMinutes(std::string_view letters) {
    const auto* const found = Find(kZones, letters);
    return found == std::end(kZones) ? std::nullopt : std::optional(found->minutes);
}

const char* ZoneReadings(std::string_view letters) {
    const auto* const found = Find(kDoubtful, letters);
    return found == std::end(kDoubtful) ? nullptr : found->readings;
}

}  // namespace app
