// The records of a CSV text: which bytes each one covers and, through libcsv, its fields.
//
// A line without quotes is split here. Any other is handed to the tokeniser, a line at a time, so that the
// bytes of every record are known exactly; a record is longer than a line only where a quoted field holds a
// line break. What a record is depends on nothing before it, so that reading may start at any of them.
#pragma once

#include <csv.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace app {

constexpr char kBlanks = ' ';  // as a delimiter: one or more blanks or tabs

struct Record {
    enum Kind { Comment, Row, Broken, NotText };  // NotText: a byte of value 0
    Kind kind = Comment;
    std::size_t begin = 0;
    std::size_t end = 0;    // behind the line break
    std::int64_t line = 1;  // of the record's first byte
    int fields = 0;
    const char* fault = "";  // why a Broken record is none
};

// A table has no more: a line that does is no record.
constexpr int kMostFields = 20000;

// What ends the lines of a text: carriage returns where its first megabyte has no line feed, else '\n'.
char LineBreakOf(std::string_view text);

class Records {
  public:
    // `text` must outlive this object. `line` is that of its byte `begin`.
    Records(std::string_view text, char delimiter, std::size_t begin = 0, std::int64_t line = 1);
    ~Records();
    Records(const Records&) = delete;
    Records& operator=(const Records&) = delete;

    // Reads the next record and calls field(index, text) for each of its fields, without quotes and without
    // the blanks around them; false at the end of the text. Lines that are blank or start with #, % or // are
    // Comment records without fields. Of a Broken record some fields may have been reported.
    template <class Field>
    bool Next(Record& record, Field&& field) {
        Sink<Field> sink{&field};
        sink_ = {&Sink<Field>::OnField, &Sink<Field>::OnRow, &sink};
        return Advance(record);
    }

    // Where the next record begins; and continues with the one there, whose line is counted as `line`.
    std::size_t At() const { return at_; }
    std::int64_t Line() const { return line_; }
    void Seek(std::size_t at, std::int64_t line) {
        at_ = at;
        line_ = line;
    }
    // The first line that begins at `from` or behind it.
    std::size_t LineBegin(std::size_t from) const { return from == 0 ? 0 : LineEnd(from - 1); }

  private:
    struct Counts {
        int fields = 0;
        int rows = 0;
        bool skipEmpty = false;
    };
    template <class Field>
    struct Sink : Counts {
        explicit Sink(Field* f) : field(f) {}
        static void OnField(void* text, std::size_t length, void* self) {
            auto& sink = *static_cast<Sink*>(static_cast<Counts*>(self));
            if (!text && sink.skipEmpty) return;
            if (sink.fields++ >= kMostFields) return;
            (*sink.field)(sink.fields - 1, text ? std::string_view(static_cast<const char*>(text), length)
                                                : std::string_view());
        }
        static void OnRow(int, void* self) { ++static_cast<Counts*>(self)->rows; }
        Field* field;
    };
    struct AnySink {
        void (*onField)(void*, std::size_t, void*);
        void (*onRow)(int, void*);
        Counts* counts;
    };

    bool Advance(Record& record);
    std::size_t LineEnd(std::size_t from) const;
    bool HasStrayReturns(std::string_view line) const;
    void Report(std::string_view field);
    void Split(std::string_view line);
    void SplitAtBlanks(std::string_view line);
    void Tokenise(Record& record, int& lines);
    bool IsEnded(const Record& record) const { return text_[record.end - 1] == lineBreak_; }
    void Feed(std::size_t begin, std::size_t end);
    void Finish();
    void Forget();

    std::string_view text_;
    std::size_t at_;
    std::int64_t line_;
    char delimiter_;
    char lineBreak_;
    csv_parser parser_;
    AnySink sink_{};
    std::string unblanked_;  // a line whose tabs or stray carriage returns were made blanks
};

// Where the value of field `index` stands in the bytes of a record: without the quotes and blanks around it;
// false when the record has no such field.
struct Span {
    std::size_t begin = 0;
    std::size_t end = 0;
};
bool FindField(std::string_view record, char delimiter, int index, Span& span);

// Length of the record without its line break.
std::size_t LengthWithoutBreak(std::string_view record);

}  // namespace app
