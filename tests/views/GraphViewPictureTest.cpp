// What a graph view draws, in its window and elsewhere.
#include <QTemporaryDir>
#include <algorithm>

#include "platform/window/Printing.h"
#include "tests/gdi/DrawingTest.h"
#include "tests/views/GraphViewTest.h"

namespace {

TEST_F(GraphViewTest, APaintWithoutAStalePictureDrawsOverlaysOnly) {
    Settle();
    const int pictures = view->pictures;
    const int overlays = view->overlays;
    view->Invalidate(FALSE);
    Settle();
    EXPECT_EQ(view->pictures, pictures);
    EXPECT_EQ(view->overlays, overlays + 1);
    RunCommand(*view, 50022);
    Settle();
    EXPECT_EQ(view->pictures, pictures + 1);
    EXPECT_FALSE(QueryCommand(*view, 50022).IsChecked());
    view->UseDoubleBitmap(true);
    Settle();
    const int onScreen = view->overlays;
    view->Invalidate(FALSE);
    Settle();
    EXPECT_EQ(view->overlays, onScreen + 1) << "on a second picture, without waiting for a resize";
    view->UseDoubleBitmap(false);
    // What the host wrote into the arrays shows after an update.
    series->GetData()[500].y = 0;
    document.UpdateAllViews(nullptr);
    Settle();
    EXPECT_EQ(view->pictures, pictures + 2);
}

TEST_F(GraphViewTest, DrawsTheSameOnAnyContext) {
    Settle();
    auto elsewhere = NewPicture(view->picture->GetWidth(), view->picture->GetHeight());
    CDC dc(*elsewhere);
    view->DrawOn(dc, {elsewhere->GetWidth(), elsewhere->GetHeight()});
    EXPECT_EQ(DifferingPixels(*elsewhere, *view->picture), 0);
    EXPECT_GT(PixelsUnlike(*elsewhere, kWhite), 2000);
    // Nor does it need a window, or disturb the picture in it.
    OpenGraphView windowless("GraphViewTest");
    windowless.AddSource(series.get(), true);
    windowless.OnInitialUpdate();
    auto another = NewPicture(elsewhere->GetWidth(), elsewhere->GetHeight());
    CDC anotherDc(*another);
    windowless.DrawOn(anotherDc, {another->GetWidth(), another->GetHeight()});
    EXPECT_EQ(DifferingPixels(*elsewhere, *another), 0);
}

// Long enough for a pyramid, with a valley between two hills.
std::unique_ptr<KPointSource> LongSeries() {
    auto series = std::make_unique<KPointSource>("long", 1000.0, 1000.0, "s", "m", 200000, 1);
    for (int i = 0; i < 200000; ++i)
        series->push_back({i, (i * 7919) % 1000 + (i < 90000 || i > 110000) * 9000});
    return series;
}

TEST_F(GraphViewTest, NeverDrawsOldDataHoweverTheHostChangedIt) {
    const auto data = LongSeries();
    CDocument other;
    OpenGraphView* const live = OpenView(other, {data.get()}, "NeverDrawsOldData");
    const auto expectFresh = [&](const char* when) {
        Settle();
        OpenGraphView fresh("NeverDrawsOldData");
        fresh.AddSource(data.get(), true);
        fresh.OnInitialUpdate();
        fresh.axes = live->axes;
        fresh.zoom = live->zoom;
        auto expected = NewPicture(live->picture->GetWidth(), live->picture->GetHeight());
        CDC dc(*expected);
        fresh.DrawOn(dc, {expected->GetWidth(), expected->GetHeight()});
        EXPECT_EQ(DifferingPixels(*expected, *live->picture), 0) << when;
    };
    expectFresh("first picture");
    RunCommand(*live, 50001);
    expectFresh("zoomed");
    live->OnHScroll(SB_LINERIGHT, 0, nullptr);
    expectFresh("scrolled");
    for (int i = 60000; i < 61000; ++i) data->GetData()[i].y = 4000;
    other.UpdateAllViews(nullptr);
    expectFresh("written to and updated");
    for (int i = 120000; i < 121000; ++i) data->GetData()[i].y = 3000;
    live->mouseMode = CXYGraphView::RulerDragging;
    other.UpdateAllViews(nullptr);
    live->mouseMode = CXYGraphView::ShowPosition;
    RunCommand(*live, 50001);
    expectFresh("updated while measuring, then zoomed");
    data->push_back({200500, 2000});
    live->OnHScroll(SB_PAGERIGHT, 0, nullptr);
    expectFresh("appended, then scrolled");
    // As a ring does whose samples have come round.
    for (int i = 0; i < 200000; ++i) data->GetData()[i].y = (i * 31) % 1000 + i % 40000 / 4;
    live->OnHScroll(SB_PAGELEFT, 0, nullptr);
    expectFresh("filled anew without a word, then scrolled");
    live->GetParentFrame()->DestroyWindow();
}

TEST_F(GraphViewTest, APageHasHeaderBodyAndFooter) {
    class PrintedView : public OpenGraphView {
      public:
        PrintedView() : OpenGraphView("APageHasHeaderBodyAndFooter") {}
        CRect page, header, footer, body;

      protected:
        void PreparePrintDC(CDC*, CPrintInfo* info) override { page = info->m_rectDraw; }
        void OnPrintHeader(CDC* dc, CPrintInfo* info) override {
            header = info->m_rectDraw;
            OpenGraphView::OnPrintHeader(dc, info);
        }
        void OnPrintFooter(CDC* dc, CPrintInfo* info) override {
            footer = info->m_rectDraw;
            OpenGraphView::OnPrintFooter(dc, info);
        }
        int DrawAfterBitmap(CDC* dc) override {
            body = printInfo->m_rectDraw;
            return OpenGraphView::DrawAfterBitmap(dc);
        }
    } printed;
    printed.AddSource(series.get(), true);
    printed.OnInitialUpdate();
    QTemporaryDir folder;
    ASSERT_TRUE(PrintToPdf(printed, folder.filePath("page.pdf").toUtf8()));
    const CRect page = printed.page;
    EXPECT_EQ(printed.header, CRect(page.left, page.top, page.right, page.top - 340));
    EXPECT_EQ(printed.footer, CRect(page.left, page.bottom + 283, page.right, page.bottom));
    EXPECT_EQ(printed.body, CRect(page.left, page.top - 340, page.right, page.bottom + 283));
    EXPECT_EQ(printed.pictures, 1);
    EXPECT_TRUE(QueryCommand(printed, 57607).IsEnabled());
    printed.DestroyWindow();
}

TEST_F(GraphViewTest, ListenersHearWhatThePictureShows) {
    struct Listener final : CXYGraphView::IAxisChangeListener {
        void OnAxisChanged(CXYGraphView::AxisChangeInfo* info) override {
            heard = *info;
            ++calls;
        }
        CXYGraphView::AxisChangeInfo heard;
        int calls = 0;
    } listener;
    view->AddAxisChangeListener(&listener);
    RunCommand(*view, 50001);
    Settle();
    EXPECT_EQ(listener.calls, 1);
    EXPECT_EQ(listener.heard.fromX, 14645.0);
    EXPECT_EQ(listener.heard.toX, 14645.0 + 70711.0);
    EXPECT_EQ(listener.heard.unitX, "s");
    EXPECT_EQ(view->StoredAt({listener.heard.plotLeft, 0}).x, 14645);
    EXPECT_EQ(view->StoredAt({listener.heard.plotRight, 0}).x, 14645 + 70711);
    // An export leaves the window's sizes, and what stands beside it, alone.
    const CSize plot = view->zoom.plotSize;
    auto exported = NewPicture(300, 900);
    CDC dc(*exported);
    view->DrawOn(dc, {300, 900});
    EXPECT_EQ(view->zoom.plotSize, plot);
    QTemporaryDir folder;
    ASSERT_TRUE(PrintToPdf(*view, folder.filePath("page.pdf").toUtf8()));
    EXPECT_EQ(view->zoom.plotSize, plot);
    EXPECT_EQ(listener.calls, 1);
}

TEST_F(GraphViewTest, TilesShowTheirOwnSeriesPageByPage) {
    std::vector<std::unique_ptr<KPointSource>> more;
    for (const char* name : {"b", "c", "d", "e"}) {
        more.push_back(Ramp(name));
        view->AddSource(more.back().get(), true);
    }
    EXPECT_EQ(view->GetNumPages(), 1);
    view->tiled = 1;
    EXPECT_EQ(view->GetNumPages(), 2);
    view->OnViewNextPage();
    view->OnViewNextPage();
    EXPECT_EQ(view->page, 1);
    Settle();
    // The fifth series stands alone, in the first tile.
    EXPECT_LT(view->tileClip.right, view->tileSize.cx);
    EXPECT_LT(view->tileClip.bottom, view->tileSize.cy);
    view->OnViewPrevPage();
    view->OnViewPrevPage();
    EXPECT_EQ(view->page, 0);
    Settle();
    EXPECT_EQ(view->dataHandler->GetPointSource(), series.get());
    view->tiledLayout.NumSourcesPerTile = 2;
    EXPECT_EQ(view->GetNumPages(), 1);
    view->page = 3;
    view->OnViewPrevPage();
    EXPECT_EQ(view->page, 0) << "the last page that is left";
    for (const auto& one : more) view->RemoveSource(one.get());
}

// As many decimals as the ticks need.
class ExactLabels : public OpenGraphView {
  public:
    ExactLabels() : OpenGraphView("ExactLabels") {}
    CString& FormatXLabel(CString& text, double value) override {
        const double step = TickSpacingInForce().cx;
        int decimals = 0;
        for (double unit = 1.0; step > 0.0 && unit > step * 1.001 && decimals < 9; unit /= 10.0) ++decimals;
        text.Format("%.*f", decimals, value);
        longest = std::max(longest, text.GetLength());
        values.push_back(value);
        return text;
    }
    int longest = 0;
    std::vector<double> values;
};

TEST_F(GraphViewTest, LabelsMayDependOnTheTickSpacing) {
    ExactLabels exact;
    exact.AddSource(series.get(), true);
    exact.OnInitialUpdate();
    auto picture = NewPicture(600, 400);
    CDC dc(*picture);
    exact.DrawOn(dc, {600, 400});
    EXPECT_EQ(exact.TickSpacingInForce().cx, 10.0);
    EXPECT_EQ(exact.longest, 3) << "100";
    // 330 stored units are 0.33 s.
    ASSERT_TRUE(exact.AddZoom(CZoomInfo(300.0f, 100.0f, 5000, 2500, 0, 0)));
    exact.zoom.FitScrollSizes({{0, 0}, {100000, 50000}});
    exact.longest = 0;
    exact.values.clear();
    exact.axes.YAxisPos = 2;
    exact.DrawOn(dc, {600, 400});
    EXPECT_LT(exact.TickSpacingInForce().cx, 0.1);
    EXPECT_EQ(exact.longest, 6) << "100.00 while the room is measured";
    EXPECT_GE(
        std::count_if(exact.values.begin(), exact.values.end(), [](double x) { return x > 5 && x < 5.33; }),
        3)
        << "where the axis stands, not how far from its start";
    int right = 0;
    for (int y = 0; y < 400; ++y)
        for (int x = exact.tileClip.right + 10; x < 600; ++x)
            right += dc.GetPixel(x, y) != RGB(255, 255, 255);
    EXPECT_GT(right, 50) << "labels beside a y axis at the right";
}

}  // namespace
