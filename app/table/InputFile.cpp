#include "app/table/InputFile.h"

#include <fcntl.h>
#include <openssl/evp.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <optional>
#include <string_view>

#include "app/table/FileKind.h"
#include "app/table/Gzip.h"
#include "app/table/TextEncoding.h"

namespace app {

namespace {

constexpr std::size_t kChunk = std::size_t{1} << 20;

Failure SystemRefusal(const std::string& what, const std::string& path, int error) {
    return Refusal(what + " " + ShownName(path) + ": " + std::strerror(error));
}

// What is unpacked, converted or named as what it is further on.
bool MayHoldZeros(std::string_view bytes) {
    return IsGzip(bytes) || WideEncodingOf(bytes).IsWide() || KindOfFile(bytes.substr(0, kChunk)).name;
}

// Refuses a byte of value 0 from `begin` on: devices and pictures are no tables, and some have no end.
std::optional<Failure> CheckZeros(std::string_view bytes, std::size_t begin, const std::string& path) {
    const auto zero = bytes.find('\0', begin);
    if (zero == std::string_view::npos || MayHoldZeros(bytes)) return std::nullopt;
    const auto line = std::count(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(zero), '\n') + 1;
    return NotText(ShownName(path), line);
}

// Reads to the end what has no size to ask for.
Result<Bytes> ReadAll(int file, const std::string& path) {
    std::string bytes;
    std::size_t used = 0;
    for (;;) {
        if (bytes.size() < used + kChunk) bytes.resize(std::max(used + kChunk, used + used / 2));
        const ssize_t got = ::read(file, bytes.data() + used, bytes.size() - used);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return SystemRefusal("cannot read", path, errno);
        if (got == 0) break;
        const std::size_t begin = used;
        used += static_cast<std::size_t>(got);
        if (const auto refused = CheckZeros(std::string_view(bytes).substr(0, used), begin, path))
            return *refused;
    }
    bytes.resize(used);
    return Bytes(std::move(bytes));
}

Result<Bytes> ReadOpen(int file, const std::string& path) {
    if (::lseek(file, 0, SEEK_CUR) == 0) {
        Bytes mapped = Bytes::Mapped(file);
        if (mapped.size() > 0) return mapped;
    }
    return ReadAll(file, path);
}

Result<Bytes> ReadPath(const std::string& path) {
    if (path == "-") return ReadOpen(STDIN_FILENO, path);
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) return SystemRefusal("cannot open", path, errno);
    auto bytes = ReadOpen(file, path);
    ::close(file);
    return bytes;
}

}  // namespace

Failure NotText(const std::string& name, std::int64_t line) {
    return Refusal(name + ":" + std::to_string(line) + ": not a text file: a byte of value 0",
                   "give a table in text form (CSV)");
}

Failure ChangedInput(const std::string& name) {
    return Refusal(name + " was written to while it was read: its parts do not belong together", "try again");
}

std::string ShownName(const std::string& path) { return path == "-" ? "standard input" : path; }

Result<Bytes> ReadInput(const std::string& path) { return ReadPath(path); }

bool IsInput(const std::string& input, const std::string& output) {
    struct stat one {};
    struct stat other {};
    const bool known = input == "-" ? ::fstat(STDIN_FILENO, &one) == 0 : ::stat(input.c_str(), &one) == 0;
    if (!known || !S_ISREG(one.st_mode) || output == "-" || ::stat(output.c_str(), &other) != 0) return false;
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

bool SameFile(const std::string& a, const std::string& b) {
    struct stat one {};
    struct stat other {};
    if (::stat(a.c_str(), &one) != 0 || ::stat(b.c_str(), &other) != 0) return false;
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

std::string Sha256(std::string_view bytes) {
    unsigned char digest[EVP_MAX_MD_SIZE];
    unsigned length = 0;
    if (EVP_Digest(bytes.data(), bytes.size(), digest, &length, EVP_sha256(), nullptr) != 1) return {};
    constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    for (unsigned i = 0; i < length; ++i) {
        text += kDigits[digest[i] >> 4];
        text += kDigits[digest[i] & 15];
    }
    return text;
}

}  // namespace app
