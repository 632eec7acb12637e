// The records of a CSV text: which bytes each one covers and, through libcsv, its fields.
//
// The text is handed to the tokeniser a line at a time, so that the bytes of every record are known exactly;
// a record is longer than a line only where a quoted field holds a line break.
#pragma once

#include <csv.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace app {

constexpr char kBlanks = ' ';  // as a delimiter: one or more blanks or tabs

struct Record {
    enum Kind { Comment, Row, Broken };
    Kind kind = Comment;
    std::size_t begin = 0;
    std::size_t end = 0;    // behind the line break
    std::int64_t line = 1;  // of the record's first byte
    int fields = 0;
    const char* fault = "";  // why a Broken record is none
};

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
            (*sink.field)(sink.fields++, text ? std::string_view(static_cast<const char*>(text), length)
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
    bool HasStrayReturns() const;
    bool IsEnded(const Record& record) const { return text_[record.end - 1] == lineBreak_; }
    void Feed(std::size_t begin, std::size_t end);
    void Finish();
    void Forget();

    std::string_view text_;
    std::size_t at_;
    std::int64_t line_;
    char delimiter_;
    char lineBreak_;
    bool strayReturns_;  // carriage returns stand inside lines: they count as blanks
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
