#include "app/table/OpenTable.h"

#include "app/table/InputFile.h"

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

}  // namespace

Result<InputText> LoadText(const std::string& path, std::size_t most) {
    auto bytes = ReadInput(path);
    if (!bytes) return bytes.Error();
    return InputText{ShownName(path), WholeLines(std::move(*bytes), most)};
}

Result<ReadingPlan> PlanReading(const InputText& text, const ReadOptions& options) {
    const auto layout = GuessLayout(text.bytes, text.name, options);
    if (!layout) return layout.Error();
    const auto choice = ChooseColumns(*layout, options);
    if (!choice) return choice.Error().About(text.name);
    return ReadingPlan{*layout, *choice};
}

Result<Table> OpenTable(const ReadOptions& options, const Advance& advance) {
    auto text = LoadText(options.path);
    if (!text) return text.Error();
    const auto plan = PlanReading(*text, options);
    if (!plan) return plan.Error();
    return ReadTable(std::move(text->bytes), text->name, plan->layout, plan->choice, options, advance);
}

}  // namespace app
