// A command of the program as a table: its options, what they are called, what they mean, what completes them
// and where their values go. The parser, --help, the manual page and the completions of the shells are made
// from it, so that an option is one row.
#pragma once

#include <functional>
#include <iterator>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "app/table/Result.h"

namespace app {

// What a shell offers for a value.
enum class Completes { Nothing, Files, Folders };

enum Trait : unsigned {
    kRequired = 1,
    kRepeatable = 2,  // where the target does not say so
    kAside = 4,       // it says where and how work is done, and does not shape what comes out
};

struct OptionText {
    const char* names;  // "-o,--output"; without dashes it is an operand: "FILE"
    const char* value;  // what help calls the value; null for a flag
    const char* help;
    Completes completes = Completes::Nothing;
    const char* words = "";  // the only values, with blanks between; "" allows any
    unsigned traits = 0;
};

// Takes one value; a flag is given "".
using TakeValue = std::function<std::optional<Failure>(const std::string&)>;

// Where a row puts its value: a flag, a whole number, a text, one of several texts, or through a function
// that checks it.
template <class Options>
using Target =
    std::variant<bool Options::*, int Options::*, std::string Options::*, std::vector<std::string> Options::*,
                 std::optional<Failure> (*)(Options&, const std::string&)>;

template <class Options>
struct OptionRow {
    OptionText text;
    Target<Options> target;
};

struct BoundOption {
    OptionText text;
    TakeValue take;
    bool repeatable = false;
    const char* group = "Options";
    std::string LongestName() const;  // "--output"
    std::vector<std::string> Names() const;
    bool IsOperand() const { return text.names[0] != '-'; }
};

struct Command {
    const char* name;     // "" for the program itself
    const char* summary;  // one line
    const char* details;  // below the options
    std::vector<BoundOption> options;

    // `values` must outlive the command.
    template <class Options, std::size_t n>
    void Add(const OptionRow<Options> (&rows)[n], Options& values) {
        for (const auto& row : rows) options.push_back(Bind(row, values));
    }
};

// "expected" with the words, and the nearest one where there is a near one.
Failure UnknownWord(const std::string& option, const std::string& value, const std::string& words);
Result<int> ReadWholeNumber(const OptionText& option, const std::string& value);

template <class Options>
BoundOption Bind(const OptionRow<Options>& row, Options& values) {
    using Texts = std::vector<std::string> Options::*;
    const bool repeatable = std::holds_alternative<Texts>(row.target) || (row.text.traits & kRepeatable);
    BoundOption bound{row.text, {}, repeatable};
    bound.take = [&row, &values](const std::string& value) -> std::optional<Failure> {
        if (const auto* const flag = std::get_if<bool Options::*>(&row.target)) values.** flag = true;
        if (const auto* const text = std::get_if<std::string Options::*>(&row.target)) values.** text = value;
        if (const auto* const texts = std::get_if<Texts>(&row.target)) (values.**texts).push_back(value);
        if (const auto* const number = std::get_if<int Options::*>(&row.target)) {
            const auto read = ReadWholeNumber(row.text, value);
            if (!read) return read.Error();
            values.** number = *read;
        }
        if (const auto* const read = std::get_if<4>(&row.target)) return (*read)(values, value);
        return std::nullopt;
    };
    return bound;
}

}  // namespace app
