#include "app/workbench/Plot.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <numeric>

#include "app/table/InputFile.h"
#include "app/table/OutputFile.h"
#include "app/table/Progress.h"
#include "app/workbench/CSeriesView.h"

namespace app {

namespace {

constexpr int kLeastSide = 100;
constexpr int kMostSide = 16000;
constexpr int kDotsPerInch = 96;

Result<CSize> ReadSize(const std::string& text) {
    int width = 0;
    int height = 0;
    char rest = 0;
    if (text.empty()) return CSize(1200, 800);
    const bool read = std::sscanf(text.c_str(), "%5dx%5d%c", &width, &height, &rest) == 2;
    if (read && std::min(width, height) >= kLeastSide && std::max(width, height) <= kMostSide)
        return CSize(width, height);
    return UsageError("--size " + text +
                      ": expected width and height in pixels, 100 to 16000, as in 1200x800");
}

// The user coordinate of an edge; `missing` where none is asked for.
Result<double> ReadEdge(const std::string& option, const std::string& text, const XReading& x,
                        double missing) {
    if (text.empty()) return missing;
    double number = 0;
    ReadTime time;
    if (x.isTime && ReadIsoTime(text, time)) return x.UserOf(time.at);
    if (!x.isTime && ReadNumber(text, '.', number)) return x.User(number);
    return UsageError(option + " " + text +
                      (x.isTime ? ": expected a time in ISO 8601, as in 2024-03-14T08:00"
                                : ": expected a number in the unit of the x column"));
}

// A file in a folder of its own, gone when this object is.
class ScratchFile {
  public:
    explicit ScratchFile(const std::string& name) {
        std::error_code unknown;
        folder_ = (std::filesystem::temp_directory_path(unknown) / "tavin-XXXXXX").string();
        if (!::mkdtemp(folder_.data())) folder_.clear();
        path_ = folder_ + "/" + name;
    }
    ~ScratchFile() {
        ::unlink(path_.c_str());
        ::rmdir(folder_.c_str());
    }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    bool IsGood() const { return !folder_.empty(); }
    const std::string& Path() const { return path_; }

  private:
    std::string folder_;
    std::string path_;
};

// What draws pictures writes files; standard output gets the bytes of one.
std::optional<Failure> WriteToStandardOutput(CSeriesView& view, const std::string& format, CSize size) {
    const ScratchFile picture("picture." + (format.empty() ? "png" : format));
    if (!picture.IsGood() || !view.Export(picture.Path(), size, kDotsPerInch))
        return Refusal("cannot write " + picture.Path(), "name a folder with room for it in TMPDIR");
    std::ifstream file(picture.Path(), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    OutputFile output;
    if (output.Open("-") && output.Write(bytes) && output.Commit()) return std::nullopt;
    return output.Error();
}

}  // namespace

Result<int> Plot(const PlotOptions& options) {
    const bool toStandardOutput = options.output == "-";
    if (!toStandardOutput && PictureEnding(options.output).empty())
        return UsageError("-o " + options.output + ": the name must end in .png, .svg or .pdf");
    if (!toStandardOutput && !options.format.empty())
        return UsageError("--format is that of standard output, -o -; the ending of a name says its format");
    if (IsInput(options.read.path, options.output))
        return UsageError("-o " + options.output + " is the input; choose another name");
    const auto size = ReadSize(options.size);
    if (!size) return size.Error();
    Progress progress(true);
    auto file = ReadSeriesFile(options.read, progress.Shower("reading"));
    progress.Clear();
    if (!file) return file.Error();

    if (!options.title.empty()) file->title = options.title;
    CSeriesView view(*file, "");
    std::vector<std::size_t> shown;
    for (std::size_t i = 0; i < file->series.size(); ++i)
        if (file->series[i].group == file->series.front().group) shown.push_back(i);
    view.ShowOnly(shown);
    view.OnInitialUpdate();
    const CPointEx whole = view.RangeX();
    const auto from = ReadEdge("--from", options.from, file->x, whole.x);
    if (!from) return from.Error();
    const auto to = ReadEdge("--to", options.to, file->x, whole.y);
    if (!to) return to.Error();
    if (*from >= *to) return UsageError("there is nothing between --from and --to");
    if (!options.from.empty() || !options.to.empty()) view.ShowRange(*from, *to);
    if (toStandardOutput) {
        if (const auto failure = WriteToStandardOutput(view, options.format, *size)) return *failure;
    } else if (!view.Export(options.output, *size, kDotsPerInch)) {
        return Refusal("cannot write " + options.output);
    }
    if (shown.size() < file->series.size())
        std::fprintf(stderr,
                     "tavin: the columns differ too much for one plot; drawn: %d of %d. Choose with -y.\n",
                     static_cast<int>(shown.size()), static_cast<int>(file->series.size()));
    return kDone;
}

}  // namespace app
