#include "app/workbench/Plot.h"

#include <unistd.h>

#include <cmath>
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

Result<PictureSize> SizeOf(const PlotOptions& options) {
    double dots = kScreenDots;
    const std::string& text = options.dotsPerInch;
    if (!text.empty() &&
        (!ReadNumber(text, '.', dots) || dots != std::floor(dots) || dots < kLeastDots || dots > kMostDots))
        return UsageError("--dpi " + text + ": expected dots per inch from 20 to 2400, as in 300");
    const auto size =
        ReadPictureSize(options.size.empty() ? "1200x800" : options.size, static_cast<int>(dots));
    if (!size) return UsageError("--size " + size.Error().message);
    return size;
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

CSeriesView::PlotFor PlotForWord(const std::string& word) {
    if (word == "all") return CSeriesView::PlotFor::All;
    return word == "series" ? CSeriesView::PlotFor::Series : CSeriesView::PlotFor::Unit;
}

// Reads what the file was cleaned from, as far as it can be told in the same way.
std::optional<Failure> LayOver(SeriesFile& file, const PlotOptions& options, PointOrder order) {
    ReadOptions read = options.read;
    read.path = options.over;
    read.y.clear();
    auto original = ReadSeriesFile(read, {}, order);
    return original ? AddOriginal(file, std::move(*original)) : original.Error();
}

// What draws pictures writes files; standard output gets the bytes of one.
std::optional<Failure> WriteToStandardOutput(CSeriesView& view, const std::string& format,
                                             const PictureSize& size) {
    const ScratchFile picture("picture." + (format.empty() ? "png" : format));
    if (!picture.IsGood() || !WritePicture(view, picture.Path(), view.PictureTitle(), size))
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
    if (!toStandardOutput && !PictureFormatOf(options.output))
        return UsageError("-o " + UnknownPictureFormat(options.output));
    if (!toStandardOutput && !options.format.empty())
        return UsageError("--format is that of standard output, -o -; the ending of a name says its format");
    for (const std::string& input : {options.read.path, options.over})
        if (!input.empty() && IsInput(input, options.output))
            return UsageError("-o " + options.output + " is the input; choose another name");
    const auto size = SizeOf(options);
    if (!size) return size.Error();
    double gap = 2.5;
    if (!options.gap.empty() && (!ReadNumber(options.gap, '.', gap) || !(gap >= 0)))
        return UsageError("--gap " + options.gap +
                          ": expected how many usual steps make a gap, or 0 for none");
    Progress progress(true);
    const PointOrder order = options.fileOrder ? PointOrder::OfFile : PointOrder::OfX;
    auto file = ReadSeriesFile(options.read, progress.Shower("reading"), order);
    progress.Clear();
    if (!file) return file.Error();
    if (!options.over.empty())
        if (const auto failure = LayOver(*file, options, order)) return *failure;

    if (!options.title.empty()) file->title = options.title;
    CSeriesView view(*file, "");
    view.SetHeading(CString(options.title));
    std::vector<std::size_t> shown(file->series.size());
    std::iota(shown.begin(), shown.end(), 0);
    view.SetGapFactor(gap);
    view.ShowOnly(shown);
    view.SetPlotFor(PlotForWord(options.panels));
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
    } else if (!WritePicture(view, options.output, view.PictureTitle(), *size)) {
        return Refusal("cannot write " + options.output);
    }
    if (!file->xRises && order == PointOrder::OfX)
        std::fprintf(stderr,
                     "tavin: %s: x is not in order; drawn in the order of x (--file-order: as it stands)\n",
                     file->title.c_str());
    return kDone;
}

}  // namespace app
