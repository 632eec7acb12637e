// What earlier runs made in a folder, so that a run leaves out what would come out the same and goes on where
// an interrupted one ended. One line of JSON is added to the file .tavin-clean in the folder as each output
// is done; the last line about an output holds, and a line that a crash cut off counts for nothing.
#pragma once

#include <map>
#include <nlohmann/json.hpp>
#include <string>

#include "app/table/Result.h"

namespace app {

// What tells one state of a file from another; what is no file, or is not there, has size -1.
struct FileState {
    std::int64_t size = -1;
    std::int64_t time = 0;  // of the last change, nanoseconds
    bool operator==(const FileState&) const = default;
};
FileState StateOf(const std::string& path);
// SHA-256 of the bytes of a file; "" when they cannot be read.
std::string DigestOf(const std::string& path);

class RunLog {
  public:
    RunLog() = default;
    RunLog(RunLog&& other) noexcept;
    RunLog& operator=(RunLog&&) = delete;
    ~RunLog();

    // Only one run at a time may write into a folder: another one is refused. A folder that is not there is
    // an empty log when it is only looked at, and is made otherwise.
    static Result<RunLog> Open(const std::string& folder, bool toWrite);

    // The summary of the last run for `output`, if it stands as that run left it and came from this input
    // with these options; null otherwise.
    nlohmann::ordered_json Unchanged(const std::string& output, const std::string& input,
                                     const std::string& options) const;
    // False: it could not be written, which costs the next run time and nothing else.
    bool Add(const std::string& output, const nlohmann::ordered_json& entry);

    static nlohmann::ordered_json Entry(const std::string& output, const FileState& input,
                                        const std::string& inputDigest, const std::string& options,
                                        const nlohmann::ordered_json& summary);

  private:
    void Read();
    void DropOldLines();

    std::string path_;
    int folder_ = -1;  // held locked
    int file_ = -1;
    std::size_t lines_ = 0;
    std::map<std::string, nlohmann::ordered_json> entries_;  // by the name of the output
};

}  // namespace app
