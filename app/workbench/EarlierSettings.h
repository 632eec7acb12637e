// Settings that an earlier version of the program kept under another name.
#pragma once

#include "tavin/tavin.h"

namespace app {

// Copies the section `from` of the profile with all below it to `to`, unless that is there already.
void TakeOverSettings(const CString& from, const CString& to);

}  // namespace app
