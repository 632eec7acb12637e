// What tells whether a file on disk is still the one that was read, without reading it again.
#pragma once

#include <cstdint>
#include <string>

namespace app {

struct FileStamp {
    std::int64_t size = -1;  // -1: there is no such file
    std::int64_t changed = 0;
    std::uint64_t number = 0;

    // A file that cannot be looked at has the stamp of no file.
    static FileStamp Of(const std::string& path);
    bool Exists() const { return size >= 0; }
    friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

}  // namespace app
