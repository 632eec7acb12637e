// Numbers and missing values as they stand in a cell.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace app {

// Reads all of `text` as a finite decimal number with the given decimal sign; a leading plus is allowed.
// False for anything else (also "nan", "inf" and what a double cannot hold).
bool ReadNumber(std::string_view text, char decimalSign, double& value);
// The same for a number whose thousands are set apart by `grouping`: "1,234.5" in point and comma.
bool ReadGrouped(std::string_view text, char decimalSign, char grouping, double& value);
// The digits after the decimal sign that the number `text` is written with: 2 for "1.50", 4 for "1.5e-3",
// never negative.
int DecimalsOf(std::string_view text, char decimalSign);
// `value` in plain notation with `decimals` digits (0 to 20) after the sign; -0 loses its sign.
std::string NumberText(double value, int decimals, char decimalSign = '.');
// The shortest text that reads back as `value`, for reports.
std::string ShortNumber(double value);
// 22,695
std::string Grouped(std::int64_t count);
// `count` with its noun: "1 row", "22,695 rows".
std::string Counted(std::int64_t count, const char* singular, const char* plural = nullptr);

// What stands for no value: the empty cell, NaN, NA, N/A, null, none, - and the names given, in any case; a
// name that is a number also covers its other spellings (-9999 and -9999.0).
class MissingValues {
  public:
    MissingValues(const std::vector<std::string>& names, char decimalSign);
    bool IsMissing(std::string_view text) const;
    // Whether a number that was read is one of the names.
    bool IsMissing(double value) const;

  private:
    std::vector<std::string> names_;
    std::vector<double> numbers_;
};

}  // namespace app
