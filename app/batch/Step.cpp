#include "app/batch/Step.h"

#include <vector>

#include "app/batch/StepRunner.h"
#include "app/table/CellNumber.h"
#include "app/table/Duration.h"
#include "app/table/TimeText.h"

namespace app {

namespace {

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

std::optional<selections::WrittenTime> TimeFromCell(std::string_view text) {
    ReadTime time;
    if (!ReadIsoTime(text, time)) return std::nullopt;
    return selections::WrittenTime{time.at, !time.hasZone};
}

bool ReadNothing(const std::string&, Step&, std::string&) { return true; }

bool ReadSelection(const std::string& text, Step& step, std::string& why) {
    selections::SelectionFault fault;
    auto selection = selections::Selection::Read(text, fault, TimeFromCell);
    if (selection)
        step.selection = std::move(*selection);
    else
        why = "at character " + std::to_string(fault.position + 1) + ": " + fault.message;
    return selection.has_value();
}

bool ReadMedian(const std::string& text, Step& step, std::string&) {
    const auto parts = SplitAtCommas(text);
    return parts.size() == 2 && ReadNotNegative(parts[0], step.length) &&
           ReadNotNegative(parts[1], step.distance);
}

bool ReadSpikes(const std::string& text, Step& step, std::string&) {
    const auto parts = SplitAtCommas(text);
    return parts.size() == 2 && ReadWaveLength(parts[0], step.waveLength) &&
           ReadNotNegative(parts[1], step.distance);
}

bool ReadAmount(const std::string& text, Step& step, std::string&) { return ReadReal(text, step.amount); }

bool ReadScale(const std::string& text, Step& step, std::string&) {
    struct Method {
        const char* name;
        bool hasOrigin;
        bool fromZeroOrigin;
    };
    constexpr Method kMethods[] = {
        {"offset", true, false}, {"ramp", false, false}, {"drift", false, true}, {"custom", true, false}};
    const auto parts = SplitAtCommas(text);
    if (parts.size() < 2 || parts.size() > 3) return false;
    for (int m = 0; m < 4; ++m) {
        const Method& method = kMethods[m];
        if (parts[0] != method.name && parts[0] != std::to_string(m)) continue;
        step.method = m;
        step.fromZeroOrigin = method.fromZeroOrigin;
        if (parts.size() == 3 && !method.hasOrigin) return false;
        return ReadReal(parts[1], step.factor) && (parts.size() < 3 || ReadReal(parts[2], step.origin));
    }
    return false;
}

bool ReadSmooth(const std::string& text, Step& step, std::string&) {
    return ReadWaveLength(text, step.waveLength);
}

bool ReadFillGaps(const std::string& text, Step& step, std::string&) {
    return ReadWaveLength(text, step.waveLength) && step.waveLength.value > 0;
}

constexpr const char* kSpikeTest = "spike_test_quality_flag";

constexpr StepKind kKinds[] = {
    {"--select", "SELECTION",
     "select the points that the steps behind it act on, by a rule or rules combined", "a selection",
     ReadSelection, &StepRunner::Select, "selected", ""},
    {"--median", "LENGTH,DISTANCE", "mark spikes by a median filter",
     "LENGTH,DISTANCE, for example 11,0.5: samples and y units, neither negative", ReadMedian,
     &StepRunner::DetectByMedian, "marked", kSpikeTest},
    {"--spikes", "WAVELENGTH,WINDOW", "mark spikes by their distance from a smooth curve",
     "WAVELENGTH,WINDOW, for example 6h,0.5: x and y units, neither negative", ReadSpikes,
     &StepRunner::DetectByWaveLength, "marked", kSpikeTest},
    {"--delete", nullptr, "delete the selected points", nullptr, ReadNothing, &StepRunner::Delete, "", ""},
    {"--reject", nullptr, "reject the selected points", nullptr, ReadNothing, &StepRunner::Reject, "", ""},
    {"--delete-spikes", nullptr, "delete the marked spikes", nullptr, ReadNothing, &StepRunner::DeleteSpikes,
     "", ""},
    {"--reject-spikes", nullptr, "reject the marked spikes", nullptr, ReadNothing, &StepRunner::RejectSpikes,
     "", ""},
    {"--interpolate", nullptr, "interpolate the selected points", nullptr, ReadNothing,
     &StepRunner::Interpolate, "", ""},
    {"--fill-gaps", "LENGTH", "fill empty cells by interpolation in gaps up to that length",
     "a LENGTH above 0, for example 3h", ReadFillGaps, &StepRunner::FillGaps, "filled", ""},
    {"--translate", "DY", "add DY to the values", "a number in y units", ReadAmount, &StepRunner::Translate,
     "", ""},
    {"--level", "Y", "set the values to Y", "a number in y units", ReadAmount, &StepRunner::Level, "", ""},
    {"--scale", "METHOD,FACTOR[,ORIGIN]", "scale: offset, ramp, drift or custom",
     "METHOD,FACTOR[,ORIGIN], for example offset,1.02,10; the methods are offset, ramp, drift and custom",
     ReadScale, &StepRunner::Scale, "", ""},
    {"--smooth", "WAVELENGTH", "smooth the values",
     "a WAVELENGTH that is not negative, for example 3600 or 6h", ReadSmooth, &StepRunner::Smooth, "", ""},
};

}  // namespace

std::span<const StepKind> StepKinds() { return kKinds; }

Result<Step> ReadStep(const StepKind& kind, const std::string& value) {
    Step step;
    step.kind = &kind;
    step.text = std::string(kind.option) + (kind.value ? " " + value : "");
    std::string why;
    if (kind.read(value, step, why)) return step;
    return UsageError(step.text + (why.empty() ? ": expected " + std::string(kind.expected) : " " + why));
}

Result<Step> ReadStep(std::string_view option, const std::string& value) {
    for (const auto& kind : kKinds)
        if (option == kind.option) return ReadStep(kind, value);
    return UsageError("there is no step " + std::string(option));
}

}  // namespace app
