// A file that appears whole or not at all: written beside its target under another name and renamed over it.
// Ends by signal (Ctrl-C, a closed pipe) remove what was begun.
#pragma once

#include <string>
#include <string_view>

#include "app/table/Result.h"

namespace app {

class OutputFile {
  public:
    OutputFile() = default;
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // "-" is standard output. A target that is no regular file (a device, a pipe) is written directly.
    // False: Error() says why; so for all operations.
    bool Open(const std::string& path);
    // Buffered; after a failure all further writes fail.
    bool Write(std::string_view bytes) {
        if (bytes.size() > kCapacity - buffer_.size()) return WriteThrough(bytes);
        buffer_.append(bytes);
        return true;
    }
    // Writes what is buffered.
    bool Flush();
    // Writes the rest and puts the file in its place.
    bool Commit();
    Failure Error() const { return Refusal(error_); }

  private:
    static constexpr std::size_t kCapacity = std::size_t{1} << 18;

    bool WriteThrough(std::string_view bytes);
    bool WriteOut(std::string_view bytes);
    bool Fail(const char* what, int error);
    void Discard();

    std::string path_;
    std::string temporary_;  // empty while there is none
    std::string buffer_;
    std::string error_;
    int file_ = -1;
    int slot_ = -1;
    bool ownsFile_ = false;
};

// Lets signals that end the program remove unfinished files first. Called once at the start.
void RemoveUnfinishedFilesOnSignals();

}  // namespace app
