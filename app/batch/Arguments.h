// What the program's commands take: the tables of their options, and the values that were given.
#pragma once

#include <string>
#include <vector>

#include "app/batch/Clean.h"
#include "app/batch/Command.h"
#include "app/batch/Fleet.h"
#include "app/batch/InfoCommand.h"
#include "app/batch/LiveCommand.h"
#include "app/workbench/Plot.h"

namespace app {

struct Arguments {
    std::vector<std::string> files;  // to open in the workbench
    InfoOptions info;
    CleanOptions clean;
    FleetOptions fleet;  // what clean takes for many files
    PlotOptions plot;
    LiveOptions live;
    std::string printed;  // which text of itself the program prints
};

// The program itself and its commands, bound to `arguments`, which must outlive them.
std::vector<Command> MakeCommands(Arguments& arguments);

}  // namespace app
