// `tavin info`: reads a table and says what it holds; of several tables it gives one line each.
#pragma once

#include <string>
#include <vector>

#include "app/table/ReadOptions.h"
#include "app/table/Result.h"

namespace app {

struct InfoOptions {
    std::vector<std::string> files;
    ReadOptions read;
    int jobs = 0;  // 0: as many as there are cores
    bool json = false;
};

Result<int> Info(const InfoOptions& options);

}  // namespace app
