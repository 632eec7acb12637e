#include "platform/window/Printing.h"

#include <QApplication>
#include <QPageLayout>
#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <utility>

#include "platform/core/MessageBox.h"
#include "platform/gdi/PageLayout.h"
#include "platform/gdi/PaperDevice.h"
#include "platform/window/CDocument.h"
#include "platform/window/CView.h"
#include "platform/window/Graveyard.h"

// A context that is there already, or a printer that the user chose.
struct PrintTarget {
    std::unique_ptr<CPrintDC> context;
    std::unique_ptr<QPrinter> printer;
};

namespace {

constexpr int kResolution = 600;

PrintDialogHandler& DialogHandler() {
    static PrintDialogHandler handler;
    return handler;
}

PreviewHandler& PreviewSeam() {
    static PreviewHandler handler;
    return handler;
}

PageSetup& KeptPage() {
    static PageSetup page;
    return page;
}

bool HasWindows() { return qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr; }

QWidget* WindowOf(const CWnd& view) {
    return view.GetSafeHwnd() ? view.GetSafeHwnd()->window() : QApplication::activeWindow();
}

class PrinterDevice : public PaperDevice {
  public:
    explicit PrinterDevice(QPrinter& printer) : m_printer(printer) {}

    QPaintDevice& Device() override { return m_printer; }
    int DotsPerInch() const override { return m_printer.resolution(); }
    CSize Size() const override { return {m_printer.width(), m_printer.height()}; }
    bool NewPage() override { return m_printer.newPage(); }
    bool Finish() override { return m_printer.printerState() != QPrinter::Error; }

  private:
    QPrinter& m_printer;
};

std::unique_ptr<QPrinter> NewPrinter(const CString& title) {
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setResolution(kResolution);
    printer->setPageLayout(PageLayoutOf(PrintPage()));
    printer->setDocName(QString::fromUtf8(title.GetString()));
    return printer;
}

void KeepPageOf(const QPrinter& printer) { SetPrintPage(PageSetupOf(printer.pageLayout())); }

// The user's printer and pages; null when he cancelled.
std::shared_ptr<PrintTarget> AskUser(const CView& view, CPrintInfo& info) {
    if (!HasWindows()) return nullptr;
    const HandlingScope scope;
    auto target = std::make_shared<PrintTarget>();
    target->printer = NewPrinter(info.m_strTitle);
    QPrintDialog dialog(target->printer.get(), WindowOf(view));
    dialog.setOption(QAbstractPrintDialog::PrintPageRange, info.GetMaxPage() > info.GetMinPage());
    if (info.GetMaxPage() != CPrintInfo::kUnknown)
        dialog.setMinMax(static_cast<int>(info.GetMinPage()), static_cast<int>(info.GetMaxPage()));
    if (dialog.exec() != QDialog::Accepted) return nullptr;
    KeepPageOf(*target->printer);
    info.SetRange(static_cast<UINT>(target->printer->fromPage()),
                  static_cast<UINT>(target->printer->toPage()));
    return target;
}

// What a handler answers instead; null when it cancelled.
std::shared_ptr<PrintTarget> TargetOf(const PrintRequest& request, int answer, CPrintInfo& info) {
    if (answer != IDOK) return nullptr;
    info.SetRange(request.fromPage, request.toPage);
    PageSetup setup = PrintPage();
    setup.title = info.m_strTitle;
    auto target = std::make_shared<PrintTarget>();
    target->context = CPrintDC::CreatePdf(request.pdfPath, setup);
    return target;
}

CString TitleOf(const CView& view) {
    const CDocument* document = view.GetDocument();
    return document ? document->GetTitle() : CString();
}

}  // namespace

// The steps of a print. Friend of CView, whose handlers it calls.
struct PrintJob {
    static bool Prepare(CView& view, CPrintInfo& info) {
        info.m_strTitle = TitleOf(view);
        return view.OnPreparePrinting(&info) != FALSE;
    }

    // Draws the pages and ends the document. False when not all is written.
    static bool Draw(CView& view, CPrintDC& dc, CPrintInfo& info) {
        view.OnBeginPrinting(&dc, &info);
        bool drawn = true;
        info.m_bContinuePrinting = TRUE;
        for (UINT page = info.GetFromPage(); drawn && page <= info.GetToPage(); ++page) {
            info.m_nCurPage = page;
            view.OnPrepareDC(&dc, &info);
            if (!info.m_bContinuePrinting) break;
            info.m_rectDraw = CRect(0, 0, dc.GetDeviceCaps(HORZRES), dc.GetDeviceCaps(VERTRES));
            dc.DPtoLP(&info.m_rectDraw);
            drawn = dc.StartPage();
            if (drawn) view.OnPrint(&dc, &info);
            dc.EndPage();
        }
        view.OnEndPrinting(&dc, &info);
        return dc.EndDoc() && drawn;
    }

    static bool DrawOnPrinter(CView& view, QPrinter& printer, CPrintInfo& info) {
        CPrintDC dc(std::make_unique<PrinterDevice>(printer));
        return Draw(view, dc, info);
    }

    static bool ToTarget(CView& view, CPrintInfo& info) {
        const std::shared_ptr<PrintTarget> target = info.m_target;
        if (target->printer) return DrawOnPrinter(view, *target->printer, info);
        return target->context && Draw(view, *target->context, info);
    }
};

bool PrintToPdf(CView& view, const char* path, const PageSetup& setup) {
    CPrintInfo info;
    info.m_target = std::make_shared<PrintTarget>();
    if (!PrintJob::Prepare(view, info)) return false;
    PageSetup titled = setup;
    if (titled.title.IsEmpty()) titled.title = info.m_strTitle;
    info.m_target->context = CPrintDC::CreatePdf(path, titled);
    return PrintJob::ToTarget(view, info);
}

const PageSetup& PrintPage() { return KeptPage(); }

void SetPrintPage(const PageSetup& page) { KeptPage() = page; }

int AskPrintPage(const CWnd& parent) {
    PrintPageQuestion question;
    question.page = PrintPage();
    if (const std::optional<int> answer = AnswerInsteadOfUser(question)) {
        if (*answer == IDOK) SetPrintPage(question.page);
        return *answer;
    }
    if (!HasWindows()) return IDCANCEL;
    const HandlingScope scope;
    const auto printer = NewPrinter({});
    QPageSetupDialog dialog(printer.get(), WindowOf(parent));
    if (dialog.exec() != QDialog::Accepted) return IDCANCEL;
    KeepPageOf(*printer);
    return IDOK;
}

PrintDialogHandler SetPrintDialogHandler(PrintDialogHandler handler) {
    return std::exchange(DialogHandler(), std::move(handler));
}

PreviewHandler SetPreviewHandler(PreviewHandler handler) {
    return std::exchange(PreviewSeam(), std::move(handler));
}

BOOL CView::DoPreparePrinting(CPrintInfo* info) {
    if (info->m_bPreview || info->m_target) return TRUE;
    PrintRequest request;
    request.title = info->m_strTitle;
    request.minPage = info->GetMinPage();
    request.maxPage = info->GetMaxPage();
    std::optional<int> answer = AnswerInsteadOfUser(request);
    if (!answer && DialogHandler()) answer = DialogHandler()(request);
    info->m_target = answer ? TargetOf(request, *answer, *info) : AskUser(*this, *info);
    return info->m_target != nullptr;
}

BOOL CView::OnPreparePrinting(CPrintInfo* info) { return DoPreparePrinting(info); }

void CView::OnBeginPrinting(CDC*, CPrintInfo*) {}

void CView::OnPrint(CDC* dc, CPrintInfo*) { OnDraw(dc); }

void CView::OnEndPrinting(CDC*, CPrintInfo*) {}

void CView::OnFilePrint() {
    CPrintInfo info;
    if (!PrintJob::Prepare(*this, info) || !info.m_target) return;
    if (!PrintJob::ToTarget(*this, info))
        AfxMessageBox(
            "Printing failed.\nCheck the printer, or the name and the place of the file printed to.",
            MB_OK | MB_ICONEXCLAMATION);
}

void CView::OnFilePrintPreview() {
    CPrintInfo info;
    info.m_bPreview = TRUE;
    if (!PrintJob::Prepare(*this, info)) return;
    PreviewQuestion question;
    question.drawPages = [&](CPrintDC& dc) { return PrintJob::Draw(*this, dc, info); };
    if (AnswerInsteadOfUser(question)) return;
    if (PreviewSeam()) return PreviewSeam()(question.drawPages);
    if (!HasWindows()) return;
    const HandlingScope scope;
    const auto printer = NewPrinter(info.m_strTitle);
    QPrintPreviewDialog dialog(printer.get(), WindowOf(*this));
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested,
                     [&](QPrinter* asked) { PrintJob::DrawOnPrinter(*this, *asked, info); });
    dialog.exec();
    KeepPageOf(*printer);
}
