// Takes the cells of one row after the other and appends whole rows to what has been read.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/table/PlainCell.h"
#include "app/table/Records.h"
#include "app/table/Table.h"
#include "app/table/TableReader.h"

namespace app {

class RowReader {
  public:
    RowReader(const Layout& layout, const Choice& choice, const ReadOptions& options);

    // Where rows go from now on; its columns are those of the choice.
    void AppendTo(Rows& rows) { rows_ = &rows; }
    // Empty rows of the columns of the choice.
    Rows NoRows() const;

    void BeginRow();
    void Field(int index, std::string_view text);
    // Appends the row; false, and a fault is noted, when it has no place in the series.
    bool EndRow(const Record& record);

    // Reads the row at `at` when it is plain: its cells numbers of the usual form, times and text without
    // quotes. Returns its end, or null, with nothing appended, where BeginRow(), Field() and EndRow() are to
    // judge. `last` lies kPlainReach bytes before the end of the text.
    const char* TakePlainRow(const char* at, const char* last, char lineBreak);

  private:
    static constexpr int kNobody = -1;
    static constexpr int kX = -2;
    static constexpr int kFirstPart = -3;       // of the columns that x is composed of; the next is one less
    static constexpr int kFirstStatus = -1000;  // of the status columns; the next is one less
    enum XState { Missing, Unreadable, Read };
    struct Cell {
        enum Kind { Decimal, Value } kind = Value;
        PlainDecimal decimal;
        double value = 0;
        int decimals = 0;
    };

    void TakeX(std::string_view text);
    void TakeParts();
    bool ReadValue(std::string_view text, const Column& column, double& value) const;
    void TakeStatus(std::size_t slot, std::string_view text);
    void TakeY(std::size_t slot, std::string_view text);
    void AppendCell(const Cell& cell, Values& values, int& decimals);
    void Append(bool isShort);
    bool Skip(std::int64_t line, std::string reason);
    void Note(std::int64_t line, std::string reason);

    const char* TakePlainCell(const char* at, const char* last, int slot);
    const char* TakePlainNumber(const char* at, Cell& cell);
    const char* CellEnd(const char* at, const char* last) const;
    bool EndsCell(char c) const { return c == delimiter_ || c == '\r' || c == '\n' || c == ' ' || c == '\t'; }

    const Layout& layout_;
    const Choice& choice_;
    Rows* rows_ = nullptr;
    MissingValues missing_;
    bool namesMissing_;
    TimeReader time_;
    char sign_;
    int plainSign_;
    char delimiter_;
    std::vector<int> slots_;  // per field: kNobody, kX or the index of a value column
    bool hasX_;
    bool isTime_ = false;

    // the row being read
    Cell x_;
    std::vector<Cell> pending_;
    std::vector<unsigned short> status_;  // of the value columns
    std::string statusText_;              // the cell read last, and its word
    bool statusIsName_ = true;
    unsigned short statusWord_ = 0;
    std::size_t found_ = 0;
    XState xState_ = Missing;
    ReadTime xTime_;
    std::vector<std::string> xCells_;  // where x is composed of several columns
    std::string xText_;
    int badCells_ = 0;
    std::string badCell_;
};

}  // namespace app
