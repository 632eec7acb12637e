// The texts below the option lists of --help.
#pragma once

namespace app {

extern const char* const kMainHelp;
extern const char* const kInfoHelp;
const char* CleanHelp();  // with the rules of selections
extern const char* const kPlotHelp;
const char* LiveHelp();  // with the forms of addresses
extern const char* const kPrintHelp;

}  // namespace app
