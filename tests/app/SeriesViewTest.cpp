// The program's view without a window: axes, ranges, gaps and tiles, on files that are written for the
// purpose.
#include <gtest/gtest.h>

#include <cmath>

#include "app/workbench/CSeriesView.h"
#include "app/workbench/WorkbenchIds.h"
#include "platform/gdi/CBitmapEx.h"
#include "tests/app/Files.h"

namespace app {
namespace {

class OpenSeriesView : public CSeriesView {
  public:
    explicit OpenSeriesView(SeriesFile& file) : CSeriesView(file, "") { OnInitialUpdate(); }

    using CSeriesView::OnMouseHWheel;
    using CSeriesView::tiled;
    using CXYGraphView::connectionLines;
    using CXYGraphView::zoom;

    void Draw(CSize area) {
        picture_.ReSize(nullptr, area.cx, area.cy);
        CDC dc(picture_);
        DrawOn(dc, area);
    }
    bool HasOnlyMoved() const { return stale == Moved; }
    std::vector<COLORREF> Picture() {
        CDC dc(picture_);
        std::vector<COLORREF> pixels;
        for (int y = 0; y < picture_.GetHeight(); ++y)
            for (int x = 0; x < picture_.GetWidth(); ++x) pixels.push_back(dc.GetPixel(x, y));
        return pixels;
    }
    void Command(UINT id) { EXPECT_TRUE(OnCmdMsg(id, nullptr)) << id; }
    // The pixels of a colour in a part of the picture.
    int Pixels(const CRect& part, COLORREF color) {
        CDC dc(picture_);
        int count = 0;
        for (int y = part.top; y < part.bottom; ++y)
            for (int x = part.left; x < part.right; ++x) count += dc.GetPixel(x, y) == color;
        return count;
    }

  private:
    CBitmapEx picture_{4, 32, 256};
};

class SeriesViewTest : public testing::Test {
  protected:
    SeriesFile Read(const std::string& text, PointOrder order = PointOrder::OfX) {
        folder.Write("file.csv", text);
        ReadOptions options;
        options.path = folder.Path("file.csv");
        auto file = ReadSeriesFile(options, {}, order);
        EXPECT_TRUE(file) << (file ? "" : file.Error().message);
        return std::move(*file);
    }

    Folder folder;
};

std::string Rows(int count, const std::function<std::string(int)>& row) {
    std::string text;
    for (int i = 0; i < count; ++i) text += row(i) + "\n";
    return text;
}

std::string Number(double value) { return std::to_string(value); }

TEST_F(SeriesViewTest, LinesBreakAtGapsAndEmptyCells) {
    // Ten seconds a row; rows 40 to 59 are missing, cell 80 is empty; after row 20 one of 24 seconds.
    std::string text = "t,a,b\n";
    for (int i = 0; i < 100; ++i) {
        if (i >= 40 && i < 60) continue;
        const double t = i * 10 + (i > 20 ? 14 : 0);
        text += Number(t) + "," + (i == 80 ? "" : Number(i % 7)) + "," + Number(i) + "\n";
    }
    const SeriesFile file = Read(text);
    const auto breaks = [&](std::size_t series, double factor) {
        SeriesFacts facts(file, series);
        facts.Refresh(factor);
        return facts.Breaks();
    };
    EXPECT_EQ(breaks(0, 2.5), (std::vector<int>{40, 60}));
    EXPECT_EQ(breaks(1, 2.5), (std::vector<int>{40}));
    EXPECT_EQ(breaks(1, 2.3), (std::vector<int>{21, 40}));
    EXPECT_EQ(breaks(0, 0), std::vector<int>{});
    // A deleted sample is no gap, whoever deletes it.
    file.series[1].source->GetStatus()[70] |= PS_DELETED;
    file.series[1].source->NoteChange();
    EXPECT_EQ(breaks(1, 2.5), (std::vector<int>{40}));
}

TEST_F(SeriesViewTest, UnsortedXIsSaidAndMayStayAsItStands) {
    const std::string loop = "x,y\n0,0\n2,1\n4,2\n3,\n1,3\n0,4\n";
    const SeriesFile sorted = Read(loop);
    EXPECT_FALSE(sorted.xRises);
    EXPECT_NE(sorted.summary.find("File order"), std::string::npos);
    EXPECT_EQ(sorted.series[0].emptyBefore, std::vector<int>{4}) << "x 3 lies between 2 and 4";
    const SeriesFile asRead = Read(loop, PointOrder::OfFile);
    EXPECT_EQ(asRead.series[0].emptyBefore, std::vector<int>{3});
    EXPECT_EQ(asRead.series[0].source->GetData()[4].x, asRead.series[0].source->GetData()[0].x);
    // The window offers it.
    SeriesFile shown = Read(loop);
    OpenSeriesView view(shown);
    view.Command(kFileOrder);
    EXPECT_EQ(shown.order, PointOrder::OfFile);
    EXPECT_TRUE(view.IsShown(0));
}

TEST_F(SeriesViewTest, LabelsOfTheYAxisAreNeverCut) {
    SeriesFile file = Read("x,y\n" + Rows(50, [](int i) { return Number(i) + "," + Number(std::sin(i)); }));
    OpenSeriesView view(file);
    CBitmapEx picture(4, 32, 256);
    for (int step = 0; step < 40; ++step) {
        view.Draw({500, 300});
        const PlotAxis& axis = view.Panels()[0].axes[0];
        picture.ReSize(nullptr, 500, 300);
        CDC dc(picture);
        const PixelSpace pixels(dc);
        for (const AxisTick& tick : axis.ticks)
            EXPECT_LT(dc.GetTextExtent(tick.text).cx, axis.column) << step << " " << tick.text;
        EXPECT_GE(axis.ticks.size(), 2u) << step << " " << axis.shown.from << " " << axis.shown.to;
        view.Command(step < 12 ? CmdZoomOut : CmdZoomIn);
    }
}

TEST_F(SeriesViewTest, LabelsNeverTouchAndDoNotDependOnTheSizesBefore) {
    std::string text = "time,y\n";
    for (int i = 0; i < 100; ++i)
        text += "2024-03-0" + std::to_string(1 + i / 24) + "T" + (i % 24 < 10 ? "0" : "") +
                std::to_string(i % 24) + ":00," + Number(i * 1000.5) + "\n";
    SeriesFile file = Read(text);
    OpenSeriesView view(file);
    const auto ticks = [&](int side) {
        view.Draw({side, side});
        std::string all;
        for (const AxisTick& tick : view.Panels()[0].xTicks) all += std::string(tick.text.GetString()) + "|";
        for (const AxisTick& tick : view.Panels()[0].axes[0].ticks)
            all += std::string(tick.text.GetString()) + "|";
        return all;
    };
    std::vector<std::string> growing;
    for (int side = 100; side < 1060; side += 10) growing.push_back(ticks(side));
    for (int side = 1050; side >= 100; side -= 10, growing.pop_back())
        EXPECT_EQ(ticks(side), growing.back()) << side;
}

TEST_F(SeriesViewTest, ConnectionLinesJoinSeriesOfAnyScale) {
    // Read as they stand: x 4 comes last.
    SeriesFile file = Read("t,a [m],b [K]\n0,1,500\n6,2,100\n4,1.5,300\n", PointOrder::OfFile);
    OpenSeriesView view(file);
    const COLORREF violet = RGB(120, 0, 160);
    const auto source = [&](std::size_t i) { return file.series[i].source.get(); };
    view.connectionLines->lines.push_back(
        std::make_unique<KConnectionLine>(source(0), source(1), KConnectionLine::LastToLast, 0, violet));
    const CSize area(600, 400);
    const CRect all(0, 0, 600, 400);
    view.Draw(area);
    EXPECT_EQ(view.Pixels(all, violet), 0) << "the other end is not in the plot";
    view.ShowOnly({0, 1});
    view.Draw(area);
    // Both axes stand for their series: 1.5 m and 300 K lie in the middle, as does the line of two marks.
    const CRect& plot = view.Panels().front().plot;
    const int middle = (plot.top + plot.bottom) / 2;
    EXPECT_GT(view.Pixels(all, violet), 10);
    EXPECT_EQ(view.Pixels(CRect(plot.left, middle - 8, plot.right, middle + 8), violet),
              view.Pixels(all, violet));
    // The file in another order has other series.
    view.Command(kFileOrder);
    ASSERT_EQ(view.connectionLines->lines.size(), 1u);
    EXPECT_EQ(view.connectionLines->lines.front()->end, source(1));
}

TEST_F(SeriesViewTest, SettingsOfSeriesAreKeptApart) {
    const SeriesFile file =
        Read("t,Level,LEVEL,x\\y,Level,default\n" + Rows(5, [](int i) { return Number(i) + ",1,2,3,4,5"; }));
    std::vector<std::string> keys;
    for (const FileSeries& one : file.series) keys.emplace_back(one.source->GetKey());
    EXPECT_EQ(keys, (std::vector<std::string>{"Level", "LEVEL (2)", "x/y", "Level (3)", "default (2)"}));
}

TEST_F(SeriesViewTest, EachTileAndEachUnitHasItsOwnRange) {
    SeriesFile file = Read("x,a [m],b [hPa],c [m]\n" + Rows(20, [](int i) {
                               return Number(i) + "," + Number(i) + "," + Number(1000 + i) + "," + Number(-i);
                           }));
    OpenSeriesView view(file);
    view.ShowOnly({0, 1, 2});
    view.Draw({800, 600});
    ASSERT_EQ(view.Panels().size(), 1u);
    const auto& together = view.Panels()[0].axes;
    ASSERT_EQ(together.size(), 2u) << "one for metres, one for hectopascals";
    EXPECT_EQ(together[0].series, (std::vector<std::size_t>{0, 2}));
    EXPECT_LT(together[0].whole.to, 25);
    EXPECT_GT(together[1].whole.from, 990);
    EXPECT_STREQ(together[1].reader->Title(), "b [hPa]");
    view.Command(kTiles);
    view.Draw({800, 600});
    ASSERT_EQ(view.Panels().size(), 3u);
    for (std::size_t i = 0; i < 3; ++i) {
        const PlotPanel& panel = view.Panels()[i];
        ASSERT_EQ(panel.axes.size(), 1u);
        // The line runs over its own tile from edge to edge.
        const COLORREF color = SeriesColor(i);
        EXPECT_GT(view.Pixels(panel.plot, static_cast<COLORREF>(color)), panel.plot.Width() / 2) << i;
    }
    EXPECT_GT(view.Panels()[1].axes[0].shown.from, 990);
    EXPECT_LT(view.Panels()[2].axes[0].shown.to, 2);
    view.Command(kTiles);
    view.Command(kNormalised);
    view.Draw({800, 600});
    EXPECT_EQ(view.Panels()[0].axes.size(), 3u);
}

TEST_F(SeriesViewTest, PlotsBelowEachOtherShareTheXAxis) {
    SeriesFile file =
        Read("x,a [m],b [hPa],c [m]\n" + Rows(20, [](int i) {
                 return Number(i) + "," + Number(i) + "," + Number(100000 + i) + "," + Number(-i);
             }));
    OpenSeriesView view(file);
    view.ShowOnly({0, 1, 2});
    view.Command(kStacked);
    view.Draw({800, 600});
    const auto& panels = view.Panels();
    ASSERT_EQ(panels.size(), 2u);
    EXPECT_EQ(panels[0].axes[0].series, (std::vector<std::size_t>{0, 2}));
    EXPECT_EQ(panels[0].plot.left, panels[1].plot.left);
    EXPECT_EQ(panels[0].plot.right, panels[1].plot.right);
    EXPECT_NEAR(panels[0].plot.Height(), panels[1].plot.Height(), 1);
    EXPECT_FALSE(panels[0].labelled);
    EXPECT_TRUE(panels[1].labelled);
    EXPECT_LT(panels[0].plot.bottom, panels[1].plot.top);
    view.Command(kTiles);
    EXPECT_EQ(view.Panels().size(), 3u);
    view.Command(kTiles);
    EXPECT_EQ(view.Panels().size(), 1u) << "all in one plot, not stacked as before";
}

TEST_F(SeriesViewTest, OneCanZoomToSingleSamplesAndIsToldTheEnd) {
    SeriesFile file =
        Read("x,y\n" + Rows(20000, [](int i) { return std::to_string(i) + "," + Number(i % 9); }));
    OpenSeriesView view(file);
    const double scale = file.series[0].source->GetXScale();
    view.Draw({800, 600});
    view.zoom.onlyX = 1;
    for (int i = 0; i < 26; ++i) view.Command(CmdZoomIn);
    view.Draw({800, 600});
    EXPECT_LT(view.ShownX().Length(), 4);
    EXPECT_EQ(file.series[0].source->GetXScale(), scale);
    const auto facts = [&] {
        SeriesFacts one(file, 0);
        one.Refresh(0);
        return one;
    }();
    EXPECT_EQ(facts.Within(view.ShownX()).second - facts.Within(view.ShownX()).first, 2);
    for (int i = 0; i < 60; ++i) view.Command(CmdZoomIn);
    EXPECT_GT(view.ShownX().Length(), 0);
    view.Draw({800, 600});
    for (int i = 0; i < 200; ++i) view.Command(CmdZoomOut);
    EXPECT_LT(view.ShownX().Length(), 20 * 20000);
}

TEST_F(SeriesViewTest, GoingBackNeverShowsAnEmptyPlot) {
    SeriesFile file = Read("x,a [m],b [hPa]\n" + Rows(50, [](int i) {
                               return Number(i) + "," + Number(i % 5) + "," + Number(1000 + i % 3);
                           }));
    OpenSeriesView view(file);
    view.Draw({600, 400});
    for (int i = 0; i < 4; ++i) view.Command(CmdZoomIn);
    const Range x = view.ShownX();
    view.Command(kNextSeries);
    view.Draw({600, 400});
    EXPECT_EQ(view.ShownX(), x) << "the next series in the same part of the x axis";
    EXPECT_GT(view.Pixels(view.Panels()[0].plot, static_cast<COLORREF>(SeriesColor(1))), 100);
    view.Command(kTiles);
    for (int i = 0; i < 5; ++i) {
        view.Command(CmdZoomBack);
        view.Draw({600, 400});
        for (const PlotPanel& panel : view.Panels())
            EXPECT_GT(view.Pixels(panel.plot, static_cast<COLORREF>(SeriesColor(1))), 100) << i;
    }
}

// While the view moves it keeps what it knows of the samples; the picture is that of a view drawn anew.
TEST_F(SeriesViewTest, APanNeedsNoFullRedrawAndShowsTheSame) {
    const auto row = [](int i) {
        return std::to_string(i) + "," + Number(i % 1000 * 0.001 + std::sin(i * 0.01));
    };
    SeriesFile file = Read("x,y\n" + Rows(20000, row));
    OpenSeriesView view(file);
    view.ShowRange(view.RangeX().x, view.RangeX().y / 3);
    view.Draw({600, 400});
    const Range before = view.ShownX();
    for (int i = 0; i < 3; ++i) view.OnMouseHWheel(0, 120, {300, 200});
    EXPECT_GT(view.ShownX().from, before.from);
    EXPECT_TRUE(view.HasOnlyMoved());
    view.Draw({600, 400});
    const std::vector<COLORREF> moved = view.Picture();
    view.Redraw();
    view.Draw({600, 400});
    EXPECT_TRUE(view.Picture() == moved);
}

TEST_F(SeriesViewTest, FewSamplesAreDotsUnlessTheyAreDeleted) {
    SeriesFile file = Read("x,y,z\n0,0,10\n1,0,0\n2,10,0\n3,0,0\n4,0,10\n");
    OpenSeriesView view(file);
    const auto above = [&] {
        view.Draw({600, 400});
        const CRect plot = view.Panels()[0].plot;
        const int middle = (plot.left + plot.right) / 2;
        return view.Pixels({middle - 20, plot.top, middle + 20, (plot.top + plot.bottom) / 2},
                           static_cast<COLORREF>(SeriesColor(0)));
    };
    EXPECT_GT(above(), 20);
    // Another series keeps the axis as high.
    file.series[0].source->GetStatus()[2] |= PS_DELETED;
    file.series[0].source->NoteChange();
    view.ShowOnly({0, 1});
    EXPECT_EQ(above(), 0);
}

TEST_F(SeriesViewTest, StepsGoThroughAllSeriesBothWays) {
    SeriesFile file = Read("x,a,b,c\n0,1,2,3\n1,2,3,4\n2,1,1,1\n");
    OpenSeriesView view(file);
    for (const auto& [step, shown] :
         {std::pair{kNextSeries, 1}, {kPreviousSeries, 0}, {kPreviousSeries, 2}, {kNextSeries, 0}}) {
        view.Command(step);
        EXPECT_TRUE(view.IsShown(static_cast<std::size_t>(shown))) << step;
    }
}

TEST_F(SeriesViewTest, ValuesInViewFillTheAxis) {
    SeriesFile file = Read("x,y\n" + Rows(100, [](int i) { return Number(i) + "," + Number(i); }));
    OpenSeriesView view(file);
    view.ShowRange(view.RangeX().x + (view.RangeX().y - view.RangeX().x) * 0.5, view.RangeX().y);
    view.Draw({600, 400});
    const Range shown = view.Panels()[0].axes[0].shown;
    EXPECT_NEAR(shown.from, 50 - 2, 1.5);
    EXPECT_NEAR(shown.to, 99 + 2, 0.5);
}

TEST_F(SeriesViewTest, EqualDistancesShowMoreOfOneAxisAndLoseNothing) {
    SeriesFile file = Read("x,y\n" + Rows(50, [](int i) { return Number(i) + "," + Number(i % 20); }));
    OpenSeriesView view(file);
    view.zoom.isoAspect = 1;
    for (const CSize area : {CSize(900, 200), CSize(200, 900)}) {
        view.Draw(area);
        view.Command(CmdZoomAll);
        view.Draw(area);
        const PlotPanel& panel = view.Panels()[0];
        const Range y = panel.axes[0].shown;
        EXPECT_LE(view.ShownX().from, 0);
        EXPECT_GE(view.ShownX().to, 49);
        EXPECT_LE(y.from, 0);
        EXPECT_GE(y.to, 19);
        const double perX = view.ShownX().Length() / panel.plot.Width();
        EXPECT_NEAR(y.Length() / panel.plot.Height(), perX, perX * 0.25) << area.cx;
    }
}

}  // namespace
}  // namespace app
