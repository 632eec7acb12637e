#include "app/batch/RunLog.h"

#include <fcntl.h>
#include <openssl/evp.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <utility>

#include "app/table/OutputFile.h"

namespace app {

using Json = nlohmann::ordered_json;

namespace {

constexpr const char* kLogName = ".tavin-clean";

std::string NameOf(const std::string& path) { return std::filesystem::path(path).filename().string(); }

// Whether it has every part of RunLog::Entry() in its type.
bool IsEntry(const Json& json) {
    const Json form = RunLog::Entry("", {}, "", "", Json::object());
    if (!json.is_object()) return false;
    for (const auto& [name, part] : form.items()) {
        const auto found = json.find(name);
        if (found == json.end() || found->is_number() != part.is_number()) return false;
        if (found->is_string() != part.is_string() || found->is_object() != part.is_object()) return false;
    }
    return true;
}

std::string LineOf(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace

FileState StateOf(const std::string& path) {
    struct stat about {};
    if (::stat(path.c_str(), &about) != 0 || !S_ISREG(about.st_mode)) return {};
    return {about.st_size, std::int64_t{about.st_mtim.tv_sec} * 1'000'000'000 + about.st_mtim.tv_nsec};
}

std::string DigestOf(const std::string& path) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) return {};
    const std::unique_ptr<EVP_MD_CTX, void (*)(EVP_MD_CTX*)> context(EVP_MD_CTX_new(), EVP_MD_CTX_free);
    bool good = context && EVP_DigestInit_ex(context.get(), EVP_sha256(), nullptr) == 1;
    std::array<char, 1 << 16> buffer;
    while (good) {
        const ssize_t got = ::read(file, buffer.data(), buffer.size());
        if (got < 0 && errno == EINTR) continue;
        if (got == 0) break;
        good = got > 0 && EVP_DigestUpdate(context.get(), buffer.data(), static_cast<std::size_t>(got)) == 1;
    }
    ::close(file);
    unsigned char digest[EVP_MAX_MD_SIZE];
    unsigned length = 0;
    if (!good || EVP_DigestFinal_ex(context.get(), digest, &length) != 1) return {};
    std::string text;
    for (unsigned i = 0; i < length; ++i)
        for (const int digit : {digest[i] >> 4, digest[i] & 15}) text += "0123456789abcdef"[digit];
    return text;
}

RunLog::RunLog(RunLog&& other) noexcept
    : path_(std::move(other.path_)),
      folder_(std::exchange(other.folder_, -1)),
      file_(std::exchange(other.file_, -1)),
      lines_(other.lines_),
      entries_(std::move(other.entries_)) {}

RunLog::~RunLog() {
    if (file_ >= 0) DropOldLines();
    if (file_ >= 0) ::close(file_);
    if (folder_ >= 0) ::close(folder_);
}

Result<RunLog> RunLog::Open(const std::string& folder, bool toWrite) {
    RunLog log;
    log.path_ = folder + "/" + kLogName;
    std::error_code error;
    if (toWrite) std::filesystem::create_directories(folder, error);
    if (error) return Refusal("cannot make the folder " + folder + ": " + error.message());
    if (!toWrite) {
        log.Read();
        return log;
    }
    log.folder_ = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (log.folder_ < 0) return Refusal("cannot use the folder " + folder + ": " + std::strerror(errno));
    if (::flock(log.folder_, LOCK_EX | LOCK_NB) != 0)
        return Refusal("another run is writing into " + folder, "wait for its end");
    log.Read();
    log.file_ = ::open(log.path_.c_str(), O_RDWR | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
    if (log.file_ < 0) return Refusal("cannot write " + log.path_ + ": " + std::strerror(errno));
    char last = '\n';
    const auto size = ::lseek(log.file_, 0, SEEK_END);
    const bool cut = size > 0 && ::pread(log.file_, &last, 1, size - 1) == 1 && last != '\n';
    if (cut && ::write(log.file_, "\n", 1) != 1)
        return Refusal("cannot write " + log.path_ + ": " + std::strerror(errno));
    return log;
}

void RunLog::Read() {
    std::ifstream file(path_);
    for (std::string line; std::getline(file, line); ++lines_) {
        auto entry = Json::parse(line, nullptr, false);
        if (!IsEntry(entry)) continue;
        const std::string name = entry["output"];
        entries_[name] = std::move(entry);
    }
}

void RunLog::DropOldLines() {
    if (lines_ <= 2 * entries_.size() + 100) return;
    OutputFile file;
    if (!file.Open(path_)) return;
    for (const auto& [name, entry] : entries_)
        if (!file.Write(LineOf(entry))) return;
    file.Commit();
}

Json RunLog::Unchanged(const std::string& output, const std::string& input,
                       const std::string& options) const {
    const auto found = entries_.find(NameOf(output));
    if (found == entries_.end()) return nullptr;
    const Json& entry = found->second;
    const FileState made{entry.value("outputSize", std::int64_t{-1}),
                         entry.value("outputTime", std::int64_t{0})};
    const FileState now = StateOf(output);
    if (now.size < 0 || now != made || entry.value("options", "") != options) return nullptr;
    if (StateOf(input).size != entry.value("inputSize", std::int64_t{-1})) return nullptr;
    return DigestOf(input) == entry.value("inputDigest", "-") ? entry.value("summary", Json()) : Json();
}

bool RunLog::Add(const std::string& output, const Json& entry) {
    if (file_ < 0 || entry.is_null()) return false;
    entries_[NameOf(output)] = entry;
    ++lines_;
    const std::string line = LineOf(entry);
    return ::write(file_, line.data(), line.size()) == static_cast<ssize_t>(line.size());
}

Json RunLog::Entry(const std::string& output, const FileState& input, const std::string& inputDigest,
                   const std::string& options, const Json& summary) {
    const FileState made = StateOf(output);
    return {{"output", NameOf(output)}, {"inputSize", input.size}, {"inputDigest", inputDigest},
            {"outputSize", made.size},  {"outputTime", made.time}, {"options", options},
            {"summary", summary}};
}

}  // namespace app
