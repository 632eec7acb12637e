#include "app/workbench/SampleFile.h"

#include <filesystem>

namespace app {

std::string SampleFile() {
    namespace fs = std::filesystem;
    std::error_code unknown;
    const fs::path folder = fs::read_symlink("/proc/self/exe", unknown).parent_path();
    if (unknown) return {};
    for (const char* place : {"../share/tavin/samples", "../../../samples"}) {
        const fs::path path = (folder / place / "tide-gauge.csv").lexically_normal();
        if (fs::is_regular_file(path, unknown)) return path.string();
    }
    return {};
}

}  // namespace app
