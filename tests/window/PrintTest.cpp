// The print commands: which handlers are called, for which pages, and what comes of it.
#include <QApplication>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QTemporaryDir>
#include <QTimer>

#include "platform/core/MessageBox.h"
#include "platform/gdi/CDC.h"
#include "platform/window/Printing.h"
#include "tests/window/WindowTest.h"

namespace {

class PrintedView : public RecordingView {
  public:
    UINT maxPage = 3;
    CRect drawn;
    BOOL previewed = FALSE;

    void Print() { OnFilePrint(); }
    void Preview() { OnFilePrintPreview(); }

  protected:
    BOOL OnPreparePrinting(CPrintInfo* info) override {
        log.push_back("prepare");
        info->SetMaxPage(maxPage);
        return DoPreparePrinting(info);
    }
    void OnBeginPrinting(CDC*, CPrintInfo*) override { log.push_back("begin"); }
    void OnPrepareDC(CDC* dc, CPrintInfo* info) override {
        if (info) dc->SetMapMode(MM_TWIPS);
        RecordingView::OnPrepareDC(dc, info);
    }
    void OnPrint(CDC* dc, CPrintInfo* info) override {
        log.push_back("page" + std::to_string(info->m_nCurPage));
        drawn = info->m_rectDraw;
        previewed = info->m_bPreview;
        dc->TextOut(drawn.left, drawn.top, "printed");
    }
    void OnEndPrinting(CDC*, CPrintInfo*) override { log.push_back("end"); }
};

class PrintTest : public WindowTest {
  protected:
    std::string Path(const char* name) const { return m_folder.filePath(name).toStdString(); }
    void TearDown() override {
        SetPrintDialogHandler({});
        WindowTest::TearDown();
    }

    QTemporaryDir m_folder;
    PrintedView m_view;
};

}  // namespace

TEST_F(PrintTest, WithoutADialogAllPagesGoIntoTheFile) {
    EXPECT_TRUE(PrintToPdf(m_view, Path("all.pdf").c_str()));
    EXPECT_EQ(m_view.TakeLog(), "prepare begin page1 page2 page3 end");
    // Twips, upwards: A4 less two margins of 10 mm, all in whole points (20 twips).
    EXPECT_EQ(m_view.drawn.left, 0);
    EXPECT_EQ(m_view.drawn.top, 0);
    EXPECT_NEAR(m_view.drawn.right, 190 * 1440 / 25.4, 20);
    EXPECT_NEAR(m_view.drawn.bottom, -277 * 1440 / 25.4, 20);
    EXPECT_TRUE(QFile::exists(m_folder.filePath("all.pdf")));
    EXPECT_FALSE(PrintToPdf(m_view, Path("missing/all.pdf").c_str()));
}

TEST_F(PrintTest, TheDialogChoosesThePagesOrCancels) {
    SetPrintDialogHandler([this](PrintRequest& request) {
        EXPECT_EQ(request.maxPage, 3u);
        request.pdfPath = Path("some.pdf").c_str();
        request.fromPage = request.toPage = 2;
        return IDOK;
    });
    m_view.Print();
    EXPECT_EQ(m_view.TakeLog(), "prepare begin page2 end");
    EXPECT_TRUE(QFile::exists(m_folder.filePath("some.pdf")));
    SetPrintDialogHandler([](PrintRequest&) { return IDCANCEL; });
    m_view.Print();
    EXPECT_EQ(m_view.TakeLog(), "prepare");
}

TEST_F(PrintTest, PagesAreAsTheUserChoseThemLast) {
    const PageSetup before = PrintPage();
    const auto questions = SetModalHandler([this](ModalQuestion& question) -> std::optional<int> {
        if (auto* const page = dynamic_cast<PrintPageQuestion*>(&question)) {
            page->page.paper = {29700, 21000};
            page->page.margin = 1000;
            page->page.margin.left = 3000;
            return IDOK;
        }
        dynamic_cast<PrintRequest&>(question).pdfPath = Path("across.pdf").c_str();
        return IDOK;
    });
    EXPECT_EQ(AskPrintPage(m_view), IDOK);
    m_view.Print();
    EXPECT_NEAR(m_view.drawn.right, (297 - 30 - 10) * 1440 / 25.4, 20);
    EXPECT_NEAR(m_view.drawn.bottom, -190 * 1440 / 25.4, 20);
    SetModalHandler([](ModalQuestion& question) -> std::optional<int> {
        dynamic_cast<PrintPageQuestion&>(question).page.paper = {100, 100};
        return IDCANCEL;
    });
    EXPECT_EQ(AskPrintPage(m_view), IDCANCEL);
    EXPECT_EQ(PrintPage().paper, CSize(29700, 21000));
    SetModalHandler(questions);
    SetPrintPage(before);
}

TEST_F(PrintTest, TheRealDialogsBeginWithThePageAndKeepIt) {
    const PageSetup before = PrintPage();
    PageSetup across;
    across.paper = {29700, 21000};
    across.margin = 1500;
    SetPrintPage(across);
    QTimer::singleShot(0, [] { qobject_cast<QDialog*>(QApplication::activeModalWidget())->accept(); });
    EXPECT_EQ(AskPrintPage(m_view), IDOK);
    EXPECT_EQ(PrintPage().paper, CSize(29700, 21000));
    EXPECT_NEAR(PrintPage().margin.top, 1500, 20);
    SetPrintPage(before);
}

TEST_F(PrintTest, APrintOfUnknownLengthHasOnePage) {
    m_view.maxPage = CPrintInfo::kUnknown;
    EXPECT_TRUE(PrintToPdf(m_view, Path("one.pdf").c_str()));
    EXPECT_EQ(m_view.TakeLog(), "prepare begin page1 end");
}

TEST_F(PrintTest, TheRealPreviewShowsThePages) {
    int pages = 0;
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_TRUE(dialog);
        Settle();
        pages = dialog->findChild<QPrintPreviewWidget*>()->pageCount();
        dialog->reject();
    });
    m_view.Preview();
    EXPECT_EQ(pages, 3);
    EXPECT_TRUE(m_view.previewed);
    EXPECT_NE(m_view.TakeLog().find("page1 page2 page3"), std::string::npos);
}
