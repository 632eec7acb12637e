// The files opened last, newest first, kept in the settings.
#pragma once

#include <string>
#include <vector>

namespace app {

constexpr std::size_t kMostRecentFiles = 10;

std::vector<std::string> RecentFiles();
void AddRecentFile(const std::string& path);
void ForgetRecentFile(const std::string& path);

}  // namespace app
