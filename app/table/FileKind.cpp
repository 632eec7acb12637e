#include "app/table/FileKind.h"

#include <algorithm>

namespace app {

namespace {

using namespace std::string_view_literals;

constexpr const char* kSaveAsText = "save it there as CSV and open that";
constexpr const char* kUnpackFirst = "unpack it first";
constexpr const char* kExport = "export the series from it as CSV";

struct Magic {
    std::string_view bytes;
    FileKind kind;
};
constexpr Magic kMagics[] = {
    {"%PDF-"sv, {"a PDF document", kExport}},
    {"\xD0\xCF\x11\xE0"sv, {"a spreadsheet or document of an older office program", kSaveAsText}},
    {"SQLite format 3\0"sv, {"an SQLite database", kExport}},
    {"\x89HDF"sv, {"an HDF5 or netCDF file", kExport}},
    {"CDF\1"sv, {"a netCDF file", kExport}},
    {"CDF\2"sv, {"a netCDF file", kExport}},
    {"PAR1"sv, {"a Parquet file", kExport}},
    {"GRIB"sv, {"a GRIB file", kExport}},
    {"BZh"sv, {"compressed with bzip2", kUnpackFirst}},
    {"\xFD"
     "7zXZ"sv,
     {"compressed with xz", kUnpackFirst}},
    {"\x28\xB5\x2F\xFD"sv, {"compressed with zstd", kUnpackFirst}},
    {"7z\xBC\xAF"sv, {"a 7z archive", kUnpackFirst}},
    {"Rar!"sv, {"a RAR archive", kUnpackFirst}},
    {"\x89PNG"sv, {"a picture", nullptr}},
    {"\xFF\xD8\xFF"sv, {"a picture", nullptr}},
    {"GIF8"sv, {"a picture", nullptr}},
    {"{\\rtf"sv, {"a rich-text document", kSaveAsText}}};

bool StartsWithWord(std::string_view text, std::string_view word) {
    if (text.size() < word.size()) return false;
    return std::equal(word.begin(), word.end(), text.begin(),
                      [](char a, char b) { return a == (b >= 'A' && b <= 'Z' ? b + ('a' - 'A') : b); });
}

FileKind KindOfArchive(std::string_view bytes) {
    const auto start = bytes.substr(0, 4096);
    const auto holds = [&](std::string_view word) { return start.find(word) != std::string_view::npos; };
    if (holds("spreadsheet") || holds("xl/") ||
        (holds("[Content_Types].xml") && bytes.find("xl/workbook") != std::string_view::npos))
        return {"a spreadsheet", kSaveAsText};
    if (holds("[Content_Types].xml") || holds("opendocument")) return {"an office document", kSaveAsText};
    return {"a zip archive", kUnpackFirst};
}

// JSON begins with an object, or with a list of objects, lists or texts; "[Data]" heads a section.
bool IsJson(std::string_view text) {
    const auto next = [&](std::size_t from) {
        const auto at = text.find_first_not_of(" \t\r\n", from);
        return at == std::string_view::npos ? '\0' : text[at];
    };
    if (text[0] == '{') return next(1) == '"' || next(1) == '}';
    return text[0] == '[' && std::string_view("{[\"]").find(next(1)) != std::string_view::npos;
}

}  // namespace

FileKind KindOfFile(std::string_view bytes) {
    for (const auto& magic : kMagics)
        if (bytes.substr(0, magic.bytes.size()) == magic.bytes) return magic.kind;
    if (bytes.substr(0, 4) == "PK\3\4"sv) return KindOfArchive(bytes);
    if (bytes.substr(0, 3) == "\xEF\xBB\xBF") bytes.remove_prefix(3);
    const auto first = bytes.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) return {};
    const auto text = bytes.substr(first);
    if (StartsWithWord(text, "<!doctype html") || StartsWithWord(text, "<html"))
        return {"a page of HTML", "download the data themselves; this may be an error message of the server"};
    if (StartsWithWord(text, "<?xml") || (text[0] == '<' && text.find("</") != std::string_view::npos))
        return {"XML", kExport};
    if (IsJson(text)) return {"JSON", "make a CSV table of it first, for instance with jq"};
    return {};
}

}  // namespace app
