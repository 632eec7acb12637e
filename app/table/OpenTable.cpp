#include "app/table/OpenTable.h"

#include <algorithm>
#include <cstring>

#include "app/table/FileKind.h"
#include "app/table/Gzip.h"
#include "app/table/InputFile.h"
#include "app/table/ReadingNotes.h"
#include "app/table/Zone.h"

namespace app {

namespace {

// Cuts behind the last line that ends within the first `most` bytes.
Bytes WholeLines(Bytes bytes, std::size_t most) {
    if (bytes.size() <= most) return bytes;
    const auto start = bytes.View().substr(0, most);
    auto last = start.rfind('\n');
    if (last == std::string_view::npos) last = start.rfind('\r');
    return Bytes(std::string(start.substr(0, last == std::string_view::npos ? most : last + 1)));
}

// Reads further than this only for what may be a table.
std::optional<Failure> CheckKind(std::string_view bytes, const std::string& name) {
    const FileKind kind = KindOfFile(bytes);
    if (!kind.name) return std::nullopt;
    return Refusal(name + ": this is " + kind.name + ", no text table", kind.advice ? kind.advice : "");
}

// Puts what was made of the file's bytes in their place. From then on nobody can tell whether the file has
// changed: it must not have until now.
std::optional<Failure> Replace(InputText& text, std::string made) {
    if (text.bytes.Changed() == Bytes::Change::Rewritten) return ChangedInput(text.name);
    text.bytes = std::move(made);
    return std::nullopt;
}

// A text of 16 or 32 bits a character as UTF-8, its byte-order mark included.
std::optional<Failure> Narrow(InputText& text) {
    TextConverter converter(text.encoding.Name(), "UTF-8");
    std::string converted;
    if (!converter.Append(text.bytes, converted))
        return Refusal(text.name + ":" +
                           std::to_string(1 + std::count(converted.begin(), converted.end(), '\n')) +
                           ": this is no text in " + text.encoding.Name(),
                       "name its encoding with --encoding");
    return Replace(text, std::move(converted));
}

std::optional<Failure> FindEncoding(InputText& text, const std::string& asked) {
    text.encoding = asked.empty() ? WideEncodingOf(text.bytes) : TextEncoding(asked);
    if (text.encoding.IsWide()) {
        text.input = {text.bytes.size(), Sha256(text.bytes)};
        if (auto failure = Narrow(text)) return failure;
    } else if (asked.empty()) {
        text.encoding = GuessEncoding(text.bytes);
    }
    if (!text.encoding.IsUtf8())
        text.notes.push_back(
            {ReadNote::Reading, "the text is in " + text.encoding.Name(), "--encoding NAME"});
    return std::nullopt;
}

std::optional<Failure> CheckText(std::string_view text, const std::string& name) {
    constexpr std::size_t kSample = std::size_t{1} << 20;
    const auto zero = text.substr(0, kSample).find('\0');
    if (zero != std::string_view::npos)
        return NotText(name,
                       1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(zero), '\n'));
    if (text.find_first_not_of(" \t\r\n") == std::string_view::npos)
        return NoData(name + ":1: the file is empty");
    return std::nullopt;
}

// What the user said is checked before the file is looked at.
std::optional<Failure> CheckOptions(const ReadOptions& options) {
    if (auto failure = CheckTimeFormat(options.timeFormat)) return failure;
    if (!options.encoding.empty() && !IsKnownEncoding(options.encoding))
        return UsageError(
            "there is no encoding \"" + options.encoding + "\"",
            "--encoding knows UTF-8, UTF-16LE, ISO-8859-1, windows-1252 and all other names that "
            "ICU has");
    std::vector<Microseconds> none;
    if (options.zone.empty()) return std::nullopt;
    const auto zone = ToUtc(none, options.zone);
    return zone ? std::nullopt : std::optional(zone.Error());
}

}  // namespace

Result<InputText> LoadText(const ReadOptions& options, std::size_t most) {
    if (const auto failure = CheckOptions(options)) return *failure;
    auto bytes = ReadInput(options.path);
    if (!bytes) return bytes.Error();
    InputText text{ShownName(options.path), std::move(*bytes)};
    if (IsGzip(text.bytes)) {
        text.input = {text.bytes.size(), Sha256(text.bytes)};
        auto unpacked = Unpacked(text.bytes, text.name);
        if (!unpacked) return unpacked.Error();
        if (const auto failure = Replace(text, std::move(*unpacked))) return *failure;
        text.notes.push_back({ReadNote::Reading, "the file is compressed with gzip", ""});
    }
    if (const auto failure = CheckKind(text.bytes, text.name)) return *failure;
    if (const auto failure = FindEncoding(text, options.encoding)) return *failure;
    if (const auto failure = CheckText(text.bytes, text.name)) return *failure;
    text.bytes = WholeLines(std::move(text.bytes), most);
    return text;
}

Result<ReadingPlan> PlanReading(const InputText& text, const ReadOptions& options) {
    const auto layout = GuessLayout(text.bytes, text.name, options, text.encoding);
    if (!layout) return layout.Error();
    const auto choice = ChooseColumns(*layout, options);
    if (!choice) return choice.Error().About(text.name);
    return ReadingPlan{*layout, *choice};
}

Result<Table> OpenTable(const ReadOptions& options, const Advance& advance) {
    auto text = LoadText(options);
    if (!text) return text.Error();
    const auto plan = PlanReading(*text, options);
    if (!plan) return plan.Error();
    auto table = ReadTable(std::move(text->bytes), text->name, plan->layout, plan->choice, options, advance);
    if (!table) return table;
    table->encoding = text->encoding;
    table->input = text->input;
    auto notes = std::move(text->notes);
    notes.insert(notes.end(), plan->layout.notes.begin(), plan->layout.notes.end());
    table->notes.insert(table->notes.begin(), notes.begin(), notes.end());
    if (!table->x.parts.empty())
        table->notes.push_back(
            {ReadNote::Reading, "the time is composed of " + table->x.name, "--time-column A+B"});
    if (const auto failure = FinishReading(*table, options)) return *failure;
    return table;
}

}  // namespace app
