// A form of times that the user wrote with % fields, "%d.%m.%Y %H:%M".
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/table/Result.h"
#include "app/table/TimeWalker.h"

namespace app {

struct ReadTime {
    Microseconds at = 0;
    bool hasZone = false;
    bool cut = false;  // digits beyond the microsecond were not zero
};

class TimePattern {
  public:
    // A usage error for a field that is not known and for a form that names no day.
    static Result<TimePattern> Compile(const std::string& format);
    // The fields that Compile() knows, for messages and help.
    static const char* FieldsText();

    bool Read(std::string_view text, ReadTime& time) const;

  private:
    struct Piece {
        char field;  // 0: `literal` stands for itself, a blank for any number of them
        char literal;
    };
    struct Parts;
    static bool ReadPiece(Piece piece, TimeWalker& walker, Parts& parts);

    std::vector<Piece> pieces_;
};

}  // namespace app
