// The flags of QARTOD (Quality Assurance / Quality Control of Real-Time Oceanographic Data) for a point, and
// 8, which Argo and other users of the same numbers have for values that were not measured.
#pragma once

#include <optional>
#include <string_view>

#include "app/table/Layout.h"
#include "tavin/tavin.h"

namespace app {

struct QartodFlag {
    char value;
    const char* meaning;  // as in the CF attribute flag_meanings
};

inline constexpr QartodFlag kQartodFlags[] = {{'1', "pass"}, {'2', "not_evaluated"}, {'3', "suspect"},
                                              {'4', "fail"}, {'8', "estimated"},     {'9', "missing"}};

inline std::string QartodColumnName(const Column& column) { return column.name + "_qartod"; }

constexpr char kQartodMissing = '9';

// `judged`: some test had the point before it. What was interpolated is no longer the suspect value; what was
// smoothed still hangs on it.
constexpr char QartodValue(unsigned short status, bool judged) {
    if (status & (PS_DELETED | PS_REJECTED)) return '4';
    if ((status & PS_SPIKE) && !(status & PS_INTERPOLATED)) return '3';
    if (status & (PS_INTERPOLATED | PS_SMOOTHED)) return '8';
    return judged ? '1' : '2';
}

// Stands among the flags of a status word that was read: some test had the point before it.
constexpr unsigned short kWasJudged = 0x0100;

// The status word that comes nearest to the flag of an earlier cleaning; none for other text. What failed
// takes no part from then on.
constexpr std::optional<unsigned short> StatusFromQartod(std::string_view text) {
    if (text.empty() || text == "-" || text == "2" || text == "9") return static_cast<unsigned short>(0);
    if (text == "1") return kWasJudged;
    if (text == "3") return static_cast<unsigned short>(PS_SPIKE | kWasJudged);
    if (text == "4") return static_cast<unsigned short>(PS_DELETED | PS_EDITED);
    if (text == "8") return static_cast<unsigned short>(PS_INTERPOLATED | PS_EDITED);
    return std::nullopt;
}

}  // namespace app
