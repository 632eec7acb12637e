// Lists of names, kept as the value names of one key in their order; the values hold nothing. As the store
// ignores case, of names that differ in nothing else the first one stays.
#pragma once

#include <optional>
#include <vector>

#include "platform/core/CString.h"
#include "platform/registry/RegistryTypes.h"

namespace settings {

// None when there is no such key.
std::optional<std::vector<CString>> LoadNames(const CString& path);
// Puts these names in the place of those that are there. The key stays, also without names.
void SaveNames(const CString& path, const std::vector<CString>& names);

// The names of the keys directly below.
std::vector<CString> SubKeyNames(HKEY key);

}  // namespace settings
