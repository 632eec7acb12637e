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
    PdfDevice(const char* path, const PageSetup& setup) : m_file(path) {
        if (!m_file.IsOpen()) return;
        m_writer.emplace(&m_file.Bytes());
        m_writer->setResolution(kResolution);
        m_writer->setTitle(ToQString(setup.title));
        m_writer->setPageLayout(PageLayoutOf(setup));
    }
    bool IsOpen() const { return m_writer.has_value(); }

    QPaintDevice& Device() override { return *m_writer; }
    int DotsPerInch() const override { return kResolution; }
    CSize Size() const override {
        const QRect area = m_writer->pageLayout().paintRectPixels(kResolution);
        return {area.width(), area.height()};
    }
    bool NewPage() override { return m_writer->newPage(); }
    bool Finish() override {
        m_writer.reset();
        return m_file.Commit();
    }

  private:
    static constexpr int kResolution = 600;

    WholeFile m_file;
    std::optional<QPdfWriter> m_writer;
};

class SvgDevice : public PaperDevice {
  public:
    SvgDevice(const char* path, CSize pixels, const CString& title)
        : m_file(path), m_size(pixels.cx * kDotsPerPixel, pixels.cy * kDotsPerPixel) {
        if (!m_file.IsOpen()) return;
        m_generator.setOutputDevice(&m_file.Bytes());
        m_generator.setResolution(DotsPerInch());
        m_generator.setSize(QSize(m_size.cx, m_size.cy));
        m_generator.setViewBox(QRect(0, 0, m_size.cx, m_size.cy));
        // The generator writes it as it is.
        m_generator.setTitle(ToQString(title).toHtmlEscaped());
    }
    bool IsOpen() const { return m_file.IsOpen(); }

    QPaintDevice& Device() override { return m_generator; }
    int DotsPerInch() const override { return kScreenDotsPerInch * kDotsPerPixel; }
    CSize Size() const override { return m_size; }
    double Hairline() const override { return kDotsPerPixel; }
    bool Clips() const override { return false; }
    bool NewPage() override { return false; }
    bool Finish() override { return m_file.Commit(); }

  private:
    static constexpr int kDotsPerPixel = 10;

    WholeFile m_file;
    CSize m_size;
    QSvgGenerator m_generator;
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
    m_state->paper = std::make_shared<Paper>(std::move(device));
    SaveDC();
}

CPrintDC::~CPrintDC() = default;

BOOL CPrintDC::StartPage() { return m_state->paper->StartPage(); }

BOOL CPrintDC::EndPage() {
    m_state->paper->EndPage();
    RestoreDC(1);
    SaveDC();
    return TRUE;
}

BOOL CPrintDC::EndDoc() { return m_state->paper->Finish(); }
