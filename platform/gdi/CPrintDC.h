// A device context that draws pages: of a PDF file, an SVG file (one page), a printer or a preview.
// Everything works as on a picture, at the page's own resolution and as vectors, except for what paper does
// not have: raster operations do not count and GetPixel knows nothing. Lines are at least 0.1 mm wide, in SVG
// files a pixel. SVG files have no clipping: lines and areas are cut instead, a text is drawn whole when any
// of it is inside.
//
//   const auto dc = CPrintDC::CreatePdf(path, setup);
//   if (!dc) ...
//   dc->StartPage(); ...draw...; dc->EndPage();
//   const bool written = dc->EndDoc();
#pragma once

#include "platform/gdi/CDC.h"

class PaperDevice;

// Lengths in 0.01 mm.
struct PageMargins {
    PageMargins(LONG all = 1000) : left(all), top(all), right(all), bottom(all) {}
    LONG left, top, right, bottom;
};

struct PageSetup {
    CSize paper{21000, 29700};  // A4 upright
    PageMargins margin;
    CString title;
};

class CPrintDC : public CDC {
  public:
    // The file appears under its name with EndDoc; without it a file of that name stays as it was. Null when
    // the file cannot be written there or the paper has no room inside its margins.
    static std::unique_ptr<CPrintDC> CreatePdf(const char* path, const PageSetup& setup = {});
    // As large as a picture of so many pixels on a screen of 96 dots per inch, without margins.
    static std::unique_ptr<CPrintDC> CreateSvg(const char* path, CSize pixels, const CString& title = {});
    // For the framework: draws on any device that has pages.
    explicit CPrintDC(std::unique_ptr<PaperDevice> device);
    ~CPrintDC() override;

    // EndPage gives the context the attributes of a new one. FALSE when there is no further page or
    // the last one has not been ended.
    BOOL StartPage();
    BOOL EndPage();
    // TRUE when at least one page was drawn and everything is written.
    BOOL EndDoc();
};
