#include "platform/gdi/CPrintDC.h"

#include <QPageLayout>
#include <QPdfWriter>
#include <QSvgGenerator>

#include "platform/gdi/CDCState.h"
#include "platform/gdi/DrawingToolkit.h"
#include "platform/gdi/PageLayout.h"
#include "platform/gdi/WholeFile.h"

namespace {

QString ToQString(const CString& text) { return QString::fromUtf8(text.GetString(), text.GetLength()); }

class PdfDevice : public PaperDevice {
  public:
    PdfDevice(const char* path, const PageSetup& setup) : file_(path) {
        if (!file_.IsOpen()) return;
        writer_.emplace(&file_.Bytes());
        writer_->setResolution(kResolution);
        writer_->setTitle(ToQString(setup.title));
        writer_->setPageLayout(PageLayoutOf(setup));
    }
    bool IsOpen() const { return writer_.has_value(); }

    QPaintDevice& Device() override { return *writer_; }
    int DotsPerInch() const override { return kResolution; }
    CSize Size() const override {
        const QRect area = writer_->pageLayout().paintRectPixels(kResolution);
        return {area.width(), area.height()};
    }
    bool NewPage() override { return writer_->newPage(); }
    bool Finish() override {
        writer_.reset();
        return file_.Commit();
    }

  private:
    static constexpr int kResolution = 600;

    WholeFile file_;
    std::optional<QPdfWriter> writer_;
};

class SvgDevice : public PaperDevice {
  public:
    SvgDevice(const char* path, CSize pixels, const CString& title)
        : file_(path), size_(pixels.cx * kDotsPerPixel, pixels.cy * kDotsPerPixel) {
        if (!file_.IsOpen()) return;
        generator_.setOutputDevice(&file_.Bytes());
        generator_.setResolution(DotsPerInch());
        generator_.setSize(QSize(size_.cx, size_.cy));
        generator_.setViewBox(QRect(0, 0, size_.cx, size_.cy));
        // The generator writes it as it is.
        generator_.setTitle(ToQString(title).toHtmlEscaped());
    }
    bool IsOpen() const { return file_.IsOpen(); }

    QPaintDevice& Device() override { return generator_; }
    int DotsPerInch() const override { return kScreenDotsPerInch * kDotsPerPixel; }
    CSize Size() const override { return size_; }
    double Hairline() const override { return kDotsPerPixel; }
    bool Clips() const override { return false; }
    bool NewPage() override { return false; }
    bool Finish() override { return file_.Commit(); }

  private:
    static constexpr int kDotsPerPixel = 10;

    WholeFile file_;
    CSize size_;
    QSvgGenerator generator_;
};

bool HasRoom(const PageSetup& setup) {
    constexpr LONG kLargest = 500000;  // what PDF readers take
    const auto room = [](LONG side, LONG before, LONG behind) {
        return before >= 0 && behind >= 0 && side <= kLargest && side - std::int64_t{before} - behind >= 100;
    };
    const PageMargins& margin = setup.margin;
    return room(setup.paper.cx, margin.left, margin.right) && room(setup.paper.cy, margin.top, margin.bottom);
}

}  // namespace

std::unique_ptr<CPrintDC> CPrintDC::CreatePdf(const char* path, const PageSetup& setup) try {
    if (!path || !HasRoom(setup)) return nullptr;
    EnsureDrawingToolkit();
    auto device = std::make_unique<PdfDevice>(path, setup);
    return device->IsOpen() ? std::make_unique<CPrintDC>(std::move(device)) : nullptr;
} catch (const std::exception&) {
    return nullptr;
}

std::unique_ptr<CPrintDC> CPrintDC::CreateSvg(const char* path, CSize pixels, const CString& title) try {
    constexpr LONG kLargest = 100000;
    if (!path || pixels.cx < 1 || pixels.cy < 1 || std::max(pixels.cx, pixels.cy) > kLargest) return nullptr;
    EnsureDrawingToolkit();
    auto device = std::make_unique<SvgDevice>(path, pixels, title);
    return device->IsOpen() ? std::make_unique<CPrintDC>(std::move(device)) : nullptr;
} catch (const std::exception&) {
    return nullptr;
}

CPrintDC::CPrintDC(std::unique_ptr<PaperDevice> device) {
    state_->paper = std::make_shared<Paper>(std::move(device));
    SaveDC();
}

CPrintDC::~CPrintDC() = default;

BOOL CPrintDC::StartPage() { return state_->paper->StartPage(); }

BOOL CPrintDC::EndPage() {
    state_->paper->EndPage();
    RestoreDC(1);
    SaveDC();
    return TRUE;
}

BOOL CPrintDC::EndDoc() { return state_->paper->Finish(); }
