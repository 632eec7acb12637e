// A file that appears whole or not at all: written beside its target, without a name where the file system
// has such files, safely on the disk before it is named, and renamed over the target. Ends by signal (Ctrl-C,
// a closed pipe) remove what was begun.
#pragma once

#include <sys/stat.h>

#include <memory>
#include <string>
#include <string_view>

#include "app/table/Gzip.h"
#include "app/table/Result.h"

namespace app {

class OutputFile {
  public:
    OutputFile() = default;
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // "-" is standard output. A target that is no regular file (a device, a pipe) is written directly. What
    // is written to a file whose name ends in .gz is compressed. False: Error() says why; so for all
    // operations.
    bool Open(const std::string& path);
    // Writes to the end of `text`, which must outlive this object.
    void OpenText(std::string& text) { text_ = &text; }
    // Buffered; after a failure all further writes fail.
    bool Write(std::string_view bytes) {
        if (bytes.size() > kCapacity - buffer_.size()) return WriteThrough(bytes);
        buffer_.append(bytes);
        return true;
    }
    // Writes what is buffered.
    bool Flush();
    // Writes the rest and puts the file in its place. A file that was there gives it its owner and its
    // permissions, not its set-user-ID and set-group-ID bits.
    bool Commit();
    // What of that could not be kept, as a sentence; empty: nothing was lost.
    const std::string& Lost() const { return lost_; }
    Failure Error() const { return Refusal(error_); }

  private:
    static constexpr std::size_t kCapacity = std::size_t{1} << 18;

    bool WriteThrough(std::string_view bytes);
    bool WriteOut(std::string_view bytes, bool isLast = false);
    bool WriteRaw(std::string_view bytes);
    bool Fail(const char* what, int error);
    void Discard();
    bool OpenBeside(const std::string& folder);
    void TakeOver(const struct stat& about);
    bool Name();

    std::string path_;
    std::string folder_;     // of the target, with its slash
    std::string temporary_;  // empty while there is none, also where the file has no name yet
    std::string buffer_;
    std::string error_;
    std::string lost_;
    std::string* text_ = nullptr;
    std::unique_ptr<GzipPacker> packer_;
    int file_ = -1;
    int slot_ = -1;
    bool ownsFile_ = false;
    bool unnamed_ = false;
};

// Lets signals that end the program remove unfinished files first. Called once at the start.
void RemoveUnfinishedFilesOnSignals();

}  // namespace app
