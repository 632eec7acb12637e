#include "app/workbench/RecentFiles.h"

#include <filesystem>

#include "tavin/tavin.h"

namespace app {

namespace {

constexpr const char* kSection = "Recent File List";

std::string EntryName(std::size_t i) { return "File" + std::to_string(i + 1); }

std::string Absolute(const std::string& path) {
    std::error_code unknown;
    const auto whole = std::filesystem::absolute(path, unknown);
    return unknown ? path : whole.lexically_normal().string();
}

void Write(const std::vector<std::string>& files) {
    const RegistryTransaction together;
    for (std::size_t i = 0; i < kMostRecentFiles; ++i)
        AfxGetApp()->WriteProfileString(kSection, EntryName(i).c_str(),
                                        i < files.size() ? files[i].c_str() : nullptr);
}

}  // namespace

std::vector<std::string> RecentFiles() {
    std::vector<std::string> files;
    if (!AfxGetApp()) return files;
    for (std::size_t i = 0; i < kMostRecentFiles; ++i) {
        const CString path = AfxGetApp()->GetProfileString(kSection, EntryName(i).c_str());
        if (!path.IsEmpty()) files.emplace_back(path.GetString());
    }
    return files;
}

void AddRecentFile(const std::string& path) {
    if (!AfxGetApp()) return;
    auto files = RecentFiles();
    std::erase(files, Absolute(path));
    files.insert(files.begin(), Absolute(path));
    Write(files);
}

void ForgetRecentFile(const std::string& path) {
    auto files = RecentFiles();
    if (std::erase(files, Absolute(path))) Write(files);
}

}  // namespace app
