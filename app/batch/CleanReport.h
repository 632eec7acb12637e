// What `tavin clean` did, for people and as JSON.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "app/batch/Clean.h"
#include "app/batch/Published.h"
#include "app/batch/StepRunner.h"
#include "app/table/Series.h"
#include "app/table/TableWriter.h"

namespace app {

struct CleanRun {
    const CleanOptions& options;
    const Table& table;
    const XAxis& axis;
    const std::vector<Series>& series;
    std::vector<std::vector<StepResult>> results;  // per series, per step
    WriteCounts counts;
    Update update;
    std::vector<Step> steps;  // that were done, in their order
    std::string lost = {};    // what of the file before could not be kept, as a sentence
};

std::string CleanText(const CleanRun& run);
nlohmann::ordered_json CleanJson(const CleanRun& run);
// What a run over many files tells of each.
nlohmann::ordered_json SummaryJson(const CleanRun& run);

}  // namespace app
