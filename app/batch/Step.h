// One step of `tavin clean` as it was written on the command line, and the table of the steps there are: a
// new step is one row, with the functions that read its value and carry it out.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "app/table/Result.h"
#include "tavin/tavin.h"

namespace app {

struct StepKind;
struct StepResult;
class StepRunner;

// A length on the x axis in real units; with a unit of time it needs an axis of times.
struct WaveLength {
    double value = 0;
    bool hasUnit = false;
};

struct Step {
    const StepKind* kind = nullptr;
    std::string text;  // as on the command line: "--median 11,1.5"

    selections::Selection selection;
    double length = 0;      // of the median filter, in samples
    WaveLength waveLength;  // or the longest gap that is filled
    double distance = 0;    // of the median filter and the spike window, in real y units
    double amount = 0;      // to translate by, or the level, in real y units
    int method = 0;         // of scaling
    double factor = 1;
    double origin = 0;            // in real y units
    bool fromZeroOrigin = false;  // it multiplies stored values, which then have to count from zero
};

struct StepKind {
    const char* option;  // "--median"
    const char* value;   // what help calls the value; null where the step takes none
    const char* help;
    const char* expected;  // of the value, in messages
    // Reads the value into the step; what is wrong with it beyond "expected" may be said in `why`.
    bool (*read)(const std::string& value, Step& step, std::string& why);
    Result<StepResult> (StepRunner::*run)(const Step& step);
    const char* verb;          // for the points that the step counts: "selected", "marked", "" for changed
    const char* standardName;  // of its flag variable in the CF conventions, where the step tests values
};

std::span<const StepKind> StepKinds();
// Reads the option's value; the usage error says what is expected.
Result<Step> ReadStep(const StepKind& kind, const std::string& value);
// The same for the option of that name.
Result<Step> ReadStep(std::string_view option, const std::string& value = {});

}  // namespace app
