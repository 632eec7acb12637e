// The bytes of an input file or of standard input.
#pragma once

#include <string>

#include "app/table/Result.h"

namespace app {

// "standard input" for "-", else the name itself: how messages and reports call a file.
std::string ShownName(const std::string& path);
// Reads the whole of `path`; "-" is standard input. Text that this program cannot take (UTF-16, UTF-32, bytes
// of value 0, nothing at all) is refused here, with what to do about it.
Result<std::string> ReadInput(const std::string& path);
// Whether both names lead to the same file.
bool SameFile(const std::string& a, const std::string& b);
// The SHA-256 digest in hexadecimal.
std::string Sha256(const std::string& bytes);

}  // namespace app
