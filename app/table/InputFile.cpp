#include "app/table/InputFile.h"

#include <fcntl.h>
#include <openssl/evp.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>

namespace app {

namespace {

constexpr std::size_t kChunk = std::size_t{1} << 20;

Failure SystemRefusal(const std::string& what, const std::string& path, int error) {
    return Refusal(what + " " + ShownName(path) + ": " + std::strerror(error));
}

// Reads to the end; `sizeHint` bytes are expected.
Result<std::string> ReadAll(int file, const std::string& path, std::size_t sizeHint) {
    std::string bytes;
    std::size_t used = 0;
    for (;;) {
        if (bytes.size() < used + kChunk) bytes.resize(std::max(used + kChunk, sizeHint + 1));
        const ssize_t got = ::read(file, bytes.data() + used, bytes.size() - used);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return SystemRefusal("cannot read", path, errno);
        if (got == 0) break;
        used += static_cast<std::size_t>(got);
    }
    bytes.resize(used);
    return bytes;
}

Result<std::string> ReadPath(const std::string& path) {
    if (path == "-") return ReadAll(STDIN_FILENO, path, 0);
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) return SystemRefusal("cannot open", path, errno);
    struct stat about {};
    const bool known = ::fstat(file, &about) == 0 && S_ISREG(about.st_mode);
    auto bytes = ReadAll(file, path, known ? static_cast<std::size_t>(about.st_size) : 0);
    ::close(file);
    return bytes;
}

bool StartsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

// The encoding that a byte-order mark announces, when it is not UTF-8.
const char* WideEncoding(std::string_view bytes) {
    using namespace std::string_view_literals;
    if (StartsWith(bytes, "\xFF\xFE\0\0"sv) || StartsWith(bytes, "\0\0\xFE\xFF"sv)) return "UTF-32";
    if (StartsWith(bytes, "\xFF\xFE"sv) || StartsWith(bytes, "\xFE\xFF"sv)) return "UTF-16";
    return nullptr;
}

Result<std::string> CheckedText(std::string bytes, const std::string& path) {
    if (const char* encoding = WideEncoding(bytes))
        return Refusal(ShownName(path) + ":1: the text is " + encoding +
                       "; convert it to UTF-8 first: iconv -f " + encoding + " -t UTF-8");
    const auto zero = bytes.find('\0');
    if (zero != std::string::npos) {
        const auto line =
            std::count(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(zero), '\n') + 1;
        return Refusal(ShownName(path) + ":" + std::to_string(line) +
                       ": not a text file: a byte of value 0; give a table in text form (CSV)");
    }
    const bool blank =
        std::all_of(bytes.begin(), bytes.end(), [](char c) { return std::strchr(" \t\r\n", c); });
    if (blank) return Refusal(ShownName(path) + ":1: the file is empty");
    return bytes;
}

}  // namespace

std::string ShownName(const std::string& path) { return path == "-" ? "standard input" : path; }

Result<std::string> ReadInput(const std::string& path) {
    auto bytes = ReadPath(path);
    if (!bytes) return bytes;
    return CheckedText(std::move(*bytes), path);
}

bool SameFile(const std::string& a, const std::string& b) {
    struct stat one {};
    struct stat other {};
    if (::stat(a.c_str(), &one) != 0 || ::stat(b.c_str(), &other) != 0) return false;
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

std::string Sha256(const std::string& bytes) {
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
