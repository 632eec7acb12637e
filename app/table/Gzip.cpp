#include "app/table/Gzip.h"

#include <strings.h>

#include <algorithm>

namespace app {

namespace {

using namespace std::string_view_literals;

constexpr int kGzip = 15 + 16;  // the window of most compression, with the header of gzip
constexpr std::size_t kMostAtOnce = std::size_t{1} << 30;

}  // namespace

bool IsGzip(std::string_view bytes) { return bytes.substr(0, 3) == "\x1F\x8B\x08"sv; }

bool IsGzipName(std::string_view path) {
    return path.size() > 3 && ::strncasecmp(path.data() + path.size() - 3, ".gz", 3) == 0;
}

Result<std::string> Unpacked(std::string_view bytes, const std::string& name) {
    z_stream stream{};
    if (inflateInit2(&stream, kGzip) != Z_OK) return Refusal(name + ": not enough memory to unpack it");
    std::string unpacked;
    std::size_t used = 0;
    std::size_t made = 0;
    int state = Z_OK;
    for (;;) {
        if (unpacked.size() - made < 65536)
            unpacked.resize(std::max<std::size_t>(made * 2, 4 * bytes.size() + 65536));
        const std::size_t given = std::min(bytes.size() - used, kMostAtOnce);
        const std::size_t room = std::min(unpacked.size() - made, kMostAtOnce);
        stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data() + used));
        stream.avail_in = static_cast<uInt>(given);
        stream.next_out = reinterpret_cast<Bytef*>(unpacked.data() + made);
        stream.avail_out = static_cast<uInt>(room);
        state = inflate(&stream, Z_NO_FLUSH);
        used += given - stream.avail_in;
        made += room - stream.avail_out;
        // Files may be several packed ones in a row; what follows the last of them is padding.
        if (state == Z_STREAM_END && (!IsGzip(bytes.substr(used)) || inflateReset(&stream) != Z_OK)) break;
        if (state != Z_OK && state != Z_STREAM_END && state != Z_BUF_ERROR) break;
        if (used == bytes.size() && stream.avail_out > 0) break;
    }
    inflateEnd(&stream);
    if (state != Z_STREAM_END)
        return Refusal(name + ": the compressed data are damaged or break off", "get the file once more");
    unpacked.resize(made);
    return unpacked;
}

GzipPacker::GzipPacker() : packed_(std::size_t{1} << 16, '\0') {
    constexpr int kMemory = 8;
    isGood_ =
        deflateInit2(&stream_, Z_DEFAULT_COMPRESSION, Z_DEFLATED, kGzip, kMemory, Z_DEFAULT_STRATEGY) == Z_OK;
}

GzipPacker::~GzipPacker() { deflateEnd(&stream_); }

// Pieces are shorter than a gigabyte: they come from a buffer or are one row.
void GzipPacker::Begin(std::string_view text) {
    isGood_ = isGood_ && text.size() <= kMostAtOnce;
    stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
    stream_.avail_in = static_cast<uInt>(text.size());
}

// The next bytes; none when all of the piece has been taken in.
std::string_view GzipPacker::Next(bool isLast) {
    if (hasEnded_) return {};
    stream_.next_out = reinterpret_cast<Bytef*>(packed_.data());
    stream_.avail_out = static_cast<uInt>(packed_.size());
    const int state = deflate(&stream_, isLast ? Z_FINISH : Z_NO_FLUSH);
    hasEnded_ = state == Z_STREAM_END;
    isGood_ = state == Z_OK || state == Z_STREAM_END || state == Z_BUF_ERROR;
    return {packed_.data(), packed_.size() - stream_.avail_out};
}

}  // namespace app
