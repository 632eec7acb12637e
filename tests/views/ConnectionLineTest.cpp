// The lines between the newest samples of two series: where they end, their pixels, and how they are kept.
#include <algorithm>

#include "settings/ApplicationKey.h"
#include "tests/gdi/DrawingTest.h"
#include "tests/pages/SeriesFixture.h"
#include "views/KConnectionLineManager.h"

namespace {

using KConnectionLineManager::LineProperties;

std::string EndsOf(const KConnectionLine& line) {
    const auto ends = line.GetEnds();
    CString text("none");
    if (ends) text.Format("%d,%d %d,%d", ends->start.x, ends->start.y, ends->end.x, ends->end.y);
    return text.GetString();
}

TEST(ConnectionLine, EndsAtTheNewestSampleOrBesideIt) {
    struct Case {
        std::vector<CPoint> from, to;
        int type;
        const char* ends;
    };
    const std::vector<CPoint> up{{0, 1}, {10, 2}, {20, 3}};
    const std::vector<CPoint> down{{20, 3}, {10, 2}, {0, 1}};
    const Case cases[] = {
        {{{7, 7}, {12, 9}}, up, KConnectionLine::LastToLast, "12,9 20,3"},
        {{{12, 9}}, up, KConnectionLine::Projected, "12,9 12,3"},
        {{{10, 9}}, up, KConnectionLine::Projected, "10,9 10,2"},
        {{{21, 9}}, up, KConnectionLine::Projected, "none"},
        {{{12, 9}}, down, KConnectionLine::Projected, "12,9 12,2"},
        {{{25, 9}}, down, KConnectionLine::Projected, "25,9 25,3"},
        {{{-1, 9}}, down, KConnectionLine::Projected, "none"},
        {{{5, 9}}, {{5, 4}}, KConnectionLine::Projected, "5,9 5,4"},
        {{{6, 9}}, {{5, 4}}, KConnectionLine::Projected, "none"},
        {{}, up, KConnectionLine::LastToLast, "none"},
        {up, {}, KConnectionLine::Projected, "none"},
        {up, up, 2, "none"},
    };
    for (const Case& one : cases) {
        const auto from = NewSeries("from", one.from);
        const auto to = NewSeries("to", one.to);
        EXPECT_EQ(EndsOf({from.get(), to.get(), one.type, 0, 0}), one.ends)
            << testing::PrintToString(one.type) << " at " << &one - cases;
    }
}

TEST(ConnectionLine, DrawsALineWithARoundMarkAtEitherEnd) {
    const auto from = NewSeries("from", {{30, 40}});
    const auto to = NewSeries("to", {{90, 40}});
    KConnectionLine line(from.get(), to.get(), KConnectionLine::LastToLast, PS_SOLID, RGB(255, 0, 0));
    const auto picture = NewPicture(120, 80);
    {
        CDC dc(*picture);
        dc.FillSolidRect(CRect(0, 0, 120, 80), RGB(255, 255, 255));
        line.Draw(&dc);
        CSize millimetre(100, 100);
        dc.HIMETRICtoLP(&millimetre);
        const int r = millimetre.cx;
        ASSERT_GT(r, 2);
        for (const int x : {30 - r, 30, 60, 89, 90 - r}) EXPECT_EQ(dc.GetPixel(x, 40), RGB(255, 0, 0)) << x;
        for (const int x : {29 - r, 30 - r + 1, 91 + r})
            EXPECT_EQ(dc.GetPixel(x, 40), RGB(255, 255, 255)) << x;
        EXPECT_EQ(dc.GetPixel(90, 40 - r), RGB(255, 0, 0));
    }
    const int drawn = PixelsUnlike(*picture, kWhite);
    line.SetStyle(PS_DOT);
    line.SetWidth(0);
    CDC dc(*picture);
    dc.FillSolidRect(CRect(0, 0, 120, 80), RGB(255, 255, 255));
    dc.SetBkMode(TRANSPARENT);
    line.Draw(&dc);
    EXPECT_LT(PixelsUnlike(*picture, kWhite), drawn) << "dotted";
    line.SetStyle(99);
    line.Draw(&dc);
}

class ConnectionLines : public SeriesFixture {
  protected:
    static constexpr const char* kLines = "Software\\Maker\\Viewer\\View\\Connection Line";
    void Add(IPointSource* from, IPointSource* to, int type = 0) {
        set.lines.push_back(std::make_unique<KConnectionLine>(from, to, type, PS_DASH, 0xFF8001));
    }
    std::string Names() const {
        std::string names;
        for (const auto& line : set.lines) names += std::string(line->GetDisplayName()) + "\n";
        return names;
    }
    static std::vector<std::string> Stored() {
        CRegKey key;
        key.Open(HKEY_CURRENT_USER, kLines);
        return SubKeysOf(key);
    }

    LineProperties set{hidden, shown};
};

TEST_F(ConnectionLines, AreStoredInSectionsOfTheirOwn) {
    hidden = {b.get()};
    shown = {a.get()};
    for (int i = 0; i < 5; ++i) Add(a.get(), b.get());
    set.SaveToRegistry("View");
    EXPECT_EQ(Stored().size(), 5u);
    set.lines.clear();
    Add(a.get(), b.get());
    Add(b.get(), a.get(), 1);
    set.SaveToRegistry("View");
    EXPECT_EQ(Stored(), (std::vector<std::string>{"[0]", "[1]"}));
    EXPECT_EQ(application.GetProfileString("View\\Connection Line\\[1]", "Start"), "B");
    EXPECT_EQ(application.GetProfileString("View\\Connection Line\\[1]", "End"), "A");
    EXPECT_EQ(application.GetProfileInt("View\\Connection Line\\[1]", "Color", 0), 0xFF8001u);
    EXPECT_EQ(application.GetProfileInt("View\\Connection Line\\[1]", "Type", 0), 1u);
    EXPECT_EQ(application.GetProfileInt("View\\Connection Line\\[0]", "LineStyle", 0), 1u);

    set.LoadFromRegistry("View");
    EXPECT_EQ(set.lines.size(), 4u) << "loading adds";
    EXPECT_EQ(set.lines.back()->GetDisplayName(), "B - A (Projected)");
    EXPECT_EQ(set.lines.back()->color, 0xFF8001u);
    EXPECT_EQ(set.lines.back()->style, PS_DASH);
    EXPECT_FALSE(set.StoredLines("Other"));
}

TEST_F(ConnectionLines, WhoseSeriesAreMissingLeaveTheStore) {
    shown = {a.get(), b.get(), c.get()};
    Add(a.get(), b.get());
    Add(a.get(), c.get());
    Add(b.get(), a.get());
    set.SaveToRegistry("View");
    application.WriteProfileString("View\\Connection Line\\[2]", "End", "");
    application.WriteProfileInt("View\\Connection Line\\[2]\\deeper", "n", 1);
    application.WriteProfileString("View\\Connection Line\\[0]", "LineStyle", "a text");
    set.lines.clear();
    shown = {a.get(), b.get()};
    set.LoadFromRegistry("View");
    EXPECT_EQ(Names(), "A - B (Last to last)\n");
    EXPECT_EQ(set.lines.front()->style, PS_SOLID);
    EXPECT_EQ(Stored(), std::vector<std::string>{"[0]"});
}

TEST_F(ConnectionLines, EndWithTheirSeries) {
    shown = {a.get(), b.get(), c.get()};
    Add(a.get(), b.get());
    Add(b.get(), c.get());
    Add(c.get(), a.get());
    set.RemoveSource(b.get());
    b.reset();
    EXPECT_EQ(Names(), "C - A (Last to last)\n");
}

}  // namespace
