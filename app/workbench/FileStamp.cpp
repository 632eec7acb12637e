#include "app/workbench/FileStamp.h"

#include <sys/stat.h>

namespace app {

FileStamp FileStamp::Of(const std::string& path) {
    struct stat facts {};
    if (::stat(path.c_str(), &facts) != 0) return {};
    constexpr std::int64_t kNanoseconds = 1000000000;
    return {facts.st_size, facts.st_mtim.tv_sec * kNanoseconds + facts.st_mtim.tv_nsec, facts.st_ino};
}

}  // namespace app
