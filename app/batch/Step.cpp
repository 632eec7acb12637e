#include "app/batch/Step.h"

#include <cmath>
#include <vector>

#include "app/table/CellNumber.h"

namespace app {

namespace {

struct StepOption {
    StepKind kind;
    const char* option;
    const char* value;  // what help calls the value, null when there is none
    const char* help;
    const char* form;  // what is expected of the value
};

constexpr StepOption kOptions[] = {
    {StepKind::Select, "--select", "SELECTION",
     "select points: all, none, invert, spikes, x=FROM:TO, y=MIN:MAX",
     "all, none, invert, spikes, x=FROM:TO or y=MIN:MAX (an end may be left out)"},
    {StepKind::Median, "--median", "LENGTH,DISTANCE", "mark spikes by a median filter",
     "LENGTH,DISTANCE, for example 11,0.5: samples and y units, neither negative"},
    {StepKind::Spikes, "--spikes", "WAVELENGTH,WINDOW", "mark spikes by their distance from a smooth curve",
     "WAVELENGTH,WINDOW, for example 6h,0.5: x and y units, neither negative"},
    {StepKind::Delete, "--delete", nullptr, "delete the selected points", nullptr},
    {StepKind::Reject, "--reject", nullptr, "reject the selected points", nullptr},
    {StepKind::DeleteSpikes, "--delete-spikes", nullptr, "delete the marked spikes", nullptr},
    {StepKind::RejectSpikes, "--reject-spikes", nullptr, "reject the marked spikes", nullptr},
    {StepKind::Interpolate, "--interpolate", nullptr, "interpolate the selected points", nullptr},
    {StepKind::Translate, "--translate", "DY", "add DY to the values", "a number in y units"},
    {StepKind::Level, "--level", "Y", "set the values to Y", "a number in y units"},
    {StepKind::Scale, "--scale", "METHOD,FACTOR[,ORIGIN]", "scale: offset, ramp, drift or custom",
     "METHOD,FACTOR[,ORIGIN], for example offset,1.02,10; the methods are offset, ramp, drift and custom"},
    {StepKind::Smooth, "--smooth", "WAVELENGTH", "smooth the values",
     "a WAVELENGTH that is not negative, for example 3600 or 6h"},
};

const StepOption& OptionOf(StepKind kind) {
    for (const auto& option : kOptions)
        if (option.kind == kind) return option;
    return kOptions[0];
}

std::vector<std::string> SplitAtCommas(const std::string& text) {
    std::vector<std::string> parts;
    std::size_t from = 0;
    for (std::size_t comma = text.find(','); comma != std::string::npos; comma = text.find(',', from)) {
        parts.push_back(text.substr(from, comma - from));
        from = comma + 1;
    }
    parts.push_back(text.substr(from));
    return parts;
}

bool ReadReal(const std::string& text, double& value) { return ReadNumber(text, '.', value); }

bool ReadNotNegative(const std::string& text, double& value) { return ReadReal(text, value) && value >= 0; }

bool ReadWaveLength(const std::string& text, WaveLength& waveLength) {
    const auto length = ReadDuration(text);
    if (!length || !(*length >= 0)) return false;
    double plain = 0;
    waveLength = {*length, !ReadReal(text, plain)};
    return true;
}

bool ReadBound(std::string_view text, bool times, Bound& bound) {
    bound = {};
    if (text.empty()) return true;
    double number = 0;
    ReadTime time;
    if (ReadNumber(text, '.', number))
        bound.number = number;
    else if (times && ReadIsoTime(text, time))
        bound.time = time.at;
    else
        return false;
    return true;
}

// Times hold colons themselves: the range is split at the first one that leaves a readable bound on both
// sides.
bool ReadRange(std::string_view text, bool times, Step& step) {
    for (auto colon = text.find(':'); colon != std::string_view::npos; colon = text.find(':', colon + 1)) {
        const bool read = ReadBound(text.substr(0, colon), times, step.from) &&
                          ReadBound(text.substr(colon + 1), times, step.to);
        if (read) return !step.from.IsOpen() || !step.to.IsOpen();
    }
    return false;
}

bool ReadSelection(const std::string& text, Step& step) {
    constexpr struct {
        const char* name;
        SelectionKind kind;
    } kWords[] = {{"all", SelectionKind::All},
                  {"none", SelectionKind::None},
                  {"invert", SelectionKind::Invert},
                  {"spikes", SelectionKind::Spikes}};
    for (const auto& word : kWords) {
        step.selection = word.kind;
        if (text == word.name) return true;
    }
    if (text.size() < 2 || text[1] != '=' || (text[0] != 'x' && text[0] != 'y')) return false;
    step.selection = text[0] == 'x' ? SelectionKind::XRange : SelectionKind::YRange;
    return ReadRange(std::string_view(text).substr(2), text[0] == 'x', step);
}

bool ReadScale(const std::string& text, Step& step) {
    constexpr const char* kMethods[] = {"offset", "ramp", "drift", "custom"};
    const auto parts = SplitAtCommas(text);
    if (parts.size() < 2 || parts.size() > 3) return false;
    step.method = -1;
    for (int m = 0; m < 4; ++m)
        if (parts[0] == kMethods[m] || parts[0] == std::to_string(m)) step.method = m;
    const bool hasOrigin = step.method == 0 || step.method == 3;
    if (step.method < 0 || (parts.size() == 3 && !hasOrigin)) return false;
    return ReadReal(parts[1], step.factor) && (parts.size() < 3 || ReadReal(parts[2], step.origin));
}

bool ReadValue(const std::string& text, Step& step) {
    const auto parts = SplitAtCommas(text);
    switch (step.kind) {
        case StepKind::Select:
            return ReadSelection(text, step);
        case StepKind::Median:
            return parts.size() == 2 && ReadNotNegative(parts[0], step.length) &&
                   ReadNotNegative(parts[1], step.distance);
        case StepKind::Spikes:
            return parts.size() == 2 && ReadWaveLength(parts[0], step.waveLength) &&
                   ReadNotNegative(parts[1], step.distance);
        case StepKind::Translate:
        case StepKind::Level:
            return ReadReal(text, step.amount);
        case StepKind::Scale:
            return ReadScale(text, step);
        case StepKind::Smooth:
            return ReadWaveLength(text, step.waveLength);
        default:
            return true;
    }
}

}  // namespace

std::vector<StepText> StepTexts() {
    std::vector<StepText> texts;
    for (const auto& option : kOptions)
        texts.push_back({option.kind, option.option, option.value, option.help});
    return texts;
}

Result<Step> ReadStep(StepKind kind, const std::string& value) {
    Step step;
    step.kind = kind;
    const StepOption& option = OptionOf(kind);
    step.text = std::string(option.option) + (option.value ? " " + value : "");
    if (ReadValue(value, step)) return step;
    return UsageError(step.text + ": expected " + option.form);
}

}  // namespace app
