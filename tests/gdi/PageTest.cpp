// Pages: files that other programs read, with the right size and what was drawn.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <sstream>

#include "platform/gdi/CPrintDC.h"
#include "platform/gdi/Paper.h"
#include "platform/gdi/Selected.h"
#include "tests/core/TestFolder.h"
#include "tests/gdi/DrawingTest.h"

namespace {

class Page : public ::testing::Test {
  protected:
    std::string Path(const char* name) const { return m_folder.Path(name); }

    TestFolder m_folder;
};

// What a command prints.
std::string OutputOf(const std::string& command) {
    std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen((command + " 2>&1").c_str(), "r"), pclose);
    std::string output;
    std::array<char, 256> part;
    while (pipe && std::fgets(part.data(), part.size(), pipe.get())) output += part.data();
    return output;
}

bool HasPdfReader() { return std::system("command -v pdftotext pdftoppm >/dev/null 2>&1") == 0; }

void DrawPage(CDC& dc, const char* text) {
    dc.SetMapMode(MM_TWIPS);
    CFont font;
    font.CreateSimple(300, "Arial");
    const Selected useFont(dc, font);
    dc.SetBkMode(TRANSPARENT);
    dc.TextOut(100, -100, text);
    CPen pen(PS_DASH, 0, RGB(0, 0, 255));
    const Selected usePen(dc, pen);
    dc.MoveTo(100, -1000);
    dc.LineTo(5000, -1000);
}

}  // namespace

TEST_F(Page, APdfHasItsPagesTheirSizeAndTheirText) {
    PageSetup setup;
    setup.title = "Tide gauge";
    const auto dc = CPrintDC::CreatePdf(Path("two.pdf").c_str(), setup);
    ASSERT_TRUE(dc);
    EXPECT_TRUE(dc->IsPrinting());
    EXPECT_EQ(dc->GetDeviceCaps(LOGPIXELSX), 600);
    EXPECT_NEAR(dc->GetDeviceCaps(HORZRES), 190 * 600 / 25.4,
                9);  // whole points: 210 mm less two margins of 10
    EXPECT_NEAR(dc->GetDeviceCaps(VERTRES), 277 * 600 / 25.4, 9);
    for (const char* text : {"Grüße, Ωm²", "second page"}) {
        ASSERT_TRUE(dc->StartPage());
        EXPECT_FALSE(dc->StartPage()) << "the last page has not been ended";
        DrawPage(*dc, text);
        dc->EndPage();
    }
    EXPECT_FALSE(std::filesystem::exists(Path("two.pdf"))) << "appears when it is complete";
    EXPECT_TRUE(dc->EndDoc());
    EXPECT_EQ(ReadWhole(Path("two.pdf")).substr(0, 5), "%PDF-");
    if (!HasPdfReader()) GTEST_SKIP() << "no PDF reader";
    const std::string info = OutputOf("pdfinfo " + Path("two.pdf"));
    EXPECT_NE(info.find("Tide gauge"), std::string::npos) << info;
    EXPECT_NE(info.find("595 x 842 pts (A4)"), std::string::npos) << info;
    EXPECT_EQ(OutputOf("pdftotext -f 1 -l 1 " + Path("two.pdf") + " -").substr(0, 14), "Grüße, Ωm²");
    EXPECT_EQ(OutputOf("pdftotext -f 2 -l 2 " + Path("two.pdf") + " -").substr(0, 11), "second page");
}

// The same drawing at the same resolution on paper and on pixels: the marks lie in the same places.
TEST_F(Page, ShapesLieOnPaperWhereTheyLieOnAPicture) {
    if (!HasPdfReader()) GTEST_SKIP() << "no PDF reader";
    const auto draw = [](CDC& dc) {
        CPen pen(PS_SOLID, 0, RGB(0, 0, 0));
        CBrush brush(RGB(0, 0, 0));
        const Selected usePen(dc, pen);
        const Selected useBrush(dc, brush);
        dc.SetMapMode(MM_HIMETRIC);
        const CPoint triangle[] = {{1000, -1000}, {3000, -1000}, {2000, -3000}};
        dc.Polygon(triangle, 3);
        dc.Ellipse(4000, -1000, 6000, -3000);
        CRgn region;
        CRect corner(1000, -4000, 2000, -6000);
        dc.LPtoDP(&corner);
        region.CreateRectRgnIndirect(&corner);
        dc.SelectClipRgn(&region);
        dc.Rectangle(INT32_MIN, -3000, 6000, INT32_MIN);
    };
    PageSetup setup;
    setup.paper = {10160, 10160};  // 4 inches: 384 pixels
    setup.margin = 0;
    const auto dc = CPrintDC::CreatePdf(Path("shapes.pdf").c_str(), setup);
    ASSERT_TRUE(dc && dc->StartPage());
    draw(*dc);
    dc->EndPage();
    ASSERT_TRUE(dc->EndDoc());
    OutputOf("pdftoppm -r 96 -gray -aa no -aaVector no " + Path("shapes.pdf") + " " + Path("shapes"));
    std::istringstream image(ReadWhole(Path("shapes-1.pgm")));
    std::string kind;
    int width = 0, height = 0, most = 0;
    image >> kind >> width >> height >> most;
    ASSERT_EQ(width, 384);
    ASSERT_EQ(height, 384);
    image.get();
    const std::string gray{std::istreambuf_iterator<char>(image), {}};
    const auto picture = NewPicture(384, 384);
    CDC screen(*picture);
    draw(screen);
    int differing = 0, inked = 0;
    for (std::size_t i = 0; i < gray.size(); ++i) {
        const bool ink = Pixels(*picture)[i] != kWhite;
        inked += ink;
        differing += ink != (static_cast<unsigned char>(gray[i]) < 128);
    }
    EXPECT_GT(inked, 6000);
    EXPECT_LT(differing, 600) << "of " << inked << ": more than the outlines differ";
}

TEST_F(Page, AnSvgHasTextAndLinesAndOnePage) {
    const auto dc = CPrintDC::CreateSvg(Path("plot.svg").c_str(), {800, 600}, "a < b");
    ASSERT_TRUE(dc);
    EXPECT_NEAR(dc->GetDeviceCaps(HORZRES) * 96.0 / dc->GetDeviceCaps(LOGPIXELSX), 800, 0.5);
    ASSERT_TRUE(dc->StartPage());
    DrawPage(*dc, "Depth & time");
    // The format has no clipping: nothing may reach out of the region.
    dc->SetMapMode(MM_TEXT);
    CRgn region;
    region.CreateRectRgn(2000, 3000, 4000, 5000);
    dc->SelectClipRgn(&region);
    CBrush hatch;
    hatch.CreateHatchBrush(HS_BDIAGONAL, RGB(255, 0, 0));
    const Selected useHatch(*dc, hatch);
    dc->Ellipse(1000, 2500, 4500, 5500);
    dc->MoveTo(0, 7777);
    dc->LineTo(7777, 0);
    dc->EndPage();
    EXPECT_FALSE(dc->StartPage());
    dc->EndDoc();
    const std::string svg = ReadWhole(Path("plot.svg"));
    EXPECT_NE(svg.find("Depth &amp; time"), std::string::npos);
    EXPECT_NE(svg.find("stroke-dasharray"), std::string::npos);
    EXPECT_NE(svg.find("<polyline"), std::string::npos);
    EXPECT_NE(svg.find("a &lt; b"), std::string::npos);
    EXPECT_EQ(svg.find("7777"), std::string::npos);
    EXPECT_EQ(svg.find("4500"), std::string::npos);
}

TEST_F(Page, NothingIsOverwrittenUnlessEverythingWasDrawn) {
    const std::string path = Path("kept.pdf");
    std::ofstream(path) << "old";
    {
        const auto dc = CPrintDC::CreatePdf(path.c_str());
        ASSERT_TRUE(dc && dc->StartPage());
        DrawPage(*dc, "given up");
    }
    EXPECT_EQ(ReadWhole(path), "old");
    EXPECT_FALSE(CPrintDC::CreatePdf(Path("missing/x.pdf").c_str()));
    EXPECT_FALSE(CPrintDC::CreatePdf(nullptr));
    PageSetup narrow;
    narrow.margin = 20000;
    EXPECT_FALSE(CPrintDC::CreatePdf(Path("narrow.pdf").c_str(), narrow));
    EXPECT_FALSE(CPrintDC::CreateSvg(Path("empty.svg").c_str(), {0, 10}));
    const auto empty = CPrintDC::CreatePdf(Path("empty.pdf").c_str());
    EXPECT_FALSE(empty->EndDoc()) << "no page";
}

TEST_F(Page, LongLinesAndFarCoordinatesStaySmall) {
    std::vector<CPoint> points;
    unsigned random = 1;
    for (int i = 0; i < 1000000; ++i) {
        random = random * 1664525u + 1013904223u;
        points.emplace_back(i, static_cast<int>(random >> 1) - (1 << 30));
    }
    const auto dc = CPrintDC::CreatePdf(Path("long.pdf").c_str());
    ASSERT_TRUE(dc && dc->StartPage());
    dc->SetMapMode(MM_ANISOTROPIC);
    dc->SetWindowExt(1000000, 1 << 30);
    dc->SetViewportExt(4000, 6000);
    EXPECT_TRUE(dc->Polyline(points.data(), static_cast<int>(points.size())));
    for (CPoint& point : points) point.x = point.x / 10000 * 10000, point.y = 5 << 26;
    dc->DrawPixels(points.data(), static_cast<int>(points.size()), RGB(0, 0, 0));
    dc->EndPage();
    EXPECT_TRUE(dc->EndDoc());
    EXPECT_LT(std::filesystem::file_size(Path("long.pdf")), 400000u);
}

TEST(PaperLine, KeepsTheEndsAndTheExtremesOfEachColumnInTheirOrder) {
    PaperLine line;
    for (const CPoint p : {CPoint(1, 5), {1, 9}, {1, 7}, {1, 2}, {1, 6}, {2, 6}, {1, 1}, {1, 3}}) line.Add(p);
    const std::vector<CPoint> kept = {{1, 5}, {1, 9}, {1, 2}, {1, 6}, {2, 6}, {1, 1}, {1, 3}};
    EXPECT_EQ(line.Take(), kept);
    EXPECT_TRUE(line.Take().empty());
}
