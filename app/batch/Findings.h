// What stands out in a column: values that stand for none, stretches without change, steps, spikes. And the
// command that would clean it.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "app/table/Series.h"
#include "app/table/Table.h"

namespace app {

struct Findings {
    struct Sentinel {
        double value;
        std::int64_t count;
    };
    // Rows are in the order of the file.
    struct Flat {
        std::int64_t firstRow;
        std::int64_t lastRow;
        std::int64_t values;
        double value;
    };
    struct Step {
        std::int64_t row;  // about: of long columns some values are looked at
        double size;       // the mean behind less the mean before
    };

    std::vector<Sentinel> sentinels;  // far from all other values, and of the form that such values have
    std::optional<Flat> longestFlat;  // where it is long enough to stand out
    std::vector<Step> steps;          // the greatest first
    double spikeDistance = 0;         // from both neighbours to one side, far beyond what is usual
    std::int64_t spikes = 0;          // values farther from it than that
};

// Rows are taken as they come.
Findings FindFaults(const ValueColumn& column);

// One text for each finding.
std::vector<std::string> FindingTexts(const Table& table, const XAxis& axis, const Findings& findings);
nlohmann::ordered_json FindingsJson(const Table& table, const XAxis& axis, const Findings& findings);

// A command line that cleans the file's columns of what was found in them; where nothing was found, one that
// draws it.
std::string SuggestedCommand(const Table& table, const XAxis& axis, const std::vector<Findings>& findings);

}  // namespace app
