// The page that the program prints on: what the user chose last, at first A4 across, as most curves are wider
// than high.
#pragma once

namespace app {

// From the profile to the print dialogs, and back.
void LoadPrintedPage();
void KeepPrintedPage();

}  // namespace app
