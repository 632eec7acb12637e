#include "app/workbench/PictureFile.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

namespace app {

namespace {

struct Suffix {
    const char* text;
    PictureFormat format;
};
constexpr Suffix kSuffixes[] = {
    {".png", PictureFormat::Png}, {".svg", PictureFormat::Svg}, {".pdf", PictureFormat::Pdf}};

std::unique_ptr<CPrintDC> PaperFor(PictureFormat format, const std::string& path, const CString& title,
                                   const PictureSize& size) {
    const CSize paper = size.Paper();
    if (format == PictureFormat::Pdf) return CPrintDC::CreatePdf(path.c_str(), {paper, 0, title});
    // What shows drawings takes their pixels for those of such a screen.
    const auto pixels = [](int hundredths) { return RoundHalfAway(hundredths / 2540.0 * kScreenDots); };
    return CPrintDC::CreateSvg(path.c_str(), {pixels(paper.cx), pixels(paper.cy)}, title);
}

}  // namespace

std::optional<PictureFormat> PictureFormatOf(const std::string& path) {
    std::string suffix = std::filesystem::path(path).extension().string();
    std::transform(suffix.begin(), suffix.end(), suffix.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    for (const Suffix& known : kSuffixes)
        if (suffix == known.text) return known.format;
    return {};
}

std::string UnknownPictureFormat(const std::string& path) {
    return path + ": the name must end in .png, .svg or .pdf";
}

std::unique_ptr<CBitmapEx> TakePicture(KViewEx& view, const PictureSize& size) {
    auto bitmap = std::make_unique<CBitmapEx>(4, 32, 256);
    bitmap->SetDotsPerInch(size.dotsPerInch);
    CDC memory;
    if (!bitmap->ReSize(nullptr, size.pixels.cx, size.pixels.cy) || !memory.CreateCompatibleDC(nullptr))
        return nullptr;
    CBitmapEx* const before = memory.SelectObject(bitmap.get());
    view.DrawOn(memory, size.pixels);
    memory.SelectObject(before);
    return bitmap;
}

bool WritePicture(KViewEx& view, const std::string& path, const CString& title, const PictureSize& size) {
    const auto format = PictureFormatOf(path);
    if (!format) return false;
    if (*format == PictureFormat::Png) {
        const auto picture = TakePicture(view, size);
        return picture && picture->SaveAsPng(path.c_str());
    }
    const auto paper = PaperFor(*format, path, title, size);
    if (!paper || !paper->StartPage()) return false;
    view.DrawOn(*paper, {paper->GetDeviceCaps(HORZRES), paper->GetDeviceCaps(VERTRES)});
    paper->EndPage();
    return paper->EndDoc();
}

}  // namespace app
