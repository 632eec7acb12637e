#include "app/batch/Stations.h"

#include <glob.h>

#include <algorithm>
#include <filesystem>
#include <sstream>

#include "app/table/InputFile.h"
#include "app/table/Records.h"

namespace app {

namespace {

using Cells = std::vector<std::string>;

std::vector<std::string> FilesOf(const std::string& pattern) {
    glob_t found{};
    std::vector<std::string> files;
    if (::glob(pattern.c_str(), GLOB_TILDE, nullptr, &found) == 0)
        files.assign(found.gl_pathv, found.gl_pathv + found.gl_pathc);
    ::globfree(&found);
    return files;
}

class StationReader {
  public:
    StationReader(const std::string& path, const std::vector<std::string>& repeatable)
        : path_(path), repeatable_(repeatable), folder_(std::filesystem::path(path).parent_path().string()) {}

    Result<std::vector<Station>> Read(std::string_view text) {
        std::vector<Station> stations;
        Cells headings;
        Cells cells;
        const std::string_view line = text.substr(0, text.find('\n'));
        const char delimiter = line.find(';') != line.npos && line.find(',') == line.npos ? ';' : ',';
        const std::size_t begin = text.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0;
        Records records(text, delimiter, begin);
        for (Record record;
             records.Next(record, [&](int, std::string_view cell) { cells.emplace_back(cell); });
             cells.clear()) {
            if (record.kind == Record::Broken) return At(record.line, record.fault);
            if (record.kind == Record::Comment) continue;
            if (headings.empty()) {
                if (std::find(cells.begin(), cells.end(), "file") == cells.end())
                    return At(record.line,
                              "no heading \"file\": the first row names the columns of the table");
                headings = cells;
                continue;
            }
            auto station = ReadRow(headings, cells, record.line);
            if (!station) return station.Error();
            stations.push_back(std::move(*station));
        }
        if (stations.empty()) return At(1, "the table names no station");
        return stations;
    }

  private:
    Failure At(std::int64_t line, const std::string& what) const {
        return UsageError(path_ + ":" + std::to_string(line) + ": " + what);
    }

    Result<Station> ReadRow(const Cells& headings, const Cells& cells, std::int64_t line) const {
        if (cells.size() > headings.size())
            return At(line, "more cells than headings; a cell that holds a comma stands in quotes");
        Station station;
        station.line = line;
        std::string steps;
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const std::string& heading = headings[i];
            if (cells[i].empty()) continue;
            if (heading == "file")
                station.pattern = Beside(cells[i]);
            else if (heading == "station")
                station.name = cells[i];
            else if (heading == "steps")
                steps = cells[i];
            else
                AddOption(heading == "columns" ? "y" : heading, cells[i], station.words);
        }
        if (station.pattern.empty()) return At(line, "the cell \"file\" is empty");
        if (station.name.empty()) station.name = station.pattern;
        station.files = FilesOf(station.pattern);
        const auto words = SplitWords(steps);
        if (!words) return words.Error().About(path_ + ":" + std::to_string(line));
        station.words.insert(station.words.end(), words->begin(), words->end());
        return station;
    }

    std::string Beside(const std::string& path) const {
        return folder_.empty() || path[0] == '/' || path[0] == '~' ? path : folder_ + "/" + path;
    }

    void AddOption(const std::string& heading, const std::string& cell,
                   std::vector<std::string>& words) const {
        const std::string option = (heading.size() == 1 ? "-" : "--") + heading;
        const bool several = std::find(repeatable_.begin(), repeatable_.end(), option) != repeatable_.end();
        std::istringstream parts(cell);
        for (std::string part; std::getline(parts, part, several ? ';' : '\0');) {
            words.push_back(option);
            words.push_back(heading == "out-dir" ? Beside(part) : part);
        }
    }

    const std::string& path_;
    const std::vector<std::string>& repeatable_;
    std::string folder_;
};

}  // namespace

Result<std::vector<std::string>> SplitWords(const std::string& line) {
    std::vector<std::string> words;
    std::string word;
    char quote = 0;
    bool inWord = false;
    for (const char c : line) {
        if (quote ? c == quote : c == '"' || c == '\'') {
            quote = quote ? '\0' : c;
            inWord = true;
        } else if (!quote && (c == ' ' || c == '\t')) {
            if (inWord) words.push_back(std::move(word));
            word.clear();
            inWord = false;
        } else {
            word += c;
            inWord = true;
        }
    }
    if (quote) return UsageError("a quote in \"" + line + "\" has no end");
    if (inWord) words.push_back(word);
    return words;
}

Result<std::vector<Station>> ReadStations(const std::string& path,
                                          const std::vector<std::string>& repeatable) {
    const auto text = ReadInput(path);
    if (!text) return text.Error();
    return StationReader(path, repeatable).Read(*text);
}

}  // namespace app
