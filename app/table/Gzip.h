// Compressed files: an input is known by its first bytes, an output by its name.
#pragma once

#include <zlib.h>

#include <string>
#include <string_view>

#include "app/table/Result.h"

namespace app {

bool IsGzip(std::string_view bytes);
// All members of a gzip file. A file that breaks off or is damaged is refused.
Result<std::string> Unpacked(std::string_view bytes, const std::string& name);

// Whether a file of this name is to be compressed: it ends in .gz.
bool IsGzipName(std::string_view path);

// Compresses what is written piece by piece. The same text gives the same bytes.
class GzipPacker {
  public:
    GzipPacker();
    ~GzipPacker();
    GzipPacker(const GzipPacker&) = delete;
    GzipPacker& operator=(const GzipPacker&) = delete;

    // Hands what has been compressed so far to `take` (std::string_view, false: stop). False: `take` said so,
    // or there is not enough memory.
    template <class Take>
    bool Add(std::string_view text, bool isLast, Take&& take) {
        Begin(text);
        while (isGood_) {
            const std::string_view packed = Next(isLast);
            if (packed.empty()) break;
            if (!take(packed)) return false;
        }
        return isGood_;
    }

  private:
    void Begin(std::string_view text);
    std::string_view Next(bool isLast);

    z_stream stream_{};
    std::string packed_;
    bool isGood_ = false;
    bool hasEnded_ = false;
};

}  // namespace app
