// The bytes of an input file or of standard input.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "app/table/Bytes.h"
#include "app/table/Result.h"

namespace app {

// "standard input" for "-", else the name itself: how messages and reports call a file.
std::string ShownName(const std::string& path);
// The whole of `path`; "-" is standard input. A stream that has bytes of value 0 and is of no kind that may
// have them is refused at the first.
Result<Bytes> ReadInput(const std::string& path);
// The refusal of a file that has a byte of value 0 in `line`.
Failure NotText(const std::string& name, std::int64_t line);
// The refusal of a file that was written to while the program read it.
Failure ChangedInput(const std::string& name);
// Whether `output` is the file that `input` reads, also where that is standard input.
bool IsInput(const std::string& input, const std::string& output);
// Whether both names lead to the same file.
bool SameFile(const std::string& a, const std::string& b);
// The SHA-256 digest in hexadecimal.
std::string Sha256(std::string_view bytes);

}  // namespace app
