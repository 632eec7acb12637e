// One step of `tavin clean` as it was written on the command line.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/table/Result.h"
#include "app/table/TimeText.h"

namespace app {

enum class StepKind {
    Select,
    Median,
    Spikes,
    Delete,
    Reject,
    DeleteSpikes,
    RejectSpikes,
    Interpolate,
    Translate,
    Level,
    Scale,
    Smooth
};

enum class SelectionKind { All, None, Invert, Spikes, XRange, YRange };

// One end of a range on the x or y axis.
struct Bound {
    std::optional<double> number;
    std::optional<Microseconds> time;
    bool IsOpen() const { return !number && !time; }
};

// A length on the x axis in real units; with a unit of time it needs an axis of times.
struct WaveLength {
    double value = 0;
    bool hasUnit = false;
};

struct Step {
    StepKind kind = StepKind::Select;
    std::string text;  // as on the command line: "--median 11,1.5"

    SelectionKind selection = SelectionKind::All;
    Bound from;
    Bound to;
    double length = 0;  // of the median filter, in samples
    WaveLength waveLength;
    double distance = 0;  // of the median filter and the spike window, in real y units
    double amount = 0;    // to translate by, or the level, in real y units
    int method = 0;       // of scaling
    double factor = 1;
    double origin = 0;  // in real y units
};

// The options that are steps, as the command line shows them.
struct StepText {
    StepKind kind;
    const char* option;
    const char* value;  // what help calls the value; null where the step takes none
    const char* help;
};
std::vector<StepText> StepTexts();
// Reads the option's value; the usage error says what is expected.
Result<Step> ReadStep(StepKind kind, const std::string& value);

}  // namespace app
